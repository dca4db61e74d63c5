// CCgPrintf.h: the toolkit's own sprintf, in which translators may change the order of values.
//
//   CxStringBuff text;
//   CCgPrintf(text, "%2$s: %1$05d", 42, "units");     // "units: 00042"
//
// A directive is "%", then optionally "n$", the flags "-", "+", " ", "0", "#" and "'" (digits in groups
// as the C locale has them), a width and a precision, each a number, "*" or "*n$", a length (h hh l ll L
// I64 j q t z Z) and a conversion (d i u o x X c C s S a A e E f F g G p n). "%%" is one "%".
//
// A directive without "n$" takes the next index of a counter of its own: "%2$s %s" of a and b is "b a".
// "%n" writes nothing and prints nothing. Widths and precisions end at 65535.
#pragma once

#include "logging/CCgParmList.h"
#include "logging/util/CxStringBuff.h"
#include "zk_export.h"

#include <cstdarg>

/// Adds `format` to a buffer with values from a typed list.
///
/// Each value is printed as the type that it has: a directive for another type never reinterprets it.
/// "%s" of 42 is "42", "%d" of a text is the text, "%d" of 2.5 is "2.500000", "%f" of 1 is "1.000000".
/// Gives false, with the buffer as it was, for a malformed directive or a parameter that is missing.
/// No list is an empty list.
ZK_UTIL_API bool CCgPrintfList(CxStringBuff& buffer, char const* format, CCgParmList const* parameters);

/// The same with values as for printf; they must be there and have the types that the format says.
///
/// Gives false too for an index above 64, one that no directive uses below one that is used, and one
/// that is used with two types. Wide characters are converted into the default code set, or, while the
/// toolkit is stopped, into the process's code page, with "?" for those it lacks; a null text is "(null)".
ZK_UTIL_API bool CCgPrintfV(CxStringBuff& buffer, char const* format, std::va_list arguments);
ZK_UTIL_API bool CCgPrintf(CxStringBuff& buffer, char const* format, ...);
