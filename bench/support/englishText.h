// englishText.h: text that looks like English to a search, the same on every machine.
//
//   std::string const text = zk::bench::englishText(8 << 20);   // lines of about 80 characters
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zk::bench {

/// About `size` bytes of words in sentences, with names such as "Sherlock Holmes" now and then.
std::string englishText(std::size_t size, unsigned seed = 1);

/// The lines of a text, without their newlines.
std::vector<std::string> linesOf(std::string const& text);

}  // namespace zk::bench
