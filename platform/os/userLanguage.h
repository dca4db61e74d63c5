// userLanguage.h: the language in which the system speaks to the user.
#pragma once

#include "platform/os/exportMacro.h"

#include <string>

namespace zk::os {

/// The user's language and country as "de_DE"; empty where the environment alone tells them.
ZK_UTIL_API std::string userLanguage();

}  // namespace zk::os
