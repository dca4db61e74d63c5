// directories.h: folders, the current directory, and taking entries away.
//
//   CreateDirectoryA("out", nullptr);
//   DeleteFileA("out/model.cpp");
//   RemoveDirectoryA("out");
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

/// Makes a folder; the one around it must exist.
///
/// ERROR_ALREADY_EXISTS if the name is taken, ERROR_PATH_NOT_FOUND without the
/// folder around it, ERROR_INVALID_PARAMETER for a security descriptor.
ZK_UTIL_API BOOL WINAPI CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES security) noexcept;

/// Removes an empty folder, or a symbolic link to a folder (the link alone).
/// ERROR_DIR_NOT_EMPTY, and ERROR_DIRECTORY for what is no folder.
ZK_UTIL_API BOOL WINAPI RemoveDirectoryA(LPCSTR name) noexcept;

/// Removes a file or a symbolic link. Its name is gone at once, also while
/// handles that share the deletion are still open.
///
/// ERROR_ACCESS_DENIED for a folder, a link to one, and a read-only file;
/// ERROR_SHARING_VIOLATION while somebody has it open without FILE_SHARE_DELETE.
ZK_UTIL_API BOOL WINAPI DeleteFileA(LPCSTR name) noexcept;

/// The current directory. Gives its length, or, if `room` is too small for it
/// and its NUL, the room needed; `buffer` is then not touched. 0 on failure.
ZK_UTIL_API DWORD WINAPI GetCurrentDirectoryA(DWORD room, LPSTR buffer) noexcept;

/// Makes a folder the current directory of the process. ERROR_DIRECTORY for a file.
ZK_UTIL_API BOOL WINAPI SetCurrentDirectoryA(LPCSTR name) noexcept;
