// byteSearch.h: finds bytes and short texts in a NUL-terminated text, 16 bytes at a time.
//
//   zk::ByteSet stop;
//   stop.add('\0');
//   stop.add(':');
//   zk::findInSet("key: value", stop);     // at ": value"
//
// The length of the text need not be known: the searches stop at its NUL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zk {

/// A set of byte values.
struct ByteSet {
    std::uint64_t words[4] = {};

    bool has(char c) const
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        return words[byte >> 6] >> (byte & 63) & 1;
    }
    void add(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        words[byte >> 6] |= std::uint64_t(1) << (byte & 63);
    }
    void remove(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        words[byte >> 6] &= ~(std::uint64_t(1) << (byte & 63));
    }
    void add(ByteSet const& other)
    {
        for (int i = 0; i < 4; ++i)
            words[i] |= other.words[i];
    }
    void invert()
    {
        for (std::uint64_t& word : words)
            word = ~word;
    }
    void fill() { *this = full(); }
    bool meets(ByteSet const& other) const
    {
        std::uint64_t common = 0;
        for (int i = 0; i < 4; ++i)
            common |= words[i] & other.words[i];
        return common != 0;
    }
    bool operator==(ByteSet const& other) const
    {
        std::uint64_t different = 0;
        for (int i = 0; i < 4; ++i)
            different |= words[i] ^ other.words[i];
        return different == 0;
    }
    unsigned size() const;

    static ByteSet full()
    {
        ByteSet result;
        result.invert();
        return result;
    }
};

/// A set of bytes to look for: the set, and the tables with which 16 bytes are looked up at once.
///
/// Byte c is bit (c >> 4) % 8 of row c % 16; bytes from 128 on have 16 rows of their own.
struct ByteTable {
    ByteSet set;
    std::uint8_t rows[32] = {};

    bool has(char c) const { return set.has(c); }
    void add(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        std::uint8_t& row = rows[(byte & 15u) | (byte >> 7) << 4];
        row = static_cast<std::uint8_t>(row | 1u << ((byte >> 4) & 7u));
        set.add(c);
    }
    void remove(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        std::uint8_t& row = rows[(byte & 15u) | (byte >> 7) << 4];
        row = static_cast<std::uint8_t>(row & ~(1u << ((byte >> 4) & 7u)));
        set.remove(c);
    }
    void invert()
    {
        set.invert();
        for (std::uint8_t& row : rows)
            row = static_cast<std::uint8_t>(~row);
    }
    void assign(ByteSet const& bytes);
};

/// The first byte at or after `text` that is in `set`, which must hold the NUL.
char const* findInSet(char const* text, ByteTable const& set);

/// A text to look for, prepared.
struct TextNeedle {
    static constexpr std::size_t reach = 15;  ///< how far apart its two rare bytes are at most

    char const* text = nullptr;
    std::size_t length = 0;  ///< at least 1
    std::size_t first = 0;   ///< where the first of its two rarest bytes stands
    std::size_t second = 0;  ///< where the other one does
};

/// `text` of `length` bytes, none of them NUL, as a needle.
TextNeedle makeNeedle(char const* text, std::size_t length);

/// The first occurrence of the needle at or after `text`, or null.
char const* findText(char const* text, TextNeedle const& needle);

/// What the first bytes of a match may be: up to eight alternatives, up to three bytes each.
///
/// Byte c can stand at position i of alternative b if bit b is set in both
/// low[i][c % 16] and high[i][c / 16].
struct PrefixFilter {
    static constexpr int depthLimit = 3;
    static constexpr int bucketLimit = 8;

    std::uint8_t low[depthLimit][16] = {};
    std::uint8_t high[depthLimit][16] = {};

    void allow(int position, int bucket, ByteSet const& bytes);
    void allowAll(int position, int bucket);
};

/// The first position at or after `text` where a match may begin.
///
/// The last two bytes of the text and its NUL always pass; the NUL is the last
/// position that comes out.
char const* findPrefix(char const* text, PrefixFilter const& filter);

/// The same searches for machines without the instructions that the others need.
namespace bytewise {

char const* findInSet(char const* text, ByteTable const& set);
char const* findText(char const* text, TextNeedle const& needle);
char const* findPrefix(char const* text, PrefixFilter const& filter);

}  // namespace bytewise

/// How often the byte occurs in running text, in 65536 bytes, roughly. Never 0.
unsigned frequencyOf(char c);

/// How often one of them does.
unsigned frequencyOf(ByteSet const& set);

}  // namespace zk
