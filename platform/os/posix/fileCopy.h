// fileCopy.h: how the content of a file gets to another place without a
// half-written file ever standing there.
//
//   CopyOptions const options{.replace = true};
//   return report(copyFile("model.txt", "/mnt/model.txt", options));
//
// The copy is written to a temporary file in the target's folder, gets the
// mode and the time of the source, and takes the target's name at the end.
#pragma once

#include "platform/os/posix/types.h"

namespace zk::os {

struct CopyOptions {
    bool replace = false;    ///< An existing target is replaced; otherwise ERROR_FILE_EXISTS.
    bool keepOwner = false;  ///< As far as this process may give files away.
    bool toDisk = false;     ///< Before the copy takes its name, its content is on the disk.
};

/// Copies a regular file; whether the target may be replaced is not asked here.
/// @throws std::bad_alloc, and nothing has changed then
DWORD copyFile(char const* from, char const* to, CopyOptions const& options);

/// Makes a symbolic link at `to` that says what the one at `from` says.
/// @throws std::bad_alloc, and nothing has changed then
DWORD copyLink(char const* from, char const* to, CopyOptions const& options);

/// Renames, but fails with ERROR_FILE_EXISTS where `to` exists. Where the file
/// system has no such call, a file is linked and unlinked; a folder is looked
/// for beforehand. Gives an errno value.
int renameToFree(char const* from, char const* to) noexcept;

/// Brings the names in the folder of `path` to the disk. False if that failed;
/// true also where it cannot be tried: in a folder that this user may not read,
/// and on a file system that has no such call.
bool flushFolderOf(char const* path) noexcept;

}  // namespace zk::os
