// messageBox.h: a message to the user, and the answer.
//
//   MessageBoxA(nullptr, "Overwrite model.cpp?", "Zentrika", MB_YESNO | MB_DEFBUTTON2);
//
// On a terminal that prints
//
//   Zentrika: Overwrite model.cpp?
//   1 Yes, 2 No [2]:
//
// and gives IDYES or IDNO.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define MB_OK 0x00000000u
#define MB_OKCANCEL 0x00000001u
#define MB_ABORTRETRYIGNORE 0x00000002u
#define MB_YESNOCANCEL 0x00000003u
#define MB_YESNO 0x00000004u
#define MB_RETRYCANCEL 0x00000005u
#define MB_CANCELTRYCONTINUE 0x00000006u
#define MB_TYPEMASK 0x0000000Fu

#define MB_ICONHAND 0x00000010u
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONQUESTION 0x00000020u
#define MB_ICONEXCLAMATION 0x00000030u
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONASTERISK 0x00000040u
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_ICONMASK 0x000000F0u

#define MB_DEFBUTTON1 0x00000000u
#define MB_DEFBUTTON2 0x00000100u
#define MB_DEFBUTTON3 0x00000200u
#define MB_DEFBUTTON4 0x00000300u
#define MB_DEFMASK 0x00000F00u

#define MB_SYSTEMMODAL 0x00001000u
#define MB_TASKMODAL 0x00002000u
#define MB_SETFOREGROUND 0x00010000u
#define MB_TOPMOST 0x00040000u

#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
#define IDCLOSE 8
#define IDHELP 9
#define IDTRYAGAIN 10
#define IDCONTINUE 11

/// Shows a text with the buttons of the low four bits of `type`; gives the one that was chosen.
///
/// Where standard input and standard error are a terminal, caption, text and
/// choices are printed and one line is read: a choice's number, the beginning
/// of its name in any case, or nothing for the default; any other line asks
/// again. When the input ends, the answer is Cancel if it is a choice, else
/// the default. Elsewhere the text goes to standard error and the default
/// button is the answer. Whenever standard error is a terminal, control characters
/// of caption and text but line feeds and tabs, and bytes that are no UTF-8, are
/// shown as "?"; what goes to a file or pipe is written as it is. Bits 8 to 11 say which button is the default, the
/// first one if there are not so many. Icons, owner and modality show nowhere.
///
/// 0 and ERROR_INVALID_MSGBOX_STYLE if the low four bits are above 6.
ZK_UTIL_API int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
