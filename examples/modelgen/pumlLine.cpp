#include "examples/modelgen/pumlLine.h"

namespace modelgen {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

// The position of the quote that closes the one at `open`, or -1.
int endOfQuoted(char const* text, int open)
{
    for (int i = open + 1; text[i] != '\0'; ++i) {
        if (text[i] == '"')
            return i;
        if (text[i] == '\\' && text[i + 1] != '\0')
            ++i;
    }
    return -1;
}

}  // namespace

SPString trimmed(SPString text)
{
    while (text.length() > 0 && isBlank(text[text.length() - 1]))
        text.chop();
    std::size_t blanks = 0;
    while (isBlank(text[blanks]))
        ++blanks;
    if (blanks > 0)
        text.substr(0, blanks) = "";
    return text;
}

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
        c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

PumlSource::PumlSource(CString const& text)
{
    CString withoutNuls(text);
    withoutNuls.Replace('\0', ' ');
    SPString all(withoutNuls);
    if (all.index("\xEF\xBB\xBF") == 0)  // the mark of UTF-8
        all.substr(0, 3) = "";
    all.s("\r\n", "\n", "g");
    all.tr("\r", "\n");
    all.tr("\x01-\x09\x0B-\x1F\x7F", " ");
    lines_ = all.split("\n");
}

bool PumlSource::next()
{
    while (line_ < lines_.count()) {
        text_ = lines_[line_++];
        if (openComment_ > 0) {
            int const end = text_.index("'/");
            if (end < 0)
                continue;
            text_.substr(0, std::size_t(end) + 2) = "";
            openComment_ = 0;
        }
        removeInlineComments();
        text_ = trimmed(text_);
        if (text_.length() > 0 && text_[0] != '\'')
            return true;
    }
    return false;
}

// A block comment that is not closed in its line runs on only if it opens the line: elsewhere /' is mere text.
void PumlSource::removeInlineComments()
{
    int open = text_.index("/'");
    if (open < 0)
        return;
    SPString kept;
    int start = 0;
    bool inQuotes = false;
    for (int seen = 0; open >= 0; open = text_.index("/'", open)) {
        for (; seen < open; ++seen)
            inQuotes ^= text_[std::size_t(seen)] == '"';
        if (inQuotes) {
            open += 2;
            continue;
        }
        int const close = text_.index("'/", open + 2);
        if (close < 0) {
            SPString const before =
                kept + SPString(text_.substr(std::size_t(start), std::size_t(open - start)));
            if (trimmed(before).length() == 0) {
                openComment_ = line_;
                start = int(text_.length());
            }
            break;  // nothing behind this one is closed either
        }
        kept += text_.substr(std::size_t(start), std::size_t(open - start));
        start = seen = open = close + 2;
    }
    kept += text_.substr(std::size_t(start));
    text_ = kept;
}

char PumlLine::peek(int ahead) const
{
    for (int i = 0; i < ahead; ++i)
        if (rest_[i] == '\0')
            return '\0';
    return rest_[ahead];
}

void PumlLine::skip(int count)
{
    for (; count > 0 && *rest_ != '\0'; --count)
        ++rest_;
    while (isBlank(*rest_))
        ++rest_;
}

bool PumlLine::take(char const* text)
{
    int length = 0;
    for (; text[length] != '\0'; ++length)
        if (rest_[length] != text[length])
            return false;
    skip(length);
    return true;
}

bool PumlLine::takeWord(char const* word)
{
    int length = 0;
    for (; word[length] != '\0'; ++length)
        if (rest_[length] != word[length])
            return false;
    if (isWordCharacter(rest_[length]))
        return false;
    skip(length);
    return true;
}

int PumlLine::takeMatch(Regexp& expression)
{
    if (!expression.match(rest_))
        return 0;
    int const length = expression.getgroup(0).length();
    skip(length);
    return length;
}

CString PumlLine::word()
{
    static Regexp lettersAndDigits("^[A-Za-z0-9]+");
    char const* const text = rest_;
    int const length = takeMatch(lettersAndDigits);
    return CString(text, length);
}

std::optional<CString> PumlLine::quotedText()
{
    static Regexp quoted("^\"[^\"\\\\]*(\\\\.[^\"\\\\]*)*\"");
    char const* const text = rest_;
    int const length = takeMatch(quoted);
    if (length == 0)
        return std::nullopt;
    return CString(text + 1, length - 2);
}

std::optional<CString> PumlLine::name()
{
    if (peek() == '"')
        return quotedText();
    // One dot joins two names; two are a dotted line.
    static Regexp qualified(
        "^[A-Za-z0-9_$@\x80-\xFF]*(([./]|::)[A-Za-z0-9_$\x80-\xFF][A-Za-z0-9_$@\x80-\xFF]*)*");
    char const* const text = rest_;
    int const length = takeMatch(qualified);
    if (length == 0)
        return std::nullopt;
    return CString(text, length);
}

std::optional<CString> PumlLine::angled()
{
    int const end = peek() == '<' && peek(1) != '<' ? closingBracket(rest_, 0) : -1;
    if (end < 0)
        return std::nullopt;
    CString found(rest_ + 1, end - 1);
    skip(end + 1);
    return found.Trim();
}

int findOutside(char const* text, char wanted, int start)
{
    int depth = 0;
    bool isQuoteOpen = false;  // one that nothing closes is a character like any other
    for (int i = start; text[i] != '\0'; ++i) {
        char const c = text[i];
        if (c == wanted && depth <= 0)
            return i;
        if (c == '"' && !isQuoteOpen) {
            int const end = endOfQuoted(text, i);
            isQuoteOpen = end < 0;
            i = isQuoteOpen ? i : end;
        } else if (c == '<' || c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == '>' || c == ')' || c == ']' || c == '}') {
            depth -= depth > 0 ? 1 : 0;
        }
    }
    return -1;
}

int closingBracket(char const* text, int open)
{
    char const opening = text[open];
    char const closing = opening == '<' ? '>' : opening == '(' ? ')' : opening == '[' ? ']' : '}';
    int depth = 0;
    bool isQuoteOpen = false;
    for (int i = open; text[i] != '\0'; ++i) {
        char const c = text[i];
        if (c == '"' && !isQuoteOpen) {
            int const end = endOfQuoted(text, i);
            isQuoteOpen = end < 0;
            i = isQuoteOpen ? i : end;
        } else if (c == opening) {
            ++depth;
        } else if (c == closing && --depth == 0) {
            return i;
        }
    }
    return -1;
}

}  // namespace modelgen
