#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>

using namespace zk::os;
using namespace zk::test;

namespace {

class SystemCallTable : public testing::Test {
protected:
    TemporaryFolder folder_;
    int file_ = systemCalls().open(folder_.path("file").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);

    ~SystemCallTable() override { systemCalls().close(file_); }
};

}  // namespace

TEST_F(SystemCallTable, failsExactlyTheChosenCalls)
{
    FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 2, .times = 2});

    EXPECT_EQ(systemCalls().write(file_, "abc", 3), 3);
    errno = 0;
    EXPECT_EQ(systemCalls().write(file_, "def", 3), -1);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(systemCalls().write(file_, "def", 3), -1);
    EXPECT_EQ(systemCalls().write(file_, "ghi", 3), 3);

    EXPECT_EQ(full.calls(), 4);
    EXPECT_EQ(folder_.read("file"), "abcghi");
}

TEST_F(SystemCallTable, isRestoredAtTheEndOfTheScope)
{
    auto const before = systemCalls().write;
    {
        FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .times = always});
        ShortTransfers<&SystemCalls::write> const drops(1);

        EXPECT_NE(systemCalls().write, before);
    }

    EXPECT_EQ(systemCalls().write, before);
}

TEST_F(SystemCallTable, shortensTransfers)
{
    ShortTransfers<&SystemCalls::write> const drops(2);

    EXPECT_EQ(systemCalls().write(file_, "abc", 3), 2);
}

TEST_F(SystemCallTable, givesNullWhereTheFailingCallGivesAPointer)
{
    FaultInjector<&SystemCalls::getcwd> const broken({.error = ENOENT});
    char buffer[8];

    EXPECT_EQ(systemCalls().getcwd(buffer, sizeof buffer), nullptr);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(SystemCallTable, givesTheErrorNumberWhereTheFailingCallDoes)
{
    FaultInjector<&SystemCalls::clock_nanosleep> const interrupted({.error = EINTR});
    timespec const none = {};

    EXPECT_EQ(systemCalls().clock_nanosleep(CLOCK_MONOTONIC, 0, &none, nullptr), EINTR);
    EXPECT_EQ(systemCalls().clock_nanosleep(CLOCK_MONOTONIC, 0, &none, nullptr), 0);
}

TEST_F(SystemCallTable, letsATestActBeforeACall)
{
    BeforeCall<&SystemCalls::open> const race([this] { folder_.write("late", "x"); });

    int const file = systemCalls().open(folder_.path("late").c_str(), O_RDONLY | O_CLOEXEC, 0);

    EXPECT_NE(file, -1);
    systemCalls().close(file);
}

TEST_F(SystemCallTable, makesAnInterruptedCallAnew)
{
    FaultInjector<&SystemCalls::write> const signals({.error = EINTR, .times = 3});

    EXPECT_EQ(uninterrupted([&] { return systemCalls().write(file_, "abc", 3); }), 3);
    EXPECT_EQ(signals.calls(), 4);
}

TEST_F(SystemCallTable, doesNotRepeatACallThatFailsOtherwise)
{
    FaultInjector<&SystemCalls::write> const broken({.error = EIO});

    EXPECT_EQ(uninterrupted([&] { return systemCalls().write(file_, "abc", 3); }), -1);
    EXPECT_EQ(broken.calls(), 1);
}
