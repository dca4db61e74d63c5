// profile.h: private profiles, that is ini files, by section and key.
//
//   WritePrivateProfileStringA("General", "Depth", "7", "/home/me/my.ini");
//   char value[16];
//   GetPrivateProfileStringA("general", "DEPTH", "3", value, sizeof value, "/home/me/my.ini");   // 1: "7"
//
// How a file is read and what a change leaves alone stands in
// platform/os/profileText.h. A file name without "/" lies in the folder
// "zentrika" of the user's configuration: of $XDG_CONFIG_HOME if that is an
// absolute path, else of "~/.config". A null file name is "win.ini".
//
// Files are kept parsed, and looked at anew once one call of stat() says that
// they have changed. All calls may be made by several threads.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

/// Copies the value of a key with a NUL into `value`, as much of it as fits, and gives the length copied.
///
/// Blanks around the value are left out, and then one pair of quotes around it. For an absent key the
/// default takes its place, without blanks at its end; null is an empty one. With a null `key` all keys
/// of the section that have a value are listed, with a null `section` all sections, each with a NUL and
/// one NUL more behind the last. A list that does not fit is cut: `room` - 2 bytes and two NULs. If there
/// is nothing to list, the default takes its place; not so for a null `section`.
///
/// Sets the last error to 0, or to what hinders the reading of the file, which then counts as empty:
/// ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED. With a null `value`
/// or no room the result is 0 and the last error stays.
ZK_UTIL_API DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue,
                                                  LPSTR value, DWORD room, LPCSTR file) noexcept;

/// Gives a key a value, or removes it with a null `value`, or its section with a null `key`.
///
/// A new file takes the old one's place in one step, with its mode, when it is on the disk: whoever
/// reads sees the old or the new one whole, and no two writers lose each other's changes. A symbolic
/// link stays one. A file, the folder of the user's configuration, a section or a key that doesn't
/// exist is made; to remove what doesn't exist is a success that touches nothing, and so is to set a
/// value that is there. On failure the file is as it was: ERROR_PATH_NOT_FOUND for a missing folder,
/// ERROR_ACCESS_DENIED, ERROR_DISK_FULL; ERROR_INVALID_PARAMETER for names and values that could
/// not be read back, as with a line break, and for a null `section`.
ZK_UTIL_API BOOL WINAPI WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value,
                                                   LPCSTR file) noexcept;

/// Reads bytes that WritePrivateProfileStructA() wrote. FALSE, with `data` as it was, unless as many
/// were written and the checksum is right. The last error is that of GetPrivateProfileStringA().
ZK_UTIL_API BOOL WINAPI GetPrivateProfileStructA(LPCSTR section, LPCSTR key, LPVOID data, UINT size,
                                                 LPCSTR file) noexcept;

/// Writes bytes as two hexadecimal digits each, with the sum of all, cut to a byte, behind them. Null
/// `data` removes the key. Failures are those of WritePrivateProfileStringA().
ZK_UTIL_API BOOL WINAPI WritePrivateProfileStructA(LPCSTR section, LPCSTR key, LPVOID data, UINT size,
                                                   LPCSTR file) noexcept;
