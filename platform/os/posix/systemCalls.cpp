#include "platform/os/posix/systemCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace zk::os {

constinit SystemCalls systemCallTable = {
    // Descriptors.
    .open = [](char const* path, int flags, mode_t mode) { return ::open(path, flags, mode); },
    .close = ::close,
    .read = ::read,
    .write = ::write,
    .lseek = ::lseek,
    .poll = ::poll,
    .pipe2 = ::pipe2,
    .ftruncate = ::ftruncate,
    .fsync = ::fsync,
    .flock = ::flock,
    .lockRange = [](int descriptor, int command,
                    struct flock* range) { return ::fcntl(descriptor, command, range); },
    .statusFlags = [](int descriptor, int command, int flags) { return ::fcntl(descriptor, command, flags); },
    .copy_file_range = ::copy_file_range,

    // What stands in a directory.
    .stat = ::stat,
    .lstat = ::lstat,
    .fstat = ::fstat,
    .statx = ::statx,
    .faccessat = ::faccessat,
    .chmod = ::chmod,
    .fchmod = ::fchmod,
    .fchown = ::fchown,
    .futimens = ::futimens,
    .utimensat = ::utimensat,
    .mkdir = ::mkdir,
    .rmdir = ::rmdir,
    .unlink = ::unlink,
    .link = ::link,
    .rename = ::rename,
    .renameat2 = ::renameat2,
    .symlink = ::symlink,
    .readlink = ::readlink,
    .realpath = ::realpath,
    .getdents64 = ::getdents64,

    // The process's current directory.
    .getcwd = ::getcwd,
    .chdir = ::chdir,

    // Time.
    .clock_gettime = ::clock_gettime,
    .clock_nanosleep = ::clock_nanosleep,

    // Memory, threads and waits.
    .mmap = ::mmap,
    .posix_fallocate = ::posix_fallocate,
    .pthread_create = ::pthread_create,
    .futex =
        [](std::uint32_t* word, int operation, std::uint32_t value, timespec const* timeout,
           std::uint32_t* other,
           std::uint32_t mask) { return ::syscall(SYS_futex, word, operation, value, timeout, other, mask); },

    // Processes.
    .posix_spawn = ::posix_spawn,
    .pidfd_open = [](pid_t process,
                     unsigned flags) { return static_cast<int>(syscall(SYS_pidfd_open, process, flags)); },
    .waitid = ::waitid,

    // Environment and names.
    .setenv = ::setenv,
    .unsetenv = ::unsetenv,
    .gethostname = ::gethostname,
    .getpwuid_r = ::getpwuid_r,
};

}  // namespace zk::os
