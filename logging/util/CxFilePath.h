// CxFilePath.h: paths of folders, and folders made with all those around them.
//
//   CxFilePath path;
//   if (CxFilePathMake(path, "logs/today").ok())
//       CxFilePathMakeDirectories(path, 0771);
//
// Where the backslash is the separator, each one becomes "/" in the record; elsewhere it is a byte of a name.
#pragma once

#include "logging/CCgResult.h"
#include "logging/util/CxFile.h"
#include "zk_export.h"

#include <cstdint>
#include <string_view>

struct CxFilePath {
    char path[CX_LONGEST_PATH + 1] = "";  ///< with "/" between names
    std::int32_t length = 0;
    std::int32_t lastSlash = -1;  ///< where the last "/" stands; -1: there is none

    std::string_view view() const noexcept { return {path, static_cast<std::size_t>(length)}; }
};

/// Makes a path from a text. Null and one of more than 260 bytes are 'p' and 22; the path is empty then.
ZK_UTIL_API CCgResult CxFilePathMake(CxFilePath& path, char const* text) noexcept;

/// Success if the path leads to a folder. 'p' and 20 for something else, 'p' and 2 for nothing.
ZK_UTIL_API CCgResult CxFilePathIsDirectory(CxFilePath const& path);

/// The folder around a path: what stands before its last "/". False, and `parent` as it was, for a path
/// without one, for a root and for a bare drive. `parent` may be `path` itself.
ZK_UTIL_API bool CxFilePathParent(CxFilePath const& path, CxFilePath& parent) noexcept;

/// Makes the folder and those around it that are missing, each with these permissions where the system has
/// such. A folder that is there already is a success; a file in the way is 'p' and 20. On failure the
/// folders made so far stay.
ZK_UTIL_API CCgResult CxFilePathMakeDirectories(CxFilePath const& path, int permissions = 0777);
