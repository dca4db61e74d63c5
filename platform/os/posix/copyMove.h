// copyMove.h: copies of files, and new names for files and folders.
//
//   CopyFileA("model.txt", "model.bak", FALSE);
//   MoveFileExA("model.new", "model.txt", MOVEFILE_REPLACE_EXISTING);
//
// Both put a target in place in one step: whoever looks sees the old content
// or the new, whole. A failure leaves the target as it was and nothing beside it.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define MOVEFILE_REPLACE_EXISTING 0x00000001u
#define MOVEFILE_COPY_ALLOWED 0x00000002u
#define MOVEFILE_WRITE_THROUGH 0x00000008u

/// Copies a file with its mode and the time of its last writing.
///
/// A symbolic link is followed on both sides and stays one. ERROR_FILE_EXISTS
/// if there is a target and `failIfExists` is set; ERROR_ACCESS_DENIED for a
/// folder, a read-only target, and anything but a regular file;
/// ERROR_SHARING_VIOLATION for a file copied onto itself, a source that nobody
/// else may read, and a target that somebody has open.
ZK_UTIL_API BOOL WINAPI CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) noexcept;

/// MoveFileExA() with MOVEFILE_COPY_ALLOWED.
ZK_UTIL_API BOOL WINAPI MoveFileA(LPCSTR from, LPCSTR to) noexcept;

/// Gives a file or a folder another name.
///
/// Without MOVEFILE_REPLACE_EXISTING an existing target is
/// ERROR_ALREADY_EXISTS, with it a folder, a read-only file or one that
/// somebody reads or writes, whatever is shared, is ERROR_ACCESS_DENIED. Across file systems a file is
/// copied and the old one removed, under MOVEFILE_COPY_ALLOWED, else
/// ERROR_NOT_SAME_DEVICE; a folder is ERROR_ACCESS_DENIED then. The copy is on
/// the disk before the old file goes; if that cannot be removed, or the new name
/// cannot be brought to the disk, both stay and the call succeeds. With
/// MOVEFILE_WRITE_THROUGH the new name is on the disk too when the call returns,
/// as far as the disk takes it: a move that is done is a success.
/// ERROR_SHARING_VIOLATION for a source that somebody has open without
/// FILE_SHARE_DELETE, ERROR_INVALID_PARAMETER for other flags. A symbolic link
/// is moved itself, with separators behind its name too.
ZK_UTIL_API BOOL WINAPI MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) noexcept;
