// What holds for a wait on any object.
#include "platform/os/os.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/expectFails.h"

#include <chrono>
#include <thread>

namespace {

using zk::test::OwnedHandle;
using Clock = std::chrono::steady_clock;

DWORD WINAPI returnsAtOnce(LPVOID)
{
    return 7;
}

// One object of each kind; `signalled` or not.
OwnedHandle object(int kind, bool signalled)
{
    switch (kind) {
    case 0: return OwnedHandle(CreateEventA(nullptr, TRUE, signalled, nullptr));
    case 1: return OwnedHandle(CreateEventA(nullptr, FALSE, signalled, nullptr));
    case 2: return OwnedHandle(CreateSemaphoreA(nullptr, signalled, 1, nullptr));
    case 3: return OwnedHandle(CreateMutexA(nullptr, FALSE, nullptr));  // free, whatever is asked
    default:
        return OwnedHandle(
            CreateThread(nullptr, 0, returnsAtOnce, nullptr, signalled ? 0 : CREATE_SUSPENDED, nullptr));
    }
}

constexpr int kinds[] = {0, 1, 2, 4};  // those that can be made unsignalled

TEST(Wait, forASignalledObjectSucceedsAtOnce)
{
    for (int const kind : {0, 1, 2, 3, 4})
        EXPECT_EQ(WaitForSingleObject(object(kind, true), INFINITE), WAIT_OBJECT_0) << kind;
}

TEST(Wait, withoutTimeOnlyLooks)
{
    for (int const kind : kinds) {
        OwnedHandle const waitedFor = object(kind, false);

        EXPECT_EQ(WaitForSingleObject(waitedFor, 0), WAIT_TIMEOUT) << kind;

        ResumeThread(waitedFor);
    }
}

TEST(Wait, lastsAsLongAsItsLimit)
{
    for (int const kind : kinds) {
        OwnedHandle const waitedFor = object(kind, false);
        auto const start = Clock::now();

        EXPECT_EQ(WaitForSingleObject(waitedFor, 30), WAIT_TIMEOUT) << kind;

        EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(29)) << kind;
        ResumeThread(waitedFor);
    }
}

TEST(Wait, aTimeoutLeavesTheLastErrorAlone)
{
    OwnedHandle const event = object(0, false);
    SetLastError(zk::test::poisonedError);

    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(event, 1), WAIT_TIMEOUT);

    EXPECT_EQ(GetLastError(), zk::test::poisonedError);
}

TEST(Wait, aLimitOfMoreThanAMonthIsNotReachedToday)
{
    OwnedHandle const event = object(1, false);
    std::thread setter([&] { SetEvent(event); });

    EXPECT_EQ(WaitForSingleObject(event, 0xFFFFFFFE), WAIT_OBJECT_0);

    setter.join();
}

TEST(Wait, onAMutexHeldElsewhereEndsWithItsLimit)
{
    OwnedHandle const mutex(CreateMutexA(nullptr, TRUE, nullptr));
    DWORD result = 99;

    std::thread([&] { result = WaitForSingleObject(mutex, 10); }).join();

    EXPECT_EQ(result, WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(Wait, extendedWithoutAlertsIsAWait)
{
    OwnedHandle const event = object(1, true);

    EXPECT_EQ(WaitForSingleObjectEx(event, 0, FALSE), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObjectEx(event, 0, FALSE), WAIT_TIMEOUT);
    EXPECT_FAILS(WaitForSingleObjectEx(nullptr, 0, FALSE), ERROR_INVALID_HANDLE);
}

}  // namespace
