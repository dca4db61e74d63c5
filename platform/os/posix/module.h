// module.h: the loaded modules, their files and what they export; the command line.
//
//   char file[MAX_PATH + 1];
//   GetModuleFileNameA(nullptr, file, sizeof file);          // of the executable
//   HMODULE const library = GetModuleHandleA("ZK_UTIL_DLL");  // libZK_UTIL_DLL.so.8.4
//   GetProcAddress(library, "noSuchThing");                   // null, ERROR_PROC_NOT_FOUND
//
// The handle of a module is the address at which it is loaded. Every call looks
// it up among the loaded modules, so that a stale one fails and does no harm.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <string>

#define GET_MODULE_HANDLE_EX_FLAG_PIN 0x00000001u
#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x00000002u
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x00000004u

using FARPROC = INT_PTR(WINAPI*)();

/// Copies the full path of a module's file; null is the executable.
///
/// Gives the path's length. When `room` is too small, as much of the path as fits is written with
/// a NUL, the result is `room` and the last error ERROR_INSUFFICIENT_BUFFER. A handle of no loaded
/// module gives 0 and ERROR_MOD_NOT_FOUND. The path of an executable that was deleted or replaced
/// while it runs is the one it was started from.
ZK_UTIL_API DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR file, DWORD room) noexcept;

/// The handle of a loaded module; null is the executable. Nothing is to be given back.
///
/// `name` is a full path, or a file name in any case, of which a leading "lib" and all from ".so",
/// ".dll" or ".exe" on may be missing or stand for one another. Null and ERROR_MOD_NOT_FOUND
/// if no such module is loaded.
ZK_UTIL_API HMODULE WINAPI GetModuleHandleA(LPCSTR name) noexcept;

/// The handle of a loaded module by name, or of the one that an address lies in (FROM_ADDRESS).
///
/// Unless UNCHANGED_REFCOUNT is given, the module stays loaded until FreeLibrary(), or, with PIN,
/// until the process ends. Failures: ERROR_MOD_NOT_FOUND, with `*module` null; ERROR_INVALID_PARAMETER
/// for a null `module`, unknown bits, and PIN together with UNCHANGED_REFCOUNT.
ZK_UTIL_API BOOL WINAPI GetModuleHandleExA(DWORD flags, LPCSTR name, HMODULE* module) noexcept;

/// Loads a module, or holds on to one that is loaded already. To be given back with FreeLibrary().
///
/// A name without a separator is looked for by the system's rules, as it is, then as "name.so" and
/// "libname.so". Null with ERROR_MOD_NOT_FOUND if there is no such file or one that it needs is
/// missing, ERROR_BAD_EXE_FORMAT if it is no module of this system.
ZK_UTIL_API HMODULE WINAPI LoadLibraryA(LPCSTR name) noexcept;

/// Gives back what LoadLibraryA() gave. On a module that was loaded with the program it does
/// nothing. Null fails with ERROR_INVALID_HANDLE, a handle of no loaded module with ERROR_MOD_NOT_FOUND.
ZK_UTIL_API BOOL WINAPI FreeLibrary(HMODULE module) noexcept;

/// The address of what a module itself exports under `name`; null is the executable.
///
/// Null with ERROR_PROC_NOT_FOUND if there is none, and for a number in place of a name;
/// ERROR_MOD_NOT_FOUND for a handle of no loaded module.
ZK_UTIL_API FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) noexcept;

/// The command line of the process as one text, the same for its whole life.
///
/// It is put together from the arguments such that the Windows C runtime would find the same ones
/// in it: those with blanks or quotes stand in quotes.
ZK_UTIL_API LPSTR WINAPI GetCommandLineA() noexcept;

namespace zk::os {

/// The full path of the executable; empty with the last error set if the kernel doesn't tell it.
std::string executablePath();

/// What GetCommandLineA() gives, read anew; the program's path alone if the kernel doesn't tell it.
std::string readCommandLine();

}  // namespace zk::os
