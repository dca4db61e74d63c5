// textOperations.h: the system's text operations that the language's library lacks.
//
//   _stricmp("Model.INI", "model.ini");     // 0
//   char number[12];
//   _itoa(-255, number, 16);                // "ffffff01"
//   CharNextA("\xC3\xA9t");                 // at "t": the UTF-8 character has two bytes
//
// Bytes above 127 have no case for the C family; the Char family works on
// whole UTF-8 characters.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <cstddef>

/// Less than 0, 0 or greater than 0 as `a` comes before, is, or comes after `b` when both are
/// taken in lower case ('A' to 'Z' alone) and compared by byte values. The `n` form looks at
/// `count` bytes at most. Null is not accepted.
ZK_UTIL_API int _stricmp(char const* a, char const* b) noexcept;
ZK_UTIL_API int _strnicmp(char const* a, char const* b, std::size_t count) noexcept;

/// Turn 'A' to 'Z' into lower case, 'a' to 'z' into upper case, in place, and give `text` back.
ZK_UTIL_API char* _strlwr(char* text) noexcept;
ZK_UTIL_API char* _strupr(char* text) noexcept;

/// Write a number in base `radix` (2 to 36, digits above 9 in lower case) and give `text` back.
///
/// A sign is written in base 10 alone; other bases show the two's complement of the type's width
/// on Windows, 32 bits: the longest text is 33 characters with its NUL. A `value` beyond 32 bits
/// keeps its low 32. A `radix` outside 2 to 36 gives an empty text.
ZK_UTIL_API char* _itoa(int value, char* text, int radix) noexcept;
ZK_UTIL_API char* _ltoa(long value, char* text, int radix) noexcept;
ZK_UTIL_API char* _ultoa(unsigned long value, char* text, int radix) noexcept;

/// The same for 64 bits: at most 65 characters with the NUL.
ZK_UTIL_API char* _i64toa(long long value, char* text, int radix) noexcept;

/// Compares two texts with 'A' to 'Z' as 'a' to 'z'; no other rule of a language is supplied.
/// Null comes before every text.
ZK_UTIL_API int WINAPI lstrcmpiA(LPCSTR a, LPCSTR b) noexcept;

/// The length of a text in bytes; 0 for null.
ZK_UTIL_API int WINAPI lstrlenA(LPCSTR text) noexcept;

/// Turn the letters of a UTF-8 text into upper or lower case, in place, and give `text` back.
///
/// A letter whose other case takes another number of bytes, and bytes that are no UTF-8, stay as
/// they are. Letters outside ASCII need the C library's locale "C.UTF-8". A `text` whose value
/// is below 0x10000 is one character in the low byte, and the result is that character; 128 to
/// 255 have no case.
ZK_UTIL_API LPSTR WINAPI CharUpperA(LPSTR text) noexcept;
ZK_UTIL_API LPSTR WINAPI CharLowerA(LPSTR text) noexcept;

/// The same for `length` bytes, which may hold NULs. The result is `length`.
ZK_UTIL_API DWORD WINAPI CharUpperBuffA(LPSTR text, DWORD length) noexcept;
ZK_UTIL_API DWORD WINAPI CharLowerBuffA(LPSTR text, DWORD length) noexcept;

/// The next UTF-8 character of a text; at its end, the end. A byte that belongs to no character
/// counts as one.
ZK_UTIL_API LPSTR WINAPI CharNextA(LPCSTR position) noexcept;

/// The UTF-8 character before `position`; `start` if there is none.
ZK_UTIL_API LPSTR WINAPI CharPrevA(LPCSTR start, LPCSTR position) noexcept;
