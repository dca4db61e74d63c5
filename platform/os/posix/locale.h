// locale.h: the user's locale as a number, and what is known of a locale.
//
//   GetUserDefaultLCID();                                             // 1033 under LANG=en_US.UTF-8
//   char codePage[7];
//   GetLocaleInfoA(1033, LOCALE_IDEFAULTCODEPAGE, codePage, 7);       // 4: "437" and the NUL
//
// The numbers are those of Windows. The locale of the C library is not touched.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

using LCTYPE = DWORD;

#define LOCALE_INVARIANT 0x007Fu
#define LOCALE_USER_DEFAULT 0x0400u
#define LOCALE_SYSTEM_DEFAULT 0x0800u

#define LOCALE_ILANGUAGE 0x0001u             // "0409"
#define LOCALE_IDEFAULTCODEPAGE 0x000Bu      // of the terminal: "437"
#define LOCALE_IDEFAULTANSICODEPAGE 0x1004u  // of texts: "1252"; "0" for a locale that has none
#define LOCALE_SISO639LANGNAME 0x0059u       // "en"
#define LOCALE_SISO3166CTRYNAME 0x005Au      // "US"
#define LOCALE_RETURN_NUMBER 0x20000000u

/// The user's locale: the first of LC_ALL, LC_CTYPE and LANG that is not empty. A language without
/// a country has its most usual one; one that is not known, "C" and "POSIX" are 1033, en-US.
ZK_UTIL_API LCID WINAPI GetUserDefaultLCID() noexcept;

/// The calling thread's locale; the user's until SetThreadLocale().
ZK_UTIL_API LCID WINAPI GetThreadLocale() noexcept;

/// Sets the calling thread's locale. It has no effect but that GetThreadLocale() gives it. 0 and the
/// default numbers mean the user's. A number that is not known fails with ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL WINAPI SetThreadLocale(LCID locale) noexcept;

/// Gives back `language`, or the user's for 0: texts here are English whatever the language.
ZK_UTIL_API LANGID WINAPI SetThreadUILanguage(LANGID language) noexcept;

/// Writes one fact about a locale as a text, and gives its size with the NUL; with a `room` of 0
/// the size that is needed. With LOCALE_RETURN_NUMBER, code pages and LOCALE_ILANGUAGE are
/// written as a DWORD, and the result is 4.
///
/// Failures give 0: ERROR_INVALID_FLAGS for a fact not listed above, ERROR_INSUFFICIENT_BUFFER,
/// ERROR_INVALID_PARAMETER for a locale that is not known or no buffer.
ZK_UTIL_API int WINAPI GetLocaleInfoA(LCID locale, LCTYPE fact, LPSTR text, int room) noexcept;
