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
///
/// Byte c is bit (c >> 4) % 8 of row c % 16; bytes from 128 on have 16 rows of
/// their own. In this order the rows are the tables with which 16 bytes are
/// looked up at once.
struct ByteSet {
    std::uint8_t rows[32] = {};

    static unsigned rowOf(unsigned char c) { return (c & 15u) | (c >> 7) << 4; }
    static unsigned bitOf(unsigned char c) { return (c >> 4) & 7u; }

    bool has(char c) const
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        return rows[rowOf(byte)] >> bitOf(byte) & 1u;
    }
    void add(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        rows[rowOf(byte)] = static_cast<std::uint8_t>(rows[rowOf(byte)] | 1u << bitOf(byte));
    }
    void remove(char c)
    {
        unsigned char const byte = static_cast<unsigned char>(c);
        rows[rowOf(byte)] = static_cast<std::uint8_t>(rows[rowOf(byte)] & ~(1u << bitOf(byte)));
    }
    void add(ByteSet const& other)
    {
        combine(other, [](std::uint64_t a, std::uint64_t b) { return a | b; });
    }
    void invert()
    {
        combine(*this, [](std::uint64_t a, std::uint64_t) { return ~a; });
    }
    void fill() { std::memset(rows, 0xFF, sizeof rows); }
    bool meets(ByteSet const& other) const
    {
        ByteSet common = *this;
        common.combine(other, [](std::uint64_t a, std::uint64_t b) { return a & b; });
        return !(common == ByteSet());
    }
    bool operator==(ByteSet const& other) const { return std::memcmp(rows, other.rows, sizeof rows) == 0; }
    unsigned size() const;

private:
    template <class Operation>
    void combine(ByteSet const& other, Operation operation)
    {
        std::uint64_t mine[4];
        std::uint64_t theirs[4];
        std::memcpy(mine, rows, sizeof rows);
        std::memcpy(theirs, other.rows, sizeof rows);
        for (int i = 0; i < 4; ++i)
            mine[i] = operation(mine[i], theirs[i]);
        std::memcpy(rows, mine, sizeof rows);
    }
};

/// The first byte at or after `text` that is in `set`, which must hold the NUL.
char const* findInSet(char const* text, ByteSet const& set);

/// A short text to look for, prepared.
struct TextNeedle {
    char const* text = nullptr;
    std::size_t length = 0;  ///< at least 1
    std::size_t window = 0;  ///< where its rarest (up to three) bytes in a row start
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

/// How often the byte occurs in running text, as a rank: 0 is rare, 255 is a blank.
unsigned frequencyRank(char c);

}  // namespace zk
