// accessCheck.h: whether the process may read or write a file.
//
//   _access("model.txt", 0);      // 0: it exists
//   _access("model.txt", 2);      // -1 and errno EACCES: it is read-only
#pragma once

#ifdef _WIN32
#    include <io.h>
#else
#    include "platform/os/posix/accessCheck.h"
#endif
