// runtimeLocale.h: the C library's locale for a Windows code page, and the user's code page.
//
//   zk::os::setRuntimeLocale(932);      // Japanese
#pragma once

#include "platform/os/exportMacro.h"

namespace zk::os {

/// The code page of the texts that the user's language is written in outside Unicode, e.g. 932.
ZK_UTIL_API unsigned int usersCodePage() noexcept;

/// Puts the C library's locale for the language of a code page (932, 936, 949, 950, or 1252 for
/// all others) in force for the process. False, with the locale as it was, if the system has none.
ZK_UTIL_API bool setRuntimeLocale(unsigned int codePage) noexcept;

}  // namespace zk::os
