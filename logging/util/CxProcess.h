// CxProcess.h: child processes.
//
//   CxProcess process;
//   if (CxProcessStart(process, "zkgencat", {"--dump", "ccgmsg.cat"}).ok()) {
//       std::int32_t exitCode;
//       CxProcessWait(process, exitCode);
//       CxProcessClose(process);
//   }
#pragma once

#include "logging/CCgResult.h"
#include "platform/os/os.h"
#include "zk_export.h"

#include <cstdint>
#include <string>
#include <vector>

struct CxProcess {
    HANDLE handle = nullptr;  ///< null while there is no process
};

/// Starts the command line that the program and its arguments make with one space between them: what holds
/// blanks or quotes is quoted by the caller. 'w' with the system's error if it cannot be started, with 2 for a
/// program that isn't there.
ZK_UTIL_API CCgResult CxProcessStart(CxProcess& process, std::string const& program,
                                     std::vector<std::string> const& arguments);

/// Waits until the process has ended, without limit, and reads its exit code.
ZK_UTIL_API CCgResult CxProcessWait(CxProcess const& process, std::int32_t& exitCode) noexcept;

/// Closes the handle, not the process; 'p' and 22 if there is none.
ZK_UTIL_API CCgResult CxProcessClose(CxProcess& process) noexcept;
