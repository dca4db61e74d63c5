// CStatic.h: a text, a frame or an icon.
#pragma once

#include "platform/classlib/CWnd.h"

class ZK_UTIL_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)

    CStatic();
    ~CStatic() override;

    BOOL Create(LPCSTR lpszText, DWORD dwStyle, RECT const& rect, CWnd* pParentWnd, UINT nID = 0xffff);

    /// Shows an icon, and gives the one before. The icon stays the caller's.
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;
};
