// keeping.h: which settings a profile keeps such that readers get them as they were given.
//
//   whyNotKept("General", "Depth", "1\n2");       // "a value cannot hold a line break"
//   asWritten("\"quoted\"");                      // ""quoted"": readers take one pair of quotes off
#pragma once

#include "platform/classlib/CString.h"

#include <string>

namespace zkprofile {

/// What is wrong with the names or the value, for the user; empty if nothing is.
std::string whyNotKept(CString const& section, CString const& key, CString const& value);

/// The text in the file that readers see as `value`.
CString asWritten(CString const& value);

}  // namespace zkprofile
