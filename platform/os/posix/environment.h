// environment.h: the process's environment, and the names of computer and user.
//
//   char value[261];
//   DWORD const length = GetEnvironmentVariableA("HOME", value, sizeof value);
//   // 0 and ERROR_ENVVAR_NOT_FOUND: there is none; more than 260: the size that is needed
//
// Names match with case. All readers and writers here share one lock, and what
// they give is a copy. Code that calls getenv() or setenv() itself is not held off.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <optional>
#include <string>
#include <vector>

#define MAX_COMPUTERNAME_LENGTH 15

/// Copies the value of a variable, with its NUL, into `value`.
///
/// Gives the value's length; or, with `value` untouched, the size that is needed with the NUL
/// when `room` is too small; or 0 and ERROR_ENVVAR_NOT_FOUND. The 0 of an empty value leaves the
/// last error alone.
ZK_UTIL_API DWORD WINAPI GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD room) noexcept;

/// Sets a variable, or removes it with a null `value`; it need not exist.
///
/// A name that is empty or holds "=" fails with ERROR_INVALID_PARAMETER, a null name with
/// ERROR_ENVVAR_NOT_FOUND.
ZK_UTIL_API BOOL WINAPI SetEnvironmentVariableA(LPCSTR name, LPCSTR value) noexcept;

/// Copies `text` with each "%name%" replaced by the variable's value; one that does not exist
/// stays as it stands.
///
/// Gives the size of the result with its NUL. When `room` is too small, that is also the size that
/// is needed, the last error is ERROR_INSUFFICIENT_BUFFER, and `target` holds, NUL-terminated, the
/// pieces that fit whole. 0 only where memory runs out, or for a null `text`.
ZK_UTIL_API DWORD WINAPI ExpandEnvironmentStringsA(LPCSTR text, LPSTR target, DWORD room) noexcept;

/// All variables as "name=value" texts, each with its NUL, and one NUL more at the end. Owned by
/// the caller: give it to FreeEnvironmentStringsA(). Null and ERROR_NOT_ENOUGH_MEMORY on failure.
ZK_UTIL_API LPSTR WINAPI GetEnvironmentStringsA() noexcept;
ZK_UTIL_API BOOL WINAPI FreeEnvironmentStringsA(LPSTR block) noexcept;

/// The computer's name: the host's name up to its first dot, in upper case, 15 bytes at most.
///
/// `*size` is the room on entry and the length without NUL on success. When the room is too
/// small, `*size` becomes the one that is needed with the NUL, with ERROR_BUFFER_OVERFLOW.
ZK_UTIL_API BOOL WINAPI GetComputerNameA(LPSTR name, LPDWORD size) noexcept;

/// The name of the user that the process acts for; the user's number if it has none.
///
/// `*size` is the room on entry, and what the name takes with its NUL afterwards; a room that is
/// too small fails with ERROR_INSUFFICIENT_BUFFER.
ZK_UTIL_API BOOL WINAPI GetUserNameA(LPSTR name, LPDWORD size) noexcept;

namespace zk::os {

/// The value of a variable, if there is one.
std::optional<std::string> environmentVariable(char const* name);

/// All variables as "name=value", for a child process.
std::vector<std::string> environmentSnapshot();

}  // namespace zk::os
