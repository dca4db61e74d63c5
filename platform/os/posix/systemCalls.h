// systemCalls.h: the calls into the kernel whose failure a test wants to see.
//
//   ssize_t const done = systemCalls().write(descriptor, buffer, length);
//
// These calls go through a table of function pointers. It costs one load per
// call; tests put an entry of their own in place (tests/support/FaultInjector.h),
// and an interrupted read or a full disk becomes an ordinary test. An entry has
// the name, the arguments and the result of the call it stands for; a variadic
// call gets its full list. A call whose failure changes nothing that a caller
// can see, such as a hint to the kernel, is made directly.
//
// Entries stand in groups by the capability that brought them in, in the same
// order here and in systemCalls.cpp.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <pwd.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <time.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>

namespace zk::os {

struct SystemCalls {
    // Descriptors.
    int (*open)(char const* path, int flags, mode_t mode);
    int (*close)(int descriptor);
    ssize_t (*read)(int descriptor, void* buffer, std::size_t length);
    ssize_t (*write)(int descriptor, void const* buffer, std::size_t length);
    off_t (*lseek)(int descriptor, off_t distance, int origin);
    int (*poll)(pollfd* descriptors, nfds_t count, int milliseconds);
    int (*pipe2)(int ends[2], int flags);
    int (*ftruncate)(int descriptor, off_t length);
    int (*fsync)(int descriptor);
    int (*flock)(int descriptor, int operation);
    int (*lockRange)(int descriptor, int command, struct flock* range);  // fcntl with a record lock
    int (*statusFlags)(int descriptor, int command, int flags);          // fcntl with F_GETFL and F_SETFL
    ssize_t (*copy_file_range)(int from, off_t* fromOffset, int to, off_t* toOffset, std::size_t length,
                               unsigned flags);

    // What stands in a directory.
    int (*stat)(char const* path, struct stat* status);
    int (*lstat)(char const* path, struct stat* status);
    int (*fstat)(int descriptor, struct stat* status);
    int (*statx)(int folder, char const* path, int flags, unsigned mask, struct statx* status);
    int (*faccessat)(int folder, char const* path, int mode, int flags);
    int (*chmod)(char const* path, mode_t mode);
    int (*fchmod)(int descriptor, mode_t mode);
    int (*fchown)(int descriptor, uid_t owner, gid_t group);
    int (*futimens)(int descriptor, timespec const times[2]);
    int (*utimensat)(int folder, char const* path, timespec const times[2], int flags);
    int (*mkdir)(char const* path, mode_t mode);
    int (*rmdir)(char const* path);
    int (*unlink)(char const* path);
    int (*link)(char const* from, char const* to);
    int (*rename)(char const* from, char const* to);
    int (*renameat2)(int fromFolder, char const* from, int toFolder, char const* to, unsigned flags);
    int (*symlink)(char const* target, char const* path);
    ssize_t (*readlink)(char const* path, char* buffer, std::size_t length);
    char* (*realpath)(char const* path, char* resolved);
    ssize_t (*getdents64)(int folder, void* buffer, std::size_t length);

    // The process's current directory.
    char* (*getcwd)(char* buffer, std::size_t length);
    int (*chdir)(char const* path);

    // Time.
    int (*clock_gettime)(clockid_t clock, timespec* now);
    int (*clock_nanosleep)(clockid_t clock, int flags, timespec const* time, timespec* left);

    // Memory, threads and waits.
    void* (*mmap)(void* address, std::size_t length, int protection, int flags, int descriptor, off_t offset);
    int (*posix_fallocate)(int descriptor, off_t offset, off_t length);
    int (*pthread_create)(pthread_t* thread, pthread_attr_t const* attributes, void* (*entry)(void*),
                          void* argument);
    long (*futex)(std::uint32_t* word, int operation, std::uint32_t value, timespec const* timeout,
                  std::uint32_t* other, std::uint32_t mask);

    // Processes.
    int (*posix_spawn)(pid_t* child, char const* program, posix_spawn_file_actions_t const* actions,
                       posix_spawnattr_t const* attributes, char* const arguments[], char* const variables[]);
    int (*pidfd_open)(pid_t process, unsigned flags);
    int (*waitid)(idtype_t kind, id_t process, siginfo_t* info, int options);

    // Environment and names.
    int (*setenv)(char const* name, char const* value, int overwrite);
    int (*unsetenv)(char const* name);
    int (*gethostname)(char* name, std::size_t length);
    int (*getpwuid_r)(uid_t user, passwd* entry, char* buffer, std::size_t length, passwd** found);
};

extern SystemCalls systemCallTable;

/// The table in force. Only tests change it, and only while no other thread is at work in this layer.
inline SystemCalls& systemCalls() noexcept
{
    return systemCallTable;
}

/// Makes a call anew as long as a signal interrupts it.
///
///   ssize_t const done = uninterrupted([&] { return systemCalls().read(descriptor, buffer, length); });
template <class Call>
auto uninterrupted(Call call) noexcept
{
    decltype(call()) result;
    do
        result = call();
    while (result == -1 && errno == EINTR);
    return result;
}

}  // namespace zk::os
