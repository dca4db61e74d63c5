// threadName.h: a thread's name, for whoever debugs the process.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/os.h"

namespace zk::os {

/// Names a thread of this process for a debugger; 0xFFFFFFFF is the calling thread.
///
/// On Windows the debugger is told by an exception that everybody else passes over: it sees the name only while
/// it is attached. On Linux the kernel keeps the first 15 bytes, as /proc, ps and debuggers show them. A thread
/// that is not there is passed over. The last error stays as it was.
ZK_UTIL_API void nameThread(DWORD threadId, char const* name) noexcept;

}  // namespace zk::os
