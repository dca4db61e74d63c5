#include "platform/os/posix/files.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"

using namespace zk::os;

namespace {

ULONGLONG wide(DWORD low, DWORD high) noexcept
{
    return ULONGLONG(high) << 32 | low;
}

}  // namespace

BOOL WINAPI ReadFile(HANDLE file, LPVOID buffer, DWORD length, LPDWORD done, LPOVERLAPPED overlapped) noexcept
{
    DWORD count = 0;
    if (done)
        *done = 0;
    if (overlapped)
        return report(ERROR_INVALID_PARAMETER);
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return FALSE;
    DWORD const error = object->read(buffer, length, count);
    if (done)
        *done = count;
    return report(error);
}

BOOL WINAPI WriteFile(HANDLE file, LPCVOID buffer, DWORD length, LPDWORD done,
                      LPOVERLAPPED overlapped) noexcept
{
    DWORD count = 0;
    if (done)
        *done = 0;
    if (overlapped)
        return report(ERROR_INVALID_PARAMETER);
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return FALSE;
    DWORD const error = object->write(buffer, length, count);
    if (done)
        *done = count;
    return report(error);
}

DWORD WINAPI SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return INVALID_SET_FILE_POINTER;
    LONGLONG const whole = distanceHigh ? LONGLONG(wide(DWORD(distance), DWORD(*distanceHigh))) : distance;
    LONGLONG before = 0;
    LONGLONG position = 0;
    DWORD error = object->seek(0, FILE_CURRENT, before);
    if (!error)
        error = object->seek(whole, method, position);
    if (!error && !distanceHigh && position > LONGLONG(UINT32_MAX)) {
        object->seek(before, FILE_BEGIN, position);
        error = ERROR_INVALID_PARAMETER;
    }
    if (error) {
        SetLastError(error);
        return INVALID_SET_FILE_POINTER;
    }
    if (distanceHigh)
        *distanceHigh = LONG(position >> 32);
    if (DWORD(position) == INVALID_SET_FILE_POINTER)
        SetLastError(ERROR_SUCCESS);
    return DWORD(position);
}

BOOL WINAPI SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position,
                             DWORD method) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return FALSE;
    LONGLONG reached = 0;
    DWORD const error = object->seek(distance.QuadPart, method, reached);
    if (!error && position)
        position->QuadPart = reached;
    return report(error);
}

BOOL WINAPI SetEndOfFile(HANDLE file) noexcept
{
    auto const object = objectOf<FileObject>(file);
    return object && report(object->truncateHere());
}

DWORD WINAPI GetFileSize(HANDLE file, LPDWORD high) noexcept
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file, &size))
        return INVALID_FILE_SIZE;
    if (high)
        *high = DWORD(size.QuadPart >> 32);
    if (DWORD(size.QuadPart) == INVALID_FILE_SIZE)
        SetLastError(ERROR_SUCCESS);
    return DWORD(size.QuadPart);
}

BOOL WINAPI GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return FALSE;
    LONGLONG bytes = 0;
    DWORD const error = object->size(bytes);
    if (!error)
        size->QuadPart = bytes;
    return report(error);
}

BOOL WINAPI FlushFileBuffers(HANDLE file) noexcept
{
    auto const object = objectOf<FileObject>(file);
    return object && report(object->flush());
}

BOOL WINAPI LockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD lengthLow,
                     DWORD lengthHigh) noexcept
{
    auto const object = objectOf<FileObject>(file);
    return object && report(guarded([&] {
               return object->lock(wide(offsetLow, offsetHigh), wide(lengthLow, lengthHigh));
           }));
}

BOOL WINAPI UnlockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD lengthLow,
                       DWORD lengthHigh) noexcept
{
    auto const object = objectOf<FileObject>(file);
    return object && report(object->unlock(wide(offsetLow, offsetHigh), wide(lengthLow, lengthHigh)));
}

DWORD WINAPI GetFileType(HANDLE file) noexcept
{
    auto const object = objectOf<FileObject>(file);
    if (!object)
        return FILE_TYPE_UNKNOWN;
    mode_t const type = object->type();
    if (S_ISREG(type) || S_ISDIR(type) || S_ISBLK(type))
        return FILE_TYPE_DISK;
    return S_ISCHR(type) ? FILE_TYPE_CHAR : FILE_TYPE_PIPE;
}
