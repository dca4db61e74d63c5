#include "files/fileQueries.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

#include "files/paths.h"
#include "platform/os/nativeSeparator.h"
#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

// The current directory as it was, at the end of the test.
class FileQueries : public testing::Test {
protected:
    void SetUp() override { GetCurrentDirectoryA(sizeof before_, before_); }
    void TearDown() override { SetCurrentDirectoryA(before_); }

    CString before() const { return before_; }
    CString path(char const* entry) const { return folder.path(entry).c_str(); }
    static CString current()
    {
        char now[4096];
        return CString(now, static_cast<int>(GetCurrentDirectoryA(sizeof now, now)));
    }

    TemporaryFolder folder;

private:
    char before_[4096] = {};
};

// The read-only attribute for the length of a scope.
class ReadOnly {
public:
    explicit ReadOnly(CString path) : path_(std::move(path))
    {
        EXPECT_TRUE(SetFileAttributesA(path_, FILE_ATTRIBUTE_READONLY));
    }
    ~ReadOnly() { SetFileAttributesA(path_, FILE_ATTRIBUTE_NORMAL); }
    ReadOnly(ReadOnly const&) = delete;
    ReadOnly& operator=(ReadOnly const&) = delete;

private:
    CString const path_;
};

// -- Existence -----------------------------------------------------------------------

TEST_F(FileQueries, findAFileAndAFolder)
{
    folder.write("model.txt", "x");
    folder.makeFolder("src");

    EXPECT_EQ(omFileExist(path("model.txt")), 1);
    EXPECT_EQ(omFileExist(path("src")), 1);
    EXPECT_EQ(omFileExist(path("missing")), 0);
    EXPECT_EQ(omFileExist(path("missing") + omPathSeparator() + "deeper"), 0);
    EXPECT_EQ(omFileExist(""), 0);
}

TEST_F(FileQueries, doNotFindANameWithASeparatorAtItsEnd)
{
    folder.makeFolder("src");

    EXPECT_EQ(omFileExist(path("src") + omPathSeparator()), 0);
}

TEST_F(FileQueries, takeAPatternThatAnythingMatchesAsExisting)
{
    folder.write("model.txt", "x");

    EXPECT_EQ(omFileExist(path("*.txt")), 1);
    EXPECT_EQ(omFileExist(path("m?del.*")), 1);
    EXPECT_EQ(omFileExist(path("*.cpp")), 0);
}

TEST_F(FileQueries, tellAFileWithContentFromAnEmptyOne)
{
    folder.write("full.txt", "x");
    folder.write("empty.txt", "");

    EXPECT_TRUE(omFileExistsAndNonEmpty(path("full.txt")));
    EXPECT_FALSE(omFileExistsAndNonEmpty(path("empty.txt")));
    EXPECT_FALSE(omFileExistsAndNonEmpty(path("missing")));
    EXPECT_FALSE(omFileExistsAndNonEmpty(""));
}

TEST_F(FileQueries, findNoContentInAPatternOrAFolder)
{
    folder.write("full.txt", "x");
    folder.makeFolder("src");

    EXPECT_FALSE(omFileExistsAndNonEmpty(path("*.txt")));
    EXPECT_FALSE(omFileExistsAndNonEmpty(path("src")));
}

// -- Folders ---------------------------------------------------------------------------

TEST_F(FileQueries, findAFolderByEnteringItAndComeBack)
{
    folder.makeFolder("src");
    CString error("unchanged");

    EXPECT_EQ(omDirExist(path("src"), &error), 1);

    EXPECT_STREQ(error, "unchanged");
    EXPECT_STREQ(current(), before());
}

TEST_F(FileQueries, sayWhyAFolderCannotBeEntered)
{
    folder.write("model.txt", "x");
    CString error;

    EXPECT_EQ(omDirExist(path("missing"), &error), 0);
    SetLastError(ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(error, omGetErrorCodeString());

    EXPECT_EQ(omDirExist(path("model.txt"), &error), 0);
    SetLastError(ERROR_DIRECTORY);
    EXPECT_STREQ(error, omGetErrorCodeString());

    EXPECT_EQ(omDirExist(path("missing"), nullptr), 0);
    EXPECT_STREQ(current(), before());
}

TEST_F(FileQueries, takeAnEmptyNameAsAFolderThatExists)
{
    CString error("unchanged");

    EXPECT_EQ(omDirExist("", &error), 1);
    EXPECT_STREQ(error, "unchanged");
}

TEST_F(FileQueries, giveTheFullPathOfAFolder)
{
    folder.makeFolder("src");
    SetCurrentDirectoryA(path("."));
    CString const here = current();
    CString error("old");

    EXPECT_STREQ(omGetFullPathOfDirectory("src", error), here + omPathSeparator() + "src");
    EXPECT_STREQ(error, "");
    EXPECT_STREQ(omGetFullPathOfDirectory(CString("src") + omPathSeparator() + "..", error), here);
    EXPECT_STREQ(current(), here);
}

TEST_F(FileQueries, giveTheCurrentDirectoryForAnEmptyName)
{
    CString error("old");

    EXPECT_STREQ(omGetFullPathOfDirectory("", error), before());
    EXPECT_STREQ(error, "");
}

TEST_F(FileQueries, giveNoFullPathAndTheReasonForAMissingFolder)
{
    CString error;

    EXPECT_STREQ(omGetFullPathOfDirectory(path("missing"), error), "");
    SetLastError(ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(error, omGetErrorCodeString());
    EXPECT_STREQ(current(), before());
}

TEST_F(FileQueries, enterFoldersWithLongPaths)
{
    // On Windows the current directory ends at 260 characters.
    std::string const deep = std::string(60, 'a') + "/" + std::string(60, 'b');
    folder.makeFolder(deep);
    CString error;

    CString const full = omGetFullPathOfDirectory(folder.path(deep).c_str(), error);

    EXPECT_STREQ(error, "");
    EXPECT_EQ(full.Right(60), CString('b', 60));
    EXPECT_STREQ(current(), before());
}

TEST_F(FileQueries, enterFoldersFromACurrentOneWithALongPath)
{
    std::string const part(100, 'x');
    std::string const deep = part + "/" + part + "/" + part;
    std::error_code failure;
    std::filesystem::create_directories(folder.path(deep), failure);
    if (failure || !SetCurrentDirectoryA(path(deep.c_str())))
        GTEST_SKIP() << "the system enters no folder with a path of that length";
    CString error("old");

    EXPECT_EQ(omDirExist("missing"), 0);
    EXPECT_EQ(omGetFullPathOfDirectory("", error).Right(302), deep.c_str());
    EXPECT_EQ(error, "");
    EXPECT_EQ(omGetFullPathOfDirectory("..", error).Right(100), part.c_str());
    EXPECT_EQ(current().Right(100), part.c_str());
}

TEST_F(FileQueries, knowNoWayBackToACurrentFolderThatIsGone)
{
    folder.makeFolder("gone");
    CString const elsewhere = path(".");
    SetCurrentDirectoryA(path("gone"));
    if (!RemoveDirectoryA(path("gone")))
        GTEST_SKIP() << "the system keeps the current folder";
    CString error("unchanged");

    EXPECT_EQ(omDirExist("/no such folder", &error), 1);
    EXPECT_EQ(error, "unchanged");

    EXPECT_EQ(omGetFullPathOfDirectory(elsewhere, error), "");
    EXPECT_NE(error, "");
    EXPECT_NE(error, "unchanged");
}

// -- Permissions -------------------------------------------------------------------------

TEST_F(FileQueries, tellWhetherAFileMayBeReadAndWritten)
{
    folder.write("model.txt", "x");
    folder.write("fixed.txt", "x");
    ReadOnly const fixed(path("fixed.txt"));

    EXPECT_EQ(omFileHasReadPermission(path("model.txt")), 1);
    EXPECT_EQ(omFileHasReadPermission(path("fixed.txt")), 1);
    EXPECT_EQ(omFileHasReadPermission(path("missing")), 0);
    EXPECT_EQ(omFileHasReadPermission(""), 0);

    EXPECT_EQ(omFileHasWritePermission(path("model.txt")), 1);
    EXPECT_EQ(omFileHasWritePermission(path("fixed.txt")), 0);
    EXPECT_EQ(omFileHasWritePermission(path("missing")), 0);
    EXPECT_EQ(omFileHasWritePermission(""), 0);
}

TEST_F(FileQueries, askForTheCurrentDirectoryWithoutAFolder)
{
    folder.makeFolder("src");
    SetCurrentDirectoryA(path("src"));

    EXPECT_EQ(dirHasReadPermission(nullptr), 1);
    EXPECT_EQ(dirHasReadPermission(""), 1);
    EXPECT_EQ(dirHasWritePermission(nullptr), 1);
    EXPECT_EQ(dirHasWritePermission(""), 1);
    EXPECT_EQ(dirHasReadPermission(path("missing")), 0);
    EXPECT_EQ(dirHasWritePermission(path("missing")), 0);
    EXPECT_EQ(dirHasReadPermission(path("src")), 1);
    EXPECT_EQ(dirHasWritePermission(path("src")), 1);
}

TEST_F(FileQueries, tellReadingFromWriting)
{
    folder.write("model.txt", "x");
    folder.write("fixed.txt", "x");
    ReadOnly const fixed(path("fixed.txt"));

    EXPECT_EQ(dirHasReadPermission(path("fixed.txt")), 1);
    EXPECT_EQ(dirHasWritePermission(path("fixed.txt")), 0);
    EXPECT_EQ(fileHasWritePermission(path("model.txt"), path("fixed.txt")), 0);
    EXPECT_EQ(fileHasWritePermission(path("new.txt"), path("fixed.txt")), 0);
    EXPECT_EQ(fileHasWritePermission(path("*.txt"), path(".")), 0)
        << "a pattern exists, but may not be written";
}

TEST_F(FileQueries, letTheFolderDecideForAFileThatIsNotThere)
{
    folder.makeFolder("src");

    EXPECT_EQ(fileHasWritePermission(path("src/new.txt"), path("src")), 1);
    EXPECT_EQ(fileHasWritePermission(path("src/new.txt"), path("missing")), 0);
    EXPECT_EQ(fileHasWritePermission(path("src/new.txt"), nullptr), 1);
    EXPECT_EQ(fileHasWritePermission(path("src/new.txt"), ""), 1);
}

TEST_F(FileQueries, wantFolderAndFileWritableForAFileThatIsThere)
{
    folder.write("model.txt", "x");
    folder.write("fixed.txt", "x");
    ReadOnly const fixed(path("fixed.txt"));

    EXPECT_EQ(fileHasWritePermission(path("model.txt"), path(".")), 1);
    EXPECT_EQ(fileHasWritePermission(path("model.txt"), path("missing")), 0);
    EXPECT_EQ(fileHasWritePermission(path("fixed.txt"), path(".")), 0);
    EXPECT_EQ(fileHasWritePermission(path("fixed.txt"), nullptr), 0);
}

// The folder's name in other case leads to a read-only file of that name, so
// that only the rule makes it writable on both systems.
TEST_IN_FRESH_PROCESS(MyDocuments, areWritableWhateverTheSystemSays)
{
    TemporaryFolder const folder;
    folder.write("MY documents", "x");
    ReadOnly const fixed(folder.path("MY documents").c_str());
    SetEnvironmentVariableA("USERPROFILE", folder.path().c_str());

    EXPECT_EQ(omFileHasWritePermission(folder.path("MY documents").c_str()), 1);
    EXPECT_EQ(dirHasWritePermission(folder.path("MY documents").c_str()), 1);

    SetEnvironmentVariableA("USERPROFILE", "elsewhere");
    EXPECT_EQ(omFileHasWritePermission(folder.path("MY documents").c_str()), 1) << "asked once";
}

TEST_IN_FRESH_PROCESS(MyDocuments, countOnlyIfTheyExist)
{
    TemporaryFolder const folder;
    SetEnvironmentVariableA("USERPROFILE", folder.path().c_str());

    EXPECT_EQ(omFileHasWritePermission(folder.path("My Documents").c_str()), 0);
}

TEST_IN_FRESH_PROCESS(MyDocuments, areNowhereWithoutAUserProfile)
{
    TemporaryFolder const folder;
    folder.write("My Documents", "x");
    ReadOnly const fixed(folder.path("My Documents").c_str());
    SetEnvironmentVariableA("USERPROFILE", nullptr);

    EXPECT_EQ(omFileHasWritePermission(folder.path("My Documents").c_str()), 0);

    SetEnvironmentVariableA("USERPROFILE", folder.path().c_str());
    EXPECT_EQ(omFileHasWritePermission(folder.path("My Documents").c_str()), 0) << "asked once";
}

// The variable is read into 259 bytes, its NUL included.
void expectMyDocuments(std::size_t length, int expected)
{
    TemporaryFolder const folder;
    std::string profile = folder.path() + "/";
    ASSERT_LT(profile.size(), length);
    if (length - profile.size() > 200)
        profile += std::string(100, 'x') + "/";
    profile.append(length - profile.size(), 'y');
    std::filesystem::create_directories(profile);
    std::string const documents = profile + zk::os::nativeSeparator() + "My Documents";
    std::ofstream(documents) << "x";
    if (!SetFileAttributesA(documents.c_str(), FILE_ATTRIBUTE_READONLY))
        GTEST_SKIP() << "the system takes no path of that length";
    SetEnvironmentVariableA("USERPROFILE", profile.c_str());

    EXPECT_EQ(omFileHasWritePermission(documents.c_str()), expected);
    SetFileAttributesA(documents.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_IN_FRESH_PROCESS(MyDocuments, lieBelowAUserProfileOf258Bytes)
{
    expectMyDocuments(258, 1);
}

TEST_IN_FRESH_PROCESS(MyDocuments, areNowhereBelowALongerUserProfile)
{
    expectMyDocuments(259, 0);
}

TEST_IN_FRESH_PROCESS(MyDocuments, mayBeAskedForByTwoThreadsAtFirst)
{
    TemporaryFolder const folder;
    folder.makeFolder("My Documents");
    SetEnvironmentVariableA("USERPROFILE", folder.path().c_str());
    std::atomic<int> writable = 0;
    std::thread other([&] { writable += omFileHasWritePermission(folder.path("My Documents").c_str()); });
    writable += omFileHasWritePermission(folder.path("My Documents").c_str());  // two first calls at once
    other.join();

    EXPECT_EQ(writable, 2);
}

// -- The last error ------------------------------------------------------------------------

TEST_F(FileQueries, giveTheSystemsWordsForTheLastError)
{
    char expected[512];
    for (DWORD const error : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}) {
        DWORD const length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                            nullptr, error, 0x400, expected, sizeof expected, nullptr);
        ASSERT_GT(length, 0u);
        SetLastError(error);

        EXPECT_STREQ(omGetErrorCodeString(), expected);
        EXPECT_EQ(GetLastError(), error);
    }
}

TEST_F(FileQueries, giveNoWordsForAnErrorWithoutAny)
{
    SetLastError(0x2FFFFFFF);

    EXPECT_STREQ(omGetErrorCodeString(), "");
    EXPECT_EQ(GetLastError(), DWORD{0x2FFFFFFF});
}

}  // namespace
