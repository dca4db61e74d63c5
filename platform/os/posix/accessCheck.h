// accessCheck.h: see platform/os/accessCheck.h.
#pragma once

#include "platform/os/exportMacro.h"

/// Whether the process, with its effective user's rights, may do with a file or
/// folder what `mode` asks for: 0 that it exists, 2 write, 4 read, 6 both.
///
/// 0 if it may; otherwise -1 and errno: ENOENT, EACCES, EINVAL for another mode
/// or a null path. A file with the read-only attribute may not be written to,
/// whoever asks; a folder's attribute does not count.
ZK_UTIL_API int _access(char const* path, int mode) noexcept;
