#include "platform/os/os.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ObjectNames.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/expectFails.h"

#include <string>
#include <thread>
#include <vector>

namespace {

using zk::test::ChildProcess;
using zk::test::OwnedHandle;
using zk::test::uniqueName;

OwnedHandle newMutex(bool owned = false)
{
    return OwnedHandle(CreateMutexA(nullptr, owned, nullptr));
}

// What a wait without patience gives in another thread, which gives the mutex back if it got it.
DWORD seenByAnotherThread(HANDLE mutex)
{
    DWORD result = 99;
    std::thread([&] {
        result = WaitForSingleObject(mutex, 0);
        if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED)
            ReleaseMutex(mutex);
    }).join();
    return result;
}

TEST(Mutex, belongsToOneThread)
{
    OwnedHandle const mutex = newMutex();

    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_TIMEOUT);

    EXPECT_SUCCEEDS(ReleaseMutex(mutex));
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_OBJECT_0);
}

TEST(Mutex, isReleasedAsOftenAsTaken)
{
    OwnedHandle const mutex = newMutex();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);

    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_OBJECT_0);
}

TEST(Mutex, anInitialOwnerHoldsItOnce)
{
    OwnedHandle const mutex = newMutex(true);

    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER);
}

TEST(Mutex, isReleasedByItsOwnerAlone)
{
    OwnedHandle const mutex = newMutex(true);

    std::thread([&] { EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER); }).join();

    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(Mutex, aFreeOneIsNobodysToRelease)
{
    OwnedHandle const mutex = newMutex();

    EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER);
}

TEST(Mutex, aNewOneSetsTheLastErrorToZero)
{
    SetLastError(zk::test::poisonedError);

    OwnedHandle const mutex = newMutex();

    EXPECT_EQ(GetLastError(), 0u);
}

TEST(Mutex, successLeavesTheLastErrorAlone)
{
    OwnedHandle const mutex = newMutex();
    SetLastError(zk::test::poisonedError);

    WaitForSingleObject(mutex, 0);
    ReleaseMutex(mutex);
    WaitForSingleObject(mutex, 10);
    ReleaseMutex(mutex);
    WaitForSingleObject(mutex, INFINITE);
    ReleaseMutex(mutex);

    EXPECT_EQ(GetLastError(), zk::test::poisonedError);
}

TEST(Mutex, anOwnerThatReturnsAbandonsIt)
{
    OwnedHandle const mutex = newMutex();
    OwnedHandle const thread(CreateThread(
        nullptr, 0, [](LPVOID handle) -> DWORD { return WaitForSingleObject(handle, 0); }, HANDLE(mutex), 0,
        nullptr));
    ASSERT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);

    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0) << "abandonment is told once";
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(Mutex, anOwnerThatNobodyMadeByCreateThreadAbandonsAllItHolds)
{
    OwnedHandle const first = newMutex();
    OwnedHandle const second = newMutex();
    OwnedHandle const third = newMutex();
    std::thread([&] {
        for (HANDLE const mutex : {HANDLE(first), HANDLE(second), HANDLE(third), HANDLE(first)})
            WaitForSingleObject(mutex, 0);
        ReleaseMutex(second);
    }).join();

    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_ABANDONED);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(third, 0), WAIT_ABANDONED);
    for (HANDLE const mutex : {HANDLE(second), HANDLE(first), HANDLE(third)})
        EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FAILS(ReleaseMutex(first), ERROR_NOT_OWNER);
}

TEST(Mutex, anAbandonedOneIsTakenByAWaiter)
{
    OwnedHandle const mutex = newMutex();
    struct Shared {
        HANDLE mutex, taken, go;
    };
    OwnedHandle const taken(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    OwnedHandle const go(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    Shared shared = {mutex, taken, go};
    OwnedHandle const thread(CreateThread(
        nullptr, 0,
        [](LPVOID argument) -> DWORD {
            auto const& shared = *static_cast<Shared*>(argument);
            WaitForSingleObject(shared.mutex, INFINITE);
            WaitForSingleObject(shared.mutex, INFINITE);
            SetEvent(shared.taken);
            return WaitForSingleObject(shared.go, INFINITE);
        },
        &shared, 0, nullptr));
    WaitForSingleObject(taken, INFINITE);

    SetEvent(go);

    EXPECT_EQ(WaitForSingleObject(mutex, 60000), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER);
    WaitForSingleObject(thread, INFINITE);
}

TEST(Mutex, guardsWhatItIsForAgainstManyThreads)
{
    OwnedHandle const mutex = newMutex();
    int value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < 500; ++round) {
                WaitForSingleObject(mutex, i % 2 ? INFINITE : 600000);
                ++value;
                ReleaseMutex(mutex);
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(value, 2000);
}

TEST(Mutex, maybeClosedWhileAThreadHoldsIt)
{
    OwnedHandle mutex = newMutex();
    OwnedHandle const other = newMutex();
    OwnedHandle const taken(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    OwnedHandle const go(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    DWORD second = 99;
    std::thread holder([&] {
        WaitForSingleObject(mutex, INFINITE);
        SetEvent(taken);
        WaitForSingleObject(go, INFINITE);
        second = WaitForSingleObject(other, 0);  // the thread's list of held mutexes is whole
        ReleaseMutex(other);
    });
    WaitForSingleObject(taken, INFINITE);

    mutex.close();
    SetEvent(go);
    holder.join();

    EXPECT_EQ(second, WAIT_OBJECT_0);
    OwnedHandle later = newMutex(true);
    later.close();  // by its owner
    EXPECT_EQ(seenByAnotherThread(other), WAIT_OBJECT_0);
}

TEST(Mutex, aSecondOneOfANameIsTheFirst)
{
    std::string const name = uniqueName();
    OwnedHandle const first(CreateMutexA(nullptr, TRUE, name.c_str()));
    EXPECT_EQ(GetLastError(), 0u);

    OwnedHandle const second(CreateMutexA(nullptr, FALSE, name.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS));

    EXPECT_NE(HANDLE(first), HANDLE(second));
    EXPECT_EQ(seenByAnotherThread(second), WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(second));
    EXPECT_FAILS(ReleaseMutex(first), ERROR_NOT_OWNER);
}

TEST(Mutex, oneThatExistsGetsNoInitialOwner)
{
    std::string const name = uniqueName();
    OwnedHandle const first(CreateMutexA(nullptr, FALSE, name.c_str()));

    OwnedHandle const second(CreateMutexA(nullptr, TRUE, name.c_str()));

    EXPECT_FAILS(ReleaseMutex(second), ERROR_NOT_OWNER);
    EXPECT_EQ(seenByAnotherThread(first), WAIT_OBJECT_0);
}

TEST(Mutex, isOpenedByName)
{
    std::string const name = uniqueName("Global\\");
    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
    OwnedHandle const mutex(CreateMutexA(nullptr, TRUE, name.c_str()));

    SetLastError(zk::test::poisonedError);
    OwnedHandle const opened(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()));
    EXPECT_EQ(GetLastError(), zk::test::poisonedError);

    EXPECT_TRUE(ReleaseMutex(opened));
}

TEST(Mutex, aNullNameOpensNothing)
{
    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, nullptr), ERROR_INVALID_PARAMETER);
}

TEST(Mutex, theKindsOfObjectsShareTheirNames)
{
    std::string const name = uniqueName();
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, name.c_str()));

    EXPECT_FAILS(CreateMutexA(nullptr, FALSE, name.c_str()), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(CreateSemaphoreA(nullptr, 1, 1, name.c_str()), ERROR_INVALID_HANDLE);
}

TEST(Mutex, localIsWhereABareNameIs)
{
    std::string const name = uniqueName();
    OwnedHandle const bare(CreateMutexA(nullptr, FALSE, name.c_str()));

    OwnedHandle const local(CreateMutexA(nullptr, FALSE, ("Local\\" + name).c_str()));

    EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS));
}

TEST(Mutex, namesKeepTheirCase)
{
    std::string const name = uniqueName();
    OwnedHandle const lower(CreateMutexA(nullptr, FALSE, (name + "a").c_str()));

    OwnedHandle const upper(CreateMutexA(nullptr, FALSE, (name + "A").c_str()));

    EXPECT_EQ(GetLastError(), 0u);
}

TEST(Mutex, anyOtherBackslashInANameIsAPathThatDoesNotExist)
{
    EXPECT_FAILS(CreateMutexA(nullptr, FALSE, (uniqueName() + "\\x").c_str()), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(CreateMutexA(nullptr, FALSE, uniqueName("Global\\no\\").c_str()), ERROR_PATH_NOT_FOUND);
}

TEST(Mutex, namesMayHoldAnyOtherByteAndBeLong)
{
    for (std::string const& tail :
         {std::string("/../x"), std::string(" %:*?\"<>|"), std::string("."), std::string(200, 'n')}) {
        std::string const name = uniqueName("Global\\") + tail;
        OwnedHandle const first(CreateMutexA(nullptr, FALSE, name.c_str()));
        EXPECT_NE(HANDLE(first), nullptr) << name;

        OwnedHandle const second(CreateMutexA(nullptr, FALSE, name.c_str()));
        EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS)) << name;
        OwnedHandle const other(CreateMutexA(nullptr, FALSE, (name + 'x').c_str()));
        EXPECT_EQ(GetLastError(), 0u) << name;
    }
}

TEST(Mutex, aNameMayHave260BytesAndNoMore)
{
    std::string name = uniqueName();
    name.resize(260, 'x');
    OwnedHandle const longest(CreateMutexA(nullptr, FALSE, name.c_str()));
    EXPECT_NE(HANDLE(longest), nullptr);

    EXPECT_FAILS(CreateMutexA(nullptr, FALSE, (name + 'x').c_str()), ERROR_FILENAME_EXCED_RANGE);
}

TEST(Mutex, aDescriptorWithANullListOpensToEverybody)
{
    SECURITY_DESCRIPTOR descriptor;
    ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE));
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, &descriptor, FALSE};
    std::string const name = uniqueName("Global\\");

    OwnedHandle mutex(CreateMutexA(&attributes, TRUE, name.c_str()));
    ASSERT_NE(HANDLE(mutex), nullptr);
    EXPECT_EQ(GetLastError(), 0u);

    OwnedHandle opened(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()));
    EXPECT_TRUE(ReleaseMutex(opened));
    OwnedHandle again(CreateMutexA(nullptr, TRUE, name.c_str()));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ALREADY_EXISTS));
    for (OwnedHandle* const handle : {&mutex, &opened, &again})
        handle->close();
    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()), ERROR_FILE_NOT_FOUND);
}

TEST(Mutex, aDescriptorOfAnotherRevisionIsRefused)
{
    SECURITY_DESCRIPTOR descriptor;

    EXPECT_FAILS(InitializeSecurityDescriptor(&descriptor, 2), 1305);
}

ZK_CHILD(takesAMutexTwice)
{
    OwnedHandle const mutex(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, parent.argument().c_str()));
    WaitForSingleObject(mutex, INFINITE);
    WaitForSingleObject(mutex, INFINITE);
    parent.say("taken");
    parent.awaits("release");
    ReleaseMutex(mutex);
    ReleaseMutex(mutex);
    parent.say("released");
    parent.awaits("end");
    return 0;
}

TEST(Mutex, ordersTheThreadsOfTwoProcesses)
{
    std::string const name = uniqueName("Global\\");
    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, name.c_str()));
    ChildProcess child("takesAMutexTwice", name);
    child.awaits("taken");
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
    EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER);

    child.say("release");
    child.awaits("released");

    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    child.say("end");
    EXPECT_EQ(child.exitCode(), 0);
}

TEST(Mutex, aKilledProcessAbandonsIt)
{
    std::string const name = uniqueName("Global\\");
    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, name.c_str()));
    ChildProcess child("takesAMutexTwice", name);
    child.awaits("taken");

    child.kill();

    EXPECT_EQ(WaitForSingleObject(mutex, INFINITE), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FAILS(ReleaseMutex(mutex), ERROR_NOT_OWNER);
    EXPECT_EQ(seenByAnotherThread(mutex), WAIT_OBJECT_0);
}

TEST(Mutex, aKilledProcessLetsABlockedWaiterGoOn)
{
    std::string const name = uniqueName("Global\\");
    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, name.c_str()));
    ChildProcess child("takesAMutexTwice", name);
    child.awaits("taken");
    OwnedHandle const waiting(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    DWORD result = 99;
    std::thread waiter([&] {
        SetEvent(waiting);
        result = WaitForSingleObject(mutex, INFINITE);
        ReleaseMutex(mutex);
    });
    WaitForSingleObject(waiting, INFINITE);

    child.kill();
    waiter.join();

    EXPECT_EQ(result, WAIT_ABANDONED);
}

ZK_CHILD(createsAMutexOwned)
{
    OwnedHandle const mutex(CreateMutexA(nullptr, TRUE, parent.argument().c_str()));
    parent.say(GetLastError() == 0 ? "new" : "existed");
    parent.awaits("end");
    return 0;
}

TEST(Mutex, aNameIsFreeAgainWhenItsOnlyProcessIsKilled)
{
    std::string const name = uniqueName("Global\\");
    ChildProcess child("createsAMutexOwned", name);
    child.awaits("new");
    child.kill();

    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, name.c_str()));

    EXPECT_EQ(GetLastError(), 0u);
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0) << "a new one, abandoned by nobody";
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(Mutex, ofTwoCreatorsOneFindsTheOthers)
{
    std::string const name = uniqueName();
    ChildProcess first("createsAMutexOwned", name);
    first.awaits("new");
    ChildProcess second("createsAMutexOwned", name);
    second.awaits("existed");

    first.say("end");
    EXPECT_EQ(first.exitCode(), 0);

    OwnedHandle const mutex(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    EXPECT_TRUE(ReleaseMutex(mutex));
    second.say("end");
    EXPECT_EQ(second.exitCode(), 0);
}

}  // namespace
