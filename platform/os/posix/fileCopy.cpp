#include "platform/os/posix/fileCopy.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/sharing.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdio>
#include <memory>
#include <string>

namespace zk::os {
namespace {

// A name for a file that is being made in the folder of `target`. The name
// doesn't grow with the target's, which may be as long as names can be.
std::string temporaryBeside(char const* target)
{
    static std::atomic<unsigned> counter = 0;
    char name[64];
    std::snprintf(name, sizeof name, "/.zk-%x-%x.tmp", unsigned(getpid()), counter++);
    return std::string(folderOf(target)) + name;
}

// Takes an entry away again unless it has got its final name.
class TemporaryEntry {
public:
    explicit TemporaryEntry(std::string path) noexcept : path_(std::move(path)) { }
    ~TemporaryEntry()
    {
        if (!path_.empty())
            systemCalls().unlink(path_.c_str());
    }
    TemporaryEntry(TemporaryEntry const&) = delete;
    TemporaryEntry& operator=(TemporaryEntry const&) = delete;

    DWORD takeName(char const* target, bool replace) noexcept
    {
        int const error = replace ? (systemCalls().rename(path_.c_str(), target) == -1 ? errno : 0)
                                  : renameToFree(path_.c_str(), target);
        if (error)
            return errorOfPath(target, error);
        path_.clear();
        return ERROR_SUCCESS;
    }

private:
    std::string path_;
};

// Makes an entry under a name that nothing has yet; a name that a dead process left is passed over.
template <class Make>
int makeTemporary(char const* target, std::string& path, Make make)
{
    constexpr int attempts = 1000;
    int result = -1;
    for (int attempt = 0; attempt < attempts && result == -1; ++attempt) {
        path = temporaryBeside(target);
        result = make(path.c_str());
        if (result == -1 && errno != EEXIST && errno != EINTR)
            break;
    }
    return result;
}

DWORD writeAll(int to, char const* bytes, std::size_t length) noexcept
{
    while (length > 0) {
        ssize_t const count = uninterrupted([&] { return systemCalls().write(to, bytes, length); });
        if (count == -1)
            return errorFromErrno(errno);
        bytes += count;
        length -= std::size_t(count);
    }
    return ERROR_SUCCESS;
}

DWORD copyThroughBuffer(int from, int to)
{
    constexpr std::size_t room = 256 * 1024;
    auto const buffer = std::make_unique_for_overwrite<char[]>(room);
    for (;;) {
        ssize_t const count = uninterrupted([&] { return systemCalls().read(from, buffer.get(), room); });
        if (count == -1)
            return errorFromErrno(errno);
        if (count == 0)
            return ERROR_SUCCESS;
        if (DWORD const error = writeAll(to, buffer.get(), std::size_t(count)))
            return error;
    }
}

// Whether the kernel's copy says "not between these two" rather than that the copy fails.
bool isUnableToCopy(int error) noexcept
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EBADF ||
        error == EPERM || error == ETXTBSY;
}

// Lets the kernel copy, which may share the blocks instead; what it leaves, the buffer takes over.
// Some file systems say 0 at once for files that have content, so the end is what a read calls so.
DWORD copyContent(int from, int to)
{
    constexpr std::size_t mostAtOnce = 1 << 30;
    for (;;) {
        ssize_t const count = uninterrupted(
            [&] { return systemCalls().copy_file_range(from, nullptr, to, nullptr, mostAtOnce, 0); });
        if (count == -1 && !isUnableToCopy(errno))
            return errorFromErrno(errno);
        if (count <= 0)
            return copyThroughBuffer(from, to);
    }
}

DWORD errorOfLastCall(int result) noexcept
{
    return result == -1 ? errorFromErrno(errno) : ERROR_SUCCESS;
}

DWORD copyProperties(int to, struct stat const& source, CopyOptions const& options) noexcept
{
    if (options.keepOwner && systemCalls().fchown(to, source.st_uid, source.st_gid) == -1)
        systemCalls().fchown(to, uid_t(-1), source.st_gid);  // at least the group, if that is allowed
    // Bits that lend the owner's rights don't go along: the owner may be another one.
    if (DWORD const error = errorOfLastCall(systemCalls().fchmod(to, source.st_mode & 0777)))
        return error;
    timespec const times[2] = {source.st_atim, source.st_mtim};
    return errorOfLastCall(systemCalls().futimens(to, times));
}

}  // namespace

DWORD copyFile(char const* from, char const* to, CopyOptions const& options)
{
    Descriptor const source(uninterrupted(
        [&] { return systemCalls().open(from, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0); }));
    if (!source)
        return errorOfPath(from, errno);
    struct stat status;
    if (systemCalls().fstat(source.get(), &status) == -1)
        return errorFromErrno(errno);
    if (!S_ISREG(status.st_mode))
        return ERROR_ACCESS_DENIED;
    if (DWORD const error = claim(source.get(), {.access = Sharing::read, .denied = Sharing::none}))
        return error;

    std::string path;
    Descriptor target(makeTemporary(to, path, [](char const* name) {
        return systemCalls().open(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    }));
    if (!target)
        return errorOfPath(to, errno);
    TemporaryEntry temporary(std::move(path));
    if (DWORD const error = copyContent(source.get(), target.get()))
        return error;
    if (DWORD const error = copyProperties(target.get(), status, options))
        return error;
    if (options.toDisk)
        if (uninterrupted([&] { return systemCalls().fsync(target.get()); }) == -1)
            return errorFromErrno(errno);
    // Some file systems find out only now that there was no room. The number is free even if a signal came.
    if (systemCalls().close(target.release()) == -1 && errno != EINTR)
        return errorFromErrno(errno);
    return temporary.takeName(to, options.replace);
}

DWORD copyLink(char const* from, char const* to, CopyOptions const& options)
{
    char content[PATH_MAX + 1];
    ssize_t const length = systemCalls().readlink(from, content, sizeof content - 1);
    if (length == -1)
        return errorOfPath(from, errno);
    content[length] = '\0';
    std::string path;
    if (makeTemporary(to, path, [&](char const* name) { return systemCalls().symlink(content, name); }) == -1)
        return errorOfPath(to, errno);
    return TemporaryEntry(std::move(path)).takeName(to, options.replace);
}

int renameToFree(char const* from, char const* to) noexcept
{
    if (systemCalls().renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (systemCalls().link(from, to) == 0) {
        if (systemCalls().unlink(from) == 0)
            return 0;
        int const error = errno;
        systemCalls().unlink(to);
        return error;
    }
    if (errno == EEXIST)
        return errno;
    // A folder, or a file system without links.
    struct stat status;
    if (systemCalls().lstat(to, &status) == 0)
        return EEXIST;
    return systemCalls().rename(from, to) == -1 ? errno : 0;
}

bool flushFolderOf(char const* path) noexcept
{
    FolderPath const folder(path);
    Descriptor const directory(uninterrupted(
        [&] { return systemCalls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!directory)
        return errno == EACCES;
    return uninterrupted([&] { return systemCalls().fsync(directory.get()); }) == 0 || errno == EINVAL;
}

}  // namespace zk::os
