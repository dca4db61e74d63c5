// pathNames.h: full paths, the folder for temporary files, and names in it.
//
//   char full[MAX_PATH], *file;
//   GetFullPathNameA("src/../model.txt", MAX_PATH, full, &file);   // "/home/me/model.txt", file: "model.txt"
//
// "/" separates; a backslash is an ordinary character of a name.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <string>

/// Makes a path absolute and takes ".", ".." and doubled separators out of it,
/// purely as text: links are not looked at, and nothing need exist.
///
/// A separator at the end stays. Gives the length, or the room needed if
/// `room` is too small for the path and its NUL; `buffer` is then not touched.
/// `*filePart`, where wanted, points behind the last separator, or is null if
/// nothing stands there. 0 and ERROR_INVALID_NAME for an empty name.
ZK_UTIL_API DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD room, LPSTR buffer, LPSTR* filePart) noexcept;

/// The folder for temporary files with a separator behind it: TMPDIR from the
/// environment, made absolute, else "/tmp/". It need not exist. The result is
/// as in GetFullPathNameA().
ZK_UTIL_API DWORD WINAPI GetTempPathA(DWORD room, LPSTR buffer) noexcept;

/// Makes a name "folder/preXXXX.tmp" from up to three bytes of `prefix` and the
/// low 16 bits of `unique` in hex, and gives those bits.
///
/// With 0 a number is chosen and the file is created, empty, for its owner
/// alone, where nothing stood; otherwise nothing is created. `buffer` holds
/// MAX_PATH bytes. 0 on failure: ERROR_DIRECTORY for a missing folder,
/// ERROR_BUFFER_OVERFLOW for a folder of more than MAX_PATH - 14 bytes.
ZK_UTIL_API UINT WINAPI GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR buffer) noexcept;

namespace zk::os {

/// What GetFullPathNameA() gives, as a string; 0 or the error. `name` is not empty.
DWORD makeFullPath(char const* name, std::string& full);

}  // namespace zk::os
