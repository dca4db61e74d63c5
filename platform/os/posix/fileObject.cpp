#include "platform/os/posix/fileObject.h"

#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/files.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/sharing.h"
#include "platform/os/posix/writing.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <limits>

namespace zk::os {
namespace {

// The kernel moves less than 2 GB in one call.
constexpr std::size_t mostAtOnce = 1 << 30;

int originOf(DWORD method) noexcept
{
    switch (method) {
    case FILE_BEGIN: return SEEK_SET;
    case FILE_CURRENT: return SEEK_CUR;
    case FILE_END: return SEEK_END;
    default: return -1;
    }
}

}  // namespace

FileObject::FileObject(Descriptor descriptor, unsigned access, mode_t type) noexcept
    : descriptor_(std::move(descriptor)), access_(access), type_(type & S_IFMT)
{
}

FileObject::FileObject(unsigned access) noexcept : access_(access)
{
}

FileObject::FileObject(Borrowed borrowed, unsigned access, mode_t type) noexcept
    : descriptor_(borrowed.descriptor), access_(access), type_(type & S_IFMT), isBorrowed_(true)
{
}

FileObject::~FileObject()
{
    if (onClose_ == OnClose::remove && descriptor_)
        removeFile();
    if (isBorrowed_)
        descriptor_.release();
}

// The kernel knows where the file stands now, even if it or the current
// directory has moved since. What has taken its place meanwhile stays.
void FileObject::removeFile() noexcept
{
    char self[32];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", descriptor());
    char path[PATH_MAX + 1];
    ssize_t const length = systemCalls().readlink(self, path, sizeof path - 1);
    if (length <= 0)
        return;
    path[length] = '\0';
    FileStatus mine, there;
    if (statusOf(descriptor(), mine) == ERROR_SUCCESS && statusOfEntry(path, there) == ERROR_SUCCESS &&
        mine.isSameFileAs(there))
        mine.isDirectory() ? systemCalls().rmdir(path) : systemCalls().unlink(path);
}

// Whether the writers of a pipe are gone, and nothing of theirs is left.
bool FileObject::isAtEndOfPipe() noexcept
{
    pollfd state = {descriptor(), POLLIN, 0};
    int const count = uninterrupted([&] { return systemCalls().poll(&state, 1, 0); });
    return count == 1 && (state.revents & POLLHUP) && !(state.revents & POLLIN);
}

DWORD FileObject::read(void* buffer, DWORD length, DWORD& done) noexcept
{
    done = 0;
    if (!allows(reads))
        return ERROR_ACCESS_DENIED;
    if (S_ISDIR(type_))
        return ERROR_INVALID_FUNCTION;
    if (length == 0 && S_ISFIFO(type_) && isAtEndOfPipe())
        return ERROR_BROKEN_PIPE;
    auto* const bytes = static_cast<char*>(buffer);
    while (done < length) {
        std::size_t const wanted = std::min<std::size_t>(length - done, mostAtOnce);
        ssize_t const count = whenReady(
            descriptor(), POLLIN, [&] { return systemCalls().read(descriptor(), bytes + done, wanted); });
        if (count == -1)
            return errorFromErrno(errno);
        if (count == 0)
            return S_ISFIFO(type_) || S_ISSOCK(type_) ? ERROR_BROKEN_PIPE : ERROR_SUCCESS;
        done += DWORD(count);
        if (!isRegular())
            break;
    }
    return ERROR_SUCCESS;
}

DWORD FileObject::write(void const* buffer, DWORD length, DWORD& done) noexcept
{
    done = 0;
    if (!allows(writes | appends))
        return ERROR_ACCESS_DENIED;
    if (S_ISDIR(type_))
        return ERROR_INVALID_HANDLE;
    auto const* const bytes = static_cast<char const*>(buffer);
    auto const writeAll = [&]() noexcept -> DWORD {
        while (done < length) {
            std::size_t const wanted = std::min<std::size_t>(length - done, mostAtOnce);
            ssize_t const count = whenReady(descriptor(), POLLOUT, [&] {
                return systemCalls().write(descriptor(), bytes + done, wanted);
            });
            if (count == -1)
                return errorFromErrno(errno);
            if (count == 0)
                return ERROR_WRITE_FAULT;  // a device that takes nothing would be asked for ever
            done += DWORD(count);
        }
        return ERROR_SUCCESS;
    };
    if (isRegular())
        return writeAll();
    NoPipeSignal const held;
    return writeAll();
}

DWORD FileObject::seek(LONGLONG distance, DWORD method, LONGLONG& position) noexcept
{
    if (!canSeek())
        return ERROR_BAD_DEV_TYPE;
    int const origin = originOf(method);
    if (origin == -1)
        return ERROR_INVALID_PARAMETER;
    off_t const result = systemCalls().lseek(descriptor(), distance, origin);
    if (result == -1 && (errno == EINVAL || errno == EOVERFLOW))
        return distance < 0 ? ERROR_NEGATIVE_SEEK : ERROR_INVALID_PARAMETER;
    if (result == -1)
        return errorFromErrno(errno);
    position = result;
    return ERROR_SUCCESS;
}

DWORD FileObject::truncateHere() noexcept
{
    if (!isRegular())
        return ERROR_INVALID_FUNCTION;
    if (!allows(writes))
        return ERROR_ACCESS_DENIED;
    LONGLONG position = 0;
    if (DWORD const error = seek(0, FILE_CURRENT, position))
        return error;
    int const result = uninterrupted([&] { return systemCalls().ftruncate(descriptor(), position); });
    return result == -1 ? errorFromErrno(errno) : ERROR_SUCCESS;
}

DWORD FileObject::size(LONGLONG& bytes) noexcept
{
    if (!canSeek())
        return ERROR_INVALID_FUNCTION;
    struct stat status;
    if (systemCalls().fstat(descriptor(), &status) == -1)
        return errorFromErrno(errno);
    bytes = isRegular() ? status.st_size : 0;
    return ERROR_SUCCESS;
}

DWORD FileObject::flush() noexcept
{
    if (!isRegular() && !S_ISBLK(type_) && !S_ISDIR(type_))
        return ERROR_SUCCESS;  // nothing is kept back
    if (!allows(writes | appends))
        return ERROR_ACCESS_DENIED;
    int const result = uninterrupted([&] { return systemCalls().fsync(descriptor()); });
    return result == -1 ? errorFromErrno(errno) : ERROR_SUCCESS;
}

DWORD FileObject::setLock(Range range, short type) noexcept
{
    struct flock request = {};
    request.l_type = type;
    request.l_whence = SEEK_SET;
    request.l_start = range.begin;
    request.l_len = range.end - range.begin;
    if (systemCalls().lockRange(descriptor(), F_OFD_SETLK, &request) == 0)
        return ERROR_SUCCESS;
    return errno == EACCES || errno == EAGAIN ? ERROR_LOCK_VIOLATION : errorFromErrno(errno);
}

namespace {

// What the kernel's locks can express ends before the marks of sharing.h; no file is as long.
off_t clipped(ULONGLONG offset) noexcept
{
    return off_t(std::min<ULONGLONG>(offset, ULONGLONG(firstMark)));
}

}  // namespace

DWORD FileObject::lock(ULONGLONG offset, ULONGLONG length)
{
    if (!isRegular())
        return ERROR_INVALID_FUNCTION;
    if (!allows(writes))
        return ERROR_ACCESS_DENIED;  // the kernel excludes others only for a writer
    ULONGLONG const end = offset + length;
    if (length == 0 || end < offset || offset >= ULONGLONG(firstMark))
        return ERROR_INVALID_PARAMETER;
    Range const range = {clipped(offset), clipped(end)};
    std::lock_guard const guard(mutex_);
    bool const isMine = std::any_of(locks_.begin(), locks_.end(), [&](Range const& held) {
        return held.begin < range.end && range.begin < held.end;
    });
    if (isMine)
        return ERROR_LOCK_VIOLATION;
    locks_.reserve(locks_.size() + 1);
    if (DWORD const error = setLock(range, F_WRLCK))
        return error;
    locks_.push_back(range);
    return ERROR_SUCCESS;
}

DWORD FileObject::unlock(ULONGLONG offset, ULONGLONG length) noexcept
{
    std::lock_guard const guard(mutex_);
    auto const held = std::find_if(locks_.begin(), locks_.end(), [&](Range const& range) {
        return range.begin == clipped(offset) && range.end == clipped(offset + length);
    });
    if (held == locks_.end())
        return ERROR_NOT_LOCKED;
    Range const range = *held;
    locks_.erase(held);
    return setLock(range, F_UNLCK);
}

}  // namespace zk::os
