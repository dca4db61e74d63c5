// run.h: the program without its main: reads diagrams, plans the code, writes it.
#pragma once

#include <iosfwd>

namespace modelgen {

/// Does what the arguments behind the program's name ask for, and gives the exit code: 0 done; 1 a file cannot be
/// read or written; 2 the arguments or a diagram are wrong, and no file was touched.
int run(int count, char const* const* arguments, std::ostream& out, std::ostream& err);

}  // namespace modelgen
