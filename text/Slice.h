// Slice.h: a set of ranges that picks elements out of a list.
//
//   Slice("1-3,7").count();                // 2: 1 - 3 and 7 - 7
//   Slice(1, 2, 3, 7, -1)[0];              // 1 - 3 (3): neighbours are one range
//
// A textual slice writes its ranges to the standard output stream.
#pragma once

#include "text/Range.h"
#include "zk_export.h"

#include <initializer_list>
#include <iosfwd>
#include <type_traits>

/// Ranges in the order in which they were added.
///
/// A copy is independent. An assigned slice, however, shares its ranges with the one that it was
/// assigned from: what is added to one shows in both.
class ZK_UTIL_API Slice {
public:
    /// The empty set.
    Slice();

    /// The number `n` and, up to a negative one, those behind it.
    template <class... Numbers, std::enable_if_t<(std::is_convertible_v<Numbers, int> && ...), int> = 0>
    Slice(int n, Numbers... more) : Slice(n, std::initializer_list<int>{static_cast<int>(more)...})
    {
    }

    /// Numbers and ranges, "2", "1-4" or "1..4", with commas between them.
    ///
    /// A text that breaks off behind "-", and a range without a comma behind it, is reported on the
    /// standard error stream: the first ends the slice there, the second goes on behind the character
    /// that stands for the comma. A slice that was read to its end is written to the standard output
    /// stream, with an empty line behind it. Numbers that do not fit count as the nearest one that does.
    Slice(char const* text);

    /// The one range.
    Slice(Range const& range);

    Slice(Slice const& other);
    Slice(Slice&& other) noexcept;
    Slice& operator=(Slice const& other);
    ~Slice();

    /// Adds one number: to the last range if it goes on there, else as a range of its own.
    void add(int i);

    /// The number of ranges.
    int count() const;

    /// Range `i`. Where there are fewer, empty ones are added up to it; not for two threads at once then.
    Range const& operator[](int i) const;

private:
    struct Store;

    Slice(int n, std::initializer_list<int> more);
    bool parse(char const* text);
    void append(Range const& range);
    Store& store() const;
    static void release(Store* store) noexcept;

    mutable Store* store_;
};

/// Writes each range on a line of its own.
ZK_UTIL_API std::ostream& operator<<(std::ostream& stream, Slice const& slice);
