// pumlMember.h: reads one line of a class body.
//
//   readMember("+ {static} count : int = 0", "Book")      // attribute "count" of type int
//   readMember("# void lend(Reader reader, int days)", "Book")   // operation "lend"
//   readLiterals("RED = 1, GREEN")                        // two literals
#pragma once

#include "examples/modelgen/model.h"

#include <variant>

namespace modelgen {

/// Why a line is no member. A broken one is bad input, the other is prose that a diagram may hold.
struct NoMember {
    bool isBroken = false;
    CString reason;
};

/// Reads a line of the body of class `owner`; places are left to the caller.
std::variant<NoMember, Attribute, Operation> readMember(char const* text, CString const& owner);

/// Reads a line of the body of an enumeration: literals, separated by commas. Arguments of a literal are left
/// out, and `hasArguments` then set.
struct Literals {
    std::vector<Literal> literals;
    bool hasArguments = false;
};
std::variant<NoMember, Literals> readLiterals(char const* text);

/// Whether the line of an enumeration's body is an attribute or an operation rather than literals.
bool looksLikeMember(char const* text);

}  // namespace modelgen
