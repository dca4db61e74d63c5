// dateAndUser.h: the current user, time and date as text for headers of generated files.
//
//   omGetCurrentDate() + omGetCurrentTime();     // "Sat, 21, Nov 2026 4:05 CET PM "
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// The name of the user's account; the variable "USERNAME" (up to 259 characters) if the system does not
/// tell, else empty.
ZK_UTIL_API CString omGetCurrentUser();

/// The local time on a clock of 12 hours, the name of the time zone, and "AM " or "PM ".
ZK_UTIL_API CString omGetCurrentTime();

/// The local date as day of the week, day, month and year, with a blank behind it. Names are those of the
/// locale in force (setlocale).
ZK_UTIL_API CString omGetCurrentDate();

/// The year in four digits.
ZK_UTIL_API CString omGetCurrentYear();
