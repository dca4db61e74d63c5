// CWinThread.h: a thread as an object.
//
//   UINT work(void* argument);
//   CWinThread* thread = AfxBeginThread(work, argument, 0, 0, CREATE_SUSPENDED);
//   thread->m_bAutoDelete = FALSE;                  // we wait for it
//   thread->ResumeThread();
//   WaitForSingleObject(thread->m_hThread, INFINITE);
//   delete thread;
//
// A class derived from CWinThread that overrides InitInstance() makes a thread
// with a message loop.
#pragma once

#include "platform/classlib/CCmdTarget.h"

class CWnd;

/// A worker's function: its result is the exit code.
using AFX_THREADPROC = UINT (*)(LPVOID);

/// A thread that the object starts, or, for the application, the one that made the object.
class ZK_UTIL_API CWinThread : public CCmdTarget {
    DECLARE_DYNCREATE(CWinThread)

    CWinThread();
    /// For a worker; the thread starts with CreateThread().
    CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam);
    /// Closes the thread's handle. The thread itself goes on.
    ~CWinThread() override;

    /// Starts the thread; with CREATE_SUSPENDED it waits for ResumeThread().
    ///
    /// FALSE with the last error set if it can't be started, or has been already. Unless
    /// m_bAutoDelete was cleared, the object deletes itself at the thread's end, which may
    /// be before this call returns.
    BOOL CreateThread(DWORD dwCreateFlags = 0, UINT nStackSize = 0,
                      LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
    DWORD ResumeThread();
    DWORD SuspendThread();
    int GetThreadPriority();
    BOOL SetThreadPriority(int nPriority);
    /// Posts a message to the thread; FALSE if it has no message queue (yet).
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// A thread with a message loop begins here; FALSE leaves out the loop and ends it.
    virtual BOOL InitInstance();
    /// The message loop, up to WM_QUIT; gives what ExitInstance() gives.
    virtual int Run();
    /// The end of a thread with a message loop; gives its exit code, by default that of WM_QUIT.
    virtual int ExitInstance();
    /// Handles one message; waits for it if there is none. FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    /// Called while there is no message, with 0, 1, 2, ...; FALSE when there is nothing more to do.
    virtual BOOL OnIdle(LONG lCount);
    /// Whether OnIdle() shall be called anew behind the message.
    virtual BOOL IsIdleMessage(MSG* pMsg);
    /// Lets windows have a message before it is dispatched: from the one it is for up to the main
    /// window. TRUE if one has dealt with it.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// The window that stands for the thread to its user; may be null.
    virtual CWnd* GetMainWnd();
    /// Deletes the object, if m_bAutoDelete says so.
    virtual void Delete();

    CWnd* m_pMainWnd = nullptr;
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = TRUE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;
    LPVOID m_pThreadParams = nullptr;
    AFX_THREADPROC m_pfnThreadProc = nullptr;

protected:
    MSG m_msgCur = {};

private:
    friend class CDialog;  // a modal dialog runs its loop in the thread's
    static DWORD WINAPI entry(LPVOID object);
};

/// Starts a worker thread and gives its object, which deletes itself at the end unless
/// m_bAutoDelete is cleared, for which the thread is to be created suspended.
///
/// `nPriority` 0 is the normal one; `nStackSize` 0 the system's. Null with the last error set
/// if the thread can't be started.
ZK_UTIL_API CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam, int nPriority = 0,
                                       UINT nStackSize = 0, DWORD dwCreateFlags = 0,
                                       LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);

/// Starts a thread with a message loop: an object of `pThreadClass`, derived from CWinThread with
/// DECLARE_DYNCREATE.
ZK_UTIL_API CWinThread* AfxBeginThread(CRuntimeClass* pThreadClass, int nPriority = 0, UINT nStackSize = 0,
                                       DWORD dwCreateFlags = 0,
                                       LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);

/// The object of the calling thread: the one that started it, or in the thread that made the
/// application the application object; null in any other thread.
ZK_UTIL_API CWinThread* AfxGetThread();

/// The main window of the calling thread's object; null if there is no object or no window.
ZK_UTIL_API CWnd* AfxGetMainWnd();
