#include "platform/os/posix/lastError.h"

#include <cerrno>

namespace {

thread_local constinit DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() noexcept
{
    return lastError;
}

void SetLastError(DWORD error) noexcept
{
    lastError = error;
}

DWORD zk::os::errorFromErrno(int error) noexcept
{
    switch (error) {
    case 0: return ERROR_SUCCESS;
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case ELOOP: return ERROR_CANT_RESOLVE_FILENAME;
    case EMFILE:
    case ENFILE: return ERROR_TOO_MANY_OPEN_FILES;
    case EACCES:
    case EPERM:
    case EISDIR:
    case ETXTBSY: return ERROR_ACCESS_DENIED;
    case EROFS: return ERROR_WRITE_PROTECT;
    case EBADF: return ERROR_INVALID_HANDLE;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case ENOEXEC: return ERROR_BAD_FORMAT;
    case EXDEV: return ERROR_NOT_SAME_DEVICE;
    case EAGAIN:
    case EDEADLK: return ERROR_LOCK_VIOLATION;
    case EEXIST: return ERROR_FILE_EXISTS;
    case EINVAL: return ERROR_INVALID_PARAMETER;
    case EPIPE: return ERROR_NO_DATA;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return ERROR_DISK_FULL;
    case ENOSYS:
    case EOPNOTSUPP: return ERROR_NOT_SUPPORTED;
    case ENOTEMPTY: return ERROR_DIR_NOT_EMPTY;
    case EBUSY: return ERROR_BUSY;
    case ENAMETOOLONG: return ERROR_FILENAME_EXCED_RANGE;
    case ESPIPE: return ERROR_SEEK_ON_DEVICE;
    case EFAULT: return ERROR_NOACCESS;
    case EIO: return ERROR_IO_DEVICE;
    case ESRCH: return ERROR_INVALID_PARAMETER;
    case EILSEQ: return ERROR_NO_UNICODE_TRANSLATION;
    case ETIMEDOUT: return WAIT_TIMEOUT;
    default: return ERROR_GEN_FAILURE;
    }
}
