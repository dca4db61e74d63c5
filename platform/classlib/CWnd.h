// CWnd.h: a window as an object.
//
//   class Receiver : public CWnd {
//       LRESULT OnOutput(WPARAM, LPARAM text);
//       DECLARE_MESSAGE_MAP()
//   };
//   Receiver receiver;
//   receiver.CreateEx(0, nullptr, "output", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr);
//   receiver.PostMessage(1025, 0, reinterpret_cast<LPARAM>(text));       // from any thread
//
// A window's messages go to WindowProc(), from there to the handlers of the
// message map (CCmdTarget.h), and what none of them takes to the window's own
// default. A CException that a handler throws is reported to the user and ends there.
//
// An object without a window (m_hWnd is null) fails in all calls but those that give it one.
#pragma once

#include "platform/classlib/CCmdTarget.h"
#include "platform/classlib/CString.h"

class CDataExchange;

class ZK_UTIL_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)

    CWnd();
    /// Destroys the window that the object was created with or has taken over.
    ~CWnd() override;

    // -- Window and object -----------------------------------------------------------

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    /// The object of a window; a temporary one if there is none, valid until the thread is idle
    /// or ends. Null for null.
    static CWnd* FromHandle(HWND hWnd);
    /// The object of a window, or null.
    static CWnd* FromHandlePermanent(HWND hWnd);
    /// Ends the temporary objects of the calling thread.
    static void DeleteTempMap();

    /// Becomes the object of a window. FALSE for null, or if one of the two has a partner already.
    BOOL Attach(HWND hWnd);
    /// Gives the window up, without destroying it.
    HWND Detach();
    /// Like Attach(); the window's messages then go through the object.
    BOOL SubclassWindow(HWND hWnd);
    /// The same for the control `nID` of a dialog.
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    /// Undoes SubclassWindow(), and gives the window.
    HWND UnsubclassWindow();
    virtual void PreSubclassWindow();

    /// Creates the window. A null class is that of plain windows. FALSE with the last error set on
    /// failure, or if the object has one already.
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, RECT const& rect,
                CWnd* pParentWnd, UINT nID);
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y,
                  int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    /// Destroys the window; the object stays.
    virtual BOOL DestroyWindow();

    // -- Messages --------------------------------------------------------------------

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// May be called by any thread.
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// Has a message before it is dispatched; TRUE if that dealt with it.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Offers a message to the objects from the window it is for up to `hWndStop`.
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);

    // -- Text, place, state ----------------------------------------------------------

    void SetWindowText(LPCSTR lpszString);
    int GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const;
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const;

    void GetWindowRect(RECT* lpRect) const;
    void GetClientRect(RECT* lpRect) const;
    void ClientToScreen(POINT* lpPoint) const;
    void ClientToScreen(RECT* lpRect) const;
    void ScreenToClient(POINT* lpPoint) const;
    void ScreenToClient(RECT* lpRect) const;
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(RECT const* lpRect, BOOL bRepaint = TRUE);
    BOOL SetWindowPos(CWnd const* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);

    BOOL ShowWindow(int nCmdShow);
    BOOL IsWindowVisible() const;
    BOOL EnableWindow(BOOL bEnable = TRUE);
    BOOL IsWindowEnabled() const;
    CWnd* SetFocus();
    static CWnd* GetFocus();
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE);
    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    /// Takes style bits away and adds others. TRUE if that changed the style.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    int GetDlgCtrlID() const;
    CWnd* GetParent() const;
    /// A relative (GW_CHILD, GW_HWNDNEXT, ...).
    CWnd* GetWindow(UINT nCmd) const;
    int MessageBox(LPCSTR lpszText, LPCSTR lpszCaption = nullptr, UINT nType = 0);

    // -- Controls of a dialog --------------------------------------------------------

    CWnd* GetDlgItem(int nID) const;
    void GetDlgItem(int nID, HWND* phWnd) const;
    void SetDlgItemText(int nID, LPCSTR lpszString);
    int GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const;
    int GetDlgItemText(int nID, CString& rString) const;
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    void CheckDlgButton(int nIDButton, UINT nCheck);
    UINT IsDlgButtonChecked(int nIDButton) const;

    /// Moves values between members and controls, as DoDataExchange() says: TRUE from the
    /// controls to the members. FALSE if a control holds no fitting value.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    HWND m_hWnd = nullptr;

protected:
    /// Where all messages come in.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Looks for a handler; FALSE if there is none.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// A command or the notification of a control; TRUE if it was handled.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The default for the message in hand.
    LRESULT Default();
    /// The last call for a window; an object on the heap may delete itself here.
    virtual void PostNcDestroy();
    virtual void DoDataExchange(CDataExchange* pDX);

    // Handlers that do the default, for those of derived classes to call.
    void OnSize(UINT nType, int cx, int cy);
    void OnGetMinMaxInfo(MINMAXINFO* lpMMI);

    DECLARE_MESSAGE_MAP()

private:
    static LRESULT CALLBACK windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT receive(UINT message, WPARAM wParam, LPARAM lParam);
    void forgetWindow() noexcept;

    WNDPROC superProc_ = nullptr;  // the window's own procedure, if it is not ours
};
