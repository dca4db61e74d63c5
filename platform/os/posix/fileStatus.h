// fileStatus.h: what an entry of a directory is, as the file operations see it.
//
//   FileStatus status;
//   if (DWORD const error = statusOf("model.cpp", status))
//       return report(error);                     // 2: no such file, 3: no such folder
//   status.attributes();                          // FILE_ATTRIBUTE_ARCHIVE
//
// A symbolic link shows the size, the times and the kind of what it leads to,
// and FILE_ATTRIBUTE_REPARSE_POINT says that it is one. A link that leads
// nowhere shows itself.
#pragma once

#include "platform/os/posix/fileAttributes.h"
#include "platform/os/posix/types.h"

#include <sys/stat.h>
#include <time.h>

#include <climits>
#include <string_view>

namespace zk::os {

struct FileStatus {
    mode_t mode = 0;
    bool isLink = false;
    ULONGLONG size = 0;  ///< 0 for what is no regular file.
    DWORD links = 0;
    ULONGLONG device = 0;
    ULONGLONG number = 0;  ///< the inode
    FILETIME created = {};
    FILETIME accessed = {};
    FILETIME written = {};

    bool isDirectory() const noexcept { return S_ISDIR(mode); }
    bool isRegular() const noexcept { return S_ISREG(mode); }
    bool isReadOnly() const noexcept { return (mode & S_IWUSR) == 0; }
    bool isSameFileAs(FileStatus const& other) const noexcept
    {
        return number == other.number && device == other.device;
    }
    DWORD attributes() const noexcept;
};

/// The status behind a path, links followed. Gives the error, 0 for none.
DWORD statusOf(char const* path, FileStatus& status) noexcept;

/// The same for an entry of an open directory.
DWORD statusIn(int folder, char const* name, FileStatus& status) noexcept;

/// The status of the entry itself: of the link, where it is one.
DWORD statusOfEntry(char const* path, FileStatus& status) noexcept;

/// The status behind a descriptor.
DWORD statusOf(int descriptor, FileStatus& status) noexcept;

/// The error number for a call that failed with an errno value on a path.
///
/// A missing file is ERROR_FILE_NOT_FOUND if its folder exists, else
/// ERROR_PATH_NOT_FOUND; a separator behind the name of a file is
/// ERROR_INVALID_NAME.
DWORD errorOfPath(char const* path, int error) noexcept;

/// The folder part of a path: "." for a bare name, "/" for an entry of the root.
std::string_view folderOf(std::string_view path) noexcept;

/// The folder part of a path for a call that wants it with a NUL. Nothing is
/// allocated; of a path that is longer than the system takes any it is empty.
class FolderPath {
public:
    explicit FolderPath(std::string_view path) noexcept;
    char const* c_str() const noexcept { return text_; }

private:
    char text_[PATH_MAX];
};

/// A path without the separators behind its last name; "/" stays.
std::string_view withoutEndingSeparators(std::string_view path) noexcept;

/// The name in a path: what stands behind the last separator.
std::string_view nameOf(std::string_view path) noexcept;

inline bool endsInSeparator(std::string_view path) noexcept
{
    return !path.empty() && path.back() == '/';
}

inline bool isEmpty(char const* path) noexcept
{
    return !path || !*path;
}

/// The two ways to tell a time. A file time counts 100 ns from 1601 on and cannot be earlier.
FILETIME fileTimeOf(timespec const& time) noexcept;
timespec timeOf(FILETIME const& time) noexcept;

inline ULONGLONG ticksOf(FILETIME const& time) noexcept
{
    return ULONGLONG(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

inline FILETIME fileTimeOfTicks(ULONGLONG ticks) noexcept
{
    return {DWORD(ticks), DWORD(ticks >> 32)};
}

constexpr LONGLONG ticksPerSecond = 10'000'000;
constexpr LONGLONG secondsFrom1601To1970 = 11'644'473'600;

}  // namespace zk::os
