// multithreading.h: whether the locks of the application's core lock, and names for threads.
//
//   enableCoreForMultithreading(true);      // once, at start, before a second thread
//   setThreadName(GetCurrentThreadId(), "loader");
//
// The core was written for one thread. ZktCriticalSection, ZktMutex and
// ZktSemaphore do nothing, and report success, until the switch is on.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

namespace zk {

/// The switch. A plain bool, read without a lock: the locks below are to cost nothing while it is off.
extern ZK_UTIL_API bool isCoreMultithreaded;

}  // namespace zk

/// Sets the switch, which is off at first. A lock that is taken on one side of a change and given back on
/// the other is the caller's fault.
ZK_UTIL_API void enableCoreForMultithreading(bool isEnabled);
ZK_UTIL_API bool isCoreEnabledForMultithreading();

/// Names a thread for a debugger; 0xFFFFFFFF is the calling thread. See zk::os::nameThread().
ZK_UTIL_API void setThreadName(unsigned long threadId, CString const& name);
