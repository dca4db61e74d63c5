// controls.h: the windows that users act on.
//
//   CheckDlgButton(dialog, 12, BST_CHECKED);       // sends BM_SETCHECK to child 12
//   IsDlgButtonChecked(dialog, 12);                // BST_CHECKED
//
// Three classes are there from the start:
//   "Button"   push buttons, check boxes, radio buttons, group boxes: BM_GETCHECK, BM_SETCHECK, BM_CLICK,
//              BM_GETSTATE, BM_SETSTATE, BM_SETSTYLE, WM_GETDLGCODE; WM_COMMAND with BN_CLICKED to the parent
//   "Edit"     a text; WM_COMMAND with EN_UPDATE and EN_CHANGE when WM_SETTEXT changes a single line,
//              with EN_SETFOCUS and EN_KILLFOCUS
//   "Static"   a text
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

#include <array>

/// Send BM_SETCHECK and BM_GETCHECK to a child. 0 with ERROR_CONTROL_ID_NOT_FOUND if there is none.
ZK_UTIL_API BOOL WINAPI CheckDlgButton(HWND parent, int id, UINT check);
ZK_UTIL_API UINT WINAPI IsDlgButtonChecked(HWND parent, int id);

/// Set and get the text of a child, and send it a message; failures as above.
ZK_UTIL_API BOOL WINAPI SetDlgItemTextA(HWND parent, int id, LPCSTR text);
ZK_UTIL_API UINT WINAPI GetDlgItemTextA(HWND parent, int id, LPSTR text, int room);
ZK_UTIL_API LRESULT WINAPI SendDlgItemMessageA(HWND parent, int id, UINT message, WPARAM wParam,
                                               LPARAM lParam);

namespace zk::os {

struct Control {
    char const* className;
    WNDPROC procedure;
};

std::array<Control, 3> const& controls() noexcept;

}  // namespace zk::os
