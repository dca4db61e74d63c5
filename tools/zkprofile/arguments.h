// arguments.h: the command line.
#pragma once

#include "platform/classlib/CString.h"

#include <string>

namespace zkprofile {

struct Arguments {
    enum Command { none, get, set, remove, list, origin };

    Command command = none;
    bool hasFile = false;  ///< otherwise the profile is searched for
    bool hasSection = false;
    bool hasKey = false;
    bool isProfileOnly = false;
    CString file;
    CString section;
    CString key;
    CString value;
    std::string answer;   ///< the text of --help or --version, if it was asked for; there is no command then
    std::string mistake;  ///< what is wrong with the arguments; empty if nothing is
};

/// Reads the command line, the program's name first.
Arguments readArguments(int count, char const* const* words);

}  // namespace zkprofile
