#include "platform/os/posix/fileStatus.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>

namespace zk::os {
namespace {

timespec timespecOf(statx_timestamp const& time) noexcept
{
    return {time.tv_sec, time.tv_nsec};
}

void fill(FileStatus& status, struct statx const& found) noexcept
{
    status.mode = found.stx_mode;
    status.size = S_ISREG(found.stx_mode) ? found.stx_size : 0;
    status.links = found.stx_nlink;
    status.device = makedev(found.stx_dev_major, found.stx_dev_minor);
    status.number = found.stx_ino;
    status.accessed = fileTimeOf(timespecOf(found.stx_atime));
    status.written = fileTimeOf(timespecOf(found.stx_mtime));
    // Where the file system keeps no time of birth, the file is at least as old as its older time.
    ULONGLONG const oldest =
        std::min(ticksOf(status.written), ticksOf(fileTimeOf(timespecOf(found.stx_ctime))));
    status.created =
        found.stx_mask & STATX_BTIME ? fileTimeOf(timespecOf(found.stx_btime)) : fileTimeOfTicks(oldest);
}

int look(int folder, char const* name, int flags, FileStatus& status) noexcept
{
    struct statx found;
    if (systemCalls().statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME, &found) == -1)
        return errno;
    fill(status, found);
    return 0;
}

int lookThroughLinks(int folder, char const* name, FileStatus& status) noexcept
{
    if (int const error = look(folder, name, AT_SYMLINK_NOFOLLOW, status))
        return error;
    status.isLink = S_ISLNK(status.mode);
    if (status.isLink)
        look(folder, name, 0, status);  // leaves the status alone if the link leads nowhere
    return 0;
}

}  // namespace

DWORD FileStatus::attributes() const noexcept
{
    DWORD bits = isDirectory() ? FILE_ATTRIBUTE_DIRECTORY : isRegular() ? FILE_ATTRIBUTE_ARCHIVE : 0;
    if (isReadOnly())
        bits |= FILE_ATTRIBUTE_READONLY;
    if (isLink)
        bits |= FILE_ATTRIBUTE_REPARSE_POINT;
    return bits != 0 ? bits : FILE_ATTRIBUTE_NORMAL;
}

DWORD statusOf(char const* path, FileStatus& status) noexcept
{
    int const error = lookThroughLinks(AT_FDCWD, path, status);
    return error ? errorOfPath(path, error) : ERROR_SUCCESS;
}

DWORD statusIn(int folder, char const* name, FileStatus& status) noexcept
{
    return errorFromErrno(lookThroughLinks(folder, name, status));
}

DWORD statusOfEntry(char const* path, FileStatus& status) noexcept
{
    int const error = look(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW, status);
    status.isLink = S_ISLNK(status.mode);
    return error ? errorOfPath(path, error) : ERROR_SUCCESS;
}

DWORD statusOf(int descriptor, FileStatus& status) noexcept
{
    return errorFromErrno(look(descriptor, "", AT_EMPTY_PATH, status));
}

DWORD errorOfPath(char const* path, int error) noexcept
{
    if (error == ENOTDIR)
        return endsInSeparator(path) ? ERROR_INVALID_NAME : ERROR_PATH_NOT_FOUND;
    if (error != ENOENT)
        return errorFromErrno(error);
    struct stat folder;
    bool const hasFolder =
        systemCalls().stat(FolderPath(path).c_str(), &folder) == 0 && S_ISDIR(folder.st_mode);
    return hasFolder ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

std::string_view folderOf(std::string_view path) noexcept
{
    std::size_t const nameEnd = path.find_last_not_of('/');
    if (nameEnd == path.npos)
        return path.empty() ? "." : "/";
    std::size_t const separator = path.find_last_of('/', nameEnd);
    if (separator == path.npos)
        return ".";
    std::size_t const end = path.find_last_not_of('/', separator);
    return end == path.npos ? "/" : path.substr(0, end + 1);
}

FolderPath::FolderPath(std::string_view path) noexcept
{
    std::string_view const folder = folderOf(path);
    std::size_t const length = folder.size() < sizeof text_ ? folder.size() : 0;
    folder.copy(text_, length);
    text_[length] = '\0';
}

std::string_view withoutEndingSeparators(std::string_view path) noexcept
{
    std::size_t const last = path.find_last_not_of('/');
    return path.substr(0, last == path.npos ? 1 : last + 1);
}

std::string_view nameOf(std::string_view path) noexcept
{
    return path.substr(path.find_last_of('/') + 1);
}

FILETIME fileTimeOf(timespec const& time) noexcept
{
    // Seconds that fit no file time end at its limits.
    constexpr LONGLONG latest = INT64_MAX / ticksPerSecond - secondsFrom1601To1970 - 1;
    LONGLONG const seconds = std::clamp<LONGLONG>(time.tv_sec, -secondsFrom1601To1970, latest);
    return fileTimeOfTicks(
        ULONGLONG((seconds + secondsFrom1601To1970) * ticksPerSecond + time.tv_nsec / 100));
}

timespec timeOf(FILETIME const& time) noexcept
{
    auto const ticks = LONGLONG(ticksOf(time));
    return {ticks / ticksPerSecond - secondsFrom1601To1970, ticks % ticksPerSecond * 100};
}

}  // namespace zk::os
