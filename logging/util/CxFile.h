// CxFile.h: files by descriptor.
//
//   std::int32_t file;
//   if (CxFileOpen(file, "a.log", CX_FILE_READ | CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_APPEND).ok()) {
//       CxFileWrite(file, "text\n");
//       CxFileClose(file);
//   }
//
// A path is mapped first (CxMapPath), in every call that takes one. Children inherit no descriptor. A failure
// is 'p' with an error number of the C library, or 'w' with one of the system where that is said; a null
// path is 'p' and 22.
#pragma once

#include "logging/CCgResult.h"
#include "zk_export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// How a file is opened; a set of these.
enum CxFileFlags : unsigned {
    CX_FILE_READ = 1,
    CX_FILE_WRITE = 2,
    CX_FILE_APPEND = 4,      ///< each write goes to the end
    CX_FILE_CREATE = 8,      ///< a file that is missing is made
    CX_FILE_TRUNCATE = 16,   ///< the file is emptied
    CX_FILE_EXCLUSIVE = 32,  ///< with CX_FILE_CREATE: a file that exists is a failure
    CX_FILE_TEXT = 64,       ///< a line feed is written as the system ends its lines
    CX_FILE_WARY = 128,      ///< a link that another user laid into a folder for everybody is a failure
};

/// The longest path that a file call uses.
inline constexpr std::size_t CX_LONGEST_PATH = 260;

/// A path as file calls use it.
struct CxMappedPath {
    char text[CX_LONGEST_PATH + 1];
};

/// Maps a path for a file call.
///
/// Where the backslash is the separator, each "/" becomes one, and a path that begins with "/" gets the value
/// of the environment's `SystemDrive` and a backslash in front. Elsewhere the path stays. What comes out is cut
/// after 260 bytes. 'p' and 22 for such a path without `SystemDrive`, and for null. Allocates nothing for a path
/// that stays.
ZK_UTIL_API CCgResult CxMapPath(CxMappedPath& mapped, char const* path);

/// Opens a file. `mode` are the permissions of one that is made, on systems that have such. On failure
/// `file` is -1.
ZK_UTIL_API CCgResult CxFileOpen(std::int32_t& file, char const* path, unsigned flags, int mode = 0600);

/// Closes a file and sets the descriptor to -1, on failure too.
ZK_UTIL_API CCgResult CxFileClose(std::int32_t& file) noexcept;

/// Reads up to `length` bytes; `done` is what was read, 0 at the end.
ZK_UTIL_API CCgResult CxFileRead(std::int32_t file, void* buffer, std::size_t length,
                                 std::size_t& done) noexcept;

/// Writes all bytes, in one call into the system if that takes them at once. On failure a part may have
/// been written.
ZK_UTIL_API CCgResult CxFileWrite(std::int32_t file, std::string_view bytes) noexcept;

/// Moves the position to `offset` from the start.
ZK_UTIL_API CCgResult CxFileSeek(std::int32_t file, std::int64_t offset) noexcept;

/// Empties the file and moves the position to its start; a file that is not empty then is 'p' and 5.
ZK_UTIL_API CCgResult CxFileTruncate(std::int32_t file) noexcept;

/// Brings what was written to the disk. A failure is 'w'.
ZK_UTIL_API CCgResult CxFileFlush(std::int32_t file) noexcept;

/// The size of an open file, and of one behind a path.
ZK_UTIL_API CCgResult CxFileSize(std::int32_t file, std::uint64_t& size) noexcept;
ZK_UTIL_API CCgResult CxFileSizeOfPath(char const* path, std::uint64_t& size);

/// Deletes a file. A failure is 'w', with 2 for one that isn't there.
ZK_UTIL_API CCgResult CxFileDelete(char const* path);

/// Gives a file another name; a file that has it is replaced. A failure is 'w' and leaves both as they were.
ZK_UTIL_API CCgResult CxFileRename(char const* from, char const* to);

/// What is known of a file. Times are seconds since the beginning of 1970.
struct CxFileStatus {
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    std::int64_t accessed = 0;
    std::int64_t changed = 0;  ///< on Windows: created
    bool isRegular = false;    ///< a file, neither folder nor device
    bool isFolder = false;
    std::uint64_t device = 0;  ///< with the number the file's identity; both 0 where the system does not tell
    std::uint64_t number = 0;
};

/// The status of the file behind a path, links followed, and of an open one.
ZK_UTIL_API CCgResult CxFileStat(char const* path, CxFileStatus& status);
ZK_UTIL_API CCgResult CxFileStat(std::int32_t file, CxFileStatus& status) noexcept;
