// scrollBars.h: the scroll bars at the edges of windows.
//
//   ShowScrollBar(text, SB_VERT, TRUE);          // the window now has the style WS_VSCROLL
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

#define SB_HORZ 0
#define SB_VERT 1
#define SB_CTL 2
#define SB_BOTH 3

/// Shows or hides the horizontal or vertical bar, or both, by the window's style; with SB_CTL the window itself.
///
/// FALSE with ERROR_INVALID_WINDOW_HANDLE, or ERROR_INVALID_PARAMETER for another `bar`.
ZK_UTIL_API BOOL WINAPI ShowScrollBar(HWND window, int bar, BOOL show);
