#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>
#include <sys/file.h>
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
    .ftruncate = ::ftruncate,
    .fsync = ::fsync,
    .flock = ::flock,
    .lockRange = [](int descriptor, int command,
                    struct flock* range) { return ::fcntl(descriptor, command, range); },
    .copy_file_range = ::copy_file_range,

    // What stands in a directory.
    .stat = ::stat,
    .lstat = ::lstat,
    .fstat = ::fstat,
    .statx = ::statx,
    .chmod = ::chmod,
    .fchmod = ::fchmod,
    .futimens = ::futimens,
    .mkdir = ::mkdir,
    .rmdir = ::rmdir,
    .unlink = ::unlink,
    .rename = ::rename,
    .renameat2 = ::renameat2,
    .symlink = ::symlink,
    .readlink = ::readlink,
    .fdopendir = ::fdopendir,
    .readdir = ::readdir,

    // The process's current directory.
    .getcwd = ::getcwd,
    .chdir = ::chdir,

    // Time.
    .clock_gettime = ::clock_gettime,
    .clock_nanosleep = ::clock_nanosleep,

    // Environment and names.
    .setenv = ::setenv,
    .unsetenv = ::unsetenv,
    .gethostname = ::gethostname,
    .getpwuid_r = ::getpwuid_r,
};

}  // namespace zk::os
