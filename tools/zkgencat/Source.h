// Source.h: message sources, in the text form of XPG4.
//
//   $set 1 messages of the reader          a set; until the first one it is set 1
//   $quote "                               the character around texts; none without one
//   $ a comment
//   7 "%s has %d units"                    number, one blank or tab, text
//   8 "a long text, \                      a backslash at its end joins a line with the next
//   continued"
//   9                                      a number alone takes the message away
//   $delset 2                              takes a set away
//
// Escapes are \n \t \v \b \r \f \\ and \ddd (octal); before another character a backslash counts for nothing.
#pragma once

#include "tools/zkgencat/Messages.h"

#include <string>
#include <string_view>
#include <vector>

namespace zkgencat {

/// What is wrong in a source.
struct Mistake {
    std::size_t line;  ///< from 1 on
    std::string text;
};

/// Carries out what a source says, on messages that are there already. Gives the mistakes; the messages are
/// worthless then.
std::vector<Mistake> readSource(std::string_view source, Messages& messages);

/// A source that readSource() makes the same messages of.
std::string sourceOf(Messages const& messages);

}  // namespace zkgencat
