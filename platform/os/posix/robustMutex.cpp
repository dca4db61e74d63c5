#include "platform/os/posix/robustMutex.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/waits.h"

#include <cerrno>

namespace zk::os {
namespace {

DWORD waitResult(pthread_mutex_t& mutex, int error) noexcept
{
    switch (error) {
    case 0: return WAIT_OBJECT_0;
    case EBUSY:
    case ETIMEDOUT: return WAIT_TIMEOUT;
    case EOWNERDEAD:
        pthread_mutex_consistent(&mutex);  // else the next lock would fail for ever
        return WAIT_ABANDONED;
    default: SetLastError(errorFromErrno(error)); return WAIT_FAILED;
    }
}

#ifdef __SANITIZE_THREAD__
// The thread sanitizer of this compiler doesn't see a lock with a clock: give it one that it sees.
int lockUntil(pthread_mutex_t& mutex, timespec const& moment) noexcept
{
    timespec monotonic, real;
    clock_gettime(CLOCK_MONOTONIC, &monotonic);
    clock_gettime(CLOCK_REALTIME, &real);
    long long const left =
        (moment.tv_sec - monotonic.tv_sec) * 1000000000LL + moment.tv_nsec - monotonic.tv_nsec;
    long long const end = real.tv_sec * 1000000000LL + real.tv_nsec + left;
    timespec const until = {.tv_sec = time_t(end / 1000000000), .tv_nsec = long(end % 1000000000)};
    return pthread_mutex_timedlock(&mutex, &until);
}
#else
int lockUntil(pthread_mutex_t& mutex, timespec const& moment) noexcept
{
    return pthread_mutex_clocklock(&mutex, CLOCK_MONOTONIC, &moment);
}
#endif

}  // namespace

DWORD makeRobust(pthread_mutex_t& mutex, Sharing sharing) noexcept
{
    pthread_mutexattr_t attributes;
    if (int const error = pthread_mutexattr_init(&attributes))
        return errorFromErrno(error);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    if (sharing == Sharing::betweenProcesses)
        pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    int const error = pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    return errorFromErrno(error);
}

DWORD tryLockRobust(pthread_mutex_t& mutex) noexcept
{
    return waitResult(mutex, pthread_mutex_trylock(&mutex));
}

DWORD lockRobust(pthread_mutex_t& mutex, Deadline const& deadline) noexcept
{
    timespec const* const moment = deadline.moment();
    return waitResult(mutex, moment ? lockUntil(mutex, *moment) : pthread_mutex_lock(&mutex));
}

}  // namespace zk::os
