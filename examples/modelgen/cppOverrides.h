// cppOverrides.h: which operation overrides which.
//
// An operation that a class shares with a base is virtual there and an override here. A class that is not abstract
// gets an override for each abstract operation that it inherits, and any class gets one where two of its bases
// override the same inherited operation.
#pragma once

#include "examples/modelgen/cppProgram.h"

namespace modelgen {

/// Resolves the operations of one class, whose bases must have been resolved before. Reports results that do not
/// agree. The cost is that of the operations that the class inherits.
void resolveOverrides(CppClass& planned, CppClasses& classes, Report& report);

/// Whether `derived` inherits from `base` over any number of levels.
bool isDerivedFrom(Classifier const& derived, Classifier const& base);

}  // namespace modelgen
