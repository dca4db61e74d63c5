// wideText.h: texts in UTF-16 behind a byte-order mark, as UTF-8 and back, without loss.
//
//   std::string_view const wide("\xFF\xFE" "k\0=\0\xE9\0", 8);
//   utf8OfWideText(wide);                                        // "\xEF\xBB\xBF" "k=\xC3\xA9"
//   wideTextOfUtf8("\xEF\xBB\xBF" "k=\xC3\xA9", false);          // the first one again
//
// The mark becomes that of UTF-8. Half a surrogate pair becomes the three bytes that its code would have,
// and a byte at an odd end the character that it would be with a zero behind it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zk::os {

inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// Whether a text begins with a byte-order mark of UTF-16.
bool isWideText(std::string_view text) noexcept;

/// Whether that is the mark that has the higher byte first.
bool isBigEndian(std::string_view wideText) noexcept;

/// A text for which isWideText() holds, in UTF-8.
std::string utf8OfWideText(std::string_view text);

/// A text that begins with the mark of UTF-8, in UTF-16. Nothing if it isn't what utf8OfWideText()
/// gives: for bytes that are no UTF-8, and for two halves of a pair side by side.
std::optional<std::string> wideTextOfUtf8(std::string_view text, bool isBigEndian);

}  // namespace zk::os
