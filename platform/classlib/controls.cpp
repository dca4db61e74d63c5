// The controls: each call is one message to the control.
#include "platform/classlib/CButton.h"
#include "platform/classlib/CComboBox.h"
#include "platform/classlib/CEdit.h"
#include "platform/classlib/CStatic.h"

IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)

CButton::CButton() = default;
CStatic::CStatic() = default;
CEdit::CEdit() = default;
CComboBox::CComboBox() = default;

CButton::~CButton() = default;
CStatic::~CStatic() = default;
CEdit::~CEdit() = default;
CComboBox::~CComboBox() = default;

BOOL CButton::Create(LPCSTR lpszCaption, DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
}

int CButton::GetCheck() const
{
    return int(SendMessage(BM_GETCHECK));
}

void CButton::SetCheck(int nCheck)
{
    SendMessage(BM_SETCHECK, WPARAM(nCheck));
}

BOOL CStatic::Create(LPCSTR lpszText, DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
}

HICON CStatic::SetIcon(HICON hIcon)
{
    return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(hIcon)));
}

HICON CStatic::GetIcon() const
{
    return reinterpret_cast<HICON>(SendMessage(STM_GETICON));
}

BOOL CEdit::Create(DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("EDIT", nullptr, dwStyle, rect, pParentWnd, nID);
}

int CEdit::GetLineCount() const
{
    return int(SendMessage(EM_GETLINECOUNT));
}

void CEdit::SetSel(int nStartChar, int nEndChar)
{
    SendMessage(EM_SETSEL, WPARAM(nStartChar), nEndChar);
}

BOOL CEdit::SetReadOnly(BOOL bReadOnly)
{
    return BOOL(SendMessage(EM_SETREADONLY, WPARAM(bReadOnly)));
}

BOOL CComboBox::Create(DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("COMBOBOX", nullptr, dwStyle, rect, pParentWnd, nID);
}

int CComboBox::AddString(LPCSTR lpszString)
{
    return int(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lpszString)));
}

int CComboBox::GetCount() const
{
    return int(SendMessage(CB_GETCOUNT));
}

int CComboBox::GetCurSel() const
{
    return int(SendMessage(CB_GETCURSEL));
}

int CComboBox::SetCurSel(int nSelect)
{
    return int(SendMessage(CB_SETCURSEL, WPARAM(nSelect)));
}

BOOL CComboBox::SetEditSel(int nStartChar, int nEndChar)
{
    return BOOL(SendMessage(CB_SETEDITSEL, 0, MAKELONG(nStartChar, nEndChar)));
}
