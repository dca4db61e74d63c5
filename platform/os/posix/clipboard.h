// clipboard.h: a clipboard of the process's own.
//
//   OpenClipboard(nullptr);
//   EmptyClipboard();
//   SetClipboardData(CF_TEXT, block);            // the clipboard owns the block now
//   CloseClipboard();
//
// Formats, ownership and errors are those of the system's clipboard; what is put there stays in the
// process. May be called by any thread.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define CF_TEXT 1u

#define ERROR_CLIPBOARD_NOT_OPEN 1418u

/// Opens the clipboard for the calling thread. ERROR_ACCESS_DENIED while another thread has it open.
/// `owner` is not looked at.
ZK_UTIL_API BOOL WINAPI OpenClipboard(HWND owner) noexcept;

/// Closes what the calling thread opened; else ERROR_CLIPBOARD_NOT_OPEN.
ZK_UTIL_API BOOL WINAPI CloseClipboard() noexcept;

/// Frees all that the clipboard holds. ERROR_CLIPBOARD_NOT_OPEN if the calling thread has not opened it.
ZK_UTIL_API BOOL WINAPI EmptyClipboard() noexcept;

/// Hands a block (GlobalAlloc) to the clipboard, in place of one of the same format; gives it back.
///
/// Null with ERROR_CLIPBOARD_NOT_OPEN if the calling thread has not opened the clipboard and for format 0, with
/// ERROR_INVALID_HANDLE for no block; the caller then still owns it. Blocks to be rendered later (null)
/// are not supplied.
ZK_UTIL_API HANDLE WINAPI SetClipboardData(UINT format, HANDLE block) noexcept;

/// The block of a format, which stays the clipboard's; null if there is none or the clipboard is not open.
ZK_UTIL_API HANDLE WINAPI GetClipboardData(UINT format) noexcept;

/// Whether there is a block of a format.
ZK_UTIL_API BOOL WINAPI IsClipboardFormatAvailable(UINT format) noexcept;

/// The number of a named format, the same for names that differ in case alone; 0xC000 to 0xFFFF.
/// 0 with ERROR_INVALID_NAME for an empty name, with ERROR_NOT_ENOUGH_MEMORY when all numbers are taken.
ZK_UTIL_API UINT WINAPI RegisterClipboardFormatA(LPCSTR name) noexcept;
