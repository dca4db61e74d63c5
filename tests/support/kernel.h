// kernel.h: what tests ask of the kernel beside the seam, to bring about what the seam must bear. For Linux.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace zk::test {

inline bool isSuperuser()
{
    return geteuid() == 0;
}

/// The permissions of a file or folder, such as 0644; 0 without it.
inline unsigned permissionsOf(std::string const& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777u : 0;
}

inline bool setPermissions(std::string const& path, unsigned permissions)
{
    return chmod(path.c_str(), permissions) == 0;
}

/// Makes a link another user's; only the superuser can.
inline bool giveLinkToNobody(std::string const& path)
{
    constexpr uid_t nobody = 65534;
    return lchown(path.c_str(), nobody, nobody) == 0;
}

/// Lets new files have all permissions asked for, for the life of the object.
class NoMask {
public:
    NoMask() : before_(umask(0)) { }
    ~NoMask() { umask(before_); }
    NoMask(NoMask const&) = delete;
    NoMask& operator=(NoMask const&) = delete;

private:
    mode_t const before_;
};

inline bool isOpenDescriptor(int descriptor)
{
    return fcntl(descriptor, F_GETFD) != -1;
}

inline bool isKeptFromChildren(int descriptor)
{
    return (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0;
}

/// Gives the number of a descriptor to another open file, as a program does that closes one and opens another.
inline bool giveDescriptorTo(int descriptor, int other)
{
    return dup2(other, descriptor) == descriptor;
}

/// The two ends of a pipe whose reads don't wait.
struct Pipe {
    Pipe() { isOpen = pipe2(ends, O_NONBLOCK | O_CLOEXEC) == 0; }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;

    bool isEmpty() const
    {
        char byte;
        return read(ends[0], &byte, 1) == -1;
    }

    int ends[2] = {-1, -1};
    bool isOpen = false;
};

/// The largest file that this process may write, for the life of the object; a write beyond it is an error.
class FileSizeLimit {
public:
    explicit FileSizeLimit(unsigned long bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit const limit = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;

private:
    void (*const signal_)(int);
    rlimit before_;
};

/// Ends the process there and then: nothing is given back, nothing is flushed.
[[noreturn]] inline void endProcess(int code)
{
    _exit(code);
}

/// Runs work in a child of its own; the code with which it ended.
template <class Work>
int exitCodeOf(Work work)
{
    pid_t const child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Mounts an empty file system of a size ("64k") at a folder, seen by this process and its children alone.
/// For a child that ends with the test.
inline bool mountSmallFileSystem(std::string const& folder, char const* size)
{
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        mount("tmpfs", folder.c_str(), "tmpfs", 0, (std::string("size=") + size).c_str()) == 0;
}

/// Whether mountSmallFileSystem() works for this user, tried in a child.
inline bool canMountFileSystems(std::string const& folder)
{
    return exitCodeOf([&] { endProcess(mountSmallFileSystem(folder, "64k") ? 0 : 1); }) == 0;
}

}  // namespace zk::test
