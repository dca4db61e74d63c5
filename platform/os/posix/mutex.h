// mutex.h: mutexes, in one process or shared by name.
//
//   HANDLE const mutex = CreateMutexA(nullptr, FALSE, "Global\\log");
//   if (WaitForSingleObject(mutex, 10000) != WAIT_TIMEOUT) {
//       ...
//       ReleaseMutex(mutex);
//   }
//   CloseHandle(mutex);
//
// A mutex belongs to a thread, which may take it again and then releases it as
// often. A thread or process that ends without releasing it, in whatever way,
// abandons it: the next wait gives WAIT_ABANDONED, and the mutex.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define MUTEX_MODIFY_STATE 0x0001u
#define MUTEX_ALL_ACCESS 0x1F0001u

/// Makes a mutex, or opens the one of that name; null or "" is no name.
///
/// A new mutex sets the last error to 0, and with `initialOwner` belongs to the
/// calling thread. One that exists sets it to ERROR_ALREADY_EXISTS, and stays
/// with whom it belongs to. Null on failure: ERROR_INVALID_HANDLE if the
/// name is that of another kind of object, else see namedObjects.h.
ZK_UTIL_API HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES attributes, BOOL initialOwner, LPCSTR name) noexcept;

/// Opens the mutex of a name. Null with ERROR_FILE_NOT_FOUND if there is none.
/// Every handle gives all rights, whatever `access` asks for.
ZK_UTIL_API HANDLE OpenMutexA(DWORD access, BOOL inherit, LPCSTR name) noexcept;

/// Gives a mutex back once. FALSE with ERROR_NOT_OWNER if it isn't the calling thread's.
ZK_UTIL_API BOOL ReleaseMutex(HANDLE mutex) noexcept;
