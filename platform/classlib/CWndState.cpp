// A window's text, place and state, and the controls of a dialog.
#include "platform/classlib/CWnd.h"

#include "platform/classlib/CRect.h"

void CWnd::SetWindowText(LPCSTR lpszString)
{
    ::SetWindowTextA(m_hWnd, lpszString);
}

int CWnd::GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const
{
    return ::GetWindowTextA(m_hWnd, lpszStringBuf, nMaxCount);
}

void CWnd::GetWindowText(CString& rString) const
{
    int const length = ::GetWindowTextLengthA(m_hWnd);
    char* const buffer = rString.GetBuffer(length);
    int const copied = ::GetWindowTextA(m_hWnd, buffer, length + 1);
    rString.ReleaseBuffer(copied);
}

int CWnd::GetWindowTextLength() const
{
    return ::GetWindowTextLengthA(m_hWnd);
}

void CWnd::GetWindowRect(RECT* lpRect) const
{
    ::GetWindowRect(m_hWnd, lpRect);
}

void CWnd::GetClientRect(RECT* lpRect) const
{
    ::GetClientRect(m_hWnd, lpRect);
}

void CWnd::ClientToScreen(POINT* lpPoint) const
{
    ::ClientToScreen(m_hWnd, lpPoint);
}

void CWnd::ScreenToClient(POINT* lpPoint) const
{
    ::ScreenToClient(m_hWnd, lpPoint);
}

void CWnd::ClientToScreen(RECT* lpRect) const
{
    POINT corners[] = {{lpRect->left, lpRect->top}, {lpRect->right, lpRect->bottom}};
    for (POINT& corner : corners)
        ::ClientToScreen(m_hWnd, &corner);
    *lpRect = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

void CWnd::ScreenToClient(RECT* lpRect) const
{
    POINT corners[] = {{lpRect->left, lpRect->top}, {lpRect->right, lpRect->bottom}};
    for (POINT& corner : corners)
        ::ScreenToClient(m_hWnd, &corner);
    *lpRect = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint)
{
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::MoveWindow(RECT const* lpRect, BOOL bRepaint)
{
    CRect const place(*lpRect);
    MoveWindow(place.left, place.top, place.Width(), place.Height(), bRepaint);
}

BOOL CWnd::SetWindowPos(CWnd const* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    return ::SetWindowPos(m_hWnd, pWndInsertAfter ? pWndInsertAfter->m_hWnd : nullptr, x, y, cx, cy, nFlags);
}

BOOL CWnd::ShowWindow(int nCmdShow)
{
    return ::ShowWindow(m_hWnd, nCmdShow);
}

BOOL CWnd::IsWindowVisible() const
{
    return ::IsWindowVisible(m_hWnd);
}

BOOL CWnd::EnableWindow(BOOL bEnable)
{
    return ::EnableWindow(m_hWnd, bEnable);
}

BOOL CWnd::IsWindowEnabled() const
{
    return ::IsWindowEnabled(m_hWnd);
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

void CWnd::ShowScrollBar(UINT nBar, BOOL bShow)
{
    ::ShowScrollBar(m_hWnd, int(nBar), bShow);
}

DWORD CWnd::GetStyle() const
{
    return DWORD(::GetWindowLongPtrA(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const
{
    return DWORD(::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE));
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    DWORD const before = GetStyle();
    DWORD const after = (before & ~dwRemove) | dwAdd;
    if (before == after)
        return FALSE;
    ::SetWindowLongPtrA(m_hWnd, GWL_STYLE, LONG_PTR(after));
    if (nFlags != 0)
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

int CWnd::GetDlgCtrlID() const
{
    return ::GetDlgCtrlID(m_hWnd);
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::GetWindow(UINT nCmd) const
{
    return FromHandle(::GetWindow(m_hWnd, nCmd));
}

int CWnd::MessageBox(LPCSTR lpszText, LPCSTR lpszCaption, UINT nType)
{
    return ::MessageBoxA(m_hWnd, lpszText, lpszCaption, nType);
}

CWnd* CWnd::GetDlgItem(int nID) const
{
    return FromHandle(::GetDlgItem(m_hWnd, nID));
}

void CWnd::GetDlgItem(int nID, HWND* phWnd) const
{
    *phWnd = ::GetDlgItem(m_hWnd, nID);
}

void CWnd::SetDlgItemText(int nID, LPCSTR lpszString)
{
    ::SetDlgItemTextA(m_hWnd, nID, lpszString);
}

int CWnd::GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const
{
    if (lpStr && nMaxCount > 0)
        *lpStr = '\0';
    HWND const control = ::GetDlgItem(m_hWnd, nID);
    return control ? ::GetWindowTextA(control, lpStr, nMaxCount) : 0;
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString.Empty();
    if (HWND const control = ::GetDlgItem(m_hWnd, nID))
        FromHandle(control)->GetWindowText(rString);
    return rString.GetLength();
}

LRESULT CWnd::SendDlgItemMessage(int nID, UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendDlgItemMessageA(m_hWnd, nID, message, wParam, lParam);
}

void CWnd::CheckDlgButton(int nIDButton, UINT nCheck)
{
    ::CheckDlgButton(m_hWnd, nIDButton, nCheck);
}

UINT CWnd::IsDlgButtonChecked(int nIDButton) const
{
    return ::IsDlgButtonChecked(m_hWnd, nIDButton);
}
