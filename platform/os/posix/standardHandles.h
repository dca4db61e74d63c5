// standardHandles.h: the handles for standard input, output and error.
//
//   WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "done\n", 5, &count, nullptr);
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define STD_INPUT_HANDLE (static_cast<DWORD>(-10))
#define STD_OUTPUT_HANDLE (static_cast<DWORD>(-11))
#define STD_ERROR_HANDLE (static_cast<DWORD>(-12))

/// One of the three; null if the process was started without it or it was set so.
///
/// The first call for each makes an inheritable handle to the descriptor 0, 1
/// or 2; closing the handle leaves the descriptor open.
/// INVALID_HANDLE_VALUE on failure: ERROR_INVALID_HANDLE for another number,
/// ERROR_NOT_ENOUGH_MEMORY and ERROR_TOO_MANY_OPEN_FILES without room for a handle.
ZK_UTIL_API HANDLE WINAPI GetStdHandle(DWORD which) noexcept;

/// Sets what GetStdHandle() gives from now on, any value; the descriptors stay.
ZK_UTIL_API BOOL WINAPI SetStdHandle(DWORD which, HANDLE handle) noexcept;
