// windows.h: windows as records, without a display.
//
//   WNDCLASSEXA description{};
//   description.cbSize = sizeof description;
//   description.lpfnWndProc = procedure;                 // called with each message
//   description.lpszClassName = "Receiver";
//   RegisterClassExA(&description);
//   HWND const window = CreateWindowExA(0, "Receiver", "", 0, 0, 0, 0, 0, HWND_MESSAGE,
//                                       nullptr, nullptr, nullptr);
//
// A window has a class, a text, styles, a place, a parent or an owner, a number,
// and a procedure, and belongs to the thread that made it: only that thread
// calls its procedure. Nothing is drawn. A window has no frame: its client area
// is all of it. Classes belong to the process, whatever instance is given.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

// ---- Classes

/// Enters a class; its name is met in any case. Gives a number that may stand for the name.
///
/// 0 with ERROR_CLASS_ALREADY_EXISTS, or ERROR_INVALID_PARAMETER for a wrong size, no name, no
/// procedure or negative extra bytes. Icon, cursor, background and menu are not used.
ZK_UTIL_API ATOM WINAPI RegisterClassExA(WNDCLASSEXA const* description) noexcept;
ZK_UTIL_API ATOM WINAPI RegisterClassA(WNDCLASSA const* description) noexcept;

/// Takes a class away; ERROR_CLASS_DOES_NOT_EXIST, ERROR_CLASS_HAS_WINDOWS.
ZK_UTIL_API BOOL WINAPI UnregisterClassA(LPCSTR name, HINSTANCE instance) noexcept;

/// Copies the name of a window's class, cut to `room`; gives its length, 0 on failure.
ZK_UTIL_API int WINAPI GetClassNameA(HWND window, LPSTR name, int room) noexcept;

// ---- Making and ending

/// Makes a window. Its procedure gets WM_GETMINMAXINFO if the window has a sizing frame or is an
/// overlapped one, WM_NCCREATE, WM_NCCALCSIZE and WM_CREATE, then WM_SIZE and WM_MOVE; an overlapped
/// window gets these two when it is first shown. A child's parent gets WM_PARENTNOTIFY. With
/// WS_VISIBLE, WM_SHOWWINDOW ends it.
///
/// `parent` is the parent of a WS_CHILD window, the owner of another one, or HWND_MESSAGE. `menu`
/// is a child's number. CW_USEDEFAULT counts as 0.
///
/// Null if the procedure refuses with FALSE to WM_NCCREATE or -1 to WM_CREATE (the last error is
/// then the procedure's), or with ERROR_CANNOT_FIND_WND_CLASS, ERROR_TLW_WITH_WSCHILD for a child
/// without parent, ERROR_INVALID_WINDOW_HANDLE for a parent that is none, ERROR_NOT_ENOUGH_MEMORY.
ZK_UTIL_API HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR text, DWORD style, int x,
                                        int y, int width, int height, HWND parent, HMENU menu,
                                        HINSTANCE instance, LPVOID parameter);

/// Ends a window of the calling thread, with all below it and all that it owns. WM_DESTROY goes from
/// the top down, WM_NCDESTROY from the bottom up. What was posted to them is dropped.
///
/// ERROR_ACCESS_DENIED for another thread's window, ERROR_INVALID_WINDOW_HANDLE.
ZK_UTIL_API BOOL WINAPI DestroyWindow(HWND window);

ZK_UTIL_API BOOL WINAPI IsWindow(HWND window) noexcept;

/// What a procedure does with messages that it does not care for: text (WM_SETTEXT, WM_GETTEXT,
/// WM_GETTEXTLENGTH), WM_NCCREATE, WM_CLOSE, and WM_WINDOWPOSCHANGING and WM_WINDOWPOSCHANGED,
/// which send WM_GETMINMAXINFO, WM_MOVE and WM_SIZE. 0 for all others.
ZK_UTIL_API LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Calls a procedure, as one that stands in place of another one calls that.
ZK_UTIL_API LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam);

// ---- What a window is

/// Reads and writes a value of a window: GWL_STYLE, GWL_EXSTYLE, GWLP_ID, GWLP_USERDATA, GWLP_WNDPROC,
/// GWLP_HINSTANCE, GWLP_HWNDPARENT, or, with an index from 0 on, its class's extra bytes. Writing gives
/// the previous value and, for styles, sends WM_STYLECHANGING and WM_STYLECHANGED.
///
/// 0 with ERROR_INVALID_INDEX or ERROR_INVALID_WINDOW_HANDLE. The short forms reach 32 bits.
ZK_UTIL_API LONG_PTR WINAPI GetWindowLongPtrA(HWND window, int index) noexcept;
ZK_UTIL_API LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
ZK_UTIL_API LONG WINAPI GetWindowLongA(HWND window, int index) noexcept;
ZK_UTIL_API LONG WINAPI SetWindowLongA(HWND window, int index, LONG value);

/// Send WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH. A text that is too long is cut; the buffer always
/// gets a NUL if `room` is above 0.
ZK_UTIL_API BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text);
ZK_UTIL_API int WINAPI GetWindowTextA(HWND window, LPSTR text, int room);
ZK_UTIL_API int WINAPI GetWindowTextLengthA(HWND window);

/// Shows or hides (SW_HIDE) a window, with WM_SHOWWINDOW if that changes something or under SW_SHOWNA. Gives whether it
/// was shown before. A window is visible if it and all above it are shown; message-only ones never are.
ZK_UTIL_API BOOL WINAPI ShowWindow(HWND window, int how);
ZK_UTIL_API BOOL WINAPI IsWindowVisible(HWND window) noexcept;

/// Lets the user use a window or not, with WM_CANCELMODE and WM_ENABLE if that changes something. Gives
/// whether it was disabled before.
ZK_UTIL_API BOOL WINAPI EnableWindow(HWND window, BOOL enable);
ZK_UTIL_API BOOL WINAPI IsWindowEnabled(HWND window) noexcept;

/// Gives the keyboard to a window of the calling thread, or with null to none, with WM_KILLFOCUS and
/// WM_SETFOCUS. Gives the one that had it. A disabled window refuses: null. Another thread's
/// window: ERROR_ACCESS_DENIED.
ZK_UTIL_API HWND WINAPI SetFocus(HWND window);
ZK_UTIL_API HWND WINAPI GetFocus() noexcept;

/// The thread of a window and, where `process` is not null, its process.
ZK_UTIL_API DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD process) noexcept;

// ---- Families

/// The parent of a child window, the owner of another one.
ZK_UTIL_API HWND WINAPI GetParent(HWND window) noexcept;

/// Puts a window among the children of another one, with null among the top-level windows; gives the
/// previous parent. Styles stay.
ZK_UTIL_API HWND WINAPI SetParent(HWND window, HWND parent) noexcept;

ZK_UTIL_API BOOL WINAPI IsChild(HWND parent, HWND window) noexcept;

/// The next one in the family: GW_CHILD the topmost child, GW_HWNDFIRST, GW_HWNDLAST, GW_HWNDNEXT and
/// GW_HWNDPREV among its siblings, GW_OWNER. Null for none.
ZK_UTIL_API HWND WINAPI GetWindow(HWND window, UINT which) noexcept;

/// The child with a number, and the number of a child. ERROR_CONTROL_ID_NOT_FOUND if there is none.
ZK_UTIL_API HWND WINAPI GetDlgItem(HWND parent, int id) noexcept;
ZK_UTIL_API int WINAPI GetDlgCtrlID(HWND window) noexcept;
