// event.h: events, in one process or shared by name.
//
//   HANDLE const ready = CreateEventA(nullptr, FALSE, FALSE, nullptr);
//   SetEvent(ready);
//   WaitForSingleObject(ready, 0);            // WAIT_OBJECT_0; a second one gives WAIT_TIMEOUT
//
// A manual event stays set, and lets every waiter through, until it is reset.
// An automatic one lets a single waiter through and is reset by that.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define EVENT_MODIFY_STATE 0x0002u
#define EVENT_ALL_ACCESS 0x1F0003u

/// Makes an event, or opens the one of that name; null or "" is no name.
///
/// A new event sets the last error to 0. One that exists sets it to
/// ERROR_ALREADY_EXISTS, and keeps its kind and state. Null on failure:
/// ERROR_INVALID_HANDLE if the name is that of another kind of object, else
/// see namedObjects.h.
ZK_UTIL_API HANDLE CreateEventA(LPSECURITY_ATTRIBUTES attributes, BOOL manualReset, BOOL initialState,
                                LPCSTR name) noexcept;

/// Opens the event of a name. Null with ERROR_FILE_NOT_FOUND if there is none.
/// Every handle gives all rights, whatever `access` asks for.
ZK_UTIL_API HANDLE OpenEventA(DWORD access, BOOL inherit, LPCSTR name) noexcept;

/// Sets an event.
ZK_UTIL_API BOOL SetEvent(HANDLE event) noexcept;

/// Resets an event.
ZK_UTIL_API BOOL ResetEvent(HANDLE event) noexcept;

/// Always fails with ERROR_NOT_SUPPORTED, or ERROR_INVALID_HANDLE for what is
/// no event: which threads "wait at this moment" is not defined on this system.
ZK_UTIL_API BOOL PulseEvent(HANDLE event) noexcept;
