// commands.h: what the verbs of the command line do.
#pragma once

#include "tools/zkprofile/arguments.h"
#include "tools/zkprofile/run.h"

#include <stdexcept>
#include <string>

namespace zkprofile {

/// Ends the work: what() tells the user why.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode theCode, std::string const& text) : std::runtime_error(text), code(theCode) { }

    ExitCode const code;
};

/// A profile, which the process's profile object reads too.
struct Profile {
    CString name;  ///< that the system's calls take
    CString file;  ///< what it stands for, for the user
};

/// Whether a file or folder has this name.
bool isThere(CString const& file);

/// Carries a command out. What is to be printed goes to the end of `out`. Throws Failure.
ExitCode carryOut(Arguments const& arguments, Profile const& profile, std::string& out);

}  // namespace zkprofile
