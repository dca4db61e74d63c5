// cppReserved.h: names that generated C++ must not use.
//
//   isReservedWord("class");        // true
//   isReservedGlobally("time");     // true: a function of the C library has it
//   isDeviceName("con");            // true: no file may be called so on Windows
#pragma once

#include <string_view>

namespace modelgen {

/// Keywords and macros: taken everywhere.
bool isReservedWord(std::string_view word);

/// Names of the C library: taken outside every namespace.
bool isReservedGlobally(std::string_view word);

/// Names of devices, given in lower case: taken as names of files and folders.
bool isDeviceName(std::string_view lowerCaseStem);

}  // namespace modelgen
