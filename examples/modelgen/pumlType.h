// pumlType.h: reads a type as it stands in a class diagram.
//
//   readType("Map<String, Book[]>")      // Map of String and [] of Book
//   readType("const Book*")              // * of a const Book
//   readType("a line of prose")          // nothing
#pragma once

#include "examples/modelgen/model.h"

#include <optional>

namespace modelgen {

/// Nothing where the text is no type, or nests its arguments more than 16 deep. "String[0..1]" is an optional
/// String, "String[4]" and "String[*]" are arrays. Words that C++ writes side by side ("unsigned long") make
/// one name.
std::optional<Type> readType(char const* text);

/// The same for a list as it stands between '<' and '>'; nothing if any of them is no type.
std::optional<std::vector<Type>> readTypes(char const* text);

/// Whether a multiplicity ("0..1", "1", "1..*", "*", "n", "5"), with or without square brackets, allows several.
/// Nothing if the text is none.
struct Multiplicity {
    bool isMany = false;
    bool isOptional = false;
};
std::optional<Multiplicity> readMultiplicity(char const* text);

}  // namespace modelgen
