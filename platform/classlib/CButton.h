// CButton.h: a push button, check box or radio button.
#pragma once

#include "platform/classlib/CWnd.h"

class ZK_UTIL_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)

    CButton();
    ~CButton() override;

    BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID);

    /// 0 not checked, 1 checked, 2 undetermined.
    int GetCheck() const;
    void SetCheck(int nCheck);
};
