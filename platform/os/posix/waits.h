// waits.h: waiting for an object.
//
//   if (WaitForSingleObject(thread, 100) == WAIT_TIMEOUT)
//       ...                                        // it still runs
//
// Mutexes, semaphores, events, threads and processes can be waited on, one at a time.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/types.h"

#define WAIT_OBJECT_0 0u
#define WAIT_ABANDONED 0x80u
#define WAIT_ABANDONED_0 0x80u
#define WAIT_IO_COMPLETION 0xC0u
#define WAIT_FAILED 0xFFFFFFFFu

/// Waits until an object is signalled, at most `milliseconds` (INFINITE: no
/// limit; 0: looks only), and takes what the object gives: a mutex becomes the
/// thread's, a semaphore's count falls by one, an automatic event is reset.
///
/// Gives WAIT_OBJECT_0, WAIT_TIMEOUT, or WAIT_ABANDONED for a mutex, now the
/// thread's, whose owner ended without releasing it. The last error is left
/// alone then. On failure WAIT_FAILED, with ERROR_INVALID_HANDLE for a value
/// that is no open handle or for an object that cannot be waited on.
///
/// Signals do not end a wait, nor does the closing of the handle by another thread.
ZK_UTIL_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) noexcept;

/// As WaitForSingleObject(). An alertable wait fails with ERROR_NOT_SUPPORTED.
ZK_UTIL_API DWORD WaitForSingleObjectEx(HANDLE handle, DWORD milliseconds, BOOL alertable) noexcept;
