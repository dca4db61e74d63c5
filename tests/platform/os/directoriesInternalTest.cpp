#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

using namespace zk::os;
using namespace zk::test;

namespace fs = std::filesystem;

namespace {

class DirectoryFailures : public testing::Test {
protected:
    TemporaryFolder folder_;
    fs::path const before_ = fs::current_path();

    ~DirectoryFailures() override { fs::current_path(before_); }

    std::string path(std::string_view name) const { return folder_.path(name); }
};

class DirectoryLinks : public DirectoryFailures { };

}  // namespace

TEST_F(DirectoryFailures, areReported)
{
    folder_.makeFolder("sub");
    folder_.write("file", "abc");
    std::string const file = path("file");
    std::string const sub = path("sub");
    char buffer[4000];
    struct Row {
        int error;
        DWORD expected;
    };
    Row const rows[] = {{EACCES, ERROR_ACCESS_DENIED}, {ENOSPC, ERROR_DISK_FULL},
                        {EROFS, ERROR_WRITE_PROTECT},  {EBUSY, ERROR_BUSY},
                        {EIO, ERROR_IO_DEVICE},        {EPERM, ERROR_ACCESS_DENIED}};
    for (Row const& row : rows) {
        FaultInjector<&SystemCalls::mkdir> const makes({.error = row.error});
        FaultInjector<&SystemCalls::rmdir> const removes({.error = row.error});
        FaultInjector<&SystemCalls::unlink> const deletes({.error = row.error});
        FaultInjector<&SystemCalls::chdir> const enters({.error = row.error});
        FaultInjector<&SystemCalls::getcwd> const asks({.error = row.error});
        EXPECT_FAILS(CreateDirectoryA(path("new").c_str(), nullptr), row.expected);
        EXPECT_FAILS(RemoveDirectoryA(sub.c_str()), row.expected);
        EXPECT_FAILS(DeleteFileA(file.c_str()), row.expected);
        EXPECT_FAILS(SetCurrentDirectoryA(sub.c_str()), row.expected);
        EXPECT_FAILS(GetCurrentDirectoryA(sizeof buffer, buffer), row.expected);
    }
    FaultInjector<&SystemCalls::rmdir> const full(
        {.error = EEXIST});  // what some systems say for "not empty"
    EXPECT_FAILS(RemoveDirectoryA(sub.c_str()), ERROR_DIR_NOT_EMPTY);
    EXPECT_TRUE(folder_.exists("file"));
}

TEST_F(DirectoryFailures, areWhatASecurityDescriptorGives)
{
    char descriptor[64] = {};
    SECURITY_ATTRIBUTES security = {sizeof security, descriptor, FALSE};

    EXPECT_FAILS(CreateDirectoryA(path("new").c_str(), &security), ERROR_INVALID_PARAMETER);

    EXPECT_FALSE(folder_.exists("new"));
}

TEST_F(DirectoryFailures, ofACurrentDirectoryThatIsGoneAreReported)
{
    folder_.makeFolder("sub");
    fs::current_path(path("sub"));
    fs::remove(path("sub"));
    char buffer[100] = "unchanged";

    EXPECT_FAILS(GetCurrentDirectoryA(sizeof buffer, buffer), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(GetFullPathNameA("x", sizeof buffer, buffer, nullptr), ERROR_FILE_NOT_FOUND);

    EXPECT_STREQ(buffer, "unchanged");
    EXPECT_NE(GetFullPathNameA("/x", sizeof buffer, buffer, nullptr), 0u);
}

TEST_F(DirectoryFailures, withoutRightsAreReported)
{
    chmod(folder_.path().c_str(), 0755);
    folder_.makeFolder("closed");
    folder_.makeFolder("closed/sub");
    folder_.write("closed/file", "abc");
    chmod(path("closed").c_str(), 0000);

    asOrdinaryUser([&] {
        EXPECT_FAILS(SetCurrentDirectoryA(path("closed").c_str()), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(CreateDirectoryA(path("closed/new").c_str(), nullptr), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(RemoveDirectoryA(path("closed/sub").c_str()), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(DeleteFileA(path("closed/file").c_str()), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(GetFileAttributesA(path("closed/file").c_str()), ERROR_ACCESS_DENIED);
    });

    chmod(path("closed").c_str(), 0700);
    EXPECT_TRUE(folder_.exists("closed/file"));
    EXPECT_TRUE(folder_.exists("closed/sub"));
}

TEST_F(DirectoryLinks, areRemovedAndNotWhatTheyLeadTo)
{
    folder_.makeFolder("sub");
    folder_.write("sub/file", "abc");
    fs::create_symlink("sub", path("link"));

    EXPECT_FAILS(DeleteFileA(path("link").c_str()), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(RemoveDirectoryA(path("link").c_str()));

    EXPECT_FALSE(folder_.exists("link"));
    EXPECT_EQ(folder_.read("sub/file"), "abc");
}

TEST_F(DirectoryLinks, areRemovedWithASeparatorBehindTheirNameToo)
{
    folder_.makeFolder("sub");
    folder_.write("sub/file", "abc");
    for (char const* const name : {"link/", "link//"}) {
        fs::create_directory_symlink("sub", path("link"));

        EXPECT_SUCCEEDS(RemoveDirectoryA(path(name).c_str()));

        EXPECT_FALSE(fs::is_symlink(path("link"))) << name;
    }
    EXPECT_EQ(folder_.read("sub/file"), "abc");
}

TEST_F(DirectoryLinks, thatCannotGoSayWhy)
{
    folder_.makeFolder("sub");
    fs::create_directory_symlink("sub", path("link"));
    FaultInjector<&SystemCalls::unlink> const stuck({.error = EACCES});

    EXPECT_FAILS(RemoveDirectoryA(path("link").c_str()), ERROR_ACCESS_DENIED);

    EXPECT_TRUE(fs::is_symlink(path("link")));
}

TEST_F(DirectoryLinks, toFilesAreNoDirectories)
{
    folder_.write("file", "abc");
    fs::create_symlink("file", path("link"));
    fs::create_symlink("nowhere", path("broken"));

    EXPECT_FAILS(RemoveDirectoryA(path("link").c_str()), ERROR_DIRECTORY);
    EXPECT_FAILS(RemoveDirectoryA(path("broken").c_str()), ERROR_DIRECTORY);
    EXPECT_FAILS(CreateDirectoryA(path("broken").c_str(), nullptr), ERROR_ALREADY_EXISTS);
    EXPECT_FAILS(SetCurrentDirectoryA(path("link").c_str()), ERROR_DIRECTORY);
    EXPECT_TRUE(DeleteFileA(path("link").c_str()));
    EXPECT_TRUE(DeleteFileA(path("broken").c_str()));

    EXPECT_EQ(folder_.read("file"), "abc");
}
