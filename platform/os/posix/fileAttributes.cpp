#include "platform/os/posix/fileAttributes.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"

#include <fcntl.h>

#include <cstdio>

using namespace zk::os;

namespace {

DWORD statusOfName(char const* name, FileStatus& status) noexcept
{
    return isEmpty(name) ? ERROR_PATH_NOT_FOUND : statusOf(name, status);
}

DWORD statusOfFile(HANDLE file, FileStatus& status) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return ERROR_INVALID_HANDLE;
    if (!object->canSeek())
        return ERROR_INVALID_FUNCTION;
    return statusOf(object->descriptor(), status);
}

template <class Information>
void fill(Information& information, FileStatus const& status) noexcept
{
    information.dwFileAttributes = status.attributes();
    information.ftCreationTime = status.created;
    information.ftLastAccessTime = status.accessed;
    information.ftLastWriteTime = status.written;
    information.nFileSizeHigh = DWORD(status.size >> 32);
    information.nFileSizeLow = DWORD(status.size);
}

DWORD setAttributes(char const* name, DWORD attributes) noexcept
{
    constexpr DWORD known = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL |
        FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (attributes & ~known)
        return ERROR_INVALID_PARAMETER;
    if (isEmpty(name))
        return ERROR_PATH_NOT_FOUND;
    bool const readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    FileStatus status;
    if (DWORD const error = statusOf(name, status))
        return error;
    if (status.isLink)
        return readOnly && !status.isReadOnly() ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
    constexpr mode_t anybodyWrites = S_IWUSR | S_IWGRP | S_IWOTH;
    mode_t const before = status.mode & 07777;
    mode_t const after = readOnly ? before & ~anybodyWrites : before | S_IWUSR;
    if (after == before)
        return ERROR_SUCCESS;
    return systemCalls().chmod(name, after) == -1 ? errorOfPath(name, errno) : ERROR_SUCCESS;
}

constexpr ULONGLONG leaveAlone = UINT64_MAX;

bool isTime(FILETIME const* time) noexcept
{
    return !time || ticksOf(*time) == leaveAlone || ticksOf(*time) <= ULONGLONG(INT64_MAX);
}

timespec toBeSet(FILETIME const* time) noexcept
{
    if (!time || ticksOf(*time) == 0 || ticksOf(*time) == leaveAlone)
        return {0, UTIME_OMIT};
    return timeOf(*time);
}

DWORD setTimes(HANDLE file, FILETIME const* created, FILETIME const* accessed,
               FILETIME const* written) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return ERROR_INVALID_HANDLE;
    if (!object->canSeek())
        return ERROR_INVALID_FUNCTION;
    if (!object->allows(FileObject::changesAttributes))
        return ERROR_ACCESS_DENIED;
    if (!isTime(created) || !isTime(accessed) || !isTime(written))
        return ERROR_INVALID_PARAMETER;
    timespec const times[2] = {toBeSet(accessed), toBeSet(written)};
    if (systemCalls().futimens(object->descriptor(), times) == 0)
        return ERROR_SUCCESS;
    if (errno != EBADF)
        return errorFromErrno(errno);
    // The file was opened for its attributes alone: such a descriptor serves by this name only.
    char self[32];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", object->descriptor());
    return systemCalls().utimensat(AT_FDCWD, self, times, 0) == -1 ? errorFromErrno(errno) : ERROR_SUCCESS;
}

}  // namespace

DWORD WINAPI GetFileAttributesA(LPCSTR name) noexcept
{
    FileStatus status;
    return report(statusOfName(name, status)) ? status.attributes() : INVALID_FILE_ATTRIBUTES;
}

BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes) noexcept
{
    return report(setAttributes(name, attributes));
}

BOOL WINAPI GetFileAttributesExA(LPCSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID information) noexcept
{
    if (level != GetFileExInfoStandard || !information)
        return report(ERROR_INVALID_PARAMETER);
    FileStatus status;
    DWORD const error = statusOfName(name, status);
    if (!error)
        fill(*static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(information), status);
    return report(error);
}

BOOL WINAPI GetFileInformationByHandle(HANDLE file, LPBY_HANDLE_FILE_INFORMATION information) noexcept
{
    FileStatus status;
    if (DWORD const error = statusOfFile(file, status))
        return report(error);
    fill(*information, status);
    information->dwVolumeSerialNumber = DWORD(status.device ^ status.device >> 32);
    information->nNumberOfLinks = status.links;
    information->nFileIndexHigh = DWORD(status.number >> 32);
    information->nFileIndexLow = DWORD(status.number);
    return TRUE;
}

BOOL WINAPI GetFileTime(HANDLE file, LPFILETIME created, LPFILETIME accessed, LPFILETIME written) noexcept
{
    FileStatus status;
    if (DWORD const error = statusOfFile(file, status))
        return report(error);
    if (created)
        *created = status.created;
    if (accessed)
        *accessed = status.accessed;
    if (written)
        *written = status.written;
    return TRUE;
}

BOOL WINAPI SetFileTime(HANDLE file, FILETIME const* created, FILETIME const* accessed,
                        FILETIME const* written) noexcept
{
    return report(setTimes(file, created, accessed, written));
}
