// debugOutput.h: texts for a debugger.
//
//   OutputDebugStringA("model loaded\n");    // on standard error if ZK_DEBUG_OUTPUT is set, else nowhere
//
// No debugger takes such texts here, so they go to a sink that the host may
// set. Without one they go to standard error if the environment has a variable
// ZK_DEBUG_OUTPUT that is not empty.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

/// Hands a text to the sink, in the calling thread; null is an empty text. Leaves the last error alone.
ZK_UTIL_API void WINAPI OutputDebugStringA(LPCSTR text) noexcept;

/// Whether another process traces this one.
ZK_UTIL_API BOOL WINAPI IsDebuggerPresent() noexcept;

namespace zk::os {

/// What takes the texts of OutputDebugStringA(). It may be called by several threads at once.
using DebugSink = void (*)(char const* text) noexcept;

/// Sets the sink, null for the default one, and gives the previous one.
ZK_UTIL_API DebugSink setDebugSink(DebugSink sink) noexcept;

}  // namespace zk::os
