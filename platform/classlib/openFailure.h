// openFailure.h: what an Open() that fails leaves behind.
//
//   return zk::tellOpenFailure(GetLastError(), lpszFileName, pException);
#pragma once

#include "platform/classlib/CFileException.h"

namespace zk {

/// Puts cause, system error and name into `*exception`, if there is one, and the
/// error into the thread's last error; gives FALSE. Without memory for the name it stays empty.
BOOL tellOpenFailure(DWORD error, char const* name, CFileException* exception) noexcept;

}  // namespace zk
