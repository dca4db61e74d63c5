// criticalSection.h: the lock of one process, recursive and cheap.
//
//   CRITICAL_SECTION section;
//   InitializeCriticalSection(&section);
//   EnterCriticalSection(&section);
//   LeaveCriticalSection(&section);
//   DeleteCriticalSection(&section);
//
// A section of zero bytes is initialised already, and owns nothing: it may be
// copied while it is free and forgotten without being deleted.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

struct CRITICAL_SECTION {
    DWORD Holder = 0;  ///< the thread inside, with the top bit set if others wait; 0: free
    LONG RecursionCount = 0;
    DWORD SpinCount = 0;
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;

/// Makes a free section.
ZK_UTIL_API void InitializeCriticalSection(LPCRITICAL_SECTION section) noexcept;

/// Makes a free section whose waiters look `spinCount` times before they sleep. Always TRUE.
ZK_UTIL_API BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD spinCount) noexcept;

/// Waits without limit until the section is the thread's. A thread may enter
/// again, and then leaves as often.
ZK_UTIL_API void EnterCriticalSection(LPCRITICAL_SECTION section) noexcept;

/// Enters if that needs no wait, and tells so.
ZK_UTIL_API BOOL TryEnterCriticalSection(LPCRITICAL_SECTION section) noexcept;

/// Leaves once. A thread that is not inside changes nothing.
ZK_UTIL_API void LeaveCriticalSection(LPCRITICAL_SECTION section) noexcept;

/// Ends the use of a section, which is free again.
ZK_UTIL_API void DeleteCriticalSection(LPCRITICAL_SECTION section) noexcept;
