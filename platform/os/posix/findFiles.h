// findFiles.h: the entries of a folder that match a pattern.
//
//   WIN32_FIND_DATAA entry;
//   HANDLE const search = FindFirstFileA("src/*.cpp", &entry);
//   if (search != INVALID_HANDLE_VALUE) {
//       do
//           puts(entry.cFileName);                        // "." and ".." match "*" too
//       while (FindNextFileA(search, &entry));            // FALSE and ERROR_NO_MORE_FILES at the end
//       FindClose(search);
//   }
//
// In the last component of the path "*" stands for any number of characters
// and "?" for one; a ".*" at the end also matches names without it, so that
// "*.*" matches everything. Letters match with case. The names are those of the
// moment of the first call, in the order of their upper-case forms; an entry
// that is gone when its turn comes is passed over.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <string_view>

struct WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;  ///< IO_REPARSE_TAG_SYMLINK for a symbolic link.
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14];  ///< Empty: no entry has a second name.
};
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;

/// Begins a search, fills `entry` with the first match and gives a handle for
/// FindNextFileA() and FindClose().
///
/// INVALID_HANDLE_VALUE on failure: ERROR_FILE_NOT_FOUND if nothing matches,
/// as is always so for a separator at the end; ERROR_PATH_NOT_FOUND without
/// the folder, ERROR_NOT_ENOUGH_MEMORY without room for its names. "." and ".."
/// at the end of the path are given under the name that the folder has.
///
/// Cost: without "*" and "?" one look at the entry (two at a link), and nothing
/// is kept. Otherwise all names of the folder are read here, those that match
/// are kept and sorted, and the folder stays open until FindClose(); an entry is
/// looked at when its turn comes.
ZK_UTIL_API HANDLE WINAPI FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA entry) noexcept;

/// Fills `entry` with the next match. FALSE and ERROR_NO_MORE_FILES after the last.
ZK_UTIL_API BOOL WINAPI FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA entry) noexcept;

/// Ends a search. ERROR_INVALID_HANDLE for a handle that is none of a search.
ZK_UTIL_API BOOL WINAPI FindClose(HANDLE search) noexcept;

namespace zk::os {

/// Whether a name matches a pattern in the sense above. Cost: at most the product of the lengths.
bool matchesFilePattern(std::string_view name, std::string_view pattern) noexcept;

}  // namespace zk::os
