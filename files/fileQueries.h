// fileQueries.h: plain questions about the file system.
//
//   omFileExist("src/model.cpp");                  // 1
//   CString error;
//   omGetFullPathOfDirectory("../src", error);     // "/home/me/src"
//   omFileHasWritePermission("src/model.cpp");     // 0: it is read-only
//
// Nothing here changes the file system, speaks to the user or throws (but
// std::bad_alloc). All may be called by any thread but two: omDirExist and
// omGetFullPathOfDirectory change the current directory for the length of the
// call, and belong to the main thread.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

/// 1 if a file or folder of that name exists, or, for a pattern with "*" and "?", any that matches; else 0.
/// A name that ends in a separator is never found.
ZK_UTIL_API int omFileExist(CString const& path);

/// True if `path` exists and has a size other than 0.
ZK_UTIL_API bool omFileExistsAndNonEmpty(CString const& path);

/// 1 if the process can enter `dir`; an empty name is the current directory. On 0 the system's reason goes to
/// `*error`, if that is not null. Where the current directory itself cannot be told the answer is 1.
ZK_UTIL_API int omDirExist(CString dir, CString* error = nullptr);

/// The full path of a folder, found by entering it; of the current directory for an empty name.
///
/// On failure the result is empty and `error` holds the system's reason; otherwise `error` is empty.
ZK_UTIL_API CString omGetFullPathOfDirectory(CString dir, CString& error);

/// 1 if `path` exists and may be read; else 0.
ZK_UTIL_API int omFileHasReadPermission(CString const& path);

/// 1 if `path` exists and may be written to; else 0. The folder "My Documents" of the user's profile (the
/// variable USERPROFILE, as it was at the first call), in any case, counts as writable if it exists.
ZK_UTIL_API int omFileHasWritePermission(CString const& path);

/// The same for a folder; null and empty mean the current directory.
ZK_UTIL_API int dirHasReadPermission(char const* dir);
ZK_UTIL_API int dirHasWritePermission(char const* dir);

/// 1 if `file` may be written to: an existing one needs `dir` and itself to be writable, for a new one `dir`
/// alone decides. A null or empty `dir` is the current directory.
ZK_UTIL_API int fileHasWritePermission(char const* file, char const* dir);

/// The system's sentence for the calling thread's last error, in the user's language; empty if it has none.
ZK_UTIL_API CString omGetErrorCodeString();
