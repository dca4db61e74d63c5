// currentFolder.h: the process's current directory, of any length.
#pragma once

#include "platform/classlib/CString.h"

namespace zk {

/// Reads the current directory; false, with `folder` empty and the last error set, if it cannot be told.
bool readCurrentFolder(CString& folder);

}  // namespace zk
