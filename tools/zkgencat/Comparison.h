// Comparison.h: whether translated texts show the same values.
#pragma once

#include "tools/zkgencat/Messages.h"

#include <string>
#include <vector>

namespace zkgencat {

/// What is wrong with the texts of `other`, a translation of those of `reference`: a line for each mistake, with
/// set and number.
///
/// A text must take the same values as the other one, each as the same kind: integers, numbers with a fraction,
/// characters, texts, addresses. Their order and their form are free. A message without a counterpart in
/// `reference` is a mistake; one that is missing is none.
std::vector<std::string> compare(Messages const& reference, Messages const& other);

}  // namespace zkgencat
