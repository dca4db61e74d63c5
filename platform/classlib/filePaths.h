// filePaths.h: the parts of a path that the file classes tell.
#pragma once

#include "platform/classlib/CString.h"

namespace zk {

/// The full path of a name relative to the current directory; the name itself if the system has none.
CString fullPath(char const* name);

/// What stands behind the last separator (of either kind on a system that knows both).
CString lastComponent(CString const& path);

/// A name without its extension; one that begins with its only dot stays whole.
CString withoutExtension(CString const& name);

/// What stands before the last separator; the separator stays if it is the root. Empty without one.
CString folderOf(CString const& path);

}  // namespace zk
