// ZktSemaphore.h: a semaphore of the system, for the application's core.
//
//   ZktSemaphore slots(nullptr, 4, 4, nullptr);
//   slots.Wait(1000);       // takes a unit: 0 at once, unless enableCoreForMultithreading(true)
//   slots.Signal();         // takes one if there is one
//   slots.Release();        // gives one back
#pragma once

#include "process/multithreading.h"

/// The object of the system is made whatever the switch says; without one, Wait() fails as the system does.
///
/// A copy shares the handle with its source, and both close it: only one of them may outlive the other's use.
class ZK_UTIL_API ZktSemaphore {
public:
    /// 0xFFFFFF units of as many: Wait() does not wait in practice.
    ZktSemaphore();
    /// With a name it is the one of that name, made if there is none.
    ZktSemaphore(SECURITY_ATTRIBUTES* security, long initialCount, long maximumCount, char const* name);
    ZktSemaphore(ZktSemaphore const&) = default;
    ZktSemaphore& operator=(ZktSemaphore const&) = default;
    virtual ~ZktSemaphore();

    /// Takes a unit, waiting up to `timeout` milliseconds: 0 taken, 258 in time not, 0xFFFFFFFF failed. 0 while
    /// the switch is off.
    unsigned long Wait(unsigned long timeout)
    {
        return zk::isCoreMultithreaded ? WaitForSingleObject(handle_, static_cast<DWORD>(timeout)) : 0;
    }

    /// Takes a unit if there is one, without waiting, with the results of Wait().
    unsigned long Signal() { return Wait(0); }

    /// Gives a unit back: 1, or 0 if all are there. 0 while the switch is off.
    int Release() { return zk::isCoreMultithreaded ? ReleaseSemaphore(handle_, 1, nullptr) : 0; }

private:
    HANDLE handle_;
};
