// CxTrace.h: traces of a developer, on standard error. Nothing in the library writes any.
//
//   CxTraceEnter("load");             // ENTER load
//   CxTrace("12 units");              //    ... 12 units
//   CxTraceLeave("load");             // LEAVE load
//
// Each thread has an indentation of its own, which begins at 0.
#pragma once

#include "zk_export.h"

/// Prints "ENTER " and the text, and indents what this thread prints next by 3 more.
ZK_UTIL_API void CxTraceEnter(char const* text) noexcept;

/// Takes 3 from the indentation, unless there is none, and prints "LEAVE " and the text.
ZK_UTIL_API void CxTraceLeave(char const* text) noexcept;

/// Prints "... " and the text.
ZK_UTIL_API void CxTrace(char const* text) noexcept;
