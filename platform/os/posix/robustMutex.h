// robustMutex.h: locking a mutex that survives the end of its owner.
//
//   pthread_mutex_t mutex;
//   makeRobust(mutex, Sharing::betweenProcesses);
//   if (lockRobust(mutex, Deadline(500)) == WAIT_ABANDONED)
//       ...                                   // locked, and what it guards may be half-changed
//
// The kernel notes the end of an owner, thread or process, whatever way it
// ends. The mutexes are not recursive: their users count for themselves, in
// memory that no other process can write.
#pragma once

#include "platform/os/posix/futex.h"

#include <pthread.h>

namespace zk::os {

/// Initialises a mutex. Gives an error number.
DWORD makeRobust(pthread_mutex_t& mutex, Sharing sharing) noexcept;

/// Locks if that needs no wait: WAIT_OBJECT_0, WAIT_ABANDONED (locked and made
/// usable again) or WAIT_TIMEOUT; WAIT_FAILED with the last error set for a damaged mutex.
DWORD tryLockRobust(pthread_mutex_t& mutex) noexcept;

/// As tryLockRobust(), after waiting until the deadline at most.
DWORD lockRobust(pthread_mutex_t& mutex, Deadline const& deadline) noexcept;

}  // namespace zk::os
