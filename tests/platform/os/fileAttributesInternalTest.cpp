#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
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

class AttributeFailures : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::string const path_ = folder_.path("file");

    AttributeFailures() { folder_.write("file", "abc"); }

    static mode_t modeOf(std::string const& path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }
};

class ReadOnlyAttribute : public AttributeFailures { };
class FileTimeBounds : public AttributeFailures { };

}  // namespace

TEST_F(AttributeFailures, areReported)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    {
        FaultInjector<&SystemCalls::statx> const broken({.error = EIO, .times = always});
        EXPECT_FAILS(GetFileAttributesA(path_.c_str()), ERROR_IO_DEVICE);
        EXPECT_FAILS(GetFileAttributesExA(path_.c_str(), GetFileExInfoStandard, &data), ERROR_IO_DEVICE);
        EXPECT_FAILS(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_READONLY), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::stat> const broken({.error = EACCES});
        EXPECT_FAILS(GetFileAttributesA(folder_.path("missing").c_str()), ERROR_PATH_NOT_FOUND);
        EXPECT_FAILS(GetFileAttributesA(folder_.path("missing").c_str()), ERROR_FILE_NOT_FOUND);
    }
    {
        FaultInjector<&SystemCalls::chmod> const broken({.error = EROFS});
        EXPECT_FAILS(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_READONLY), ERROR_WRITE_PROTECT);
    }
    ScopedHandle const file = openFile(path_, GENERIC_WRITE);
    FILETIME const time = {0, 0x01C00000};
    FILETIME found;
    {
        FaultInjector<&SystemCalls::futimens> const broken({.error = EPERM});
        FaultInjector<&SystemCalls::utimensat> const notNeeded({.error = EIO, .times = always});
        EXPECT_FAILS(SetFileTime(file.get(), nullptr, nullptr, &time), ERROR_ACCESS_DENIED);
        EXPECT_SUCCEEDS(SetFileTime(file.get(), nullptr, nullptr, &time));
        EXPECT_EQ(notNeeded.calls(), 0) << "a file that is open needs no name";
    }
    {
        ScopedHandle const attributes = openFile(path_, FILE_WRITE_ATTRIBUTES);
        FaultInjector<&SystemCalls::utimensat> const broken({.error = EROFS});
        EXPECT_FAILS(SetFileTime(attributes.get(), nullptr, nullptr, &time), ERROR_WRITE_PROTECT);
        EXPECT_SUCCEEDS(SetFileTime(attributes.get(), nullptr, nullptr, &time));
    }
    {
        FaultInjector<&SystemCalls::statx> const broken({.error = EIO});
        EXPECT_FAILS(GetFileTime(file.get(), nullptr, nullptr, &found), ERROR_IO_DEVICE);
    }
    ScopedHandle const reader = openFile(path_, GENERIC_READ);
    EXPECT_FAILS(SetFileTime(reader.get(), nullptr, nullptr, &time), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(SetFileTime(INVALID_HANDLE_VALUE, nullptr, nullptr, &time), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileAttributesExA(path_.c_str(), GetFileExInfoStandard, nullptr),
                 ERROR_INVALID_PARAMETER);
    HANDLE ends[2];
    ASSERT_TRUE(CreatePipe(&ends[0], &ends[1], nullptr, 0));
    EXPECT_FAILS(SetFileTime(ends[1], nullptr, nullptr, &time), ERROR_INVALID_FUNCTION);
    CloseHandle(ends[0]);
    CloseHandle(ends[1]);
}

TEST_F(AttributeFailures, areWhatUnknownAttributesGive)
{
    EXPECT_FAILS(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_HIDDEN), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY),
                 ERROR_INVALID_PARAMETER);

    EXPECT_EQ(GetFileAttributesA(path_.c_str()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(AttributeFailures, ofFilesOfOthersAreReported)
{
    chmod(folder_.path().c_str(), 0755);

    asOrdinaryUser([&] {
        if (access(path_.c_str(), W_OK) == 0)
            return;  // the tests don't run as the superuser, and the file is this user's
        EXPECT_FAILS(SetFileAttributesA(path_.c_str(), FILE_ATTRIBUTE_READONLY), ERROR_ACCESS_DENIED);
        ScopedHandle const file = openFile(path_, FILE_WRITE_ATTRIBUTES);
        FILETIME const time = {0, 0x01C00000};
        EXPECT_FAILS(SetFileTime(file.get(), nullptr, nullptr, &time), ERROR_ACCESS_DENIED);
    });
}

TEST_F(ReadOnlyAttribute, isTheMissingRightOfTheOwnerToWrite)
{
    struct Row {
        mode_t before;
        DWORD attributes;
        mode_t after;
    };
    Row const rows[] = {
        {0666, FILE_ATTRIBUTE_READONLY, 0444}, {0755, FILE_ATTRIBUTE_READONLY, 0555},
        {0444, FILE_ATTRIBUTE_NORMAL, 0644},   {0555, 0, 0755},
        {0664, FILE_ATTRIBUTE_NORMAL, 0664},   {0466, FILE_ATTRIBUTE_READONLY, 0444},
        {0600, FILE_ATTRIBUTE_ARCHIVE, 0600},  {04755, FILE_ATTRIBUTE_READONLY, 04555},
    };
    for (Row const& row : rows) {
        chmod(path_.c_str(), row.before);

        EXPECT_TRUE(SetFileAttributesA(path_.c_str(), row.attributes));

        EXPECT_EQ(modeOf(path_), row.after) << std::oct << row.before;
    }
    chmod(path_.c_str(), 0466);
    EXPECT_EQ(GetFileAttributesA(path_.c_str()), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(ReadOnlyAttribute, isSetOnAFolderToo)
{
    folder_.makeFolder("sub");
    std::string const sub = folder_.path("sub");

    EXPECT_TRUE(SetFileAttributesA(sub.c_str(), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetFileAttributesA(sub.c_str()), FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(SetFileAttributesA(sub.c_str(), FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(GetFileAttributesA(sub.c_str()), FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(ReadOnlyAttribute, isNeverSetThroughALink)
{
    std::string const link = folder_.path("link");
    fs::create_symlink("file", link);
    chmod(path_.c_str(), 0444);

    EXPECT_TRUE(SetFileAttributesA(link.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(modeOf(path_), 0444u);

    chmod(path_.c_str(), 0644);
    EXPECT_FAILS(SetFileAttributesA(link.c_str(), FILE_ATTRIBUTE_READONLY), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(modeOf(path_), 0644u);
}

TEST_F(ReadOnlyAttribute, thatALinkShowsIsSetAlready)
{
    std::string const link = folder_.path("link");
    fs::create_symlink("file", link);
    chmod(path_.c_str(), 0444);

    EXPECT_SUCCEEDS(SetFileAttributesA(link.c_str(), GetFileAttributesA(link.c_str())));

    EXPECT_EQ(modeOf(path_), 0444u);
}

TEST_F(ReadOnlyAttribute, ofALinksTargetDoesNotKeepTheLink)
{
    std::string const link = folder_.path("link");
    fs::create_symlink("file", link);
    chmod(path_.c_str(), 0444);

    EXPECT_TRUE(DeleteFileA(link.c_str()));

    EXPECT_TRUE(folder_.exists("file"));
    EXPECT_FALSE(folder_.exists("link"));
}

TEST_F(FileTimeBounds, areThoseOfFileTimes)
{
    // A file system without early or late times keeps its own limits; what is given stays within these.
    timespec const times[][2] = {{{-20'000'000'000, 0}, {-20'000'000'000, 0}},
                                 {{0, 0}, {-1, 999'999'999}},
                                 {{INT32_MAX, 0}, {20'000'000'000, 999'999'999}}};
    for (auto const& time : times) {
        if (utimensat(AT_FDCWD, path_.c_str(), time, 0) == -1)
            continue;
        struct stat status;
        stat(path_.c_str(), &status);
        WIN32_FILE_ATTRIBUTE_DATA data;

        ASSERT_TRUE(GetFileAttributesExA(path_.c_str(), GetFileExInfoStandard, &data));

        ULONGLONG const ticks =
            ULONGLONG(data.ftLastWriteTime.dwHighDateTime) << 32 | data.ftLastWriteTime.dwLowDateTime;
        LONGLONG const seconds = status.st_mtim.tv_sec + 11'644'473'600;
        EXPECT_EQ(ticks, seconds < 0 ? 0 : ULONGLONG(seconds * 10'000'000 + status.st_mtim.tv_nsec / 100));
    }
}
