// cppValues.h: makes initial values for C++ from those of the diagram.
//
//   cppValue("0x10", int type)            // "0x10"
//   cppValue("ACTIVE", type Status)       // "Status::ACTIVE", if Status has it
//   cppValue("Clock.now()", any type)     // nothing: what it means isn't known
#pragma once

#include "examples/modelgen/cppTypes.h"

#include <optional>

namespace modelgen {

/// An expression of type `type`; "{}" stands for an empty value. Nothing if the text isn't known to be one.
std::optional<CString> cppValue(CString const& text, CppType const& type, CppTypes const& types);

/// The number that the text writes in C++'s way, if it fits into `bits` (negative: signed).
std::optional<CString> cppInteger(std::string_view text, int bits);

}  // namespace modelgen
