// messageQueue.h: messages to windows and threads.
//
//   PostMessageA(window, WM_USER, 1, 0);       // from any thread
//
//   MSG message;                               // in the window's own thread
//   while (GetMessageA(&message, nullptr, 0, 0) > 0) {
//       TranslateMessage(&message);
//       DispatchMessageA(&message);            // calls the window's procedure
//   }
//
// Each thread that takes part in this has one queue, made at its first call of a
// function that needs it. Taken in this order: sent messages, which never show
// but are answered while a thread takes or waits, then posted ones, then WM_QUIT.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

/// Puts a message into the queue of a window's thread; with a null window into the calling thread's.
///
/// ERROR_INVALID_WINDOW_HANDLE for a window that is none, ERROR_NOT_ENOUGH_QUOTA when 10,000 messages wait.
ZK_UTIL_API BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Puts a message that is for no window into a thread's queue.
///
/// ERROR_INVALID_THREAD_ID for a thread without a queue, ERROR_NOT_ENOUGH_QUOTA as above.
ZK_UTIL_API BOOL WINAPI PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Makes the calling thread's queue give WM_QUIT once no posted message is left. Without memory for
/// a queue nothing happens but ERROR_NOT_ENOUGH_MEMORY.
ZK_UTIL_API void WINAPI PostQuitMessage(int exitCode) noexcept;

/// Calls a window's procedure in the window's own thread and gives its result.
///
/// To another thread's window the message goes when that thread next takes or waits for messages;
/// meanwhile messages sent to the calling thread are answered. 0 with ERROR_INVALID_WINDOW_HANDLE
/// for a window that is none; 0 also if the window's thread returns before it has answered. A thread
/// that TerminateThread() ends never answers.
ZK_UTIL_API LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Takes the next posted message, waiting for one. 0 if it is WM_QUIT, else 1.
///
/// With `window` only those for it and its children, with -1 as a handle only those for no window;
/// with `first` and `last` not both 0 only those with numbers in that range. WM_QUIT passes every
/// filter. -1 with ERROR_INVALID_WINDOW_HANDLE for a window that is none.
ZK_UTIL_API BOOL WINAPI GetMessageA(LPMSG message, HWND window, UINT first, UINT last);

/// The same without waiting: FALSE if there is none. It stays in the queue unless PM_REMOVE is given.
ZK_UTIL_API BOOL WINAPI PeekMessageA(LPMSG message, HWND window, UINT first, UINT last, UINT remove);

/// Waits until a message that was not there at the last look has come.
ZK_UTIL_API BOOL WINAPI WaitMessage();

/// Would make characters of keys; keys do not come here, so that the result is FALSE.
ZK_UTIL_API BOOL WINAPI TranslateMessage(MSG const* message) noexcept;

/// Calls the procedure of the message's window and gives its result; 0 for a message without a window.
ZK_UTIL_API LRESULT WINAPI DispatchMessageA(MSG const* message);
