// run.h: the program without its main.
//
//   char const* const arguments[] = {"zkprofile", "get", "General", "OMROOT"};
//   zkprofile::run(4, arguments, std::cout, std::cerr);      // 0; prints "/opt/zentrika"
#pragma once

#include <iosfwd>

namespace zkprofile {

/// What the program ends with.
enum ExitCode {
    done = 0,
    absent = 1,          ///< The setting is not there.
    wrongArguments = 2,  ///< Nothing was touched.
    failed = 3,          ///< The profile cannot be read or written, or the output cannot be written.
};

/// Does what the arguments ask for, the program's name first; says on `err` what is wrong.
ExitCode run(int count, char const* const* arguments, std::ostream& out, std::ostream& err);

}  // namespace zkprofile
