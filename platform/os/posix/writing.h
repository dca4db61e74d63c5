// writing.h: what reads and writes of a descriptor need whoever holds its other end.
//
//   NoPipeSignal const guard;
//   ssize_t const done = whenReady(file, POLLOUT, [&] { return systemCalls().write(file, text, length); });
#pragma once

#include "platform/os/posix/systemCalls.h"

#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <time.h>

#include <cerrno>

namespace zk::os {

// A write into a pipe without a reader raises a signal that ends the process
// by default. It is kept from this thread for the life of the object, and
// taken away if it came.
class NoPipeSignal {
public:
    NoPipeSignal() noexcept
    {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&pipeSignal_);
        sigaddset(&pipeSignal_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipeSignal_, &before_);
    }
    ~NoPipeSignal()
    {
        int const error = errno;
        timespec const none = {};
        if (!wasPending_)
            while (sigtimedwait(&pipeSignal_, nullptr, &none) == -1 && errno == EINTR) { }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        errno = error;
    }
    NoPipeSignal(NoPipeSignal const&) = delete;
    NoPipeSignal& operator=(NoPipeSignal const&) = delete;

private:
    sigset_t pipeSignal_;
    sigset_t before_;
    bool wasPending_;
};

// Calls until it neither is interrupted nor says that a descriptor, which
// somebody else has made non-blocking, must be waited for.
template <class Call>
ssize_t whenReady(int descriptor, short event, Call call) noexcept
{
    for (;;) {
        ssize_t const result = uninterrupted(call);
        if (result != -1 || (errno != EAGAIN && errno != EWOULDBLOCK))
            return result;
        pollfd waiting = {descriptor, event, 0};
        if (uninterrupted([&] { return systemCalls().poll(&waiting, 1, -1); }) == -1)
            return -1;
    }
}

}  // namespace zk::os
