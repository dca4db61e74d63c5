// CEdit.h: a text that the user can change or select.
#pragma once

#include "platform/classlib/CWnd.h"

class ZK_UTIL_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)

    CEdit();
    ~CEdit() override;

    BOOL Create(DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID);

    /// The number of lines; 1 for an empty text.
    int GetLineCount() const;
    /// Selects the bytes from `nStartChar` up to `nEndChar`; 0 and -1 select all, -1 as start none.
    void SetSel(int nStartChar, int nEndChar);
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);
};
