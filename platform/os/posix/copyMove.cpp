#include "platform/os/posix/copyMove.h"

#include "platform/os/posix/fileCopy.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/sharing.h"
#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>

#include <climits>
#include <cstdio>
#include <string>

using namespace zk::os;

namespace {

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
    // The copy ends up at what a link leads to. One that leads nowhere is not
    // written through: who has laid it decides where the copy would go.
    char place[PATH_MAX];
    if (target.isLink && !systemCalls().realpath(to, place))
        return errorOfPath(to, errno);
    if (target.isLink)
        to = place;
    if (!target.isRegular() || target.isReadOnly())
        return ERROR_ACCESS_DENIED;
    if (DWORD const error = checkSharing(to, {.access = Sharing::all, .denied = Sharing::all}))
        return error;
    return copyFile(from, to, {.replace = true});
}

// The status of the folder that holds the entry.
bool folderStatus(char const* path, FileStatus& status)
{
    return statusOf(FolderPath(path).c_str(), status) == ERROR_SUCCESS;
}

std::string_view entryOf(std::string_view path) noexcept
{
    return nameOf(withoutEndingSeparators(path));
}

// Whether both paths say the same entry of the same folder, as "a" and "./a" do.
bool isSameEntry(char const* from, char const* to)
{
    FileStatus fromFolder, toFolder;
    return entryOf(from) == entryOf(to) && folderStatus(from, fromFolder) && folderStatus(to, toFolder) &&
        fromFolder.isSameFileAs(toFolder);
}

DWORD moveByCopy(char const* from, char const* to, FileStatus const& source, DWORD flags)
{
    if (!(flags & MOVEFILE_COPY_ALLOWED))
        return ERROR_NOT_SAME_DEVICE;
    if (!source.isRegular() && !source.isLink)
        return ERROR_ACCESS_DENIED;
    CopyOptions const options = {
        .replace = (flags & MOVEFILE_REPLACE_EXISTING) != 0, .keepOwner = true, .toDisk = true};
    if (DWORD const error = source.isLink ? copyLink(from, to, options) : copyFile(from, to, options))
        return error == ERROR_FILE_EXISTS ? ERROR_ALREADY_EXISTS : error;
    // The file has arrived, even if the old one cannot go; it stays if a crash might take the new name away.
    if (flushFolderOf(to))
        systemCalls().unlink(from);
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
    if (error == EBUSY && (entryOf(from) == "." || entryOf(from) == ".."))
        return ERROR_SHARING_VIOLATION;  // the folder is in use by the path itself
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
    if (!target.isRegular())
        return ERROR_SUCCESS;
    DWORD const error = checkSharing(to, {.access = Sharing::all, .denied = Sharing::all});
    return error == ERROR_SHARING_VIOLATION ? ERROR_ACCESS_DENIED : error;
}

int renameOver(char const* from, char const* to, FileStatus const& source, bool exists) noexcept
{
    if (!exists || !source.isDirectory())
        return systemCalls().rename(from, to) == -1 ? errno : 0;
    // The kernel replaces no file by a folder: they change places, and the file goes.
    if (systemCalls().renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_EXCHANGE) == -1)
        return errno;
    if (systemCalls().unlink(from) == 0)
        return 0;
    int const error = errno;
    systemCalls().renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_EXCHANGE);  // as it was
    return error;
}

DWORD moveEntry(char const* from, char const* to, DWORD flags)
{
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
    if (flags & MOVEFILE_WRITE_THROUGH)
        flushFolderOf(to);  // the move is done, whatever the disk says
    return ERROR_SUCCESS;
}

DWORD move(char const* from, char const* to, DWORD flags)
{
    if (flags & ~(MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH))
        return ERROR_INVALID_PARAMETER;
    if (isEmpty(from) || isEmpty(to))
        return ERROR_PATH_NOT_FOUND;
    // A separator behind the name of a link to a folder doesn't make the folder what moves.
    FileStatus source;
    if (endsInSeparator(from) && statusOf(from, source) == ERROR_SUCCESS)
        return moveEntry(std::string(withoutEndingSeparators(from)).c_str(), to, flags);
    return moveEntry(from, to, flags);
}

}  // namespace

BOOL WINAPI CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) noexcept
{
    return report(guarded([&] { return copy(from, to, failIfExists != FALSE); }));
}

BOOL WINAPI MoveFileA(LPCSTR from, LPCSTR to) noexcept
{
    return MoveFileExA(from, to, MOVEFILE_COPY_ALLOWED);
}

BOOL WINAPI MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) noexcept
{
    return report(guarded([&] { return move(from, to, flags); }));
}
