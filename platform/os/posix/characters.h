// characters.h: kinds and case of multibyte characters, and texts of them.
//
//   _ismbcalnum('7');                                  // not 0
//   _ismbcupper(0xC4);                                 // 0: no byte above 127 is upper case
//   _mbschr(text, '=');                                // the first "=", or null
//
// The process's code page is UTF-8, which has no pairs of a lead and a trail
// byte: every byte is a character of this family, and those above 127 have no
// kind and no case. Since no UTF-8 sequence contains another one, searching a
// text for a text finds whole characters all the same.
//
// No function here fails. None accepts null.
#pragma once

#include "platform/os/exportMacro.h"

#include <cstddef>
#include <cstdint>

namespace zk::os {

enum CharacterKind : std::uint8_t {
    upperKind = 1,
    lowerKind = 2,
    digitKind = 4,
    spaceKind = 8,  // blank, \t, \n, \v, \f, \r
    punctuationKind = 16,
    blankKind = 32,  // what is printed but not seen: ' ' alone
};

struct CharacterKinds {
    std::uint8_t of[128] = {};

    constexpr CharacterKinds() noexcept
    {
        for (int c = '!'; c <= '~'; ++c)
            of[c] = punctuationKind;
        for (int c = '0'; c <= '9'; ++c)
            of[c] = digitKind;
        for (int c = 'A'; c <= 'Z'; ++c)
            of[c] = upperKind;
        for (int c = 'a'; c <= 'z'; ++c)
            of[c] = lowerKind;
        for (int c = '\t'; c <= '\r'; ++c)
            of[c] = spaceKind;
        of[int(' ')] = spaceKind | blankKind;
    }
};

inline constexpr CharacterKinds characterKinds{};

/// The kinds of `character` that are in `kinds`; 0 for everything above 127.
constexpr int kindOf(unsigned int character, int kinds) noexcept
{
    return character < 128 ? characterKinds.of[character] & kinds : 0;
}

/// Lower and upper case of one byte; only 'A' to 'Z' and 'a' to 'z' have one.
constexpr unsigned char lowerOf(unsigned char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + ('a' - 'A')) : c;
}

constexpr unsigned char upperOf(unsigned char c) noexcept
{
    return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - ('a' - 'A')) : c;
}

}  // namespace zk::os

// The kind of a character: not 0 if it is of that kind. One look-up each.
inline int _ismbcspace(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::spaceKind);
}
inline int _ismbcdigit(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::digitKind);
}
inline int _ismbcupper(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::upperKind);
}
inline int _ismbclower(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::lowerKind);
}
inline int _ismbcpunct(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::punctuationKind);
}

inline int _ismbcalpha(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::upperKind | zk::os::lowerKind);
}

inline int _ismbcalnum(unsigned int c) noexcept
{
    return zk::os::kindOf(c, zk::os::upperKind | zk::os::lowerKind | zk::os::digitKind);
}

inline int _ismbcgraph(unsigned int c) noexcept
{
    using namespace zk::os;
    return kindOf(c, upperKind | lowerKind | digitKind | punctuationKind);
}

inline int _ismbcprint(unsigned int c) noexcept
{
    using namespace zk::os;
    return kindOf(c, upperKind | lowerKind | digitKind | punctuationKind | blankKind);
}

// Lead and trail bytes of two-byte characters: none in UTF-8.
inline int _ismbblead(unsigned int) noexcept
{
    return 0;
}
inline int _ismbbtrail(unsigned int) noexcept
{
    return 0;
}
inline int _ismbslead(unsigned char const*, unsigned char const*) noexcept
{
    return 0;
}
inline int _ismbstrail(unsigned char const*, unsigned char const*) noexcept
{
    return 0;
}

/// The character in lower or upper case; unchanged if it has none.
inline unsigned int _mbctolower(unsigned int c) noexcept
{
    return c < 128 ? zk::os::lowerOf(static_cast<unsigned char>(c)) : c;
}

inline unsigned int _mbctoupper(unsigned int c) noexcept
{
    return c < 128 ? zk::os::upperOf(static_cast<unsigned char>(c)) : c;
}

/// The length in bytes of the character at `position`: 1.
inline std::size_t _mbclen(unsigned char const*) noexcept
{
    return 1;
}

/// The position after the character at `position`, which must not be the text's end.
inline unsigned char* _mbsinc(unsigned char const* position) noexcept
{
    return const_cast<unsigned char*>(position + 1);
}

/// The position of the character before `position`; null if that would be before `start`.
inline unsigned char* _mbsdec(unsigned char const* start, unsigned char const* position) noexcept
{
    return start < position ? const_cast<unsigned char*>(position - 1) : nullptr;
}

/// The number of characters in `text`.
ZK_UTIL_API std::size_t _mbslen(unsigned char const* text) noexcept;

/// The first and the last place of `character` in `text`, or null. Character 0 is found at the end.
/// Only the low byte of `character` counts.
ZK_UTIL_API unsigned char* _mbschr(unsigned char const* text, unsigned int character) noexcept;
ZK_UTIL_API unsigned char* _mbsrchr(unsigned char const* text, unsigned int character) noexcept;

/// The first place of `wanted` in `text`, or null; an empty `wanted` is found at once.
ZK_UTIL_API unsigned char* _mbsstr(unsigned char const* text, unsigned char const* wanted) noexcept;

/// The first place of any character of `set` in `text`, or null.
ZK_UTIL_API unsigned char* _mbspbrk(unsigned char const* text, unsigned char const* set) noexcept;

/// The number of bytes before the first character that is not in `set`, or that is in it.
ZK_UTIL_API std::size_t _mbsspn(unsigned char const* text, unsigned char const* set) noexcept;
ZK_UTIL_API std::size_t _mbscspn(unsigned char const* text, unsigned char const* set) noexcept;

/// Less than 0, 0 or greater than 0 as `a` comes before, is, or comes after `b`, by byte values;
/// the `i` forms compare lower case, the `nb` forms at most `count` bytes.
ZK_UTIL_API int _mbscmp(unsigned char const* a, unsigned char const* b) noexcept;
ZK_UTIL_API int _mbsicmp(unsigned char const* a, unsigned char const* b) noexcept;
ZK_UTIL_API int _mbsnbcmp(unsigned char const* a, unsigned char const* b, std::size_t count) noexcept;
ZK_UTIL_API int _mbsnbicmp(unsigned char const* a, unsigned char const* b, std::size_t count) noexcept;

/// Turn `text` into lower or upper case in place and give it back.
ZK_UTIL_API unsigned char* _mbslwr(unsigned char* text) noexcept;
ZK_UTIL_API unsigned char* _mbsupr(unsigned char* text) noexcept;

/// Copies at most `count` bytes; a shorter text is filled up with NULs, a longer one gets none.
ZK_UTIL_API unsigned char* _mbsnbcpy(unsigned char* target, unsigned char const* source,
                                     std::size_t count) noexcept;
