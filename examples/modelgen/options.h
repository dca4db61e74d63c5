// options.h: the command line.
#pragma once

#include "platform/classlib/CString.h"
#include "platform/classlib/CStringList.h"

namespace modelgen {

struct Options {
    CString folder;   ///< where to write to; empty if none is named
    CString profile;  ///< the file behind -iniFile=; empty if none is named
    CStringList files;
    bool isHelp = false;
    bool isVersion = false;
    CString mistake;  ///< what is wrong with the arguments; empty if nothing is
};

/// Reads the arguments behind the program's name into `options`.
void readOptions(int count, char const* const* arguments, Options& options);

/// The text that --help prints.
CString usage();

/// "modelgen 8.4.0"
CString versionLine();

}  // namespace modelgen
