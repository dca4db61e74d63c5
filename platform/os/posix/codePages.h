// codePages.h: texts between code pages and wide characters.
//
//   wchar_t wide[8];
//   MultiByteToWideChar(CP_UTF8, 0, "\xE2\x82\xAC", -1, wide, 8);   // 2: U+20AC and the NUL
//   char narrow[4];
//   WideCharToMultiByte(1252, 0, wide, -1, narrow, 4, nullptr, nullptr);   // 2: 0x80 and the NUL
//
// The process's code page is UTF-8. It is converted here; all others go
// through the C library's iconv.
//
// A wide character is a whole Unicode character here (wchar_t has 32 bits), and
// half of one above U+FFFF on Windows (16 bits). Counts are counts of wchar_t on
// both, so a character above U+FFFF counts 1 here and 2 there, and a surrogate
// in a wide text is an error here.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define CP_ACP 0u
#define CP_OEMCP 1u
#define CP_MACCP 2u
#define CP_THREAD_ACP 3u
#define CP_UTF7 65000u
#define CP_UTF8 65001u

#define MB_PRECOMPOSED 0x00000001u
#define MB_COMPOSITE 0x00000002u
#define MB_USEGLYPHCHARS 0x00000004u
#define MB_ERR_INVALID_CHARS 0x00000008u

#define WC_DISCARDNS 0x00000010u
#define WC_SEPCHARS 0x00000020u
#define WC_DEFAULTCHAR 0x00000040u
#define WC_ERR_INVALID_CHARS 0x00000080u
#define WC_COMPOSITECHECK 0x00000200u
#define WC_NO_BEST_FIT_CHARS 0x00000400u

#define MAX_LEADBYTES 12
#define MAX_DEFAULTCHAR 2

struct CPINFO {
    UINT MaxCharSize;
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];  // pairs of first and last lead byte, ended by two zeros
};
using LPCPINFO = CPINFO*;

/// The process's code page: 65001, UTF-8.
ZK_UTIL_API UINT WINAPI GetACP() noexcept;

/// The code page of the terminal: 65001, UTF-8.
ZK_UTIL_API UINT WINAPI GetOEMCP() noexcept;

/// Whether texts of that code page can be converted. False for the names of pages (CP_ACP, ...).
ZK_UTIL_API BOOL WINAPI IsValidCodePage(UINT codePage) noexcept;

/// Describes a code page: the longest character in bytes, the default character, the lead bytes.
/// A code page that is not known, and null, fail with ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL WINAPI GetCPInfo(UINT codePage, LPCPINFO info) noexcept;

/// Whether a byte begins a two-byte character in the process's code page: never.
ZK_UTIL_API BOOL WINAPI IsDBCSLeadByte(BYTE byte) noexcept;

/// The same for any code page. One that is not known fails with ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL WINAPI IsDBCSLeadByteEx(UINT codePage, BYTE byte) noexcept;

/// Converts `length` bytes of `text` (-1: up to and with its NUL) into wide characters.
///
/// Gives the number of wide characters written, or, with a `room` of 0, the number that would be.
/// Bytes that are no characters become U+FFFD (in UTF-8 one for each longest piece that could
/// have begun a character; in two-byte code pages the page's own default character), or fail with
/// ERROR_NO_UNICODE_TRANSLATION under MB_ERR_INVALID_CHARS.
///
/// On failure the result is 0: ERROR_INSUFFICIENT_BUFFER when `room` is too small (the start of
/// the text is then in the buffer), ERROR_INVALID_PARAMETER for a `length` of 0, null, or a code
/// page that is not known, ERROR_INVALID_FLAGS for MB_COMPOSITE, MB_USEGLYPHCHARS and unknown bits.
ZK_UTIL_API int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, WCHAR* wide,
                                           int room) noexcept;

/// Converts `length` wide characters of `wide` (-1: up to and with the NUL) into bytes.
///
/// Gives the number of bytes written, or, with a `room` of 0, the number that would be. A wide
/// character that the code page lacks becomes `defaultChar`, or its default character if that is
/// null, and sets `*usedDefault`. Characters that merely look alike are never chosen, as if
/// WC_NO_BEST_FIT_CHARS were always given. UTF-8 lacks no character: `defaultChar` plays no part
/// there, and a code that is no character becomes U+FFFD, or fails with
/// ERROR_NO_UNICODE_TRANSLATION under WC_ERR_INVALID_CHARS.
///
/// On failure the result is 0, with the errors of MultiByteToWideChar(); ERROR_INVALID_FLAGS is
/// for WC_COMPOSITECHECK and its companions and for unknown bits.
ZK_UTIL_API int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, WCHAR const* wide, int length,
                                           LPSTR text, int room, LPCSTR defaultChar,
                                           LPBOOL usedDefault) noexcept;

namespace zk::os {

/// The name by which iconv knows a code page, e.g. "CP1252" for 1252 and "UTF-8" for CP_ACP;
/// null for a number that is not known.
ZK_UTIL_API char const* codePageName(UINT codePage) noexcept;

}  // namespace zk::os
