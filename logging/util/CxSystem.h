// CxSystem.h: what the toolkit asks the system about the process and the machine.
#pragma once

#include "logging/CCgResult.h"
#include "zk_export.h"

#include <cstdint>
#include <optional>
#include <string>

/// The process's current directory, without a separator at its end unless it is a root.
ZK_UTIL_API CCgResult CxCurrentDirectory(std::string& directory);

/// The value of an environment variable, if there is one; and a new value for it.
ZK_UTIL_API std::optional<std::string> CxGetEnvironment(char const* name);
ZK_UTIL_API CCgResult CxSetEnvironment(char const* name, char const* value);

ZK_UTIL_API std::uint32_t CxProcessId() noexcept;

/// Milliseconds since the beginning of 1970, in UTC.
ZK_UTIL_API std::int64_t CxTimeInMilliseconds() noexcept;

/// The machine's full name: its own if that has a ".", else the official one of the name services
/// if that has one, else its own. 'p' and 40 if the system does not tell it.
///
/// May ask other machines, and so take seconds.
ZK_UTIL_API CCgResult CxHostName(std::string& name);
