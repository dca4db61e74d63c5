// profileChange.h: changes a profile's file such that nothing is ever lost.
//
//   changeProfile("my.ini", [](std::string& text) { removeProfileKey(text, "General", "Depth"); return 0u; });
//
// The folder holds two more names in the meantime, ".my.ini.lock", which
// holds other writers off, and ".my.ini.new", the file that is to be. What a
// killed process leaves of them, the next writer takes away.
#pragma once

#include "platform/os/posix/types.h"

#include <functional>
#include <string>

namespace zk::os {

/// Replaces the content of a profile by what `edit` makes of it; if that is the same, nothing is written.
///
/// Gives the error, that of `edit` if it gives one; 0 for none. The file then is as it was.
DWORD changeProfile(char const* name, std::function<DWORD(std::string&)> const& edit);

}  // namespace zk::os
