// SPString.h: the string of the toolkit, with the operations of a scripting language.
//
//   SPString text("key = value");
//   text.s(" *= *", ":");                  // 1; text is "key:value"
//   text.substr(0, 3) = "name";            // "name:value"
//   text.tr("a-z", "A-Z");                 // 9; "NAME:VALUE"
//   text.index("VAL");                     // 5
//   text.m("^[a-z]+:", "i");               // 1
//
// Text is a NUL-terminated byte string. What an expression may hold stands in
// text/regexpEngine.h; one that does not compile is reported on the standard
// error stream and never matches. A null text counts as an empty one. Lists of
// strings are in text/SPStringList.h: include it to call `split` or `m` with a list.
#pragma once

#include "text/Range.h"
#include "text/VarString.h"
#include "zk_export.h"

#include <cstddef>
#include <iosfwd>

class Regexp;
class SPStringList;

class ZK_UTIL_API SPString {
public:
    class substring;
    using zkRelocatable = void;  // its bytes may be moved

    /// Stands for "up to the end" where a length or an end is asked for.
    static constexpr std::size_t all = static_cast<std::size_t>(-1);

    SPString() noexcept = default;
    SPString(char const* text) : text_(text) { }
    SPString(char c) : text_(c) { }
    SPString(substring const& window);
    SPString(SPString const&) = default;
    SPString(SPString&&) noexcept = default;

    /// Any source may be a part of this string.
    SPString& operator=(SPString const&) = default;
    SPString& operator=(SPString&&) noexcept = default;
    SPString& operator=(char const* text)
    {
        text_ = text;
        return *this;
    }
    SPString& operator=(substring const& window);

    /// The number of characters.
    std::size_t length() const noexcept { return text_.length(); }

    /// The text, valid until the next change of the string.
    operator char const*() const noexcept { return text_; }

    /// The character at `index`, at most length().
    char const& operator[](std::size_t index) const { return text_[index]; }

    // By bytes, unsigned and with case: 1 or 0.
    int operator<(SPString const& other) const { return compare(other) < 0; }
    int operator>(SPString const& other) const { return compare(other) > 0; }
    int operator<=(SPString const& other) const { return compare(other) <= 0; }
    int operator>=(SPString const& other) const { return compare(other) >= 0; }
    int operator==(SPString const& other) const { return compare(other) == 0; }
    int operator!=(SPString const& other) const { return compare(other) != 0; }
    int operator<(char const* other) const { return compare(other) < 0; }
    int operator>(char const* other) const { return compare(other) > 0; }
    int operator<=(char const* other) const { return compare(other) <= 0; }
    int operator>=(char const* other) const { return compare(other) >= 0; }
    int operator==(char const* other) const { return compare(other) == 0; }
    int operator!=(char const* other) const { return compare(other) != 0; }

    SPString operator+(SPString const& right) const;
    SPString operator+(char const* right) const;
    SPString operator+(char right) const;

    SPString& operator+=(SPString const& right)
    {
        text_.append(right.text_, right.text_.viewLength());
        return *this;
    }
    SPString& operator+=(char const* right)
    {
        text_.add(right);
        return *this;
    }
    SPString& operator+=(char right)
    {
        text_.add(right);
        return *this;
    }

    /// Removes the last character and gives it; 0 if there is none.
    char chop();

    /// The first position at or after `offset`, which counts as 0 if negative, where `s` occurs, or -1.
    ///
    /// An empty `s` occurs at `offset`. From length() on nothing is found, an empty `s` neither.
    /// Linear in the length of both.
    int index(SPString const& s, int offset = 0) const;

    /// The last position where `s` occurs and ends at `offset` at the latest, or -1.
    ///
    /// The whole string is searched without an `offset`, and also if `offset` is so near the start that
    /// `s` cannot end there. Linear in the length of both.
    int rindex(SPString const& s, std::size_t offset = all) const;

    /// A window on `len` characters from `pos` on, as far as there are any; see substring.
    substring substr(std::size_t pos, std::size_t len = all);

    /// The same for a range; one of length -1 reaches up to the end.
    substring substr(Range const& range);

    /// 1 if the expression matches somewhere in this string, else 0. With `i` in `opts` case is ignored.
    int m(Regexp& expression) const;
    int m(char const* pattern, char const* opts = "") const;

    /// The same; on a match `groups` is replaced by the matched text and that of the groups in a row
    /// that took part, and their number is the result.
    int m(Regexp& expression, SPStringList& groups) const;
    int m(char const* pattern, SPStringList& groups, char const* opts = "") const;

    /// Replaces the characters in `from` by those in `to` and gives how many were found.
    ///
    /// Both take ranges as in "a-z". `opts` may hold `c` (the characters that are not in `from`), `d`
    /// (delete those that have no counterpart in `to`) and `s` (what would repeat the character before
    /// it in the result is left out). A `to` that is too short goes on with its last character; with an
    /// empty one the characters stay, unless `d` deletes or `s` squeezes them. The lower bound of a range in `to` is the character of the expanded
    /// text at the place that stands before the `-` in `to`, plus one: what follows a first range may
    /// so be another range than it looks, or none. Linear.
    int tr(char const* from, char const* to, char const* opts = "");

    /// Replaces the first match of `pattern`, with `g` in `opts` each one, and gives how many there were.
    ///
    /// With `i` in `opts` case is ignored. In `replacement` `$&` stands for the match, `$0` to `$9`
    /// for a group; where there is a `$` in it at all, `\$` and `\\` stand for `$` and `\`. With `g`
    /// the text behind a match is searched as a string of its own: `^` matches at its start. An empty
    /// match there is replaced once and ends the search. Linear where each single match is; takes no
    /// stack to speak of.
    int s(char const* pattern, char const* replacement, char const* opts = "");

    /// The fields between the matches of `pattern`; see SPStringList::split.
    SPStringList split(char const* pattern, int limit = -1) const;

private:
    friend class SPStringList;

    SPString(char const* text, std::size_t length) : text_(text, length) { }
    SPString(SPString const& left, char const* right, std::size_t length) : text_(left.text_, right, length)
    {
    }

    // As VarString finds it, without a look at the text: a string is never in the state after erase().
    std::size_t textLength() const noexcept
    {
        return text_.irregular_ ? text_.searchViewLength() : text_.length();
    }

    int compare(char const* other) const noexcept;
    void insert(std::size_t pos, std::size_t count, char const* text, std::size_t length);

    VarString text_;
};

/// A window on some characters of a string: reads as them, and replaces them when assigned to.
///
///   SPString text("abcdef");
///   text.substr(1, 2) = "-";               // "a-def"
///   SPString last = text.substr(4);        // "f"
///
/// A window outside the string stands at its end: what is assigned is appended. Valid as long as the
/// string is not changed by anything else.
class ZK_UTIL_API SPString::substring {
public:
    substring(substring const&) = default;

    /// The source may be the string itself or a part of it.
    substring& operator=(SPString const& text);
    substring& operator=(char const* text);
    substring& operator=(substring const& other);

private:
    friend class SPString;

    substring(SPString& str, std::size_t pos, std::size_t len) noexcept;

    char const* text() const noexcept;
    std::size_t length() const noexcept;
    void replace(char const* text, std::size_t length);

    // The fields, in this order and these widths, are part of what other modules may rely on.
    std::size_t pos_;
    std::size_t len_;
    SPString& str_;
    char* pt_;
};

/// A string costs what its buffer does and the four words of a VarString.
static_assert(sizeof(SPString) == sizeof(VarString) && sizeof(VarString) == 4 * sizeof(std::size_t));

ZK_UTIL_API SPString operator+(char const* left, SPString const& right);

inline int operator==(char const* left, SPString const& right)
{
    return right == left;
}
inline int operator!=(char const* left, SPString const& right)
{
    return right != left;
}
inline int operator<(char const* left, SPString const& right)
{
    return right > left;
}
inline int operator>(char const* left, SPString const& right)
{
    return right < left;
}
inline int operator<=(char const* left, SPString const& right)
{
    return right >= left;
}
inline int operator>=(char const* left, SPString const& right)
{
    return right <= left;
}

/// Writes the text, without a newline.
ZK_UTIL_API std::ostream& operator<<(std::ostream& stream, SPString const& text);

/// Replaces the text by the next line of the stream, of any length, without its newline.
///
/// An empty line is an empty text. The stream fails only if it is at its end before the first character.
/// What follows a NUL is left out up to the end of the stretch of 131 characters in which it stands.
ZK_UTIL_API std::istream& operator>>(std::istream& stream, SPString& text);
