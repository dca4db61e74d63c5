#include "platform/os/fileDescriptors.h"

#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/writing.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

namespace zk::os {

namespace {

// The kernel takes this much in one call.
constexpr std::size_t mostAtOnce = 0x7FFFF000;

DescriptorStatus statusOf(struct stat const& status) noexcept
{
    DescriptorStatus result;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modified = status.st_mtime;
    result.accessed = status.st_atime;
    result.changed = status.st_ctime;
    result.isRegular = S_ISREG(status.st_mode);
    result.isFolder = S_ISDIR(status.st_mode);
    result.device = status.st_dev;
    result.number = status.st_ino;
    return result;
}

bool writeAll(int descriptor, char const* bytes, std::size_t length) noexcept
{
    while (length > 0) {
        ssize_t const done = whenReady(descriptor, POLLOUT, [&] {
            return systemCalls().write(descriptor, bytes, std::min(length, mostAtOnce));
        });
        if (done <= 0) {
            if (done == 0)
                errno = EIO;  // a device that takes nothing would be asked for ever
            return false;
        }
        bytes += done;
        length -= static_cast<std::size_t>(done);
    }
    return true;
}

// Whether a link at a path may be followed: the rule that kernels keep for folders like /tmp, where it is
// switched on.
bool isTrustedLink(char const* path) noexcept
{
    struct stat link, folder;
    if (systemCalls().lstat(path, &link) == -1)
        return errno == ENOENT;  // gone meanwhile: what comes now is created
    FolderPath const around(path);
    if (systemCalls().stat(around.c_str(), &folder) == -1)
        return false;
    constexpr mode_t forEverybody = S_ISVTX | S_IWOTH;
    return (folder.st_mode & forEverybody) != forEverybody || link.st_uid == geteuid() ||
        link.st_uid == folder.st_uid;
}

int openOnce(char const* path, int way, int permissions) noexcept
{
    return uninterrupted([&] { return systemCalls().open(path, way, static_cast<mode_t>(permissions)); });
}

}  // namespace

int openDescriptor(char const* path, unsigned flags, int permissions) noexcept
{
    int way = O_CLOEXEC | O_NOCTTY;
    way |= (flags & (openRead | openWrite)) == (openRead | openWrite) ? O_RDWR
        : (flags & openWrite)                                         ? O_WRONLY
                                                                      : O_RDONLY;
    if (flags & openAppend)
        way |= O_APPEND;
    if (flags & openCreate)
        way |= O_CREAT;
    if (flags & openTruncate)
        way |= O_TRUNC;
    if (flags & openExclusive)
        way |= O_EXCL;
    if (!(flags & openWary))
        return openOnce(path, way, permissions);
    int const file = openOnce(path, way | O_NOFOLLOW, permissions);
    if (file != -1 || errno != ELOOP)
        return file;
    if (isTrustedLink(path))
        return openOnce(path, way, permissions);
    errno = ELOOP;
    return -1;
}

int closeDescriptor(int descriptor) noexcept
{
    // Interrupted or not, the descriptor is gone.
    return systemCalls().close(descriptor) == -1 && errno != EINTR ? -1 : 0;
}

std::int64_t readDescriptor(int descriptor, void* buffer, std::size_t length) noexcept
{
    return whenReady(descriptor, POLLIN,
                     [&] { return systemCalls().read(descriptor, buffer, std::min(length, mostAtOnce)); });
}

bool writeDescriptor(int descriptor, void const* buffer, std::size_t length) noexcept
{
    return writeAll(descriptor, static_cast<char const*>(buffer), length);
}

std::int64_t seekDescriptor(int descriptor, std::int64_t distance, SeekFrom from) noexcept
{
    int const origin = from == SeekFrom::start ? SEEK_SET : from == SeekFrom::end ? SEEK_END : SEEK_CUR;
    return systemCalls().lseek(descriptor, distance, origin);
}

bool resizeDescriptor(int descriptor, std::int64_t size) noexcept
{
    return uninterrupted([&] { return systemCalls().ftruncate(descriptor, size); }) == 0;
}

bool flushDescriptor(int descriptor) noexcept
{
    if (uninterrupted([&] { return systemCalls().fsync(descriptor); }) == 0)
        return true;
    return report(errorFromErrno(errno));
}

bool statusOfDescriptor(int descriptor, DescriptorStatus& status) noexcept
{
    struct stat found;
    if (systemCalls().fstat(descriptor, &found) == -1)
        return false;
    status = statusOf(found);
    return true;
}

bool statusOfPath(char const* path, DescriptorStatus& status) noexcept
{
    struct stat found;
    if (systemCalls().stat(path, &found) == -1)
        return false;
    status = statusOf(found);
    return true;
}

bool descriptorIsOf(int descriptor, std::uint64_t device, std::uint64_t number) noexcept
{
    struct statx found;
    if (systemCalls().statx(descriptor, "", AT_EMPTY_PATH, STATX_INO, &found) == -1) {
        struct stat status;
        return errno != EBADF && systemCalls().fstat(descriptor, &status) == 0 &&
            (number == 0 || (status.st_ino == number && status.st_dev == device));
    }
    return number == 0 ||
        (found.stx_ino == number && makedev(found.stx_dev_major, found.stx_dev_minor) == device);
}

int makeFolder(char const* path, int permissions) noexcept
{
    return systemCalls().mkdir(path, static_cast<mode_t>(permissions));
}

}  // namespace zk::os
