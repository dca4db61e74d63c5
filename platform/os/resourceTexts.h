// resourceTexts.h: the numbered texts in the resources of the program.
//
//   std::string text;
//   zk::os::loadResourceText(47188, text);     // whether there is one
#pragma once

#include "platform/os/exportMacro.h"

#include <string>

namespace zk::os {

/// Reads the string resource `id` of the program that runs, in the process's
/// code page. Gives whether there is one; `text` is left alone if not. Where
/// programs have no such resources there is none.
ZK_UTIL_API bool loadResourceText(unsigned int id, std::string& text);

}  // namespace zk::os
