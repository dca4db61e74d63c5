// CxMutex.h: mutexes, of this process or shared by a key.
//
//   CxMutex mutex;
//   if (CxMutexCreate(mutex).ok() && CxMutexLock(mutex).ok()) {
//       ...
//       CxMutexUnlock(mutex);
//   }
//   CxMutexClose(mutex);
//
// The thread that holds a mutex may lock it again, and unlocks it as often. One
// that a thread or process held when it ended goes to the next that waits.
#pragma once

#include "logging/CCgResult.h"
#include "platform/os/os.h"
#include "zk_export.h"

#include <cstdint>

struct CxMutex {
    HANDLE handle = nullptr;  ///< null while there is no mutex
};

/// Makes a mutex without a name.
ZK_UTIL_API CCgResult CxMutexCreate(CxMutex& mutex) noexcept;

/// Waits for the mutex without limit.
ZK_UTIL_API CCgResult CxMutexLock(CxMutex const& mutex) noexcept;

/// Gives the mutex back once; a system error if it is not the calling thread's.
ZK_UTIL_API CCgResult CxMutexUnlock(CxMutex const& mutex) noexcept;

/// Closes a mutex of either kind; 'p' and 22 if there is none.
ZK_UTIL_API CCgResult CxMutexClose(CxMutex& mutex) noexcept;

/// Makes or opens the mutex that all processes with this key share: its name is `Global\CX_SEM_KEY_`
/// and the key in hexadecimal.
ZK_UTIL_API CCgResult CxMutexCreateNamed(CxMutex& mutex, std::int32_t key) noexcept;

/// Waits for the mutex 10000 ms at most; then 'w' with the last error.
ZK_UTIL_API CCgResult CxMutexLockNamed(CxMutex const& mutex) noexcept;

/// The same, and tells whether the last owner ended without giving it back: what it guards may be half-changed.
ZK_UTIL_API CCgResult CxMutexLockNamed(CxMutex const& mutex, bool& wasAbandoned) noexcept;

/// The same with a limit of one's own.
ZK_UTIL_API CCgResult CxMutexLockFor(CxMutex const& mutex, std::uint32_t milliseconds) noexcept;
