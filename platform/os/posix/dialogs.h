// dialogs.h: dialogs from templates.
//
//   CreateDialogParamA(module, MAKEINTRESOURCEA(4474), nullptr, procedure, 0);
//   GetLastError();                     // 1814: there is no such template
//
// Modules of this system hold no templates, so that every dialog is refused at once.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/windowTypes.h"

using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

#define MAKEINTRESOURCEA(number) (reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(number))))

/// Refused: null with ERROR_RESOURCE_NAME_NOT_FOUND. The procedure is not called.
ZK_UTIL_API HWND WINAPI CreateDialogParamA(HINSTANCE module, LPCSTR templateName, HWND owner,
                                           DLGPROC procedure, LPARAM parameter) noexcept;

/// Handles a key message of a dialog. There are none: FALSE.
ZK_UTIL_API BOOL WINAPI IsDialogMessageA(HWND dialog, MSG* message) noexcept;
