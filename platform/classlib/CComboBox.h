// CComboBox.h: a text with a list to choose it from.
#pragma once

#include "platform/classlib/CWnd.h"

class ZK_UTIL_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)

    CComboBox();
    ~CComboBox() override;

    BOOL Create(DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID);

    /// Appends a text, or puts it where the order wants it; gives its index, below 0 on failure.
    int AddString(LPCSTR lpszString);
    int GetCount() const;
    /// The index of the entry that is selected, -1 for none.
    int GetCurSel() const;
    int SetCurSel(int nSelect);
    /// Selects bytes of the text; 0 and -1 select all.
    BOOL SetEditSel(int nStartChar, int nEndChar);
};
