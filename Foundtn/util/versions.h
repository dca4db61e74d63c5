// versions.h: the version of the application that this library is released with.
//
//   omGetCurrentVersionId();     // "8.4"
//   omGetCurrentFixPackID();     // "8.4.0.0"
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

// The texts are fixed for a release.
ZK_UTIL_API CString omGetCurrentVersionId();         ///< "8.4"
ZK_UTIL_API CString omGetCurrentMajorVersionId();    ///< "8.4"
ZK_UTIL_API CString omGetCurrentMinorVersionId();    ///< ""
ZK_UTIL_API CString omGetCurrentVersionText();       ///< "8.4"
ZK_UTIL_API CString omGetCurrentFixPackID();         ///< "8.4.0.0"
ZK_UTIL_API CString omGetCurrentIFixVersion();       ///< "8.4.0.0.3"
ZK_UTIL_API CString omGetCurrentIFixStr();           ///< "iFix003"
ZK_UTIL_API CString omGetCurrentZMMVersion();        ///< "11.1.0"
ZK_UTIL_API CString omGetMinimumZMMServerVersion();  ///< "11.0.0"
ZK_UTIL_API CString omGetCurrentXTCAPIVersion();     ///< "8.4.0.0.0"
ZK_UTIL_API CString omGetBuildNumber();              ///< "9844162"

/// Copies the build number with its NUL, 8 bytes, into `buffer`. Always 0.
ZK_UTIL_API int getBuildNo(char* buffer);

ZK_UTIL_API bool is32BitsApplication();  ///< false
ZK_UTIL_API bool is64BitsApplication();  ///< true
ZK_UTIL_API bool IsLinuxEL4();           ///< false

/// What this process is known by to its peers: "ZENTRIKA2.8.4.0.0:<process id>:x64". Built once.
ZK_UTIL_API CString omGetConnectionString();
