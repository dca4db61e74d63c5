#include "examples/modelgen/pumlLine.h"

#include <algorithm>

namespace modelgen {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLetterOrDigit(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::size_t endOfQuoted(std::string_view text, std::size_t open)
{
    for (std::size_t i = open + 1; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            return i;
    }
    return std::string_view::npos;
}

}  // namespace

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isWordCharacter(char c)
{
    return isLetterOrDigit(c) || c == '_' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

CString textOf(std::string_view text)
{
    return CString(text);
}

PumlSource::PumlSource(std::string_view text) : rest_(text)
{
    if (rest_.substr(0, 3) == "\xEF\xBB\xBF")
        rest_.remove_prefix(3);
}

bool PumlSource::readRaw(std::string_view& raw)
{
    if (rest_.empty())
        return false;
    std::size_t const end = rest_.find_first_of("\r\n");
    raw = rest_.substr(0, end);
    if (end == std::string_view::npos)
        rest_ = {};
    else
        rest_.remove_prefix(end + (rest_.substr(end, 2) == "\r\n" ? 2 : 1));
    ++line_;
    return true;
}

bool PumlSource::next()
{
    std::string_view raw;
    while (readRaw(raw)) {
        text_ = raw;
        for (int i = 0; i < text_.GetLength(); ++i)
            if (static_cast<unsigned char>(text_[i]) < 0x20 || text_[i] == 0x7F)
                text_.SetAt(i, ' ');
        if (openComment_ > 0) {
            int const end = text_.Find("'/");
            if (end < 0)
                continue;
            text_ = text_.Mid(end + 2);
            openComment_ = 0;
        }
        text_.Trim();
        removeInlineComments();
        if (!text_.IsEmpty() && text_[0] != '\'')
            return true;
    }
    return false;
}

// A block comment that is not closed in its line runs on only if it opens the line: elsewhere /' is mere text.
void PumlSource::removeInlineComments()
{
    int open = text_.Find("/'");
    if (open < 0)
        return;
    CString kept;
    int start = 0;
    bool inQuotes = false;
    for (int seen = 0; open >= 0; open = text_.Find("/'", open)) {
        for (; seen < open; ++seen)
            inQuotes ^= text_[seen] == '"';
        int const close = inQuotes ? -1 : text_.Find("'/", open + 2);
        if (close >= 0) {
            kept +=
                text_.view().substr(static_cast<std::size_t>(start), static_cast<std::size_t>(open - start));
            start = seen = open = close + 2;
        } else if (!inQuotes && trimmed(kept.view()).empty() &&
                   trimmed(text_.view().substr(std::size_t(start), std::size_t(open - start))).empty()) {
            openComment_ = line_;
            start = text_.GetLength();
            break;
        } else if (!inQuotes) {
            break;  // nothing behind this one is closed either
        } else {
            open += 2;
        }
    }
    kept += text_.view().substr(static_cast<std::size_t>(start));
    text_ = kept;
    text_.Trim();
}

void PumlLine::skip(std::size_t count)
{
    rest_.remove_prefix(std::min(count, rest_.size()));
    rest_ = trimmed(rest_);
}

bool PumlLine::take(std::string_view text)
{
    if (rest_.substr(0, text.size()) != text)
        return false;
    skip(text.size());
    return true;
}

bool PumlLine::takeWord(std::string_view word)
{
    if (rest_.substr(0, word.size()) != word || isWordCharacter(peek(word.size())))
        return false;
    skip(word.size());
    return true;
}

std::string_view PumlLine::word()
{
    std::size_t length = 0;
    while (isLetterOrDigit(peek(length)))
        ++length;
    std::string_view const found = rest_.substr(0, length);
    skip(length);
    return found;
}

std::optional<CString> PumlLine::quotedText()
{
    if (peek() != '"')
        return std::nullopt;
    std::size_t const end = endOfQuoted(rest_, 0);
    if (end == std::string_view::npos)
        return std::nullopt;
    CString found = textOf(rest_.substr(1, end - 1));
    skip(end + 1);
    return found;
}

std::optional<CString> PumlLine::name()
{
    if (peek() == '"')
        return quotedText();
    std::size_t length = 0;
    for (;;) {
        if (isWordCharacter(peek(length)) || peek(length) == '@')
            ++length;
        else if ((peek(length) == '.' || peek(length) == '/') && isWordCharacter(peek(length + 1)))
            length += 2;  // one dot joins two names; two are a dotted line
        else if (peek(length) == ':' && peek(length + 1) == ':' && isWordCharacter(peek(length + 2)))
            length += 3;
        else
            break;
    }
    if (length == 0)
        return std::nullopt;
    CString found = textOf(rest_.substr(0, length));
    skip(length);
    return found;
}

std::optional<CString> PumlLine::angled()
{
    if (peek() != '<' || peek(1) == '<')
        return std::nullopt;
    std::size_t const end = closingBracket(rest_, 0);
    if (end == std::string_view::npos)
        return std::nullopt;
    CString found = textOf(trimmed(rest_.substr(1, end - 1)));
    skip(end + 1);
    return found;
}

std::size_t findOutside(std::string_view text, char wanted, std::size_t start)
{
    int depth = 0;
    bool isQuoteOpen = false;  // one that nothing closes is a character like any other
    for (std::size_t i = start; i < text.size(); ++i) {
        char const c = text[i];
        if (c == wanted && depth <= 0)
            return i;
        if (c == '"' && !isQuoteOpen) {
            std::size_t const end = endOfQuoted(text, i);
            isQuoteOpen = end == std::string_view::npos;
            i = isQuoteOpen ? i : end;
        } else if (c == '<' || c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == '>' || c == ')' || c == ']' || c == '}') {
            depth -= depth > 0 ? 1 : 0;
        }
    }
    return std::string_view::npos;
}

std::size_t closingBracket(std::string_view text, std::size_t open)
{
    char const opening = text[open];
    char const closing = opening == '<' ? '>' : opening == '(' ? ')' : opening == '[' ? ']' : '}';
    int depth = 0;
    bool isQuoteOpen = false;
    for (std::size_t i = open; i < text.size(); ++i) {
        char const c = text[i];
        if (c == '"' && !isQuoteOpen) {
            std::size_t const end = endOfQuoted(text, i);
            isQuoteOpen = end == std::string_view::npos;
            i = isQuoteOpen ? i : end;
        } else if (c == opening) {
            ++depth;
        } else if (c == closing && --depth == 0) {
            return i;
        }
    }
    return std::string_view::npos;
}

}  // namespace modelgen
