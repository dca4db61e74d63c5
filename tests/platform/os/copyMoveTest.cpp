#include "tests/support/OtherFileSystem.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

class CopiesAndMoves : public testing::Test {
protected:
    TemporaryFolder folder_;

    std::string path(std::string_view name) const { return folder_.path(name); }

    BOOL copy(std::string const& from, std::string const& to, BOOL failIfExists = FALSE) const
    {
        return CopyFileA(path(from).c_str(), path(to).c_str(), failIfExists);
    }

    BOOL move(std::string const& from, std::string const& to, DWORD flags = 0) const
    {
        return MoveFileExA(path(from).c_str(), path(to).c_str(), flags);
    }

    std::size_t entryCount() const
    {
        return std::size_t(std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator()));
    }
};

class Copies : public CopiesAndMoves { };
class Moves : public CopiesAndMoves { };

}  // namespace

TEST_F(Copies, holdTheContent)
{
    std::string const content = std::string(300'000, 'x') + '\0' + "end";
    folder_.write("from", content);

    EXPECT_TRUE(copy("from", "to"));

    EXPECT_EQ(folder_.read("to"), content);
    EXPECT_EQ(folder_.read("from"), content);
    EXPECT_EQ(entryCount(), 2u);
}

TEST_F(Copies, ofNothingAreEmpty)
{
    folder_.write("from", "");

    EXPECT_TRUE(copy("from", "to"));

    EXPECT_EQ(folder_.read("to"), "");
}

TEST_F(Copies, replaceAFileUnlessTheyMustNot)
{
    folder_.write("from", "new");
    folder_.write("to", "old and longer");

    EXPECT_FAILS(copy("from", "to", TRUE), ERROR_FILE_EXISTS);
    EXPECT_EQ(folder_.read("to"), "old and longer");

    EXPECT_TRUE(copy("from", "to", FALSE));
    EXPECT_EQ(folder_.read("to"), "new");
}

TEST_F(Copies, keepTheTimeOfTheLastWriting)
{
    folder_.write("from", "abc");
    FILETIME const written = {0, 0x01C00000};
    SetFileTime(openFile(path("from"), GENERIC_WRITE).get(), nullptr, nullptr, &written);

    copy("from", "to");

    WIN32_FILE_ATTRIBUTE_DATA data;
    ASSERT_TRUE(GetFileAttributesExA(path("to").c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &written), 0);
}

TEST_F(Copies, keepTheReadOnlyAttribute)
{
    folder_.write("from", "abc");
    SetFileAttributesA(path("from").c_str(), FILE_ATTRIBUTE_READONLY);

    EXPECT_TRUE(copy("from", "to"));

    EXPECT_EQ(GetFileAttributesA(path("to").c_str()),
              DWORD(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    SetFileAttributesA(path("from").c_str(), FILE_ATTRIBUTE_NORMAL);
    SetFileAttributesA(path("to").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Copies, thatFailSayWhyAndLeaveNothing)
{
    folder_.write("from", "abc");
    folder_.write("file", "old");
    folder_.makeFolder("sub");

    EXPECT_FAILS(copy("missing", "to"), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(copy("none/missing", "to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(copy("from", "none/to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(copy("from", "file/to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(copy("from", "sub"), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(copy("from", "sub", TRUE), ERROR_FILE_EXISTS);
    EXPECT_FAILS(copy("sub", "to"), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(copy("from", "from"), ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(copy("from", "from", TRUE), ERROR_FILE_EXISTS);
    EXPECT_FAILS(copy("from", "sub/../from"), ERROR_SHARING_VIOLATION);
    EXPECT_FAILS(copy("from", "file/"), ERROR_INVALID_NAME);
    EXPECT_FAILS(CopyFileA(path("from").c_str(), "", FALSE), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(CopyFileA("", path("to").c_str(), FALSE), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(CopyFileA(nullptr, path("to").c_str(), FALSE), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(CopyFileA(path("from").c_str(), nullptr, FALSE), ERROR_PATH_NOT_FOUND);

    EXPECT_EQ(entryCount(), 3u);
    EXPECT_EQ(folder_.read("from"), "abc");
    EXPECT_EQ(folder_.read("file"), "old");
}

TEST_F(Moves, giveAFileAnotherName)
{
    folder_.write("from", "abc");
    folder_.makeFolder("sub");

    EXPECT_SUCCEEDS(move("from", "sub/to"));

    EXPECT_FALSE(folder_.exists("from"));
    EXPECT_EQ(folder_.read("sub/to"), "abc");
}

TEST_F(Moves, giveAFolderAnotherName)
{
    folder_.makeFolder("from");
    folder_.write("from/file", "abc");

    EXPECT_SUCCEEDS(move("from/", "to/"));

    EXPECT_EQ(folder_.read("to/file"), "abc");
}

TEST_F(Moves, replaceOnlyWhereTheyMay)
{
    folder_.write("from", "new");
    folder_.write("to", "old");

    EXPECT_FAILS(move("from", "to"), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(move("from", "to", MOVEFILE_COPY_ALLOWED), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(MoveFileA(path("from").c_str(), path("to").c_str()), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(folder_.read("to"), "old");

    EXPECT_SUCCEEDS(move("from", "to", MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(folder_.read("to"), "new");
    EXPECT_FALSE(folder_.exists("from"));
}

TEST_F(Moves, ontoItselfChangeNothing)
{
    folder_.write("file", "abc");
    folder_.makeFolder("sub");

    EXPECT_SUCCEEDS(move("file", "file"));
    EXPECT_SUCCEEDS(move("file", "file", MOVEFILE_REPLACE_EXISTING));
    EXPECT_SUCCEEDS(move("file", "sub/../file"));
    EXPECT_SUCCEEDS(move("sub", "sub", MOVEFILE_REPLACE_EXISTING));

    EXPECT_EQ(folder_.read("file"), "abc");
    EXPECT_TRUE(folder_.exists("sub"));
}

TEST_F(Moves, putAFolderInThePlaceOfAFile)
{
    folder_.makeFolder("from");
    folder_.write("from/file", "abc");
    folder_.write("to", "old");

    EXPECT_FAILS(move("from", "to"), ERROR_ALREADY_EXISTS);
    EXPECT_SUCCEEDS(move("from", "to", MOVEFILE_REPLACE_EXISTING));

    EXPECT_EQ(folder_.read("to/file"), "abc");
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(Moves, takeAFolderWithASeparatorBehindItsName)
{
    folder_.makeFolder("from");
    folder_.write("from/file", "abc");

    EXPECT_SUCCEEDS(move("from/", "to"));

    EXPECT_EQ(folder_.read("to/file"), "abc");
    EXPECT_EQ(entryCount(), 1u);
}

TEST_F(Moves, reachTheDiskWhereThatIsAskedFor)
{
    folder_.write("from", "abc");

    EXPECT_SUCCEEDS(move("from", "to", MOVEFILE_WRITE_THROUGH));

    EXPECT_EQ(folder_.read("to"), "abc");
}

TEST_F(Moves, thatFailSayWhyAndLoseNothing)
{
    folder_.write("from", "abc");
    folder_.write("file", "old");
    folder_.makeFolder("sub");
    folder_.makeFolder("other");
    folder_.write("sub/inner", "inner");

    EXPECT_FAILS(move("missing", "to"), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(move("none/missing", "to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(move("from", "none/to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(move("from", "file/to"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(move("from", "none/to", MOVEFILE_REPLACE_EXISTING), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(move("from/", "to"), ERROR_INVALID_NAME);
    EXPECT_FAILS(move("from", "to/"), ERROR_DIRECTORY);
    EXPECT_FAILS(move("from", "sub"), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(move("from", "sub", MOVEFILE_REPLACE_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(move("sub", "other"), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(move("sub", "other", MOVEFILE_REPLACE_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(move("sub", "sub/deeper"), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(MoveFileA("", path("to").c_str()), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(MoveFileA(path("from").c_str(), ""), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(MoveFileA(nullptr, path("to").c_str()), ERROR_PATH_NOT_FOUND);

    EXPECT_EQ(entryCount(), 4u);
    EXPECT_EQ(folder_.read("from"), "abc");
    EXPECT_EQ(folder_.read("file"), "old");
    EXPECT_EQ(folder_.read("sub/inner"), "inner");
}

TEST_F(Moves, goToAnotherFileSystemOnlyWhereCopiesAreAllowed)
{
    OtherFileSystem const other(folder_);
    if (!other)
        GTEST_SKIP() << "this machine has one file system only; the internal tests play the other";
    folder_.write("from", "abc");
    std::string const from = path("from");
    std::string const to = other.path("to");

    EXPECT_FAILS(MoveFileExA(from.c_str(), to.c_str(), 0), ERROR_NOT_SAME_DEVICE);
    EXPECT_TRUE(MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED));
    EXPECT_FALSE(folder_.exists("from"));
    EXPECT_EQ(other.read("to"), "abc");

    folder_.write("from", "new");
    EXPECT_FAILS(MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(folder_.read("from"), "new");
    EXPECT_TRUE(MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED | MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(other.read("to"), "new");

    folder_.makeFolder("sub");
    std::string const sub = path("sub");
    EXPECT_FAILS(MoveFileExA(sub.c_str(), other.path("sub").c_str(), 0), ERROR_NOT_SAME_DEVICE);
    EXPECT_FAILS(MoveFileExA(sub.c_str(), other.path("sub").c_str(), MOVEFILE_COPY_ALLOWED),
                 ERROR_ACCESS_DENIED);
    EXPECT_TRUE(folder_.exists("sub"));
}
