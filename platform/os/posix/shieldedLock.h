// shieldedLock.h: a lock that a thread holds to the end, even when another thread ends it.
//
//   ShieldedLock const lock(table().mutex);
#pragma once

#include "platform/os/posix/threadRecord.h"

#include <mutex>

namespace zk::os {

/// Locks for the length of a scope. TerminateThread() ends the thread behind it: the lock is never left taken.
class ShieldedLock {
public:
    explicit ShieldedLock(std::mutex& mutex) noexcept : lock_(mutex) { }

private:
    Shield const shield_;
    std::lock_guard<std::mutex> const lock_;
};

}  // namespace zk::os
