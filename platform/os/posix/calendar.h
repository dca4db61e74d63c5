// calendar.h: seconds since 1970 to calendar times, and back.
//
//   __time64_t const now = 1000000000;
//   tm utc;
//   _gmtime64_s(&utc, &now);               // 0; 9 September 2001, 1:46:40
//
// The zone is that of TZ, else the system's. Supplied for the times from 1970
// to the end of the year 3000, as on the other target; all others are refused.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <ctime>

using __time64_t = std::int64_t;

/// Splits a time up in the local zone. Gives 0; EINVAL for a null argument or a
/// time out of range, with all fields then -1. May be called by any thread.
ZK_UTIL_API int _localtime64_s(tm* calendar, __time64_t const* time) noexcept;

/// The same in UTC.
ZK_UTIL_API int _gmtime64_s(tm* calendar, __time64_t const* time) noexcept;

/// The time that a calendar time in the local zone is, with the fields brought
/// into their ranges and the week and year days filled in; -1 if out of range.
ZK_UTIL_API __time64_t _mktime64(tm* calendar) noexcept;
