// timeZone.h: how far the local zone lies from Greenwich.
//
//   zk::os::secondsWestOfGreenwich();       // 18000 in New York, in summer too; -19800 in Delhi
#pragma once

#include "platform/os/exportMacro.h"

namespace zk::os {

/// The seconds from Greenwich to the local zone's standard time, positive in the west.
///
/// The zone is the one that the C library last took from TZ, else from the
/// system; every call that splits a time up in the local zone does that.
ZK_UTIL_API long secondsWestOfGreenwich() noexcept;

/// Whether that zone has daylight-saving time at any time of the year.
ZK_UTIL_API bool hasDaylightSavingTime() noexcept;

}  // namespace zk::os
