#include "platform/os/posix/scrollBars.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/windows.h"

BOOL ShowScrollBar(HWND window, int bar, BOOL show)
{
    if (!IsWindow(window))
        return zk::os::report(ERROR_INVALID_WINDOW_HANDLE);
    DWORD bits = 0;
    switch (bar) {
    case SB_HORZ: bits = WS_HSCROLL; break;
    case SB_VERT: bits = WS_VSCROLL; break;
    case SB_BOTH: bits = WS_HSCROLL | WS_VSCROLL; break;
    case SB_CTL: ShowWindow(window, show ? SW_SHOW : SW_HIDE); return TRUE;
    default: return zk::os::report(ERROR_INVALID_PARAMETER);
    }
    DWORD const before = DWORD(GetWindowLongPtrA(window, GWL_STYLE));
    DWORD const after = show ? before | bits : before & ~bits;
    if (after != before)
        SetWindowLongPtrA(window, GWL_STYLE, LONG_PTR(after));
    return TRUE;
}
