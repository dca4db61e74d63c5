// customColors.h: the user's own colours of the colour dialog, kept in the profile.
#pragma once

#include "zk_export.h"

/// Fills the array of 16 from "Settings", "CustomColors": as many entries as the text has fields (16 at most),
/// 0 for a field that is no colour. False, with the array unchanged, if there is no such setting.
ZK_UTIL_API bool omGetEnvCustomColors(unsigned long* colors);

/// Writes the array of 16 to the profile. False without a profile or an array.
ZK_UTIL_API bool omSetEnvCustomColors(unsigned long* colors);
