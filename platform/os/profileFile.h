// profileFile.h: which file a profile's name stands for.
//
//   zk::os::profileFile("Zentrika.ini");     // "/home/me/.config/zentrika/Zentrika.ini", "C:\windows\Zentrika.ini"
//   zk::os::profileFile("./my.ini");         // "./my.ini"
#pragma once

#include <string>

namespace zk::os {

/// The file that the private-profile calls reach under a name; empty for an empty name, and, with the last
/// error set, where the user has no folder for a bare name.
std::string profileFile(char const* name);

}  // namespace zk::os
