// ZktMutex.h: a mutex of the system, for the application's core.
//
//   ZktMutex mutex;
//   if (mutex.Wait(1000) == 0) {         // 0 at once, unless enableCoreForMultithreading(true)
//       ...
//       mutex.Release();
//   }
#pragma once

#include "process/multithreading.h"

/// The object of the system is made whatever the switch says; without one, Wait() fails as the system does.
///
/// A copy shares the handle with its source, and both close it: only one of them may outlive the other's use.
class ZK_UTIL_API ZktMutex {
public:
    ZktMutex();
    /// Owned by the calling thread from the start if `initialOwner` is not 0.
    explicit ZktMutex(int initialOwner);
    /// With a name it is the one of that name, made if there is none.
    ZktMutex(SECURITY_ATTRIBUTES* security, int initialOwner, char const* name);
    ZktMutex(ZktMutex const&) = default;
    ZktMutex& operator=(ZktMutex const&) = default;
    virtual ~ZktMutex();

    /// Waits up to `timeout` milliseconds: 0 taken, 0x80 taken from an owner that ended, 258 in time not,
    /// 0xFFFFFFFF failed. 0 while the switch is off.
    unsigned long Wait(unsigned long timeout)
    {
        return zk::isCoreMultithreaded ? WaitForSingleObject(handle_, static_cast<DWORD>(timeout)) : 0;
    }

    /// Gives the mutex back: 1, or 0 if it is not the thread's. 0 while the switch is off.
    int Release() { return zk::isCoreMultithreaded ? ReleaseMutex(handle_) : 0; }

private:
    HANDLE handle_;
};
