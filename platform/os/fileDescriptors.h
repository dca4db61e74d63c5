// fileDescriptors.h: files by descriptor, as the C runtime has them.
//
//   int const file = zk::os::openDescriptor("a.log", zk::os::openWrite | zk::os::openCreate, 0644);
//   if (file == -1)
//       report(errno);                                      // 2: there is no such folder
//   zk::os::writeDescriptor(file, "text\n", 5);
//   zk::os::closeDescriptor(file);
//
// Nothing keeps others from the file, and no handle stands between: a call here is one call into the
// system. What fails tells so by -1 or false and `errno`, with the numbers of the C runtime, which are the
// same everywhere for the failures that are named below.
#pragma once

#include "platform/os/exportMacro.h"

#include <cstddef>
#include <cstdint>

namespace zk::os {

enum : unsigned {
    openRead = 1,
    openWrite = 2,
    openAppend = 4,      ///< each write goes to the end
    openCreate = 8,      ///< a file that is missing is made
    openTruncate = 16,   ///< the file is emptied
    openExclusive = 32,  ///< with openCreate: a file that exists is a failure (EEXIST)
    openText = 64,       ///< a line feed is written and read as the system ends its lines
    openWary = 128,      ///< a link that another user laid into a folder for everybody is a failure (ELOOP)
};

/// Opens a file and gives its descriptor, which no child process inherits.
///
/// `permissions` are those of a file that is made; a system that has none looks at the owner's right
/// to write alone. -1 on failure: ENOENT without the file or its folder, EEXIST, EACCES for one that may not
/// be opened so (and on Windows for a folder, which elsewhere is EISDIR), EMFILE.
ZK_UTIL_API int openDescriptor(char const* path, unsigned flags, int permissions) noexcept;

/// Closes a descriptor: 0, or -1 with EBADF for what is none, and with the error of what was still to be
/// written. The descriptor is gone in either case.
ZK_UTIL_API int closeDescriptor(int descriptor) noexcept;

/// Reads what there is, up to `length` bytes; 0 is the end. -1 on failure.
ZK_UTIL_API std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t length) noexcept;

/// Writes all bytes, in one call into the system if that takes them at once. False on failure, such as
/// ENOSPC for a full disk: a part may have been written then.
ZK_UTIL_API bool writeDescriptor(int descriptor, void const* buffer, std::size_t length) noexcept;

enum class SeekFrom { start, position, end };

/// Moves the position and gives it; -1 on failure.
ZK_UTIL_API std::int64_t seekDescriptor(int descriptor, std::int64_t distance, SeekFrom from) noexcept;

/// Cuts or lengthens the file to `size` bytes; the position stays.
ZK_UTIL_API bool resizeDescriptor(int descriptor, std::int64_t size) noexcept;

/// Brings what was written to the disk. On failure the system's last error tells why.
ZK_UTIL_API bool flushDescriptor(int descriptor) noexcept;

/// What the file system knows of a file. Times are seconds since the beginning of 1970.
struct DescriptorStatus {
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    std::int64_t accessed = 0;
    std::int64_t changed = 0;  ///< on Windows: created
    bool isRegular = false;
    bool isFolder = false;
    std::uint64_t device = 0;  ///< with the number the file's identity; 0 where the runtime does not tell it
    std::uint64_t number = 0;
};

/// The status behind a descriptor, and behind a path, links followed. False on failure, with ENOENT for a
/// path that leads nowhere.
ZK_UTIL_API bool statusOfDescriptor(int descriptor, DescriptorStatus& status) noexcept;
ZK_UTIL_API bool statusOfPath(char const* path, DescriptorStatus& status) noexcept;

/// Whether a descriptor has a file of this identity behind it. True for the identity 0, which none has.
///
/// Asks for no times: a file whose times are asked for after each write takes twice as long to write.
ZK_UTIL_API bool descriptorIsOf(int descriptor, std::uint64_t device, std::uint64_t number) noexcept;

/// Makes a folder with these permissions, where the system has such. 0, or -1 with EEXIST if the name is
/// taken and ENOENT without the folder around it.
ZK_UTIL_API int makeFolder(char const* path, int permissions) noexcept;

}  // namespace zk::os
