// CxUtf8.h: UTF-8 taken apart, one character at a time.
//
//   Utf8Step const step = takeUtf8("\xC3\xA9 x");     // character 0xE9, length 2, valid
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zk::logging {

struct Utf8Step {
    enum class State { valid, invalid, incomplete };

    char32_t character = 0;  ///< of a valid one
    std::size_t length = 1;  ///< the bytes taken, at least one
    State state = State::valid;
};

/// Reads the character that a text, which is not empty, begins with.
///
/// What is no UTF-8 (overlong forms, surrogates, characters above U+10FFFF) is one invalid character for each
/// longest piece that could have begun a good one; such a piece at the very end is incomplete. U+07FF may have
/// the three bytes that CxAppendUtf8() gives it.
inline Utf8Step takeUtf8(std::string_view text) noexcept
{
    auto const byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned const lead = byteAt(0);
    if (lead < 0x80)
        return {lead, 1, Utf8Step::State::valid};
    if (lead < 0xC2 || lead > 0xF4)
        return {0, 1, Utf8Step::State::invalid};
    if (text.substr(0, 3) == "\xE0\x9F\xBF")
        return {0x7FF, 3, Utf8Step::State::valid};
    unsigned const more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // The second byte has a narrower range behind four leads.
    unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t character = lead & (0x3Fu >> more);
    for (std::size_t i = 1; i <= more; ++i) {
        if (i == text.size())
            return {0, i, Utf8Step::State::incomplete};
        if (byteAt(i) < low || byteAt(i) > high)
            return {0, i, Utf8Step::State::invalid};
        character = (character << 6) | (byteAt(i) & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return {character, more + 1, Utf8Step::State::valid};
}

/// Appends a character, which is one of Unicode, in its shortest form.
inline void appendUtf8(std::string& text, char32_t character)
{
    auto const following = [&](int shift) {
        text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        following(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | (character >> 12));
        following(6);
        following(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        following(12);
        following(6);
        following(0);
    }
}

/// The number of bytes below 128 that a text begins with.
inline std::size_t asciiRun(std::string_view text) noexcept
{
    std::size_t run = 0;
    while (run < text.size() && static_cast<unsigned char>(text[run]) < 0x80)
        ++run;
    return run;
}

}  // namespace zk::logging
