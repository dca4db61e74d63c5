// Sharing modes as other programs see them, and where the kernel's locks fail.
#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/sharing.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/stat.h>

#include <filesystem>
#include <utility>
#include <vector>

using namespace zk::os;
using namespace zk::test;

TEST(SharingWithOtherPrograms, isAskedForAnewAfterASignal)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    ScopedHandle reader;
    {
        FaultInjector<&SystemCalls::flock> const flocks({.error = EINTR});
        FaultInjector<&SystemCalls::lockRange> const marks({.error = EINTR});
        reader = openFile(path, GENERIC_READ, FILE_SHARE_READ);
    }
    EXPECT_FALSE(openFile(path, GENERIC_WRITE)) << "the marks are set";
    FaultInjector<&SystemCalls::open> const opens({.error = EINTR, .times = 3});

    EXPECT_FAILS(DeleteFileA(path.c_str()), ERROR_SHARING_VIOLATION);
}

TEST(SharingWithOtherPrograms, goesThroughFlock)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    Descriptor other(open(path.c_str(), O_RDWR | O_CLOEXEC));

    ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
    EXPECT_FALSE(openFile(path, GENERIC_READ));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);

    ASSERT_EQ(flock(other.get(), LOCK_SH), 0);
    EXPECT_TRUE(openFile(path, GENERIC_READ));
    EXPECT_FALSE(openFile(path, GENERIC_READ, 0));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);

    other.reset();
    ScopedHandle const alone = openFile(path, GENERIC_READ, 0);
    Descriptor const late(open(path.c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_EQ(flock(late.get(), LOCK_SH | LOCK_NB), -1);
}

TEST(SharingWithOtherPrograms, holdsAmongProcesses)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    ScopedHandle const reader = openFile(path, GENERIC_READ, FILE_SHARE_READ);

    inChildProcess([&] {
        // The child has the parent's open file as well; a new one is a stranger to it.
        EXPECT_FALSE(openFile(path, GENERIC_WRITE));
        EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
        EXPECT_TRUE(openFile(path, GENERIC_READ));
    });
}

TEST(SharingOfAFileThatMayOnlyBeWritten, isThatOfOthers)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    auto const openToWrite = [&] { return Descriptor(open(path.c_str(), O_WRONLY | O_CLOEXEC)); };
    Descriptor const writer = openToWrite();
    Descriptor const second = openToWrite();
    Descriptor third = openToWrite();
    Sharing const sharesWriting = {.access = Sharing::write, .denied = Sharing::read | Sharing::remove};

    EXPECT_EQ(claim(writer.get(), sharesWriting), ERROR_SUCCESS);
    EXPECT_EQ(claim(second.get(), sharesWriting), ERROR_SUCCESS);
    EXPECT_EQ(claim(third.get(), {.access = Sharing::write, .denied = Sharing::write}),
              ERROR_SHARING_VIOLATION);
    third.reset();

    EXPECT_FAILS(CreateFileA(path.c_str(), GENERIC_READ, sharesAll, nullptr, OPEN_EXISTING, 0, nullptr),
                 ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(openFile(path, GENERIC_WRITE));
    EXPECT_FALSE(openFile(path, GENERIC_WRITE, FILE_SHARE_READ)) << "there are other writers";
    EXPECT_FAILS(DeleteFileA(path.c_str()), ERROR_SHARING_VIOLATION);
}

TEST(SharingOfAFileThatMayOnlyBeWritten, hasRoomForManyWritersButNotForAll)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    std::vector<Descriptor> writers;
    DWORD error = ERROR_SUCCESS;
    while (error == ERROR_SUCCESS && writers.size() < 1000) {
        writers.emplace_back(open(path.c_str(), O_WRONLY | O_CLOEXEC));
        error = claim(writers.back().get(), {.access = Sharing::write});
    }

    EXPECT_EQ(error, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(writers.size(), 257u);
}

TEST(SharingOfAFileThatMayOnlyBeWritten, holdsForItsUser)
{
    TemporaryFolder const folder;
    folder.write("drop", "abc");
    std::string const path = folder.path("drop");
    chmod(folder.path().c_str(), 0777);
    chmod(path.c_str(), 0222);

    asOrdinaryUser([&] {
        ScopedHandle const writer = openFile(path, GENERIC_WRITE, FILE_SHARE_READ);
        EXPECT_TRUE(writer);
        EXPECT_FAILS(CreateFileA(path.c_str(), GENERIC_WRITE, sharesAll, nullptr, OPEN_EXISTING, 0, nullptr),
                     ERROR_SHARING_VIOLATION);
        EXPECT_FAILS(DeleteFileA(path.c_str()), ERROR_SHARING_VIOLATION);
    });

    EXPECT_TRUE(folder.exists("drop"));
}

TEST(SharingWithOtherPrograms, isLeftOutWhereTheFileSystemHasNoLocks)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    int const errors[] = {ENOLCK, EOPNOTSUPP, EINVAL, EBADF};
    for (int const error : errors) {
        FaultInjector<&SystemCalls::flock> const locks({.error = error, .times = always});
        FaultInjector<&SystemCalls::lockRange> const marks({.error = error, .times = always});

        EXPECT_TRUE(openFile(folder.path("file"), GENERIC_READ | GENERIC_WRITE, 0)) << error;
        EXPECT_TRUE(DeleteFileA(folder.path("file").c_str()));
        folder.write("file", "abc");
    }
}

TEST(SharingWithOtherPrograms, seesALockOfAWholeFile)
{
    TemporaryFolder const folder;
    folder.write("file", "abc");
    std::string const path = folder.path("file");
    Descriptor const other(open(path.c_str(), O_RDWR | O_CLOEXEC));
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    ASSERT_EQ(fcntl(other.get(), F_OFD_SETLK, &whole), 0);

    EXPECT_FALSE(openFile(path, GENERIC_READ));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
}
