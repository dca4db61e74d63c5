// pumlFields.h: takes the parameters of operations and of templates apart.
//
//   fieldsOf("a : Map<K, V>, b : int = f(1, 2)")    // "a : Map<K, V>", "b : int = f(1, 2)"
//   parenthesised("lend(Reader r, int days) : bool", 4)     // "Reader r, int days"
//
// Here the mini parser is at work: it knows brackets, texts, characters and comments.
#pragma once

#include "platform/classlib/CString.h"
#include "text/SPStringList.h"

#include <optional>

namespace modelgen {

/// The fields between the commas that stand outside brackets and quotes, without blanks at their ends. A text
/// without commas is one field.
SPStringList fieldsOf(char const* text);

/// The raw text between the parenthesis at `open` and its counterpart; nothing if it has none.
std::optional<CString> parenthesised(CString const& text, int open);

}  // namespace modelgen
