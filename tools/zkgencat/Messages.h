// Messages.h: messages by set and number, as they stand in a catalog.
//
//   Messages messages = readMessages("my.cat");     // throws Failure
//   messages[{1, 7}] = "%s has %d units";
//   writeMessages("my.cat", messages);
#pragma once

#include "tools/zkgencat/run.h"

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace zkgencat {

/// Ends the work: what() tells the user why.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode theCode, std::string const& text) : std::runtime_error(text), code(theCode) { }

    ExitCode const code;
};

using MessageId = std::pair<std::int32_t, std::int32_t>;  // set and number
using Messages = std::map<MessageId, std::string>;

/// All messages of a catalog that a reader of it can get. Throws Failure for a file that cannot be read or is no
/// catalog, and for one with texts that cannot be reached: writing it anew would lose them.
Messages readMessages(std::string const& file);

/// Writes a catalog in the place of the file, in one step: a reader sees the old one or the new. Throws Failure.
void writeMessages(std::string const& file, Messages const& messages);

/// The bytes of a catalog. Throws Failure for messages that would take 4 GiB.
std::string catalogOf(Messages const& messages);

/// A name in quotes, without characters that a terminal obeys.
std::string quoted(std::string const& name);

}  // namespace zkgencat
