// messages.h: parts of what the user is told.
#pragma once

#include "platform/classlib/CString.h"
#include "platform/os/os.h"

#include <string>

namespace zkprofile {

/// The system's sentence for an error number, without its full stop.
std::string reasonFor(DWORD error);

/// A name in quotes, without characters that a terminal obeys.
std::string quoted(CString const& name);

}  // namespace zkprofile
