// process.h: child processes, and how they end.
//
//   char command[] = "zkgencat --help";
//   STARTUPINFOA startup = {};
//   startup.cb = sizeof startup;
//   PROCESS_INFORMATION started;
//   if (CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started)) {
//       WaitForSingleObject(started.hProcess, INFINITE);
//       DWORD code;
//       GetExitCodeProcess(started.hProcess, &code);
//       CloseHandle(started.hThread);
//       CloseHandle(started.hProcess);
//   }
//
// The handle of a process is its pidfd: it names this process and never another
// one that came to the same number. A child is reaped when its last handle is
// closed; one that still runs then is reaped when the next one is started.
// Children that others of the program have started are never touched.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define STILL_ACTIVE 259u

#define CREATE_NO_WINDOW 0x08000000u

#define STARTF_USESHOWWINDOW 0x00000001u

struct STARTUPINFOA {
    DWORD cb;
    LPSTR lpReserved;
    LPSTR lpDesktop;
    LPSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using LPSTARTUPINFOA = STARTUPINFOA*;

struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

/// Starts a program. Its arguments are those that the rules of the Windows C
/// runtime make of `commandLine` (commandLine.h).
///
/// The program is `application`, a path, or else the command line's first
/// argument: a path if it holds a "/"; a name is looked for in the folder of
/// the running program and then in PATH. The child has the three standard
/// files of this process and no other of its files, its environment as it is now,
/// default signals and the current directory. The thread's handle stands for the process.
///
/// On failure FALSE, with ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND for a
/// program that isn't there, ERROR_ACCESS_DENIED for what may not be run,
/// ERROR_BAD_EXE_FORMAT for what is no program, ERROR_NOT_ENOUGH_MEMORY without
/// room for another process. ERROR_INVALID_PARAMETER: neither name nor command
/// line, security descriptors, inherited handles, an environment or a current
/// directory of the child's own, standard handles, flags other than
/// CREATE_NO_WINDOW, and startup flags other than STARTF_USESHOWWINDOW, neither
/// of which has an effect.
ZK_UTIL_API BOOL WINAPI CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                                       LPSECURITY_ATTRIBUTES thread, BOOL inheritHandles, DWORD flags,
                                       LPVOID environment, LPCSTR currentDirectory, LPSTARTUPINFOA startup,
                                       LPPROCESS_INFORMATION started) noexcept;

/// How a process has ended: its own code, of which the system keeps 8 bits, or
/// 128 and the number of the signal that ended it; STILL_ACTIVE while it runs.
/// 0xFFFFFFFF if the system did not keep it: the program ignores SIGCHLD, or somebody
/// else took it.
ZK_UTIL_API BOOL WINAPI GetExitCodeProcess(HANDLE process, LPDWORD code) noexcept;
