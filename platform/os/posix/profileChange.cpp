#include "platform/os/posix/profileChange.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/fileCopy.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/profileCache.h"
#include "platform/os/profileFile.h"

#include <sys/file.h>
#include <unistd.h>

#include <climits>
#include <optional>

namespace zk::os {
namespace {

// The path behind symbolic links, so that the last one of them stays one. What it leads to need not exist.
DWORD followLinks(std::string& path)
{
    constexpr int most = 40;
    for (int count = 0; count < most; ++count) {
        char target[PATH_MAX];
        ssize_t const length = systemCalls().readlink(path.c_str(), target, sizeof target);
        if (length == -1)
            return errno == EINVAL || errno == ENOENT ? ERROR_SUCCESS : errorOfPath(path.c_str(), errno);
        std::string_view const link(target, std::size_t(length));
        path =
            link.starts_with('/') ? std::string(link) : std::string(folderOf(path)).append("/").append(link);
    }
    return ERROR_CANT_RESOLVE_FILENAME;
}

// A name beside the profile; short enough even if the profile's is as long as names can be.
std::string beside(std::string const& path, char const* ending)
{
    constexpr std::size_t most = 200;
    return std::string(folderOf(path)).append("/.").append(nameOf(path).substr(0, most)).append(ending);
}

// Holds all other writers of a profile off, in this process and in others.
class WriterLock {
public:
    WriterLock() = default;
    ~WriterLock()
    {
        // Who waits for the lock will find that the file has gone, and makes a new one.
        if (file_)
            systemCalls().unlink(path_.c_str());
    }
    WriterLock(WriterLock const&) = delete;
    WriterLock& operator=(WriterLock const&) = delete;

    /// Waits for the lock. Where the file system has none, the result is a success without one.
    DWORD acquire(std::string const& profile)
    {
        path_ = beside(profile, ".lock");
        for (;;) {
            bool isNew = false;
            Descriptor file(openFile(isNew));
            if (!file)
                return errorOfPath(path_.c_str(), errno);
            struct stat held;
            bool const isLocked =
                uninterrupted([&] { return systemCalls().flock(file.get(), LOCK_EX); }) == 0;
            if (!isLocked || systemCalls().fstat(file.get(), &held) == -1) {
                int const error = errno;
                if (isLocked || isNew)
                    systemCalls().unlink(path_.c_str());
                bool const hasNone = error == ENOLCK || error == EOPNOTSUPP || error == ENOSYS;
                return !isLocked && hasNone ? ERROR_SUCCESS : errorFromErrno(error);
            }
            struct stat named;
            bool const isNamed = systemCalls().stat(path_.c_str(), &named) == 0 &&
                named.st_ino == held.st_ino && named.st_dev == held.st_dev;
            if (isNamed) {
                file_.reset(file.release());
                return ERROR_SUCCESS;
            }
        }
    }

    bool isHeld() const noexcept { return bool(file_); }

private:
    // A file of another user's may perhaps be opened for reading alone, which is enough for a lock.
    int openFile(bool& isNew) const noexcept
    {
        constexpr int always = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
        auto const open = [&](int flags) {
            return uninterrupted([&] { return systemCalls().open(path_.c_str(), flags | always, 0666); });
        };
        for (;;) {
            int file = open(O_RDWR | O_CREAT | O_EXCL);
            isNew = file != -1;
            if (isNew || errno != EEXIST)
                return file;
            file = open(O_RDWR);
            if (file == -1 && errno == EACCES)
                file = open(O_RDONLY);
            if (file != -1 || errno != ENOENT)
                return file;
        }
    }

    std::string path_;
    Descriptor file_;
};

// The file that is to take the profile's place. Only the holder of the lock makes the one of the known
// name; where there are no locks, each thread has a name of its own.
class NewFile {
public:
    NewFile(std::string const& profile, bool isLocked)
        : path_(beside(profile, isLocked ? ".new" : ("." + std::to_string(gettid()) + ".new").c_str()))
    {
    }
    ~NewFile()
    {
        if (isThere_)
            systemCalls().unlink(path_.c_str());
    }
    NewFile(NewFile const&) = delete;
    NewFile& operator=(NewFile const&) = delete;

    /// Writes the content to the disk, with owner and mode of the old file if there is one.
    DWORD write(std::string_view content, std::optional<struct stat> const& old)
    {
        systemCalls().unlink(path_.c_str());  // of a killed process
        mode_t const mode = old ? 0600 : 0666;
        Descriptor file(uninterrupted([&] {
            return systemCalls().open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                      mode);
        }));
        if (!file)
            return errorOfPath(path_.c_str(), errno);
        isThere_ = true;
        while (!content.empty()) {
            ssize_t const count = uninterrupted(
                [&] { return systemCalls().write(file.get(), content.data(), content.size()); });
            if (count == -1)
                return errorFromErrno(errno);
            content.remove_prefix(std::size_t(count));
        }
        if (old && !copyRights(file.get(), *old))
            return errorFromErrno(errno);
        if (uninterrupted([&] { return systemCalls().fsync(file.get()); }) == -1)
            return errorFromErrno(errno);
        // Some file systems find out only now that there was no room. The number is free even if a signal came.
        if (systemCalls().close(file.release()) == -1 && errno != EINTR)
            return errorFromErrno(errno);
        return ERROR_SUCCESS;
    }

    DWORD takePlaceOf(std::string const& profile)
    {
        if (systemCalls().rename(path_.c_str(), profile.c_str()) == -1)
            return errorOfPath(profile.c_str(), errno);
        isThere_ = false;
        // The new file is in place whatever comes now; only a crash of the system could still undo that.
        flushFolderOf(profile.c_str());
        return ERROR_SUCCESS;
    }

private:
    static bool copyRights(int file, struct stat const& old) noexcept
    {
        bool const isOthers = old.st_uid != geteuid() || old.st_gid != getegid();
        if (isOthers && systemCalls().fchown(file, old.st_uid, old.st_gid) == -1)
            systemCalls().fchown(file, uid_t(-1), old.st_gid);  // at least the group, if that is allowed
        return systemCalls().fchmod(file, old.st_mode & 0777) == 0;
    }

    std::string path_;
    bool isThere_ = false;
};

// Reads a profile that is to be changed; without `status` if there is none.
DWORD readOld(std::string const& path, std::string& text, std::optional<struct stat>& status)
{
    Descriptor const file(uninterrupted(
        [&] { return systemCalls().open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0); }));
    if (!file && errno == ENOENT)
        return ERROR_SUCCESS;
    if (!file)
        return errorOfPath(path.c_str(), errno);
    if (systemCalls().fstat(file.get(), &status.emplace()) == -1)
        return errorFromErrno(errno);
    bool const mayBeWritten = S_ISREG(status->st_mode) && (status->st_mode & S_IWUSR);
    if (!mayBeWritten)
        return ERROR_ACCESS_DENIED;
    // A folder that all may write to does not make all owners of what lies in it.
    if (systemCalls().faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == -1)
        return errorOfPath(path.c_str(), errno);
    return readWhole(file.get(), status->st_size, text);
}

// Makes the folders in which a bare name lies, for the user alone. One that cannot be made shows when the file is.
void makeFoldersOf(std::string const& path)
{
    for (std::size_t end = path.find('/', 1); end != path.npos; end = path.find('/', end + 1))
        systemCalls().mkdir(path.substr(0, end).c_str(), 0700);
}

bool isThere(std::string const& path) noexcept
{
    struct stat status;
    return systemCalls().stat(path.c_str(), &status) == 0;
}

}  // namespace

DWORD changeProfile(char const* name, std::function<DWORD(std::string&)> const& edit)
{
    std::string path = profileFile(name);
    if (path.empty())
        return GetLastError();
    bool const isBare = path != name;
    if (isBare && !isThere(std::string(folderOf(path)))) {
        std::string none;
        if (DWORD const error = edit(none); error || none.empty())
            return error;
        makeFoldersOf(path);
    }
    if (DWORD const error = followLinks(path))
        return error;
    if (endsInSeparator(path))
        return ERROR_ACCESS_DENIED;

    WriterLock lock;
    if (DWORD const error = lock.acquire(path))
        return error;
    std::string text;
    std::optional<struct stat> status;
    if (DWORD const error = readOld(path, text, status))
        return error;
    std::string changed = text;
    if (DWORD const error = edit(changed))
        return error;
    if (changed == text)
        return ERROR_SUCCESS;
    if (changed.size() > mostBytesOfProfile)
        return ERROR_NOT_ENOUGH_MEMORY;
    NewFile file(path, lock.isHeld());
    if (DWORD const error = file.write(changed, status))
        return error;
    return file.takePlaceOf(path);
}

}  // namespace zk::os
