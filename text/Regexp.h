// Regexp.h: one regular expression, ready to be matched.
//
//   Regexp assignment("([a-z]+)=([0-9]*)", 0);
//   assignment.match("  key=42;");      // 1
//   assignment.groups();                // 3: the whole match and two parentheses
//   assignment.getgroup(2);             // 6 - 7 (2)
//
// What an expression may hold stands in text/regexpEngine.h.
#pragma once

#include "text/Range.h"
#include "text/regexpEngine.h"
#include "zk_export.h"

#include <cstdint>

class ZK_UTIL_API Regexp {
public:
    /// Compiles `pat`; with `iflg` 1, and no other value, upper and lower case are the same.
    ///
    /// A case-free expression is lower-cased as a whole before it is compiled,
    /// sets and escapes included: "[A-Z]" becomes "[a-z]". A `pat` that does
    /// not compile is reported on the standard error stream; the object then
    /// never matches. One allocation, one more for a case-free one.
    explicit Regexp(char const* pat, int iflg = 0);
    ~Regexp();

    // Positions of groups live in the compiled expression, so two objects never share one.
    Regexp(Regexp const&) = delete;
    Regexp& operator=(Regexp const&) = delete;
    /// What was moved from never matches; what was assigned to is left to `other`.
    Regexp(Regexp&& other) noexcept;
    Regexp& operator=(Regexp&& other) noexcept;

    /// 1 if the expression matches somewhere in `subject`, else 0.
    ///
    /// The groups are then those of this match; after a match that fails they are empty, or those of
    /// the match before it. `subject` need not live on for them.
    int match(char const* subject);

    /// How many groups in a row, from group 0 on, took part in the last match that was found.
    ///
    /// The count stops at the first one that did not: "(a)|(b)" on "b" gives 1.
    int groups() const;

    /// Where group `n` stood in the subject of the last match that was found.
    ///
    /// A group that took no part gives the empty range, as does a number that no group has.
    Range getgroup(int n) const;

private:
    int find(char const* subject);

    // The fields, in this order and these widths, are part of what other modules may rely on.
    regexp* program_;
    char const* target_;  // the subject of the last match that was found
    std::int32_t iflg_;
};
