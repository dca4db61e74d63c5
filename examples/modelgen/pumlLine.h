// pumlLine.h: reads a diagram line by line, and a line from left to right.
//
//   PumlSource source("class A\n' remark\nclass \"B C\" as B\n");
//   source.next();                             // true: line 1, "class A"
//   source.next();                             // true: line 3, the comment is passed over
//   PumlLine line(source.text());
//   line.takeWord("class");                    // true
//   line.name();                               // "B C"
#pragma once

#include "platform/classlib/CString.h"

#include <optional>
#include <string_view>

namespace modelgen {

std::string_view trimmed(std::string_view text);
bool isWordCharacter(char c);  ///< a letter, digit, '_', '$' or any byte above 127
CString textOf(std::string_view text);

/// The lines of a diagram's text without their comments and outer blanks; empty ones are left out.
/// Lines end with a line feed, a carriage return or both. Control characters count as blanks.
class PumlSource {
public:
    /// The text must outlive this object.
    explicit PumlSource(std::string_view text);

    bool next();
    std::string_view text() const { return text_.view(); }
    int line() const { return line_; }
    /// The line that opened a block comment which nothing closes; 0 if there is none.
    int openComment() const { return openComment_; }

private:
    bool readRaw(std::string_view& raw);
    void removeInlineComments();

    std::string_view rest_;
    CString text_;
    int line_ = 0;
    int openComment_ = 0;
};

/// One line, taken apart from left to right. Whatever is taken, blanks behind it are skipped.
class PumlLine {
public:
    explicit PumlLine(std::string_view text) : rest_(trimmed(text)) { }

    bool atEnd() const { return rest_.empty(); }
    char peek(std::size_t ahead = 0) const { return ahead < rest_.size() ? rest_[ahead] : '\0'; }
    std::string_view rest() const { return rest_; }
    void skip(std::size_t count);

    bool take(std::string_view text);
    /// Takes `word` if no further word character follows it.
    bool takeWord(std::string_view word);
    /// Takes letters and digits; empty if none stands here.
    std::string_view word();

    /// A name, quoted or bare; parts of a qualified one stay together. Nothing if none stands here; an empty
    /// quoted name is given as such.
    std::optional<CString> name();

    /// A bracketed piece from '<' to its counterpart, without the two; nothing if none stands here or it has no end.
    std::optional<CString> angled();

    /// A text in double quotes, without them; nothing if none stands here or it has no end.
    std::optional<CString> quotedText();

private:
    std::string_view rest_;
};

/// The position of the first `wanted` outside quotes and brackets of every kind, or npos.
std::size_t findOutside(std::string_view text, char wanted, std::size_t start = 0);

/// The position of the bracket that closes the one at `open`, or npos. Quoted text doesn't count.
std::size_t closingBracket(std::string_view text, std::size_t open);

}  // namespace modelgen
