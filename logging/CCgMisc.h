// CCgMisc.h: small operations on texts that several modules of the toolkit need.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace zk::logging {

/// A copy of a text for a caller, who frees it with std::free(). Null without memory.
char* newText(std::string_view text) noexcept;

/// Whether two texts are the same when 'A' to 'Z' count as 'a' to 'z'.
bool sameIgnoringCase(std::string_view a, std::string_view b) noexcept;

/// The decimal number that a text begins with, after blanks and with an optional sign, as "%d" reads
/// it: what follows does not count, and a number beyond the type becomes its nearest value. Nothing
/// if there is no digit.
std::optional<std::int32_t> scanInt32(std::string_view text) noexcept;
std::optional<std::int64_t> scanInt64(std::string_view text) noexcept;

/// The same for the number that "%lf" reads, with a decimal point whatever the locale.
std::optional<double> scanDouble(std::string_view text) noexcept;

/// "true" or "false", in any case; nothing for another text.
std::optional<bool> scanBoolean(std::string_view text) noexcept;

/// A text of the process's code page in UTF-8, and the reverse; without memory the text itself.
std::string utf8OfProcessText(std::string_view text);
std::string processTextOfUtf8(std::string_view text);

/// Prints a UTF-8 text to standard output or standard error in the console's code set: at most 4095
/// bytes, what is longer is cut. A character that the code set lacks becomes "?".
void printToConsole(std::FILE* stream, std::string_view text);

}  // namespace zk::logging
