// SPStringList.h: lists of strings, with the operations that turn text into lists and back.
//
//   SPStringList fields = SPString("a,b,c").split(",");    // "a", "b", "c"
//   fields.join("; ");                                     // "a; b; c"
//   fields.grep("[bc]");                                   // "b", "c"
//   SPStringList parts("([a-z]+)=(.*)", "key=1");          // "key", "1"
#pragma once

#include "text/SPList.h"
#include "text/SPString.h"
#include "zk_export.h"

#include <iosfwd>
#include <string_view>

class Regexp;

/// A list of strings.
///
/// An expression that does not compile is reported on the standard error stream and never matches.
class ZK_UTIL_API SPStringList : public SPList<SPString> {
public:
    explicit SPStringList(int size = 20);

    /// The groups of a match of `pattern` in `target`, without the match itself; empty if there is
    /// no match. With `i` in `opts` case is ignored.
    SPStringList(char const* pattern, char const* target, char const* opts = "");

    /// The elements, in a list of 20 slots or as many more as it takes.
    SPStringList(SPStringList const& other);
    SPStringList(SPList<SPString> const& other);
    SPStringList(SPStringList&& other) noexcept;

    /// Copies the elements; the slots of this list stay in use.
    SPStringList& operator=(SPList<SPString> const& other);
    SPStringList& operator=(SPStringList const& other);
    SPStringList& operator=(SPStringList&& other) noexcept;

    ~SPStringList() override;

    /// Appends the fields between the matches of `pattern` in `text` and gives the number of elements then.
    ///
    /// An empty pattern gives each character; "' '", with the quotes, the words between blanks, tabs
    /// and newlines. Else `pattern` is an expression, and what its groups matched becomes a field of
    /// its own behind the field before it. The text behind a match is searched as a string of its own:
    /// `^` matches at its start. An empty rest is no field.
    ///
    /// With a `limit` of 0 or more an expression gives at most so many fields (but for groups; 0 counts
    /// as 1), the last one being the rest of the text. With a negative one all fields are taken, and all empty
    /// elements at the end of the list are removed; an empty match then ends the splitting, since it
    /// would come again for ever. Linear where each single match is.
    int split(char const* text, char const* pattern, int limit = -1);

    /// The elements with `separator` between them. Linear.
    SPString join(char const* separator) const;

    /// Appends the text of a match of `pattern` in `target` and that of the groups in a row that took
    /// part, and gives their number; 0 if there is no match. With `i` in `opts` case is ignored.
    int m(char const* pattern, char const* target, char const* opts = "");

    /// The elements in which `pattern` matches, in their order. With `i` in `opts` case is ignored.
    SPStringList grep(char const* pattern, char const* opts = "") const;

private:
    friend class SPString;

    bool holdsElement(SPString const& text) const { return holds(&text); }
    void pushText(std::string_view text);
    void putText(std::string_view text);
    int pushGroups(Regexp const& expression, char const* text, int start = 0);
    int splitText(std::string_view text, char const* pattern, int limit);
    void splitIntoCharacters(std::string_view text);
    void splitIntoWords(std::string_view text);
    void splitByExpression(std::string_view text, char const* pattern, int limit);
    void splitAtCharacter(std::string_view text, char separator);
    void dropEmptyEnd();
};

/// Writes each element on a line of its own.
ZK_UTIL_API std::ostream& operator<<(std::ostream& stream, SPStringList const& list);

/// Replaces the elements by the lines of the stream, up to its end.
ZK_UTIL_API std::istream& operator>>(std::istream& stream, SPStringList& list);
