#include "platform/classlib/CWinThread.h"

#include "platform/classlib/CWinApp.h"
#include "platform/classlib/CWnd.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

namespace {

// Waits for the end of a thread and gives its exit code.
DWORD joined(CWinThread& thread)
{
    EXPECT_EQ(WaitForSingleObject(thread.m_hThread, INFINITE), 0u);
    DWORD code = 0xBAD;
    EXPECT_TRUE(GetExitCodeThread(thread.m_hThread, &code));
    return code;
}

// A worker that its test waits for.
std::unique_ptr<CWinThread> suspended(AFX_THREADPROC work, void* argument, int priority = 0)
{
    CWinThread* const thread = AfxBeginThread(work, argument, priority, 0, CREATE_SUSPENDED);
    EXPECT_NE(thread, nullptr);
    thread->m_bAutoDelete = FALSE;
    return std::unique_ptr<CWinThread>(thread);
}

// Signals the event it is given when it goes.
class Going : public CWinThread {
public:
    Going(AFX_THREADPROC work, HANDLE gone) : CWinThread(work, nullptr), gone_(gone) { }
    ~Going() override { SetEvent(gone_); }

private:
    HANDLE gone_;
};

// Adds up the numbers that are posted to it.
class Adder : public CWinThread {
    DECLARE_DYNCREATE(Adder)

    BOOL InitInstance() override
    {
        MSG message;
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the queue
        SetEvent(ready);
        return TRUE;
    }
    BOOL PreTranslateMessage(MSG* message) override
    {
        if (message->message == WM_USER)
            sum += int(message->wParam);
        return CWinThread::PreTranslateMessage(message);
    }
    BOOL OnIdle(LONG count) override
    {
        idleCounts.push_back(count);
        return count < 2;
    }
    int ExitInstance() override { return sum + CWinThread::ExitInstance(); }

    int sum = 0;
    std::vector<LONG> idleCounts;
    static HANDLE ready;
};
IMPLEMENT_DYNCREATE(Adder, CWinThread)
HANDLE Adder::ready = nullptr;

// Does not want to run.
class Unwilling : public CWinThread {
    DECLARE_DYNCREATE(Unwilling)

    BOOL InitInstance() override { return FALSE; }
    int Run() override { return 1; }
    int ExitInstance() override { return 77; }
};
IMPLEMENT_DYNCREATE(Unwilling, CWinThread)

class NoThread : public CObject {
    DECLARE_DYNCREATE(NoThread)
};
IMPLEMENT_DYNCREATE(NoThread, CObject)

}  // namespace

TEST(WorkerThread, runsItsFunctionAndEndsWithItsResult)
{
    int value = 20;
    auto const thread = suspended(
        [](void* argument) {
            *static_cast<int*>(argument) += 1;
            return 42u;
        },
        &value);

    EXPECT_EQ(value, 20);
    EXPECT_EQ(thread->ResumeThread(), 1u);

    EXPECT_EQ(joined(*thread), 42u);
    EXPECT_EQ(value, 21);
}

TEST(WorkerThread, findsItsObject)
{
    struct Seen {
        CWinThread* object;
        DWORD id;
        HANDLE handle;
    } seen = {};
    auto const thread = suspended(
        [](void* argument) {
            CWinThread* const self = AfxGetThread();
            *static_cast<Seen*>(argument) = {self, self->m_nThreadID, self->m_hThread};
            return UINT(self->m_nThreadID == GetCurrentThreadId());
        },
        &seen);

    thread->ResumeThread();

    EXPECT_EQ(joined(*thread), 1u);
    EXPECT_EQ(seen.object, thread.get());
    EXPECT_EQ(seen.id, thread->m_nThreadID);
    EXPECT_EQ(seen.handle, thread->m_hThread);
}

TEST(WorkerThread, keepsItsPriority)
{
    auto const thread = suspended([](void*) { return 0u; }, nullptr, THREAD_PRIORITY_BELOW_NORMAL);

    EXPECT_EQ(thread->GetThreadPriority(), THREAD_PRIORITY_BELOW_NORMAL);
    EXPECT_TRUE(thread->SetThreadPriority(THREAD_PRIORITY_NORMAL));
    EXPECT_EQ(thread->GetThreadPriority(), THREAD_PRIORITY_NORMAL);

    thread->ResumeThread();
    joined(*thread);
}

TEST(WorkerThread, deletesItsObjectAtItsEnd)
{
    HANDLE const gone = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    auto* const thread = new Going([](void*) { return 0u; }, gone);

    ASSERT_TRUE(thread->CreateThread());

    EXPECT_EQ(WaitForSingleObject(gone, INFINITE), 0u);
    CloseHandle(gone);
}

TEST(WorkerThread, countsItsSuspensions)
{
    auto const thread = suspended([](void*) { return 0u; }, nullptr);

    EXPECT_EQ(thread->SuspendThread(), 1u);
    EXPECT_EQ(thread->ResumeThread(), 2u);
    EXPECT_EQ(thread->ResumeThread(), 1u);

    joined(*thread);
}

TEST(WorkerThread, isStartedOnce)
{
    auto const thread = suspended([](void*) { return 0u; }, nullptr);

    EXPECT_FAILS(thread->CreateThread(), ERROR_ALREADY_EXISTS);

    thread->ResumeThread();
    joined(*thread);
}

TEST(MessageThread, pumpsMessagesUpToQuit)
{
    Adder::ready = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::unique_ptr<Adder> const thread(
        static_cast<Adder*>(AfxBeginThread(RUNTIME_CLASS(Adder), 0, 0, CREATE_SUSPENDED)));
    thread->m_bAutoDelete = FALSE;
    thread->ResumeThread();
    WaitForSingleObject(Adder::ready, INFINITE);

    EXPECT_TRUE(thread->PostThreadMessage(WM_USER, 5, 0));
    EXPECT_TRUE(thread->PostThreadMessage(WM_USER, 6, 0));
    EXPECT_TRUE(thread->PostThreadMessage(WM_QUIT, 100, 0));

    EXPECT_EQ(joined(*thread), 111u);
    CloseHandle(Adder::ready);
}

TEST(MessageThread, isIdleUntilThereIsNothingMoreToDo)
{
    Adder::ready = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    Adder thread;
    thread.m_bAutoDelete = FALSE;
    ASSERT_TRUE(thread.CreateThread());
    WaitForSingleObject(Adder::ready, INFINITE);
    thread.PostThreadMessage(WM_QUIT, 0, 0);
    joined(thread);

    LONG expected = 0;
    for (LONG const count : thread.idleCounts) {
        EXPECT_EQ(count, expected);
        expected = count == 2 ? 0 : count + 1;
    }
    CloseHandle(Adder::ready);
}

TEST(MessageThread, thatDoesNotWantToRunEndsAtOnce)
{
    std::unique_ptr<CWinThread> const thread(
        AfxBeginThread(RUNTIME_CLASS(Unwilling), 0, 0, CREATE_SUSPENDED));
    thread->m_bAutoDelete = FALSE;

    thread->ResumeThread();

    EXPECT_EQ(joined(*thread), 77u);
}

TEST(MessageThread, isMadeOfAThreadClassThatCanBeMade)
{
    EXPECT_FAILS(AfxBeginThread(RUNTIME_CLASS(CWinApp)), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(AfxBeginThread(RUNTIME_CLASS(NoThread)), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(AfxBeginThread(static_cast<CRuntimeClass*>(nullptr)), ERROR_INVALID_PARAMETER);
}

TEST(ThreadObject, isNullInAThreadWithoutOne)
{
    EXPECT_EQ(AfxGetThread(), nullptr);
    EXPECT_EQ(AfxGetMainWnd(), nullptr);
}

TEST(ThreadObject, isTheApplicationInItsThreadAlone)
{
    CWinApp application;
    CWnd mainWindow;
    application.m_pMainWnd = &mainWindow;
    CWnd* seen = &mainWindow;

    EXPECT_EQ(AfxGetThread(), &application);
    EXPECT_EQ(AfxGetMainWnd(), &mainWindow);
    HANDLE const other = CreateThread(
        nullptr, 0,
        [](void* argument) -> DWORD {
            *static_cast<CWnd**>(argument) = AfxGetMainWnd();
            return AfxGetThread() != nullptr;
        },
        &seen, 0, nullptr);
    WaitForSingleObject(other, INFINITE);
    DWORD code = 9;
    GetExitCodeThread(other, &code);
    CloseHandle(other);

    EXPECT_EQ(code, 0u);
    EXPECT_EQ(seen, nullptr);
}
