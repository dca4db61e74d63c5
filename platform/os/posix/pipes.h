// pipes.h: pipes without a name.
//
//   HANDLE readEnd, writeEnd;
//   CreatePipe(&readEnd, &writeEnd, nullptr, 0);
//   WriteFile(writeEnd, "abc", 3, &count, nullptr);
//   ReadFile(readEnd, buffer, sizeof buffer, &count, nullptr);   // count is 3
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

/// Makes a pipe and gives a handle to each end, which the caller closes.
///
/// Both handles are inheritable if `security` says so; a security descriptor
/// fails with ERROR_INVALID_PARAMETER. `size` is a hint for the kernel's buffer.
ZK_UTIL_API BOOL WINAPI CreatePipe(PHANDLE readEnd, PHANDLE writeEnd, LPSECURITY_ATTRIBUTES security,
                                   DWORD size) noexcept;
