// CxThread.h: threads of plain functions.
//
//   CxThread thread;
//   CxThreadStart(thread, [](void* counter) { ++*static_cast<int*>(counter); }, &counter);
//   CxThreadWait(thread);                   // the function has returned, the thread is closed
#pragma once

#include "logging/CCgResult.h"
#include "platform/os/os.h"
#include "zk_export.h"

#include <cstdint>

struct CxThread {
    HANDLE handle = nullptr;  ///< null while there is no thread
};

/// Starts a thread with `entry(argument)`.
ZK_UTIL_API CCgResult CxThreadStart(CxThread& thread, void (*entry)(void*), void* argument);

/// Waits until the thread has ended, without limit, and closes it.
ZK_UTIL_API CCgResult CxThreadWait(CxThread& thread) noexcept;

/// Holds the calling thread for at least so long.
ZK_UTIL_API void CxThreadSleep(std::uint32_t milliseconds) noexcept;

/// The number of the calling thread, unique in the machine.
ZK_UTIL_API std::uint32_t CxCurrentThreadId() noexcept;
