#include "platform/classlib/CDataExchange.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CException.h"

#include <charconv>

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd)
{
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    HWND control;
    m_pDlgWnd->GetDlgItem(nIDC, &control);
    if (!control)
        AfxThrowNotSupportedException();
    last_ = control;
    lastIsEdit_ = false;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    PrepareCtrl(nIDC);
    lastIsEdit_ = true;
    return last_;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && last_) {
        SetFocus(last_);
        if (lastIsEdit_)
            SendMessageA(last_, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    if (rControl.m_hWnd)
        return;
    if (!rControl.SubclassWindow(pDX->PrepareCtrl(nIDC)))
        AfxThrowNotSupportedException();
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    HWND const control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        CWnd::FromHandle(control)->GetWindowText(value);
    else
        SetWindowTextA(control, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    CString text;
    if (!pDX->m_bSaveAndValidate) {
        text.Format("%d", value);
        DDX_Text(pDX, nIDC, text);
        return;
    }
    DDX_Text(pDX, nIDC, text);
    text.Trim();
    char const* const end = text.GetString() + text.GetLength();
    int number;
    auto const [last, error] = std::from_chars(text.GetString(), end, number);
    if (error != std::errc() || last != end) {
        AfxMessageBox("Please enter an integer.");
        pDX->Fail();
    }
    value = number;
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    HWND const control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = int(SendMessageA(control, BM_GETCHECK, 0, 0));
    else
        SendMessageA(control, BM_SETCHECK, value < 0 || value > 2 ? 0 : WPARAM(value), 0);
}
