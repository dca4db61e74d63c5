#include "platform/os/posix/directories.h"

#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/sharing.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/textResult.h"

#include <climits>
#include <string>

using namespace zk::os;

namespace {

DWORD createDirectory(char const* name, LPSECURITY_ATTRIBUTES security) noexcept
{
    if (security && security->lpSecurityDescriptor)
        return ERROR_INVALID_PARAMETER;
    if (isEmpty(name))
        return ERROR_PATH_NOT_FOUND;
    if (systemCalls().mkdir(name, 0777) == 0)
        return ERROR_SUCCESS;
    switch (errno) {
    case EEXIST: return ERROR_ALREADY_EXISTS;
    case ENOENT:
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    default: return errorFromErrno(errno);
    }
}

DWORD removeDirectory(char const* name)
{
    if (isEmpty(name))
        return ERROR_INVALID_NAME;
    if (systemCalls().rmdir(name) == 0)
        return ERROR_SUCCESS;
    int const error = errno;
    if (error == EEXIST)
        return ERROR_DIR_NOT_EMPTY;
    if (error == EINVAL)
        return ERROR_SHARING_VIOLATION;  // "." at the end: the folder is in use by the path itself
    FileStatus status;
    if (error != ENOTDIR || statusOf(name, status) != ERROR_SUCCESS)
        return errorOfPath(name, error);
    // A link to a folder goes itself, with a separator behind its name too.
    std::string const link(withoutEndingSeparators(name));
    if (statusOf(link.c_str(), status) != ERROR_SUCCESS || !status.isLink || !status.isDirectory())
        return ERROR_DIRECTORY;
    return systemCalls().unlink(link.c_str()) == -1 ? errorOfPath(name, errno) : ERROR_SUCCESS;
}

DWORD deleteFile(char const* name) noexcept
{
    if (isEmpty(name))
        return ERROR_PATH_NOT_FOUND;
    FileStatus status;
    if (DWORD const error = statusOf(name, status))
        return error;
    if (status.isDirectory() || (!status.isLink && status.isReadOnly()))
        return ERROR_ACCESS_DENIED;
    if (!status.isLink && status.isRegular())
        if (DWORD const error = checkSharing(name, {.access = Sharing::remove}))
            return error;
    return systemCalls().unlink(name) == -1 ? errorOfPath(name, errno) : ERROR_SUCCESS;
}

DWORD setCurrentDirectory(char const* name) noexcept
{
    if (isEmpty(name))
        return ERROR_INVALID_NAME;
    if (systemCalls().chdir(name) == 0)
        return ERROR_SUCCESS;
    int const error = errno;
    FileStatus status;
    if (error == ENOTDIR && statusOf(name, status) == ERROR_SUCCESS)
        return ERROR_DIRECTORY;
    return errorOfPath(name, error);
}

}  // namespace

BOOL WINAPI CreateDirectoryA(LPCSTR name, LPSECURITY_ATTRIBUTES security) noexcept
{
    return report(createDirectory(name, security));
}

BOOL WINAPI RemoveDirectoryA(LPCSTR name) noexcept
{
    return report(guarded([&] { return removeDirectory(name); }));
}

BOOL WINAPI DeleteFileA(LPCSTR name) noexcept
{
    return report(deleteFile(name));
}

DWORD WINAPI GetCurrentDirectoryA(DWORD room, LPSTR buffer) noexcept
{
    char path[PATH_MAX];
    if (!systemCalls().getcwd(path, sizeof path)) {
        SetLastError(errorFromErrno(errno));
        return 0;
    }
    return giveText(path, room, buffer);
}

BOOL WINAPI SetCurrentDirectoryA(LPCSTR name) noexcept
{
    return report(setCurrentDirectory(name));
}
