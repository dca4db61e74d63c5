// What only the threads supplied here promise, and how they fail when the kernel does.
#include "platform/os/os.h"
#include "platform/os/posix/threadRecord.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/endsAThread.h"
#include "tests/support/expectFails.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace {

using zk::os::SystemCalls;
using zk::test::FaultInjector;
using zk::test::OwnedHandle;

DWORD WINAPI returnsItsArgument(LPVOID argument)
{
    return DWORD(reinterpret_cast<ULONG_PTR>(argument));
}

DWORD WINAPI waitsForItsArgument(LPVOID argument)
{
    return WaitForSingleObject(argument, INFINITE);
}

OwnedHandle start(LPTHREAD_START_ROUTINE entry, LPVOID argument, DWORD flags = 0)
{
    return OwnedHandle(CreateThread(nullptr, 0, entry, argument, flags, nullptr));
}

TEST(SuppliedThread, thatCannotBeMadeIsAnError)
{
    FaultInjector<&SystemCalls::pthread_create> const full({.error = EAGAIN});
    DWORD id = 77;

    EXPECT_FAILS(CreateThread(nullptr, 0, returnsItsArgument, nullptr, 0, &id), ERROR_NOT_ENOUGH_MEMORY);

    EXPECT_EQ(id, 77u);
}

TEST(SuppliedThread, flagsThatAreNotSuppliedAreRefused)
{
    EXPECT_FAILS(CreateThread(nullptr, 0, returnsItsArgument, nullptr, 1, nullptr), ERROR_INVALID_PARAMETER);
}

TEST(SuppliedThread, aWaitOutlastsInterruptions)
{
    FaultInjector<&SystemCalls::futex> const interrupted({.error = EINTR, .times = 3});
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));

    EXPECT_EQ(WaitForSingleObject(event, 5), WAIT_TIMEOUT);

    EXPECT_GT(interrupted.calls(), 3);
}

TEST(SuppliedThread, aRunningOneCannotBeSuspended)
{
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    OwnedHandle const ready(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    struct Shared {
        HANDLE event, ready;
    } shared = {event, ready};
    OwnedHandle const thread = start(
        [](LPVOID argument) -> DWORD {
            SetEvent(static_cast<Shared*>(argument)->ready);
            return WaitForSingleObject(static_cast<Shared*>(argument)->event, INFINITE);
        },
        &shared);
    WaitForSingleObject(ready, INFINITE);

    EXPECT_FAILS(SuspendThread(thread), ERROR_NOT_SUPPORTED);

    SetEvent(event);
    WaitForSingleObject(thread, INFINITE);
}

TEST(SuppliedThread, anEndedOneKeepsItsCodeWhenTerminated)
{
    OwnedHandle const thread = start(returnsItsArgument, reinterpret_cast<LPVOID>(5));
    WaitForSingleObject(thread, INFINITE);

    EXPECT_TRUE(TerminateThread(thread, 9));

    DWORD code = 0;
    GetExitCodeThread(thread, &code);
    EXPECT_EQ(code, 5u);
}

TEST(SuppliedThread, isNotEndedWhileItIsShielded)
{
    ZK_SKIP_ENDS_A_THREAD();
    struct Shared {
        std::atomic<bool> shielded = false, asked = false, passed = false, after = false;
    } shared;
    OwnedHandle const thread = start(
        [](LPVOID argument) -> DWORD {
            auto& shared = *static_cast<Shared*>(argument);
            {
                zk::os::Shield const shield;
                zk::os::Shield const inner;
                shared.shielded = true;
                while (!shared.asked)
                    std::this_thread::yield();
                shared.passed = true;
            }
            shared.after = true;
            return 0;
        },
        &shared);
    while (!shared.shielded)
        std::this_thread::yield();

    TerminateThread(thread, 12);
    shared.asked = true;
    WaitForSingleObject(thread, INFINITE);

    EXPECT_TRUE(shared.passed);
    EXPECT_FALSE(shared.after);
    DWORD code = 0;
    GetExitCodeThread(thread, &code);
    EXPECT_EQ(code, 12u);
}

TEST(SuppliedThread, pinsOfATerminatedOneDelayNoClose)
{
    ZK_SKIP_ENDS_A_THREAD();
    struct Shared {
        HANDLE event;
        std::atomic<bool> pinned = false;
    } shared;
    OwnedHandle event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    shared.event = event;
    OwnedHandle const thread = start(
        [](LPVOID argument) -> DWORD {
            auto& shared = *static_cast<Shared*>(argument);
            zk::os::HandlePin const pin(shared.event);
            shared.pinned = true;
            for (;;)
                std::this_thread::yield();
        },
        &shared);
    while (!shared.pinned)
        std::this_thread::yield();

    TerminateThread(thread, 0);
    event.close();  // would wait for ever

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
}

TEST(SuppliedThread, startedWithAllSignalsBlockedIsTerminatedAllTheSame)
{
    ZK_SKIP_ENDS_A_THREAD();
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    OwnedHandle const thread = start(waitsForItsArgument, HANDLE(event));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    TerminateThread(thread, 4);

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
}

TEST(SuppliedThread, ofAnotherMakerExitsToo)
{
    ZK_SKIP_ENDS_A_THREAD();
    HANDLE copy = nullptr;
    bool after = false;
    std::thread foreign([&] {
        DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &copy, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        ExitThread(6);
        after = true;
    });
    foreign.join();
    OwnedHandle const thread(copy);

    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeThread(thread, &code);
    EXPECT_EQ(code, 6u);
    EXPECT_FALSE(after);
}

TEST(SuppliedThread, aLowPriorityGivesWayToOthers)
{
    OwnedHandle const thread = start(returnsItsArgument, nullptr, CREATE_SUSPENDED);

    SetThreadPriority(thread, THREAD_PRIORITY_LOWEST);

    EXPECT_EQ(getpriority(PRIO_PROCESS, GetThreadId(thread)), 10);
    ResumeThread(thread);
    WaitForSingleObject(thread, INFINITE);
}

TEST(SuppliedThread, hasTheNumberOfTheKernel)
{
    EXPECT_EQ(GetCurrentThreadId(), DWORD(gettid()));
}

TEST(SuppliedThread, aForkedProcessGoesOnInOneThread)
{
    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, nullptr));
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    OwnedHandle const thread = start(waitsForItsArgument, HANDLE(event));
    pid_t const child = fork();
    if (child == 0) {
        bool const works = GetCurrentThreadId() == DWORD(getpid()) &&
            WaitForSingleObject(mutex, 0) == WAIT_OBJECT_0 && ReleaseMutex(mutex) && CloseHandle(mutex);
        _exit(works ? 0 : 1);
    }

    int status = 0;
    waitpid(child, &status, 0);

    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    SetEvent(event);
    WaitForSingleObject(thread, INFINITE);
}

TEST(SuppliedThread, pulsingAnEventIsRefused)
{
    OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));

    EXPECT_FAILS(PulseEvent(event), ERROR_NOT_SUPPORTED);
    EXPECT_FAILS(PulseEvent(nullptr), ERROR_INVALID_HANDLE);
}

TEST(SuppliedThread, alertableWaitsAreRefused)
{
    OwnedHandle const event(CreateEventA(nullptr, TRUE, TRUE, nullptr));

    EXPECT_FAILS(WaitForSingleObjectEx(event, 0, TRUE), ERROR_NOT_SUPPORTED);
}

}  // namespace
