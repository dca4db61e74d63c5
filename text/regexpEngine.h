// regexpEngine.h: regular expressions, compiled to a byte program and matched against a text.
//
//   regexp* expression = regcomp("([a-z]+)=([0-9]*)");
//   regexec(expression, "  key=42;");                    // 1
//   expression->startp[2], expression->endp[2];          // around "42"
//   free(expression);
//
// What is understood: `|`, `( )`, `*`, `+`, `?` behind a piece, `.`, `^`, `$`,
// `[...]`, `[^...]` with ranges, and `\c` for the character c itself. The first
// alternative that lets the whole expression match wins, and repeats take as
// much as they can. `.` matches a newline, `^` and `$` know the ends of the
// whole text only.
//
// Class Regexp (text/Regexp.h) is the comfortable way to the same engine.
#pragma once

#include "zk_export.h"

#include <cstddef>
#include <cstdint>

/// The number of groups that a match reports: the whole match and 19 parentheses.
inline constexpr int NSUBEXP = 20;

/// A compiled expression: one block, obtained with malloc and released with free.
///
/// `program` is a magic byte (0x9C) and then nodes. A node is three bytes: its
/// op-code, and in two bytes, high one first, how far away the node is that
/// follows it when it has matched; 0 stands for none. The way leads forward,
/// for BACK alone backward. Behind them stands the operand.
///
///   op-code      operand          matches
///    0 END                        the program ends: success
///    1 BOL                        at the start of the text
///    2 EOL                        at its terminating NUL
///    3 ANY                        one character
///    4 ANYOF     NUL-ended set    one character of the set
///    5 ANYBUT    NUL-ended set    one character that is not in the set
///    6 BRANCH    nodes            one alternative; its way leads to the next one
///    7 BACK                       nothing: the way back that closes a loop
///    8 EXACTLY   NUL-ended text   that text
///    9 NOTHING                    nothing
///   10 STAR      one node         it, as often as it goes
///   11 PLUS      one node         it, as often as it goes, at least once
///   21 - 39 OPEN                  nothing: group 1 - 19 starts
///   41 - 59 CLOSE                 nothing: group 1 - 19 ends
///
/// Behind the program stands what makes matching fast. It is of use at this
/// address only: a copy of the record and its program matches the same, but slower.
///
/// Not for two threads at once, since every match writes `startp` and `endp`;
/// different expressions share nothing.
struct regexp {
    char* startp[NSUBEXP];  ///< where each group starts in the text, null if it took no part
    char* endp[NSUBEXP];    ///< one past its end
    char regstart;          ///< the character that every match starts with, or 0
    char reganch;           ///< 1 if a match can only begin at the start of the text
    unsigned char seal[6];  ///< the engine's own, where padding would be: see regexpProgram.h
    char* regmust;          ///< a text that every match holds, in `program`, or null
    std::int32_t regmlen;   ///< its length
    char program[1];        ///< the magic byte and the nodes
};

/// Compiles `exp`.
///
/// On failure the result is null and one line is on the standard error stream,
/// "regerror: " and the reason. The caller releases the result with free().
/// Two passes over the expression and one over the program; one allocation.
ZK_UTIL_API regexp* regcomp(char const* exp);

/// Looks for the leftmost match of `prog` in the text `string`.
///
/// The result is 1 with `startp` and `endp` filled, or 0. A null argument and a
/// program that was tampered with are reported as one line on the standard
/// error stream; the result is then 0. Takes no stack to speak of, however
/// long the text is. Memory grows with the choices that are still open and, in
/// a long search, by a bit for each place where one has failed; where there is
/// none, std::bad_alloc is thrown. Time grows with the product of both lengths
/// at worst.
ZK_UTIL_API int regexec(regexp* prog, char const* string);

/// Writes "regerror: ", `message` and a newline to the standard error stream. A null message is empty.
ZK_UTIL_API void regerror(char const* message);

/// Why an expression does not compile, and where.
struct RegexpFault {
    char const* message = nullptr;  ///< as regcomp prints it; lives for ever
    std::size_t offset = 0;         ///< of the character in the expression at which it shows
};

/// As regcomp, but a failure goes to `fault` and nothing is printed. Without one `fault` is left alone.
ZK_UTIL_API regexp* regcomp(char const* exp, RegexpFault& fault);

/// What a match with a limit came to.
enum class RegexpOutcome {
    noMatch,
    match,
    outOfSteps,  ///< the limit was reached before the answer was known
};

/// As regexec, but gives up after about `stepLimit` steps of the search.
///
/// Steps are counted roughly: one for each choice that is made or taken back, each start that fails
/// and each 16 characters of a repeat. After `outOfSteps` no group is set.
ZK_UTIL_API RegexpOutcome regexec(regexp* prog, char const* string, std::uint64_t stepLimit);
