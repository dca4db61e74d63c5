// CDataExchange.h: moves values between the members of a dialog and its controls.
//
//   void Panel::DoDataExchange(CDataExchange* pDX)
//   {
//       CDialog::DoDataExchange(pDX);
//       DDX_Control(pDX, 1001, apply);         // a CButton member
//       DDX_Text(pDX, 1002, text);             // a CString member
//       DDX_Check(pDX, 1003, ticked);          // an int member
//   }
#pragma once

#include "platform/classlib/CWnd.h"

/// One exchange, in one direction.
class ZK_UTIL_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    /// The control `nIDC`, which the exchange then stands at. Throws a
    /// CNotSupportedException* if the dialog has no such control.
    HWND PrepareCtrl(int nIDC);
    /// The same for a control with a text to be typed.
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange: puts the focus on the control it stands at, and throws a CUserException*.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate;  ///< TRUE from controls to members.
    CWnd* m_pDlgWnd;

private:
    HWND last_ = nullptr;
    bool lastIsEdit_ = false;
};

/// Makes `rControl` the object of the control, at the first exchange.
ZK_UTIL_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
/// The control's text.
ZK_UTIL_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
/// The control's text as a number in decimal; one that is none is reported to the user and fails.
ZK_UTIL_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
/// The state of a check box: 0, 1, or 2 for undetermined. Other values count as 0.
ZK_UTIL_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
