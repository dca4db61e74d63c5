// threadLocal.h: values that each thread has for itself.
//
//   DWORD const index = TlsAlloc();
//   TlsSetValue(index, &state);               // in this thread
//   TlsGetValue(index);                       // &state; null in every other thread
//   TlsFree(index);
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define TLS_OUT_OF_INDEXES 0xFFFFFFFFu
#define TLS_MINIMUM_AVAILABLE 64

/// Takes an index, whose value is null in every thread. There are 1088;
/// TLS_OUT_OF_INDEXES with ERROR_NO_MORE_ITEMS when all are taken.
ZK_UTIL_API DWORD TlsAlloc() noexcept;

/// Gives an index back. The values are forgotten, not freed. FALSE with
/// ERROR_INVALID_PARAMETER for an index that isn't taken.
ZK_UTIL_API BOOL TlsFree(DWORD index) noexcept;

/// The calling thread's value; null if it set none. Sets the last error to 0,
/// or to ERROR_INVALID_PARAMETER for a number that is no index.
ZK_UTIL_API LPVOID TlsGetValue(DWORD index) noexcept;

/// Sets the calling thread's value. FALSE with ERROR_INVALID_PARAMETER for a
/// number that is no index, ERROR_NOT_ENOUGH_MEMORY without memory.
ZK_UTIL_API BOOL TlsSetValue(DWORD index, LPVOID value) noexcept;
