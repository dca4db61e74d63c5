#include "platform/os/fileDescriptors.h"

#include "platform/os/os.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

using namespace zk::os;
using namespace zk::test;

namespace {

class DescriptorFailures : public testing::Test {
protected:
    DescriptorFailures()
    {
        file_ = openDescriptor(folder_.path("a.log").c_str(), openRead | openWrite | openCreate, 0640);
    }
    ~DescriptorFailures() override { closeDescriptor(file_); }

    TemporaryFolder folder_;
    int file_;
};

}  // namespace

TEST_F(DescriptorFailures, shortAndInterruptedWritesAreGoneOnWith)
{
    ShortTransfers<&SystemCalls::write> const drops(2);
    FaultInjector<&SystemCalls::write> const interrupted({.error = EINTR, .onCall = 2});

    EXPECT_TRUE(writeDescriptor(file_, "12345", 5));

    EXPECT_EQ(folder_.read("a.log"), "12345");
}

TEST_F(DescriptorFailures, fullDiskEndsAWrite)
{
    FaultInjector<&SystemCalls::write> const full({.error = ENOSPC});

    EXPECT_FALSE(writeDescriptor(file_, "12345", 5));
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(DescriptorFailures, deviceThatTakesNothingEndsAWrite)
{
    ShortTransfers<&SystemCalls::write> const nothing(0);

    EXPECT_FALSE(writeDescriptor(file_, "12345", 5));
    EXPECT_EQ(errno, EIO);
}

TEST_F(DescriptorFailures, interruptedCallsAreMadeAnew)
{
    FaultInjector<&SystemCalls::open> const opening({.error = EINTR});
    FaultInjector<&SystemCalls::ftruncate> const resizing({.error = EINTR});
    FaultInjector<&SystemCalls::fsync> const flushing({.error = EINTR});
    FaultInjector<&SystemCalls::read> const reading({.error = EINTR});
    char byte;

    int const second = openDescriptor(folder_.path("a.log").c_str(), openRead, 0);
    EXPECT_NE(second, -1);
    EXPECT_TRUE(resizeDescriptor(file_, 1));
    EXPECT_TRUE(flushDescriptor(file_));
    EXPECT_EQ(readDescriptor(second, &byte, 1), 1);
    closeDescriptor(second);
}

TEST_F(DescriptorFailures, interruptedClosingIsNoneTheLess)
{
    int const second = openDescriptor(folder_.path("a.log").c_str(), openRead, 0);
    {
        FaultInjector<&SystemCalls::close> const interrupted({.error = EINTR});
        EXPECT_EQ(closeDescriptor(second), 0);
    }
    {
        FaultInjector<&SystemCalls::close> const failing({.error = EIO});
        EXPECT_EQ(closeDescriptor(second), -1);
        EXPECT_EQ(errno, EIO);
    }
    closeDescriptor(second);
}

TEST_F(DescriptorFailures, failedFlushTellsTheSystemsError)
{
    FaultInjector<&SystemCalls::fsync> const full({.error = ENOSPC});

    EXPECT_FAILS(flushDescriptor(file_), ERROR_DISK_FULL);
}

TEST_F(DescriptorFailures, childrenInheritNoDescriptor)
{
    EXPECT_EQ(fcntl(file_, F_GETFD), FD_CLOEXEC);
}

TEST_F(DescriptorFailures, permissionsAreThoseAskedFor)
{
    struct stat status;
    ASSERT_EQ(stat(folder_.path("a.log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);

    ASSERT_EQ(makeFolder(folder_.path("sub").c_str(), 0750), 0);
    ASSERT_EQ(stat(folder_.path("sub").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0750u);
}

TEST_F(DescriptorFailures, identityIsAskedForWithoutTheCallForItToo)
{
    DescriptorStatus status;
    ASSERT_TRUE(statusOfDescriptor(file_, status));
    EXPECT_TRUE(descriptorIsOf(file_, status.device, status.number));
    FaultInjector<&SystemCalls::statx> const none({.error = ENOSYS, .times = always});

    EXPECT_TRUE(descriptorIsOf(file_, status.device, status.number));
    EXPECT_FALSE(descriptorIsOf(file_, status.device, status.number + 1));
    EXPECT_FALSE(descriptorIsOf(-1, status.device, status.number));
}

// A file in a folder for everybody, and a link to it, by their owners.
TEST_F(DescriptorFailures, linkOfAnotherUserIsNotFollowedInAFolderForEverybody)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make another user's link";
    constexpr uid_t nobody = 65534;
    std::string const link = folder_.path("link");
    ASSERT_EQ(symlink(folder_.path("a.log").c_str(), link.c_str()), 0);
    auto const opens = [&](unsigned flags) {
        int const opened = openDescriptor(link.c_str(), openRead | openWrite | openCreate | flags, 0640);
        bool const isOpen = opened != -1;
        closeDescriptor(opened);
        return isOpen;
    };
    chmod(folder_.path().c_str(), 01777);
    EXPECT_TRUE(opens(openWary)) << "one's own";

    ASSERT_EQ(lchown(link.c_str(), nobody, nobody), 0);
    errno = 0;
    EXPECT_EQ(openDescriptor(link.c_str(), openRead | openWary, 0), -1);
    EXPECT_EQ(errno, ELOOP);
    EXPECT_TRUE(opens(0) || errno == EACCES) << "the kernel may keep the rule too";

    ASSERT_EQ(chown(folder_.path().c_str(), nobody, nobody), 0);
    EXPECT_TRUE(opens(openWary)) << "the folder's owner's";
    ASSERT_EQ(chown(folder_.path().c_str(), 0, 0), 0);
    chmod(folder_.path().c_str(), 0755);
    EXPECT_TRUE(opens(openWary)) << "not for everybody";
}
