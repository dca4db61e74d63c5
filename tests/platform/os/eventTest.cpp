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

enum Kind { automatic = FALSE, manual = TRUE };

OwnedHandle newEvent(Kind kind, bool initiallySet)
{
    return OwnedHandle(CreateEventA(nullptr, kind, initiallySet, nullptr));
}

TEST(Event, startsInTheStateAskedFor)
{
    for (Kind const kind : {automatic, manual}) {
        EXPECT_EQ(WaitForSingleObject(newEvent(kind, true), 0), WAIT_OBJECT_0);
        EXPECT_EQ(WaitForSingleObject(newEvent(kind, false), 0), WAIT_TIMEOUT);
    }
}

TEST(Event, aNewOneSetsTheLastErrorToZero)
{
    SetLastError(zk::test::poisonedError);

    OwnedHandle const event = newEvent(manual, false);

    EXPECT_EQ(GetLastError(), 0u);
}

TEST(Event, aManualOneStaysSetUntilItIsReset)
{
    OwnedHandle const event = newEvent(manual, false);

    EXPECT_SUCCEEDS(SetEvent(event));
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);

    EXPECT_SUCCEEDS(ResetEvent(event));
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
}

TEST(Event, anAutomaticOneLetsOneWaiterThrough)
{
    OwnedHandle const event = newEvent(automatic, false);

    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
}

TEST(Event, settingTwiceIsSettingOnce)
{
    OwnedHandle const event = newEvent(automatic, false);

    SetEvent(event);
    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
}

TEST(Event, aManualOneWakesAllItsWaiters)
{
    OwnedHandle const event = newEvent(manual, false);
    std::atomic<int> woken = 0;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 4; ++i)
        waiters.emplace_back([&] { woken += WaitForSingleObject(event, INFINITE) == WAIT_OBJECT_0; });

    SetEvent(event);
    for (std::thread& waiter : waiters)
        waiter.join();

    EXPECT_EQ(woken, 4);
}

TEST(Event, twoThreadsHandEachOtherTheTurn)
{
    OwnedHandle const ping = newEvent(automatic, false);
    OwnedHandle const pong = newEvent(automatic, false);
    int value = 0;  // guarded by the turn
    std::thread other([&] {
        for (int i = 0; i < 500; ++i) {
            WaitForSingleObject(ping, INFINITE);
            ++value;
            SetEvent(pong);
        }
    });

    for (int i = 0; i < 500; ++i) {
        ++value;
        SetEvent(ping);
        WaitForSingleObject(pong, 60000);
    }
    other.join();

    EXPECT_EQ(value, 1000);
}

TEST(Event, anAutomaticOneNeverLosesASetting)
{
    OwnedHandle const event = newEvent(automatic, false);
    OwnedHandle const taken = newEvent(automatic, false);
    std::atomic<bool> done = false;
    std::atomic<int> passed = 0;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 3; ++i)
        waiters.emplace_back([&] {
            while (WaitForSingleObject(event, INFINITE) == WAIT_OBJECT_0 && !done) {
                ++passed;
                SetEvent(taken);
            }
            SetEvent(event);  // the next one ends too
        });

    for (int i = 0; i < 300; ++i) {
        SetEvent(event);
        WaitForSingleObject(taken, INFINITE);
    }
    done = true;
    SetEvent(event);
    for (std::thread& waiter : waiters)
        waiter.join();

    EXPECT_EQ(passed, 300);
}

TEST(Event, aSecondOneOfANameIsTheFirst)
{
    std::string const name = uniqueName();
    OwnedHandle const first(CreateEventA(nullptr, manual, FALSE, name.c_str()));
    EXPECT_EQ(GetLastError(), 0u);

    OwnedHandle const second(CreateEventA(nullptr, automatic, TRUE, name.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS));

    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_TIMEOUT);
    SetEvent(first);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0) << "the first one's kind holds";
}

TEST(Event, isOpenedByName)
{
    std::string const name = uniqueName();
    EXPECT_FAILS(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
    OwnedHandle const event(CreateEventA(nullptr, manual, TRUE, name.c_str()));

    OwnedHandle const opened(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str()));

    ASSERT_NE(HANDLE(opened), nullptr);
    EXPECT_EQ(WaitForSingleObject(opened, 0), WAIT_OBJECT_0);
}

TEST(Event, aNameEndsWithItsLastHandle)
{
    std::string const name = uniqueName();
    OwnedHandle first(CreateEventA(nullptr, manual, TRUE, name.c_str()));
    OwnedHandle second(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str()));

    first.close();
    EXPECT_TRUE(CloseHandle(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str())));
    second.close();

    EXPECT_FAILS(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
}

TEST(Event, emptyNameIsNoName)
{
    OwnedHandle const first(CreateEventA(nullptr, manual, FALSE, ""));
    OwnedHandle const second(CreateEventA(nullptr, manual, TRUE, ""));

    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_TIMEOUT);
}

ZK_CHILD(answersThroughEvents)
{
    OwnedHandle const ping(OpenEventA(EVENT_ALL_ACCESS, FALSE, (parent.argument() + "-ping").c_str()));
    OwnedHandle const pong(OpenEventA(EVENT_ALL_ACCESS, FALSE, (parent.argument() + "-pong").c_str()));
    for (int i = 0; i < 50; ++i) {
        if (WaitForSingleObject(ping, INFINITE) != WAIT_OBJECT_0)
            return 1;
        SetEvent(pong);
    }
    return 0;
}

TEST(Event, isSharedBetweenProcesses)
{
    std::string const name = uniqueName();
    OwnedHandle const ping(CreateEventA(nullptr, automatic, FALSE, (name + "-ping").c_str()));
    OwnedHandle const pong(CreateEventA(nullptr, automatic, FALSE, (name + "-pong").c_str()));
    ChildProcess child("answersThroughEvents", name);

    for (int i = 0; i < 50; ++i) {
        SetEvent(ping);
        EXPECT_EQ(WaitForSingleObject(pong, INFINITE), WAIT_OBJECT_0);
    }

    EXPECT_EQ(child.exitCode(), 0);
}

ZK_CHILD(ownsAnEventAlone)
{
    OwnedHandle const event(CreateEventA(nullptr, manual, TRUE, parent.argument().c_str()));
    parent.say(GetLastError() == 0 ? "made" : "found");
    parent.awaits("end");
    return 0;
}

TEST(Event, aNameEndsWithTheLastProcessHoweverItEnds)
{
    std::string const name = uniqueName();
    ChildProcess child("ownsAnEventAlone", name);
    child.awaits("made");
    EXPECT_TRUE(CloseHandle(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str())));

    child.kill();

    EXPECT_FAILS(OpenEventA(EVENT_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
    OwnedHandle const fresh(CreateEventA(nullptr, manual, FALSE, name.c_str()));
    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_EQ(WaitForSingleObject(fresh, 0), WAIT_TIMEOUT);
}

}  // namespace
