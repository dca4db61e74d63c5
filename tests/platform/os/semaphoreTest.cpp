#include "platform/os/os.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ObjectNames.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/expectFails.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

using zk::test::ChildProcess;
using zk::test::OwnedHandle;
using zk::test::uniqueName;

OwnedHandle newSemaphore(LONG initial, LONG maximum)
{
    return OwnedHandle(CreateSemaphoreA(nullptr, initial, maximum, nullptr));
}

TEST(Semaphore, countsItsWaitersDown)
{
    OwnedHandle const semaphore = newSemaphore(2, 5);

    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_TIMEOUT);
}

TEST(Semaphore, aReleaseAddsAndTellsTheCountBefore)
{
    OwnedHandle const semaphore = newSemaphore(1, 5);
    LONG previous = -1;

    EXPECT_SUCCEEDS(ReleaseSemaphore(semaphore, 3, &previous));
    EXPECT_EQ(previous, 1);
    EXPECT_SUCCEEDS(ReleaseSemaphore(semaphore, 1, nullptr));

    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_TIMEOUT);
}

TEST(Semaphore, aReleaseBeyondTheMaximumChangesNothing)
{
    OwnedHandle const semaphore = newSemaphore(1, 2);
    LONG previous = -77;

    EXPECT_FAILS(ReleaseSemaphore(semaphore, 2, &previous), ERROR_TOO_MANY_POSTS);
    EXPECT_FAILS(ReleaseSemaphore(semaphore, 0x7FFFFFFF, &previous), ERROR_TOO_MANY_POSTS);

    EXPECT_EQ(previous, -77);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_TIMEOUT);
}

TEST(Semaphore, holdsAsManyAsANumberCan)
{
    OwnedHandle const semaphore = newSemaphore(0x7FFFFFFE, 0x7FFFFFFF);
    LONG previous = 0;

    EXPECT_TRUE(ReleaseSemaphore(semaphore, 1, &previous));
    EXPECT_EQ(previous, 0x7FFFFFFE);
    EXPECT_FAILS(ReleaseSemaphore(semaphore, 1, &previous), ERROR_TOO_MANY_POSTS);
}

TEST(Semaphore, impossibleCountsAreRefused)
{
    struct {
        LONG initial, maximum;
    } const rows[] = {{-1, 5}, {0, 0}, {0, -1}, {6, 5}};
    for (auto const& row : rows)
        EXPECT_FAILS(CreateSemaphoreA(nullptr, row.initial, row.maximum, nullptr), ERROR_INVALID_PARAMETER);
}

TEST(Semaphore, aNegativeReleaseIsRefused)
{
    OwnedHandle const semaphore = newSemaphore(1, 2);
    LONG previous = -77;

    EXPECT_FAILS(ReleaseSemaphore(semaphore, -1, &previous), ERROR_TOO_MANY_POSTS);

    EXPECT_EQ(previous, -77);
}

TEST(Semaphore, aReleaseOfZeroTellsTheCount)
{
    OwnedHandle const semaphore = newSemaphore(1, 2);
    LONG previous = -77;

    BOOL const released = ReleaseSemaphore(semaphore, 0, &previous);

    EXPECT_TRUE(released);
    EXPECT_EQ(previous, 1);
}

TEST(Semaphore, aReleaseWakesAsManyAsItAdds)
{
    OwnedHandle const semaphore = newSemaphore(0, 10);
    std::atomic<int> through = 0;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 4; ++i)
        waiters.emplace_back([&] { through += WaitForSingleObject(semaphore, INFINITE) == WAIT_OBJECT_0; });

    ReleaseSemaphore(semaphore, 3, nullptr);
    ReleaseSemaphore(semaphore, 1, nullptr);
    for (std::thread& waiter : waiters)
        waiter.join();

    EXPECT_EQ(through, 4);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_TIMEOUT);
}

TEST(Semaphore, letsNoMoreInThanItCounts)
{
    OwnedHandle const semaphore = newSemaphore(2, 2);
    std::atomic<int> inside = 0, most = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                WaitForSingleObject(semaphore, INFINITE);
                int const now = ++inside;
                for (int seen = most; now > seen && !most.compare_exchange_weak(seen, now);) { }
                --inside;
                ReleaseSemaphore(semaphore, 1, nullptr);
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_LE(most, 2);
    LONG previous = 0;
    EXPECT_FAILS(ReleaseSemaphore(semaphore, 1, &previous), ERROR_TOO_MANY_POSTS);
}

TEST(Semaphore, aSecondOneOfANameIsTheFirst)
{
    std::string const name = uniqueName();
    OwnedHandle const first(CreateSemaphoreA(nullptr, 1, 5, name.c_str()));
    EXPECT_EQ(GetLastError(), 0u);

    OwnedHandle const second(CreateSemaphoreA(nullptr, 3, 3, name.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS));

    LONG previous = -1;
    EXPECT_TRUE(ReleaseSemaphore(second, 4, &previous));
    EXPECT_EQ(previous, 1);
    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_OBJECT_0);
}

TEST(Semaphore, isOpenedByName)
{
    std::string const name = uniqueName("Local\\");
    EXPECT_FAILS(OpenSemaphoreA(SEMAPHORE_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
    OwnedHandle const semaphore(CreateSemaphoreA(nullptr, 1, 1, name.c_str()));

    OwnedHandle const opened(OpenSemaphoreA(SEMAPHORE_ALL_ACCESS, FALSE, name.c_str()));

    EXPECT_EQ(WaitForSingleObject(opened, 0), WAIT_OBJECT_0);
}

ZK_CHILD(releasesASemaphore)
{
    OwnedHandle const semaphore(OpenSemaphoreA(SEMAPHORE_ALL_ACCESS, FALSE, parent.argument().c_str()));
    for (int i = 0; i < 100; ++i)
        if (!ReleaseSemaphore(semaphore, 1, nullptr))
            return 1;
    return 0;
}

TEST(Semaphore, isSharedBetweenProcesses)
{
    std::string const name = uniqueName();
    OwnedHandle const semaphore(CreateSemaphoreA(nullptr, 0, 1000, name.c_str()));
    ChildProcess child("releasesASemaphore", name);

    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(WaitForSingleObject(semaphore, INFINITE), WAIT_OBJECT_0);

    EXPECT_EQ(child.exitCode(), 0);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_TIMEOUT);
}

ZK_CHILD(waitsForASemaphore)
{
    OwnedHandle const semaphore(OpenSemaphoreA(SEMAPHORE_ALL_ACCESS, FALSE, parent.argument().c_str()));
    parent.say("waiting");
    return int(WaitForSingleObject(semaphore, INFINITE));
}

TEST(Semaphore, aKilledWaiterTakesNothingFromTheOthers)
{
    std::string const name = uniqueName();
    OwnedHandle const semaphore(CreateSemaphoreA(nullptr, 0, 10, name.c_str()));
    ChildProcess killed("waitsForASemaphore", name);
    ChildProcess patient("waitsForASemaphore", name);
    killed.awaits("waiting");
    patient.awaits("waiting");

    killed.kill();
    ReleaseSemaphore(semaphore, 1, nullptr);

    EXPECT_EQ(patient.exitCode(), 0);
}

}  // namespace
