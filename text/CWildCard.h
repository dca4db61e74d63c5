// CWildCard.h: matches names against patterns with `*` and `?`.
//
//   CWildCard texts("*.txt", 1, 1, 1);
//   texts.match("a.txt");                  // 1
//   texts.getRegexpPattern();              // "^.*\.txt$"
#pragma once

#include "platform/classlib/CString.h"
#include "zk_export.h"

#include <cstdint>

/// A pattern in which `*` stands for any text and `?` for any one character.
///
/// `\*` and `\?` stand for the characters themselves; all others do so anyway. A null pattern counts
/// as an empty one.
class ZK_UTIL_API CWildCard {
public:
    /// With `caseSensitive` 0 case is ignored. With `matchStart` and `matchEnd` not 0 a match reaches
    /// from the start, and to the end, of the name.
    CWildCard(char const* pattern, int caseSensitive, int matchEnd, int matchStart);

    CWildCard(CWildCard const& other);
    CWildCard(CWildCard&& other) noexcept;
    CWildCard& operator=(CWildCard other) noexcept;
    virtual ~CWildCard();

    /// 1 if the pattern matches `name`, else 0. Compiles the expression anew each time. A pattern too
    /// long for an expression (some 10,000 characters) is reported each time, and matches nothing.
    int match(char const* name) const;

    /// The regular expression that the pattern was translated into.
    CString getRegexpPattern() const;

protected:
    /// Translates `pattern` and keeps the result in the place of an earlier one.
    void BuildTheRePattern(char const* pattern);

private:
    // The fields, in this order and these widths, are part of what other modules may rely on.
    char* regexp_ = nullptr;
    std::int32_t caseSensitive_;
    std::int32_t matchEnd_;
    std::int32_t matchStart_;
};
