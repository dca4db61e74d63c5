// run.h: the program's work: reads diagrams, plans the code, writes it.
#pragma once

#include "examples/modelgen/options.h"

#include <iosfwd>

namespace modelgen {

/// Does what the options ask for, and gives the exit code: 0 done; 1 a file cannot be read or written; 2 the
/// arguments, a setting or a diagram are wrong, and no file was touched. Settings come from the process's
/// profile; without one there are only those of the environment.
int run(Options const& options, std::ostream& out, std::ostream& err);

}  // namespace modelgen
