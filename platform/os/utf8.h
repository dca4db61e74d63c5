// utf8.h: one UTF-8 character at a time.
//
//   Utf8Character const c = decodeUtf8(text, end);   // "\xC3\xA9": code 0xE9, length 2, valid
#pragma once

#include <cstddef>

namespace zk::os {

struct Utf8Character {
    char32_t code;         // U+FFFD if not valid
    unsigned char length;  // bytes taken; at least 1
    bool valid;
};

/// Reads the character at `text`, which stands before `end`.
///
/// Bytes that are no UTF-8 (overlong forms, surrogates, codes above U+10FFFF, a sequence that is
/// cut off) count as one bad character for each longest piece that could have begun a good one.
inline Utf8Character decodeUtf8(unsigned char const* text, unsigned char const* end) noexcept
{
    constexpr char32_t replacement = 0xFFFD;
    unsigned const lead = *text;
    if (lead < 0x80)
        return {lead, 1, true};
    if (lead < 0xC2 || lead > 0xF4)
        return {replacement, 1, false};
    unsigned const more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // The second byte has a narrower range behind four leads: the rest would be overlong, a
    // surrogate or too great.
    unsigned low = 0x80;
    unsigned high = 0xBF;
    switch (lead) {
    case 0xE0: low = 0xA0; break;
    case 0xED: high = 0x9F; break;
    case 0xF0: low = 0x90; break;
    case 0xF4: high = 0x8F; break;
    default: break;
    }
    char32_t code = lead & (0x3Fu >> more);
    for (unsigned i = 1; i <= more; ++i) {
        if (text + i == end || text[i] < low || text[i] > high)
            return {replacement, static_cast<unsigned char>(i), false};
        code = (code << 6) | (text[i] & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return {code, static_cast<unsigned char>(more + 1), true};
}

/// The number of bytes of a valid code in UTF-8.
constexpr std::size_t utf8Length(char32_t code) noexcept
{
    return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

/// Whether a code can be written: no surrogate and not above U+10FFFF.
constexpr bool isUnicodeCharacter(char32_t code) noexcept
{
    return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF);
}

/// Writes a valid code; there must be room for utf8Length(code) bytes. Gives the position behind it.
inline char* encodeUtf8(char32_t code, char* target) noexcept
{
    auto const put = [&](char32_t byte) { *target++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
    return target;
}

}  // namespace zk::os
