#include "platform/classlib/CWinThread.h"

#include "platform/classlib/CWinApp.h"
#include "platform/classlib/CWnd.h"

#include <memory>
#include <utility>

IMPLEMENT_DYNCREATE(CWinThread, CCmdTarget)

namespace {

thread_local constinit CWinThread* threadObject = nullptr;

// Ends with the thread, however its function is left.
class CurrentThread {
public:
    explicit CurrentThread(CWinThread* object) { threadObject = object; }
    ~CurrentThread()
    {
        CWinThread* const object = std::exchange(threadObject, nullptr);
        CWnd::DeleteTempMap();
        object->Delete();
    }
    CurrentThread(CurrentThread const&) = delete;
    CurrentThread& operator=(CurrentThread const&) = delete;
};

CWinThread* started(std::unique_ptr<CWinThread> thread, int priority, UINT stackSize, DWORD flags,
                    LPSECURITY_ATTRIBUTES security)
{
    if (!thread->CreateThread(flags | CREATE_SUSPENDED, stackSize, security))
        return nullptr;
    CWinThread* const running = thread.release();
    if (priority != THREAD_PRIORITY_NORMAL)
        running->SetThreadPriority(priority);
    if (!(flags & CREATE_SUSPENDED))
        running->ResumeThread();  // it may delete itself from here on
    return running;
}

}  // namespace

CWinThread::CWinThread() = default;

CWinThread::CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam)
    : m_pThreadParams(pParam), m_pfnThreadProc(pfnThreadProc)
{
}

CWinThread::~CWinThread()
{
    if (m_hThread)
        CloseHandle(m_hThread);
}

DWORD WINAPI CWinThread::entry(LPVOID object)
{
    CWinThread* const thread = static_cast<CWinThread*>(object);
    CurrentThread const current(thread);
    if (thread->m_pfnThreadProc)
        return thread->m_pfnThreadProc(thread->m_pThreadParams);
    return DWORD(thread->InitInstance() ? thread->Run() : thread->ExitInstance());
}

BOOL CWinThread::CreateThread(DWORD dwCreateFlags, UINT nStackSize, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    if (m_hThread) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    // Suspended at first, so that the thread finds its handle and number in the object.
    m_hThread = ::CreateThread(lpSecurityAttrs, nStackSize, &CWinThread::entry, this,
                               dwCreateFlags | CREATE_SUSPENDED, &m_nThreadID);
    if (!m_hThread)
        return FALSE;
    if (!(dwCreateFlags & CREATE_SUSPENDED))
        ::ResumeThread(m_hThread);
    return TRUE;
}

DWORD CWinThread::ResumeThread()
{
    return ::ResumeThread(m_hThread);
}

DWORD CWinThread::SuspendThread()
{
    return ::SuspendThread(m_hThread);
}

int CWinThread::GetThreadPriority()
{
    return ::GetThreadPriority(m_hThread);
}

BOOL CWinThread::SetThreadPriority(int nPriority)
{
    return ::SetThreadPriority(m_hThread, nPriority);
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostThreadMessageA(m_nThreadID, message, wParam, lParam);
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::Run()
{
    MSG waiting;
    for (;;) {
        LONG idleCount = 0;
        while (!PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE) && OnIdle(idleCount))
            ++idleCount;
        do {
            if (!PumpMessage())
                return ExitInstance();
        } while (!IsIdleMessage(&m_msgCur) || PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE));
    }
}

int CWinThread::ExitInstance()
{
    return int(m_msgCur.wParam);
}

BOOL CWinThread::PumpMessage()
{
    // -1 is a failure, after which no message would ever come.
    if (GetMessageA(&m_msgCur, nullptr, 0, 0) <= 0)
        return FALSE;
    if (!PreTranslateMessage(&m_msgCur)) {
        TranslateMessage(&m_msgCur);
        DispatchMessageA(&m_msgCur);
    }
    return TRUE;
}

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount > 0)
        CWnd::DeleteTempMap();
    return lCount < 1;
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg)
{
    // A caret's timer, painting and the mouse standing still change nothing that a user sees.
    constexpr UINT caretTimer = 0x0118;
    return pMsg->message != WM_PAINT && pMsg->message != caretTimer;
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg)
{
    CWnd* const mainWindow = GetMainWnd();
    return CWnd::WalkPreTranslateTree(mainWindow ? mainWindow->GetSafeHwnd() : nullptr, pMsg);
}

CWnd* CWinThread::GetMainWnd()
{
    return m_pMainWnd;
}

void CWinThread::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam, int nPriority, UINT nStackSize,
                           DWORD dwCreateFlags, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    return started(std::make_unique<CWinThread>(pfnThreadProc, pParam), nPriority, nStackSize, dwCreateFlags,
                   lpSecurityAttrs);
}

CWinThread* AfxBeginThread(CRuntimeClass* pThreadClass, int nPriority, UINT nStackSize, DWORD dwCreateFlags,
                           LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    std::unique_ptr<CObject> object(pThreadClass ? pThreadClass->CreateObject() : nullptr);
    std::unique_ptr<CWinThread> thread(DYNAMIC_DOWNCAST(CWinThread, object.get()));
    if (!thread) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    object.release();
    return started(std::move(thread), nPriority, nStackSize, dwCreateFlags, lpSecurityAttrs);
}

CWinThread* AfxGetThread()
{
    if (threadObject)
        return threadObject;
    CWinApp* const application = AfxGetApp();
    return application && application->m_nThreadID == GetCurrentThreadId() ? application : nullptr;
}

CWnd* AfxGetMainWnd()
{
    CWinThread* const thread = AfxGetThread();
    return thread ? thread->GetMainWnd() : nullptr;
}
