#include "platform/os/posix/copyMove.h"

#include "platform/os/posix/fileCopy.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/sharing.h"
#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace zk::os;

namespace {

// Where a copy ends up: behind a link, at what it leads to.
std::string targetOf(char const* path, FileStatus const& status)
{
    if (!status.isLink)
        return path;
    struct Free {
        void operator()(char* text) const noexcept { std::free(text); }
    };
    std::unique_ptr<char, Free> const resolved(realpath(path, nullptr));
    return resolved ? resolved.get() : "";
}

DWORD copy(char const* from, char const* to, bool failIfExists)
{
    if (isEmpty(from) || isEmpty(to))
        return ERROR_PATH_NOT_FOUND;
    FileStatus source, target;
    if (DWORD const error = statusOf(from, source))
        return error;
    if (source.isDirectory())
        return ERROR_ACCESS_DENIED;
    DWORD const missing = statusOf(to, target);
    if (missing && missing != ERROR_FILE_NOT_FOUND)
        return missing;
    if (missing)
        return endsInSeparator(to) ? ERROR_INVALID_NAME : copyFile(from, to, {.replace = !failIfExists});

    if (failIfExists)
        return ERROR_FILE_EXISTS;
    if (source.isSameFileAs(target))
        return ERROR_SHARING_VIOLATION;
    // A link that leads nowhere is not written through: who has laid it decides where the copy goes.
    std::string const place = targetOf(to, target);
    if (place.empty())
        return errorOfPath(to, errno);
    if (!target.isRegular() || target.isReadOnly())
        return ERROR_ACCESS_DENIED;
    if (DWORD const error = checkSharing(place.c_str(), {.access = Sharing::all, .denied = Sharing::all}))
        return error;
    return copyFile(from, place.c_str(), {.replace = true});
}

// The status of the folder that holds the entry.
bool folderStatus(char const* path, FileStatus& status)
{
    return statusOf(folderOf(path).c_str(), status) == ERROR_SUCCESS;
}

std::string_view entryOf(std::string_view path) noexcept
{
    return nameOf(path.substr(0, path.find_last_not_of('/') + 1));
}

// Whether both paths say the same entry of the same folder, as "a" and "./a" do.
bool isSameEntry(char const* from, char const* to)
{
    FileStatus fromFolder, toFolder;
    return entryOf(from) == entryOf(to) && folderStatus(from, fromFolder) && folderStatus(to, toFolder) &&
        fromFolder.isSameFileAs(toFolder);
}

DWORD moveByCopy(char const* from, char const* to, FileStatus const& source, DWORD flags) noexcept
{
    if (!(flags & MOVEFILE_COPY_ALLOWED))
        return ERROR_NOT_SAME_DEVICE;
    if (!source.isRegular() && !source.isLink)
        return ERROR_ACCESS_DENIED;
    CopyOptions const options = {
        .replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0, .keepOwner = true, .toDisk = true};
    DWORD error = source.isLink ? copyLink(from, to, options) : copyFile(from, to, options);
    if (!error)
        error = flushFolder(folderOf(to));
    if (error)
        return error == ERROR_FILE_EXISTS ? ERROR_ALREADY_EXISTS : error;
    systemCalls().unlink(from);  // the file has arrived, even if the old one cannot go
    return ERROR_SUCCESS;
}

DWORD errorOfMove(char const* from, char const* to, FileStatus const& source, int error) noexcept
{
    FileStatus stillThere;
    if (error == ENOENT && statusOfEntry(from, stillThere) != ERROR_SUCCESS)
        return ERROR_FILE_NOT_FOUND;
    if (error == EEXIST || error == ENOTEMPTY)
        return ERROR_ALREADY_EXISTS;
    if (error == ENOTDIR && endsInSeparator(to) && !source.isDirectory())
        return ERROR_DIRECTORY;  // a file cannot be called "name/"
    return errorOfPath(to, error);
}

// Whether the target may be taken away: not by replacing it with itself,
// and not from somebody who uses it.
DWORD checkReplaceable(char const* to, FileStatus const& target) noexcept
{
    if (target.isLink)
        return ERROR_SUCCESS;
    if (target.isDirectory() || target.isReadOnly())
        return ERROR_ACCESS_DENIED;
    return target.isRegular() && checkSharing(to, {.access = Sharing::remove}) ? ERROR_ACCESS_DENIED
                                                                               : ERROR_SUCCESS;
}

int renameOver(char const* from, char const* to, FileStatus const& source, bool exists) noexcept
{
    if (!exists || !source.isDirectory())
        return systemCalls().rename(from, to) == -1 ? errno : 0;
    // The kernel replaces no file by a folder: they change places, and the file goes.
    if (systemCalls().renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_EXCHANGE) == -1)
        return errno;
    return systemCalls().unlink(from) == -1 ? errno : 0;
}

DWORD move(char const* from, char const* to, DWORD flags)
{
    if (flags & ~(MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH))
        return ERROR_INVALID_PARAMETER;
    if (isEmpty(from) || isEmpty(to))
        return ERROR_PATH_NOT_FOUND;
    FileStatus source, target;
    if (DWORD const error = statusOfEntry(from, source))
        return error;
    if (source.isRegular())
        if (DWORD const error = checkSharing(from, {.access = Sharing::remove}))
            return error;

    bool const replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    bool const exists = statusOfEntry(to, target) == ERROR_SUCCESS;
    if (exists && source.isSameFileAs(target) && isSameEntry(from, to))
        return ERROR_SUCCESS;
    if (exists && !replace)
        return ERROR_ALREADY_EXISTS;
    if (exists)
        if (DWORD const error = checkReplaceable(to, target))
            return error;
    // Two names of one file: the kernel would leave both.
    if (exists && source.isSameFileAs(target))
        return systemCalls().unlink(from) == -1 ? errorOfPath(from, errno) : ERROR_SUCCESS;

    int const error = replace ? renameOver(from, to, source, exists) : renameToFree(from, to);
    if (error == EXDEV)
        return moveByCopy(from, to, source, flags);
    if (error)
        return errorOfMove(from, to, source, error);
    return flags & MOVEFILE_WRITE_THROUGH ? flushFolder(folderOf(to)) : ERROR_SUCCESS;
}

}  // namespace

BOOL WINAPI CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) noexcept
{
    return report(copy(from, to, failIfExists != FALSE));
}

BOOL WINAPI MoveFileA(LPCSTR from, LPCSTR to) noexcept
{
    return MoveFileExA(from, to, MOVEFILE_COPY_ALLOWED);
}

BOOL WINAPI MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) noexcept
{
    return report(move(from, to, flags));
}
