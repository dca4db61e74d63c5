// Calls whose memory runs out: each allocation of a call is made to fail in turn.
#include "platform/classlib/CStdioFile.h"
#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/OutOfMemory.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using namespace zk::test;

namespace fs = std::filesystem;

namespace {

class WithoutMemory : public testing::Test {
protected:
    TemporaryFolder folder_;
    // Longer than a string holds without memory of its own.
    std::string const from_ = folder_.path("a-name-of-some-length-from");
    std::string const to_ = folder_.path("a-name-of-some-length-to");

    WithoutMemory()
    {
        folder_.write("a-name-of-some-length-from", "content");
        EXPECT_TRUE(openFile(from_, GENERIC_READ)) << "and this thread has its record now";
    }

    static std::size_t entriesIn(std::string const& folder)
    {
        return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    // Makes a call with its first allocation failing, then with its second one
    // and so on, until it needs no more. It must fail each time, and change nothing.
    void expectRefused(std::function<bool()> const& call, std::function<void()> const& expectUnchanged)
    {
        std::size_t const entries = entriesIn(folder_.path());
        std::ptrdiff_t const descriptors = openDescriptors();
        int refused = 0;
        for (;; ++refused) {
            bool done = false;
            bool hasFailed = false;
            DWORD error = 0;
            {
                FailingAllocation const fault(refused + 1);
                SetLastError(poisonedError);
                done = call();
                error = GetLastError();
                hasFailed = fault.hasFailed();
            }
            if (!hasFailed) {
                EXPECT_TRUE(done) << "failed with " << error << " although it had all its memory";
                break;
            }
            ASSERT_FALSE(done) << "without allocation " << refused + 1;
            EXPECT_EQ(error, DWORD(ERROR_NOT_ENOUGH_MEMORY));
            EXPECT_EQ(entriesIn(folder_.path()), entries);
            EXPECT_EQ(openDescriptors(), descriptors);
            expectUnchanged();
        }
        EXPECT_GT(refused, 0) << "the call allocates nothing: this test says nothing";
    }

    static bool opens(std::string const& path, DWORD access, DWORD disposition, DWORD flags = 0)
    {
        HANDLE const file = CreateFileA(path.c_str(), access, 0, nullptr, disposition, flags, nullptr);
        return file != INVALID_HANDLE_VALUE && CloseHandle(file);
    }
};

}  // namespace

TEST_F(WithoutMemory, noFileIsCreatedAndNoneIsEmptied)
{
    expectRefused([this] { return opens(to_, GENERIC_WRITE, CREATE_NEW); }, [] {});
    expectRefused([this] { return opens(from_, GENERIC_WRITE, CREATE_ALWAYS); },
                  [this] { EXPECT_EQ(folder_.read("a-name-of-some-length-from"), "content"); });
}

TEST_F(WithoutMemory, noFileIsCreatedBehindALink)
{
    fs::create_symlink("a-name-of-some-length-late", to_);

    expectRefused([this] { return opens(to_, GENERIC_WRITE, OPEN_ALWAYS); }, [] {});

    EXPECT_TRUE(folder_.exists("a-name-of-some-length-late"));
}

TEST_F(WithoutMemory, noFileGoesWithAHandleThatWasNotGiven)
{
    expectRefused([this] { return opens(from_, GENERIC_WRITE, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE); },
                  [this] { EXPECT_EQ(folder_.read("a-name-of-some-length-from"), "content"); });
}

TEST_F(WithoutMemory, copiesLeaveNothing)
{
    FaultInjector<&SystemCalls::copy_file_range> const unable({.error = EXDEV, .times = always});
    folder_.write("a-name-of-some-length-to", "old");

    expectRefused([this] { return CopyFileA(from_.c_str(), to_.c_str(), FALSE) != FALSE; },
                  [this] { EXPECT_EQ(folder_.read("a-name-of-some-length-to"), "old"); });

    EXPECT_EQ(folder_.read("a-name-of-some-length-to"), "content");
}

TEST_F(WithoutMemory, movesToAnotherFileSystemLoseNothing)
{
    FaultInjector<&SystemCalls::copy_file_range> const unable({.error = EXDEV, .times = always});
    std::string const link = folder_.path("a-name-of-some-length-link");
    fs::create_symlink("nowhere", link);
    for (std::string const& source : {from_, link}) {
        expectRefused(
            [&] {
                FaultInjector<&SystemCalls::renameat2> const elsewhere({.error = EXDEV});
                return MoveFileExA(source.c_str(), to_.c_str(), MOVEFILE_COPY_ALLOWED) != FALSE;
            },
            [&] { EXPECT_TRUE(fs::exists(fs::symlink_status(source))); });
        fs::remove(to_);
    }
}

TEST_F(WithoutMemory, aFolderWithASeparatorBehindItsNameStays)
{
    folder_.makeFolder("a-name-of-some-length-sub");
    std::string const sub = folder_.path("a-name-of-some-length-sub") + "/";

    expectRefused([&] { return MoveFileA(sub.c_str(), to_.c_str()) != FALSE; },
                  [&] { EXPECT_TRUE(fs::is_directory(sub)); });
}

TEST_F(WithoutMemory, aLinkToAFolderStays)
{
    fs::create_directory_symlink(".", to_);

    expectRefused([this] { return RemoveDirectoryA(to_.c_str()) != FALSE; },
                  [this] { EXPECT_TRUE(fs::is_symlink(to_)); });
}

TEST_F(WithoutMemory, searchesAreRefused)
{
    for (int number = 0; number < 20; ++number)
        folder_.write("entry-of-many-" + std::to_string(number), "");
    std::string const patterns[] = {folder_.path("*"), from_, folder_.path(".")};
    for (std::string const& pattern : patterns)
        expectRefused(
            [&] {
                WIN32_FIND_DATAA entry;
                HANDLE const search = FindFirstFileA(pattern.c_str(), &entry);
                return search != INVALID_HANDLE_VALUE && FindClose(search);
            },
            [] {});
}

TEST_F(WithoutMemory, pathsAreRefused)
{
    char buffer[MAX_PATH];
    char const* const name = "a/name/longer/than/a/short/string";
    std::string const folder = folder_.path();

    expectRefused([&] { return GetFullPathNameA(name, MAX_PATH, buffer, nullptr) != 0; }, [] {});
    expectRefused([&] { return GetTempFileNameA(folder.c_str(), "abc", 0, buffer) != 0; }, [] {});
}

TEST_F(WithoutMemory, thePathForTemporaryFilesIsRefused)
{
    inChildProcess([this] {
        setenv("TMPDIR", folder_.path().c_str(), 1);
        char buffer[MAX_PATH];

        expectRefused([&] { return GetTempPathA(MAX_PATH, buffer) != 0; }, [] {});
    });
}

TEST_F(WithoutMemory, pipesAreRefused)
{
    expectRefused(
        [] {
            HANDLE reader = nullptr;
            HANDLE writer = nullptr;
            return CreatePipe(&reader, &writer, nullptr, 0) && CloseHandle(reader) && CloseHandle(writer);
        },
        [] {});
}

TEST_F(WithoutMemory, aStandardHandleIsRefusedAndAskedForAgain)
{
    inChildProcess([this] {
        expectRefused([] { return GetStdHandle(STD_ERROR_HANDLE) != INVALID_HANDLE_VALUE; }, [] {});

        EXPECT_NE(GetFileType(GetStdHandle(STD_ERROR_HANDLE)), FILE_TYPE_UNKNOWN);
    });
}

TEST_F(WithoutMemory, rangesAreNotLocked)
{
    ScopedHandle const file = openFile(from_, GENERIC_READ | GENERIC_WRITE);
    ScopedHandle const other = openFile(from_, GENERIC_READ | GENERIC_WRITE);

    expectRefused([&] { return LockFile(file.get(), 0, 0, 1, 0) != FALSE; },
                  [&] {
                      EXPECT_TRUE(LockFile(other.get(), 0, 0, 1, 0));
                      EXPECT_TRUE(UnlockFile(other.get(), 0, 0, 1, 0));
                  });
}

TEST_F(WithoutMemory, filesOfTheClassLibraryAreRefusedAndNothingIsThrown)
{
    CStdioFile file;
    CFileException failure;

    expectRefused(
        [&] { return file.Open(to_.c_str(), CFile::modeCreate | CFile::modeWrite, &failure) != FALSE; },
        [&] {
            EXPECT_EQ(failure.m_lOsError, LONG(ERROR_NOT_ENOUGH_MEMORY));
            EXPECT_EQ(file.m_hFile, CFile::hFileNull);
        });
}

TEST_F(WithoutMemory, theNameOfAFileThatIsMissingIsLeftOut)
{
    CFile file;
    std::string const missing = folder_.path("a-name-of-some-length-missing");
    int nameless = 0;
    for (int number = 1; number < 20; ++number) {
        CFileException failure;
        BOOL done = TRUE;
        {
            FailingAllocation const fault(number);
            done = file.Open(missing.c_str(), CFile::modeRead, &failure);
        }
        EXPECT_FALSE(done);
        nameless += failure.m_lOsError == LONG(ERROR_FILE_NOT_FOUND) && failure.m_strFileName.IsEmpty();
    }
    EXPECT_EQ(nameless, 1);
}
