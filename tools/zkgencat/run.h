// run.h: the program without its main.
//
//   char const* const arguments[] = {"zkgencat", "my.cat", "my.msg"};
//   zkgencat::run(3, arguments, std::cin, std::cout, std::cerr);      // 0; my.cat has the messages of my.msg
#pragma once

#include <iosfwd>

namespace zkgencat {

/// What the program ends with.
enum ExitCode {
    done = 0,
    mistaken = 1,        ///< The sources have mistakes, or the catalogs differ. Nothing was written.
    wrongArguments = 2,  ///< Nothing was touched.
    failed = 3,          ///< A file cannot be read or written, or is no catalog.
};

/// Does what the arguments ask for, the program's name first; says on `err` what is wrong.
ExitCode run(int count, char const* const* arguments, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace zkgencat
