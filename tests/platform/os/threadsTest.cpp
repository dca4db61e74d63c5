#include "platform/os/os.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/endsAThread.h"
#include "tests/support/expectFails.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

using zk::test::ChildProcess;
using zk::test::OwnedHandle;

DWORD WINAPI returnsItsArgument(LPVOID argument)
{
    return DWORD(reinterpret_cast<ULONG_PTR>(argument));
}

DWORD WINAPI waitsForItsArgument(LPVOID argument)
{
    return WaitForSingleObject(argument, INFINITE);
}

// What a thread is to wait for, and where it tells that it is about to.
struct Waiting {
    HANDLE reached;
    HANDLE awaited;
};

DWORD WINAPI tellsAndWaits(LPVOID argument)
{
    Waiting const waiting = *static_cast<Waiting*>(argument);
    SetEvent(waiting.reached);
    return WaitForSingleObject(waiting.awaited, INFINITE);
}

LPVOID number(DWORD value)
{
    return reinterpret_cast<LPVOID>(ULONG_PTR(value));
}

OwnedHandle start(LPTHREAD_START_ROUTINE entry, LPVOID argument, DWORD flags = 0)
{
    return OwnedHandle(CreateThread(nullptr, 0, entry, argument, flags, nullptr));
}

OwnedHandle newEvent()
{
    return OwnedHandle(CreateEventA(nullptr, TRUE, FALSE, nullptr));
}

// Starts a thread that waits for an object, and waits until it does.
OwnedHandle startWaiting(HANDLE object)
{
    OwnedHandle const reached = newEvent();
    Waiting waiting = {reached, object};
    OwnedHandle thread = start(tellsAndWaits, &waiting);
    WaitForSingleObject(reached, INFINITE);
    Sleep(1);  // most likely it does by now; no test depends on that
    return thread;
}

DWORD exitCodeOf(HANDLE thread)
{
    DWORD code = 0xBAD;
    EXPECT_TRUE(GetExitCodeThread(thread, &code));
    return code;
}

TEST(Thread, givesBackWhatItsEntryReturns)
{
    for (DWORD const code : {0u, 7u, 0x80000001u, 0xFFFFFFFFu}) {
        OwnedHandle const thread = start(returnsItsArgument, number(code));

        EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);

        EXPECT_EQ(exitCodeOf(thread), code);
    }
}

TEST(Thread, isActiveWhileItRuns)
{
    OwnedHandle const event = newEvent();
    OwnedHandle const thread = start(waitsForItsArgument, HANDLE(event));

    EXPECT_EQ(exitCodeOf(thread), DWORD(STILL_ACTIVE));
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);
    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(exitCodeOf(thread), 0u);
}

TEST(Thread, staysSignalled)
{
    OwnedHandle const thread = start(returnsItsArgument, number(3));

    for (DWORD const limit : {INFINITE, 0u, 100u})
        EXPECT_EQ(WaitForSingleObject(thread, limit), WAIT_OBJECT_0);
}

TEST(Thread, isWaitedForByManyAtOnce)
{
    OwnedHandle const event = newEvent();
    OwnedHandle const thread = start(waitsForItsArgument, HANDLE(event));
    std::atomic<int> woken = 0;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 3; ++i)
        waiters.emplace_back(
            [&, i] { woken += WaitForSingleObject(thread, i ? INFINITE : 600000) == WAIT_OBJECT_0; });

    SetEvent(event);
    for (std::thread& waiter : waiters)
        waiter.join();

    EXPECT_EQ(woken, 3);
}

TEST(Thread, startsSuspendedAndRunsOnTheFirstResume)
{
    OwnedHandle const thread = start(returnsItsArgument, number(5), CREATE_SUSPENDED);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);
    EXPECT_EQ(exitCodeOf(thread), DWORD(STILL_ACTIVE));

    EXPECT_EQ(ResumeThread(thread), 1u);

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(exitCodeOf(thread), 5u);
}

TEST(Thread, resumingARunningOneChangesNothing)
{
    OwnedHandle const event = newEvent();
    OwnedHandle const thread = start(waitsForItsArgument, HANDLE(event));

    EXPECT_EQ(ResumeThread(thread), 0u);
    EXPECT_EQ(ResumeThread(thread), 0u);

    SetEvent(event);
    WaitForSingleObject(thread, INFINITE);
}

TEST(Thread, suspensionsCountBeforeTheFirstRun)
{
    OwnedHandle const thread = start(returnsItsArgument, number(5), CREATE_SUSPENDED);

    EXPECT_EQ(SuspendThread(thread), 1u);
    EXPECT_EQ(ResumeThread(thread), 2u);
    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);
    EXPECT_EQ(ResumeThread(thread), 1u);

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
}

TEST(Thread, suspensionsHaveALimit)
{
    OwnedHandle const thread = start(returnsItsArgument, number(5), CREATE_SUSPENDED);
    for (DWORD count = 1; count < 127; ++count)
        EXPECT_EQ(SuspendThread(thread), count);

    EXPECT_FAILS(SuspendThread(thread), 156);

    for (DWORD count = 127; count >= 1; --count)
        EXPECT_EQ(ResumeThread(thread), count);
    WaitForSingleObject(thread, INFINITE);
}

TEST(Thread, hasTheNumberThatItSeesItself)
{
    DWORD seen = 0, told = 0;
    OwnedHandle const thread(CreateThread(
        nullptr, 0,
        [](LPVOID result) -> DWORD {
            *static_cast<DWORD*>(result) = GetCurrentThreadId();
            return 0;
        },
        &seen, 0, &told));
    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(told, seen);
    EXPECT_EQ(GetThreadId(thread), seen);
    EXPECT_NE(seen, 0u);
    EXPECT_NE(seen, GetCurrentThreadId());
}

TEST(Thread, hasItsNumberBeforeItRuns)
{
    DWORD told = 0;
    OwnedHandle const thread(CreateThread(
        nullptr, 0, [](LPVOID) -> DWORD { return GetCurrentThreadId(); }, nullptr, CREATE_SUSPENDED, &told));

    EXPECT_EQ(GetThreadId(thread), told);
    ResumeThread(thread);
    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(exitCodeOf(thread), told);
}

TEST(Thread, theCallingOneHasItsNumberToo)
{
    EXPECT_EQ(GetThreadId(GetCurrentThread()), GetCurrentThreadId());
    EXPECT_EQ(exitCodeOf(GetCurrentThread()), DWORD(STILL_ACTIVE));
    EXPECT_EQ(WaitForSingleObject(GetCurrentThread(), 0), WAIT_TIMEOUT);
}

TEST(Thread, runsOnWhenItsHandleIsClosed)
{
    OwnedHandle const event = newEvent();
    OwnedHandle const done = newEvent();
    struct Shared {
        HANDLE event, done;
    } shared = {event, done};
    OwnedHandle thread = start(
        [](LPVOID argument) -> DWORD {
            auto const shared = *static_cast<Shared*>(argument);
            WaitForSingleObject(shared.event, INFINITE);
            SetEvent(shared.done);
            return 0;
        },
        &shared);

    thread.close();
    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(done, 600000), WAIT_OBJECT_0);
}

TEST(Thread, takesAStackSize)
{
    for (SIZE_T const size : {SIZE_T(1), SIZE_T(64) << 10, SIZE_T(16) << 20}) {
        OwnedHandle const thread(CreateThread(
            nullptr, size,
            [](LPVOID) -> DWORD {
                char volatile used[16 << 10];
                for (std::size_t i = 0; i < sizeof used; i += 512)
                    used[i] = 1;
                return used[512];
            },
            nullptr, 0, nullptr));
        WaitForSingleObject(thread, INFINITE);

        EXPECT_EQ(exitCodeOf(thread), 1u);
    }
}

struct NotesItsEnd {
    std::atomic<int>* ends = nullptr;
    ~NotesItsEnd()
    {
        if (ends)
            ++*ends;
    }
};

thread_local NotesItsEnd ownEnd;

[[maybe_unused]] DWORD WINAPI notesItsEnd(LPVOID ends)
{
    ownEnd.ends = static_cast<std::atomic<int>*>(ends);
    return 0;
}

#ifndef _WIN32
// On Windows the compiler's run-time library ends thread-local objects, not in every thread, and where the thread
// calls ExitThread() after it gave their memory back: seen as a damaged heap, or an exit that never ends.
TEST(Thread, isSignalledAfterItsThreadLocalObjectsEnd)
{
    std::atomic<int> ends = 0;
    OwnedHandle const thread = start(notesItsEnd, &ends);

    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(ends, 1);
}
#endif

DWORD WINAPI exitsWithNine(LPVOID ends)
{
    NotesItsEnd onTheStack{static_cast<std::atomic<int>*>(ends)};
#ifndef _WIN32
    ownEnd.ends = onTheStack.ends;
#endif
    ExitThread(9);
}

TEST(Thread, exitsFromWithin)
{
    std::atomic<int> ends = 0;
    OwnedHandle const thread = start(exitsWithNine, &ends);

    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(exitCodeOf(thread), 9u);
#ifdef _WIN32
    EXPECT_EQ(ends, 0) << "not the object on its stack";
#else
    EXPECT_EQ(ends, 1) << "the thread's own object, not that on its stack";
#endif
}

TEST(Thread, exitsFromAFunctionThatMayNotThrow)
{
    OwnedHandle const thread = start([](LPVOID) noexcept -> DWORD { ExitThread(11); }, nullptr);

    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(exitCodeOf(thread), 11u);
}

TEST(Thread, terminatedWhileItWaitsHasTheCodeGiven)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const event = newEvent();
    OwnedHandle const thread = startWaiting(event);

    EXPECT_SUCCEEDS(TerminateThread(thread, 77));

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(exitCodeOf(thread), 77u);
}

struct Busy {
    std::atomic<bool> runs = false;
    std::atomic<unsigned> count = 0;
};

DWORD WINAPI computesForEver(LPVOID argument) noexcept
{
    auto& busy = *static_cast<Busy*>(argument);
    for (;;) {
        ++busy.count;
        busy.runs = true;
    }
}

TEST(Thread, terminatedWhileItComputesStops)
{
    ZK_SKIP_ENDS_A_THREAD();
    Busy busy;
    OwnedHandle const thread = start(computesForEver, &busy);
    while (!busy.runs)
        std::this_thread::yield();

    TerminateThread(thread, 5);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    unsigned const count = busy.count;
    std::this_thread::yield();

    EXPECT_EQ(exitCodeOf(thread), 5u);
    EXPECT_EQ(busy.count, count);
}

TEST(Thread, terminatedRunsNoDestructor)
{
    ZK_SKIP_ENDS_A_THREAD();
    struct Shared {
        std::atomic<int> ends = 0;
        Waiting waiting = {};
    } shared;
    OwnedHandle const reached = newEvent();
    OwnedHandle const never = newEvent();
    shared.waiting = {reached, never};
    OwnedHandle const thread = start(
        [](LPVOID argument) -> DWORD {
            auto& shared = *static_cast<Shared*>(argument);
            NotesItsEnd const onTheStack{&shared.ends};
            return tellsAndWaits(&shared.waiting);
        },
        &shared);
    WaitForSingleObject(reached, INFINITE);

    TerminateThread(thread, 0);
    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(shared.ends, 0);
}

TEST(Thread, terminatedAbandonsItsMutexes)
{
    ZK_SKIP_ENDS_A_THREAD();
    struct Shared {
        HANDLE first, second;
        Waiting waiting;
    };
    OwnedHandle const first(CreateMutexA(nullptr, FALSE, nullptr));
    OwnedHandle const second(CreateMutexA(nullptr, FALSE, nullptr));
    OwnedHandle const reached = newEvent();
    OwnedHandle const never = newEvent();
    Shared shared = {first, second, {reached, never}};
    OwnedHandle const thread = start(
        [](LPVOID argument) -> DWORD {
            auto& shared = *static_cast<Shared*>(argument);
            WaitForSingleObject(shared.first, INFINITE);
            WaitForSingleObject(shared.second, INFINITE);
            return tellsAndWaits(&shared.waiting);
        },
        &shared);
    WaitForSingleObject(reached, INFINITE);

    TerminateThread(thread, 0);
    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(WaitForSingleObject(first, 0), WAIT_ABANDONED);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_ABANDONED);
    ReleaseMutex(first);
    ReleaseMutex(second);
}

TEST(Thread, terminatedWhileBlockedOnAMutexLeavesItUsable)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const mutex(CreateMutexA(nullptr, TRUE, nullptr));
    OwnedHandle const thread = startWaiting(mutex);

    TerminateThread(thread, 1);
    WaitForSingleObject(thread, INFINITE);

    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST(Thread, terminatedBeforeItRanNeverRuns)
{
    ZK_SKIP_ENDS_A_THREAD();
    std::atomic<int> ends = 0;
    OwnedHandle const thread = start(notesItsEnd, &ends, CREATE_SUSPENDED);

    EXPECT_TRUE(TerminateThread(thread, 33));

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(exitCodeOf(thread), 33u);
    EXPECT_EQ(ends, 0);
}

TEST(Thread, mayBeClosedRightAfterItWasTerminated)
{
    ZK_SKIP_ENDS_A_THREAD();
    for (int i = 0; i < 20; ++i) {
        Busy busy;
        OwnedHandle thread = start(computesForEver, &busy);
        HANDLE copy = nullptr;
        DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &copy, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);

        TerminateThread(thread, 0);
        thread.close();
        EXPECT_EQ(WaitForSingleObject(copy, INFINITE), WAIT_OBJECT_0);
        CloseHandle(copy);
    }
}

TEST(Thread, thatHasEndedMayBeTerminated)
{
    OwnedHandle const thread = start(returnsItsArgument, number(5));
    WaitForSingleObject(thread, INFINITE);

    EXPECT_SUCCEEDS(TerminateThread(thread, 9));

    EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_OBJECT_0);
}

TEST(Thread, terminatesItself)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const thread = start(
        [](LPVOID) -> DWORD {
            TerminateThread(GetCurrentThread(), 21);
            return 1;
        },
        nullptr);

    WaitForSingleObject(thread, INFINITE);

    EXPECT_EQ(exitCodeOf(thread), 21u);
}

TEST(Thread, thatWaitsForAnotherMayBeTerminated)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const event = newEvent();
    OwnedHandle const waitedFor = start(waitsForItsArgument, HANDLE(event));
    OwnedHandle const waiter = startWaiting(waitedFor);

    TerminateThread(waiter, 0);
    WaitForSingleObject(waiter, INFINITE);
    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(waitedFor, INFINITE), WAIT_OBJECT_0);
}

TEST(Thread, letsAllGoOnThatWaitForIt)
{
    OwnedHandle const event = newEvent();
    OwnedHandle const waitedFor = start(waitsForItsArgument, HANDLE(event));
    std::vector<OwnedHandle> waiters;
    for (int i = 0; i < 8; ++i)
        waiters.push_back(startWaiting(waitedFor));
    EXPECT_EQ(WaitForSingleObject(waitedFor, 1), WAIT_TIMEOUT);

    SetEvent(event);

    for (OwnedHandle const& waiter : waiters) {
        EXPECT_EQ(WaitForSingleObject(waiter, INFINITE), WAIT_OBJECT_0);
        EXPECT_EQ(exitCodeOf(waiter), WAIT_OBJECT_0);
    }
    EXPECT_EQ(WaitForSingleObject(waitedFor, 0), WAIT_OBJECT_0);
}

TEST(Thread, letsTheOthersGoOnWhenOneOfItsWaitersIsTerminated)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const event = newEvent();
    OwnedHandle const waitedFor = start(waitsForItsArgument, HANDLE(event));
    OwnedHandle const first = startWaiting(waitedFor);
    OwnedHandle const second = startWaiting(waitedFor);

    TerminateThread(first, 0);
    WaitForSingleObject(first, INFINITE);
    SetEvent(event);

    EXPECT_EQ(WaitForSingleObject(second, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(exitCodeOf(second), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(waitedFor, INFINITE), WAIT_OBJECT_0);
}

TEST(Thread, keepsEachOfTheSevenPriorities)
{
    OwnedHandle const thread = start(returnsItsArgument, number(0), CREATE_SUSPENDED);
    EXPECT_EQ(GetThreadPriority(thread), THREAD_PRIORITY_NORMAL);

    for (int const priority : {THREAD_PRIORITY_TIME_CRITICAL, THREAD_PRIORITY_HIGHEST,
                               THREAD_PRIORITY_ABOVE_NORMAL, THREAD_PRIORITY_NORMAL,
                               THREAD_PRIORITY_BELOW_NORMAL, THREAD_PRIORITY_LOWEST, THREAD_PRIORITY_IDLE}) {
        EXPECT_SUCCEEDS(SetThreadPriority(thread, priority));
        EXPECT_EQ(GetThreadPriority(thread), priority);
    }

    ResumeThread(thread);
    WaitForSingleObject(thread, INFINITE);
}

TEST(Thread, anyOtherPriorityIsRefused)
{
    OwnedHandle const thread = start(returnsItsArgument, number(0), CREATE_SUSPENDED);

    for (int const wrong : {3, -3, 14, 16, -14, -16, 1000})
        EXPECT_FAILS(SetThreadPriority(thread, wrong), ERROR_INVALID_PARAMETER);

    EXPECT_EQ(GetThreadPriority(thread), THREAD_PRIORITY_NORMAL);
    ResumeThread(thread);
    WaitForSingleObject(thread, INFINITE);
}

TEST(Thread, prioritiesOfNothingAreErrors)
{
    EXPECT_FAILS(SetThreadPriority(nullptr, 0), ERROR_INVALID_HANDLE);
    SetLastError(zk::test::poisonedError);
    EXPECT_EQ(GetThreadPriority(nullptr), int(THREAD_PRIORITY_ERROR_RETURN));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
}

TEST(ThreadLocalValue, startsAsNullInEveryThread)
{
    DWORD const index = TlsAlloc();
    ASSERT_NE(index, TLS_OUT_OF_INDEXES);
    int own = 0;
    EXPECT_EQ(TlsGetValue(index), nullptr);
    EXPECT_SUCCEEDS(TlsSetValue(index, &own));

    LPVOID seen = &own;
    std::thread([&] { seen = TlsGetValue(index); }).join();

    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(TlsGetValue(index), &own);
    EXPECT_TRUE(TlsFree(index));
}

TEST(ThreadLocalValue, readingItSetsTheLastErrorToZero)
{
    DWORD const index = TlsAlloc();
    SetLastError(zk::test::poisonedError);

    EXPECT_EQ(TlsGetValue(index), nullptr);

    EXPECT_EQ(GetLastError(), 0u);
    TlsFree(index);
}

TEST(ThreadLocalValue, isForgottenWithItsIndex)
{
    int own = 0;
    DWORD const index = TlsAlloc();
    TlsSetValue(index, &own);
    TlsFree(index);

    DWORD const again = TlsAlloc();

    EXPECT_EQ(again, index);
    EXPECT_EQ(TlsGetValue(again), nullptr);
    TlsFree(again);
}

TEST(ThreadLocalValue, anImpossibleIndexIsAnError)
{
    EXPECT_FAILS(TlsGetValue(100000), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(TlsSetValue(100000, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(TlsFree(100000), ERROR_INVALID_PARAMETER);
}

TEST(ThreadLocalValue, aFreeIndexIsNotFreedAgain)
{
    DWORD const index = TlsAlloc();
    TlsFree(index);

    EXPECT_FAILS(TlsFree(index), ERROR_INVALID_PARAMETER);
}

TEST(ThreadLocalValue, hasMoreThanAThousandIndexes)
{
    std::vector<DWORD> indexes;
    for (DWORD index; (index = TlsAlloc()) != TLS_OUT_OF_INDEXES;)
        indexes.push_back(index);

    EXPECT_GT(indexes.size(), 1000u);
    EXPECT_LE(indexes.size(), 1088u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NO_MORE_ITEMS));
    for (DWORD const index : indexes)
        TlsFree(index);
}

ZK_CHILD(exitsAtOnce)
{
    struct Loud {
        zk::test::Parent& parent;
        ~Loud() { parent.say("destroyed"); }
    } const loud{parent};
    ExitProcess(23);
}

TEST(Process, exitsAtOnceWithItsCode)
{
    ChildProcess child("exitsAtOnce");

    EXPECT_THROW(child.hear(), std::runtime_error) << "no destructor runs";
    EXPECT_EQ(child.exitCode(), 23);
}

TEST(Process, tellsItsNumber)
{
    EXPECT_NE(GetCurrentProcessId(), 0u);
    EXPECT_EQ(GetCurrentProcessId(), GetCurrentProcessId());
}

}  // namespace
