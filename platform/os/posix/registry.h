// registry.h: the machine's registry, for reading, as folders with small text files.
//
//   HKEY key;
//   if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Meridane\\Zentrika\\8.4", 0, KEY_QUERY_VALUE, &key) == 0) {
//       BYTE text[260];
//       DWORD size = sizeof text;
//       RegQueryValueExA(key, "UserDirectory", nullptr, nullptr, text, &size);
//       RegCloseKey(key);
//   }
//
// A key is a folder below $ZK_REGISTRY_DIR, else /etc/zentrika/registry, there
// below "HKEY_LOCAL_MACHINE" or, without that, directly. Its values are
// lines "name=text" in the file "values.ini", without a section. All values are texts
// (REG_SZ); blanks around one do not belong to it.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

using LSTATUS = LONG;
using REGSAM = DWORD;
using PHKEY = HKEY*;

#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002u)))

#define KEY_QUERY_VALUE 0x0001u
#define KEY_ENUMERATE_SUB_KEYS 0x0008u
#define KEY_NOTIFY 0x0010u
#define KEY_READ 0x20019u
#define KEY_WOW64_64KEY 0x0100u
#define KEY_WOW64_32KEY 0x0200u
#define REG_NONE 0u
#define REG_SZ 1u

/// Opens a key below HKEY_LOCAL_MACHINE, or below an open one; an empty name opens that one once more.
///
/// Gives an error number and leaves the last error alone: ERROR_FILE_NOT_FOUND if there is no such key,
/// with `*key` as it was; ERROR_ACCESS_DENIED for more than reading; ERROR_INVALID_HANDLE for another `root`.
/// Names match with case. Close the key with RegCloseKey().
ZK_UTIL_API LSTATUS WINAPI RegOpenKeyExA(HKEY root, LPCSTR name, DWORD options, REGSAM access,
                                         PHKEY key) noexcept;

/// Copies a value of a key with its NUL. A null name is the empty one; names match without case.
///
/// `*size` is the room on entry and the size with the NUL afterwards. ERROR_MORE_DATA if the room is too
/// small; with null `data` the size alone is told. ERROR_FILE_NOT_FOUND if there is no such value.
ZK_UTIL_API LSTATUS WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type,
                                            LPBYTE data, LPDWORD size) noexcept;

/// Closes a key; ERROR_INVALID_HANDLE if it is none. HKEY_LOCAL_MACHINE is never closed.
ZK_UTIL_API LSTATUS WINAPI RegCloseKey(HKEY key) noexcept;
