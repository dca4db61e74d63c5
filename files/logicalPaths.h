// logicalPaths.h: paths that name a place by a setting, and the folder for temporary files.
//
//   CString path("$OMROOT/Share/etc");            // "$OMROOT" stands for the setting OMROOT
//   translateToFullPath(path);                    // true; "/opt/zentrika/Share/etc"
//   arePathsEqual("a/b/", "A\\x\\..\\b");         // true
//
// A logical name is a whole component that begins with '$'. It stands for the
// setting of that name in the section "General": the profile first, the
// process environment second. The first value found for a name stands for the
// life of the process. The names found are kept without a lock: the main thread
// alone calls expandLogicalPath, translateToFullPath and arePathsEqual.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

/// Writes `path` with its logical names replaced to `result`, and gives whether any was.
///
/// Both slashes separate components. They lose the blanks at their ends, empty ones vanish, and the native
/// separator joins them; one or two native separators in front stay. If the first logical name is unknown, the
/// result is false with that name alone, without '$', in `result`; an unknown one after a known one becomes
/// empty. False alone doesn't tell an unknown name from a path without any.
ZK_UTIL_API bool expandLogicalPath(CString const& path, CString& result);

/// Expands `path` in place, makes all slashes native and takes ".." components out; gives what
/// expandLogicalPath gives. The current directory is not asked. An expansion that is empty leaves the path.
ZK_UTIL_API bool translateToFullPath(CString& path);

/// Whether two paths are the same text once translated, letters compared without case.
ZK_UTIL_API bool arePathsEqual(CString a, CString b);

/// The folder for temporary files, without a separator at its end: the system's; else the setting
/// "General", "TEMP_DIR", which is written if it is absent.
ZK_UTIL_API CString omGetTempDir();
