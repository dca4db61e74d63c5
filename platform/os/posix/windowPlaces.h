// windowPlaces.h: where windows are.
//
//   MoveWindow(child, 10, 20, 30, 40, FALSE);      // relative to its parent
//   RECT place;
//   GetWindowRect(child, &place);                  // relative to the screen
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

/// Moves, sizes, shows, hides a window and changes its order among its siblings, as `flags` say. The
/// window gets WM_WINDOWPOSCHANGING, in which it may change what is asked for, and
/// WM_WINDOWPOSCHANGED. A negative size counts as 0.
ZK_UTIL_API BOOL WINAPI SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height,
                                     UINT flags);
ZK_UTIL_API BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);

/// A window's place on the screen, and that of its client area, whose upper left corner is 0, 0.
ZK_UTIL_API BOOL WINAPI GetWindowRect(HWND window, LPRECT place) noexcept;
ZK_UTIL_API BOOL WINAPI GetClientRect(HWND window, LPRECT place) noexcept;

/// Turn points of a client area into points of the screen and back.
ZK_UTIL_API BOOL WINAPI ClientToScreen(HWND window, LPPOINT point) noexcept;
ZK_UTIL_API BOOL WINAPI ScreenToClient(HWND window, LPPOINT point) noexcept;

/// Turns points of one client area into points of another one; null is the screen. Gives the distance,
/// across in the low word and down in the high one; 0 with ERROR_INVALID_WINDOW_HANDLE.
ZK_UTIL_API int WINAPI MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) noexcept;
