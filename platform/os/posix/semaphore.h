// semaphore.h: semaphores, in one process or shared by name.
//
//   HANDLE const places = CreateSemaphoreA(nullptr, 2, 2, nullptr);
//   WaitForSingleObject(places, 0);           // WAIT_OBJECT_0, twice; then WAIT_TIMEOUT
//   ReleaseSemaphore(places, 1, nullptr);
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define SEMAPHORE_MODIFY_STATE 0x0002u
#define SEMAPHORE_ALL_ACCESS 0x1F0003u

/// Makes a semaphore, or opens the one of that name; null or "" is no name.
///
/// A new one sets the last error to 0. One that exists sets it to
/// ERROR_ALREADY_EXISTS, and keeps its counts. Null on failure:
/// ERROR_INVALID_PARAMETER unless 0 <= `initial` <= `maximum` and 0 < `maximum`,
/// ERROR_INVALID_HANDLE if the name is that of another kind of object, else see namedObjects.h.
ZK_UTIL_API HANDLE CreateSemaphoreA(LPSECURITY_ATTRIBUTES attributes, LONG initial, LONG maximum,
                                    LPCSTR name) noexcept;

/// Opens the semaphore of a name. Null with ERROR_FILE_NOT_FOUND if there is none.
/// Every handle gives all rights, whatever `access` asks for.
ZK_UTIL_API HANDLE OpenSemaphoreA(DWORD access, BOOL inherit, LPCSTR name) noexcept;

/// Adds to the count, and gives the count before to `previous` unless that is null.
///
/// FALSE with ERROR_TOO_MANY_POSTS, and the count and `*previous` untouched, if the
/// maximum would be passed or `count` is negative. A count of 0 only tells.
ZK_UTIL_API BOOL ReleaseSemaphore(HANDLE semaphore, LONG count, LPLONG previous) noexcept;
