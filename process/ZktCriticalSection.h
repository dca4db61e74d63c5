// ZktCriticalSection.h: the lock of one process, for the application's core.
//
//   ZktCriticalSection section;
//   section.EnterCriticalSection();      // nothing, unless enableCoreForMultithreading(true)
//   section.LeaveCriticalSection();
#pragma once

#include "platform/os/readySection.h"
#include "process/multithreading.h"

/// A thread may enter again, and then leaves as often. Usable from its construction on; makes and frees no object
/// of the system. A copy is a lock of its own if the source is free; a lock that somebody holds is not copied.
class ZK_UTIL_API ZktCriticalSection {
public:
    ZktCriticalSection() = default;
    ZktCriticalSection(ZktCriticalSection const&) = default;
    ZktCriticalSection& operator=(ZktCriticalSection const&) = default;
    virtual ~ZktCriticalSection();

    /// Waits without limit until the section is the thread's.
    void EnterCriticalSection() const
    {
        if (zk::isCoreMultithreaded)
            ::EnterCriticalSection(&section_);
    }

    void LeaveCriticalSection() const
    {
        if (zk::isCoreMultithreaded)
            ::LeaveCriticalSection(&section_);
    }

    /// Takes nothing, and always gives 0.
    int TryEnterCriticalSection() const { return 0; }

private:
    mutable CRITICAL_SECTION section_ = zk::os::readySection();
};
