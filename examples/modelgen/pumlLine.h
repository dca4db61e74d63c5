// pumlLine.h: reads a diagram line by line, and a line from left to right.
//
//   PumlSource source("class A\n' remark\nclass \"B C\" as B\n");
//   source.next();                             // true: line 1, "class A"
//   source.next();                             // true: line 3, the comment is passed over
//   PumlLine line(source.text());
//   line.takeWord("class");                    // true
//   line.name();                               // "B C"
//
// Here the strings, lists and expressions of the text toolkit are at work.
#pragma once

#include "platform/classlib/CString.h"
#include "text/Regexp.h"
#include "text/SPStringList.h"

#include <optional>

namespace modelgen {

/// The text without blanks at both ends.
SPString trimmed(SPString text);
bool isWordCharacter(char c);  ///< a letter, digit, '_', '$' or any byte above 127
/// Whether `c` is one of `characters`; a NUL never is.
inline bool isOneOf(char c, char const* characters)
{
    while (*characters != '\0' && *characters != c)
        ++characters;
    return *characters != '\0';
}

/// The lines of a diagram's text without their comments and outer blanks; empty ones are left out.
/// Lines end with a line feed, a carriage return or both. Control characters count as blanks.
class PumlSource {
public:
    explicit PumlSource(CString const& text);

    bool next();
    SPString const& text() const { return text_; }
    int line() const { return line_; }
    /// The line that opened a block comment which nothing closes; 0 if there is none.
    int openComment() const { return openComment_; }

private:
    void removeInlineComments();

    SPStringList lines_;
    SPString text_;
    int line_ = 0;
    int openComment_ = 0;
};

/// One line, taken apart from left to right. Whatever is taken, blanks behind it are skipped.
class PumlLine {
public:
    /// The text has no blank at its end, and outlives this object.
    explicit PumlLine(char const* text) : rest_(text) { skip(0); }

    bool atEnd() const { return *rest_ == '\0'; }
    char peek() const { return *rest_; }
    /// The character `ahead` places behind the next one, if those before it are there.
    char peek(int ahead) const;
    char const* rest() const { return rest_; }
    void skip(int count);

    bool take(char const* text);
    /// Takes `word` if no further word character follows it.
    bool takeWord(char const* word);
    /// Takes letters and digits; empty if none stands here.
    CString word();
    /// Takes what an expression that begins with '^' matches, and tells how long it is; 0 if it does not match.
    int takeMatch(Regexp& expression);

    /// A name, quoted or bare; parts of a qualified one stay together. Nothing if none stands here; an empty
    /// quoted name is given as such.
    std::optional<CString> name();

    /// A bracketed piece from '<' to its counterpart, without the two; nothing if none stands here or it has no end.
    std::optional<CString> angled();

    /// A text in double quotes, without them; nothing if none stands here or it has no end.
    std::optional<CString> quotedText();

private:
    char const* rest_;
};

/// The position of the first `wanted` outside quotes and brackets of every kind, or -1.
int findOutside(char const* text, char wanted, int start = 0);

/// The position of the bracket that closes the one at `open`, or -1. Quoted text doesn't count.
int closingBracket(char const* text, int open);

}  // namespace modelgen
