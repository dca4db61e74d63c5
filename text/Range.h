// Range.h: a pair of positions in a text, first and last, with the length between them.
//
//   Range word(2, 4);                 // characters 2, 3 and 4
//   word.length();                    // 3
//   if (Range())                      // false: the default range holds nothing
//
// `length() == end() - start() + 1` always holds. The two increments are two
// different moves: `r++` takes one more character in at the end, `++r` gives
// the first one up.
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <iosfwd>

class ZK_UTIL_API Range {
public:
    /// The range that holds nothing: start 0, end -1, length 0.
    Range() noexcept = default;

    /// From `start` up to and including `end`. An `end` before `start` is taken as it is.
    Range(int start, int end) noexcept;
    void set(int start, int end) noexcept;

    int start() const noexcept { return start_; }
    int end() const noexcept { return end_; }
    int length() const noexcept { return length_; }

    /// The object itself where the range holds something and starts at 0 or later, else null.
    operator void*() const noexcept;

    /// Whether this range starts earlier, or starts with `other` and ends earlier.
    bool operator<(Range const& other) const noexcept;

    /// Takes one character off the front: start rises, length falls.
    Range& operator++() noexcept;

    /// Extends the range by one character at its end; the result is the range as it was.
    Range operator++(int) noexcept;

private:
    std::int32_t start_ = 0;
    std::int32_t end_ = -1;
    std::int32_t length_ = 0;
};

/// Writes "start - end (length)".
ZK_UTIL_API std::ostream& operator<<(std::ostream& stream, Range const& range);
