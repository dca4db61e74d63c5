// arguments.h: the command line.
#pragma once

#include <string>
#include <vector>

namespace zkgencat {

struct Arguments {
    enum Command { none, compile, dump, check };

    Command command = none;
    bool isNew = false;              ///< what the catalog holds so far goes
    std::string codeset;             ///< of the sources; empty: UTF-8
    std::vector<std::string> files;  ///< the catalog, and the sources or the other catalogs
    std::string answer;   ///< the text of --help or --version, if it was asked for; there is no command then
    std::string mistake;  ///< what is wrong with the arguments; empty if nothing is
};

/// Reads the command line, the program's name first.
Arguments readArguments(int count, char const* const* words);

}  // namespace zkgencat
