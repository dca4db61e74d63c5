#include "platform/os/fileDescriptors.h"

#include "platform/os/os.h"

#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>

namespace zk::os {

namespace {

DescriptorStatus statusOf(struct _stat64 const& status) noexcept
{
    DescriptorStatus result;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modified = status.st_mtime;
    result.accessed = status.st_atime;
    result.changed = status.st_ctime;
    result.isRegular = (status.st_mode & _S_IFMT) == _S_IFREG;
    result.isFolder = (status.st_mode & _S_IFMT) == _S_IFDIR;
    return result;
}

}  // namespace

int openDescriptor(char const* path, unsigned flags, int permissions) noexcept
{
    int way = _O_NOINHERIT | (flags & openText ? _O_TEXT : _O_BINARY);
    way |= (flags & (openRead | openWrite)) == (openRead | openWrite) ? _O_RDWR
        : (flags & openWrite)                                         ? _O_WRONLY
                                                                      : _O_RDONLY;
    if (flags & openAppend)
        way |= _O_APPEND;
    if (flags & openCreate)
        way |= _O_CREAT;
    if (flags & openTruncate)
        way |= _O_TRUNC;
    if (flags & openExclusive)
        way |= _O_EXCL;
    return _open(path, way, permissions & (_S_IREAD | _S_IWRITE));
}

int closeDescriptor(int descriptor) noexcept
{
    return _close(descriptor);
}

std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t length) noexcept
{
    return _read(descriptor, buffer, static_cast<unsigned>(std::min<std::size_t>(length, INT_MAX)));
}

bool writeDescriptor(int descriptor, void const* buffer, std::size_t length) noexcept
{
    auto const* bytes = static_cast<char const*>(buffer);
    while (length > 0) {
        int const done =
            _write(descriptor, bytes, static_cast<unsigned>(std::min<std::size_t>(length, INT_MAX)));
        if (done <= 0) {
            if (done == 0)
                errno = ENOSPC;
            return false;
        }
        bytes += done;
        length -= static_cast<std::size_t>(done);
    }
    return true;
}

std::int64_t seekDescriptor(int descriptor, std::int64_t distance, SeekFrom from) noexcept
{
    int const origin = from == SeekFrom::start ? SEEK_SET : from == SeekFrom::end ? SEEK_END : SEEK_CUR;
    return _lseeki64(descriptor, distance, origin);
}

bool resizeDescriptor(int descriptor, std::int64_t size) noexcept
{
    // The runtime's own call takes 32 bits, or moves the position.
    std::int64_t const position = _lseeki64(descriptor, 0, SEEK_CUR);
    if (position == -1 || _lseeki64(descriptor, size, SEEK_SET) == -1)
        return false;
    bool const done = SetEndOfFile(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor))) != FALSE;
    _lseeki64(descriptor, position, SEEK_SET);
    if (!done)
        errno = GetLastError() == ERROR_DISK_FULL ? ENOSPC : EACCES;
    return done;
}

bool flushDescriptor(int descriptor) noexcept
{
    HANDLE const file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    if (file == INVALID_HANDLE_VALUE)
        SetLastError(ERROR_INVALID_HANDLE);
    return file != INVALID_HANDLE_VALUE && FlushFileBuffers(file);
}

bool statusOfDescriptor(int descriptor, DescriptorStatus& status) noexcept
{
    struct _stat64 found;
    if (_fstat64(descriptor, &found) != 0)
        return false;
    status = statusOf(found);
    return true;
}

bool statusOfPath(char const* path, DescriptorStatus& status) noexcept
{
    struct _stat64 found;
    if (_stat64(path, &found) != 0)
        return false;
    status = statusOf(found);
    return true;
}

bool descriptorIsOf(int descriptor, std::uint64_t, std::uint64_t) noexcept
{
    return _get_osfhandle(descriptor) != -1;
}

int makeFolder(char const* path, int) noexcept
{
    return _mkdir(path);
}

}  // namespace zk::os
