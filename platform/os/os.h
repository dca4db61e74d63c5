// os.h: the one way to the operating system.
//
//   DWORD const attributes = GetFileAttributesA("model.cpp");
//   if (attributes == INVALID_FILE_ATTRIBUTES)
//       report(GetLastError());                      // 2: there is no such file
//
// The library is written against operations that have the names, arguments,
// results and last-error values of the Windows system calls it needs. On
// Windows this header brings in the system's own; elsewhere it declares the
// subset that is used, supplied by the files in posix/. What each supplied
// operation does and refuses stands at its declaration and in docs/platform.md.
#pragma once

#ifdef _WIN32
#    include "platform/os/windows/system.h"
#else
#    include "platform/os/posix/system.h"
#endif
#include "platform/os/nativeSeparator.h"
