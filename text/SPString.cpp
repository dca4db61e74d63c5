#include "text/SPString.h"

#include "platform/classlib/textSearch.h"
#include "text/Regexp.h"
#include "text/SPStringList.h"
#include "text/options.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <new>
#include <string_view>

namespace {

std::string_view viewOf(SPString const& text)
{
    return {text, text.length()};
}

// The part to look for: it ends with the first NUL that it holds.
std::string_view partOf(SPString const& text)
{
    std::string_view const all = viewOf(text);
    return all.substr(0, std::min(all.find('\0'), all.size() - 1) + 1);
}

}  // namespace

SPString::SPString(substring const& window) : text_(window.text(), window.length())
{
}

SPString& SPString::operator=(substring const& window)
{
    text_.take(window.text(), window.length());
    return *this;
}

SPString SPString::operator+(SPString const& right) const
{
    return SPString(*this, right, right.text_.viewLength());
}

SPString SPString::operator+(char const* right) const
{
    return right ? SPString(*this, right, std::strlen(right)) : *this;
}

SPString SPString::operator+(char right) const
{
    if (!text_.irregular_)
        return SPString(*this, &right, 1);
    SPString sum(*this);
    sum += right;
    return sum;
}

SPString operator+(char const* left, SPString const& right)
{
    return SPString(left) + right;
}

char SPString::chop()
{
    if (length() == 0)
        return '\0';
    char const last = (*this)[length() - 1];
    text_.remove(length() - 1, 1);
    return last;
}

int SPString::index(SPString const& s, int offset) const
{
    std::size_t const start = std::max(offset, 0);
    if (start >= length())
        return -1;
    return static_cast<int>(zk::findFirst(viewOf(*this), partOf(s), start));
}

int SPString::rindex(SPString const& s, std::size_t offset) const
{
    std::size_t const n = s.length();
    if (n > length())
        return -1;
    std::size_t const last = length() - n;
    std::size_t const start = offset == all ? last : offset + 1 - n;
    auto const pos = static_cast<std::int32_t>(std::min(start, last));
    if (pos < 0)
        return -1;
    std::string_view const part = partOf(s);
    return static_cast<int>(zk::findLast(viewOf(*this).substr(0, pos + part.size()), part));
}

SPString::substring SPString::substr(std::size_t pos, std::size_t len)
{
    return substring(*this, pos, len);
}

SPString::substring SPString::substr(Range const& range)
{
    return substring(*this, static_cast<std::size_t>(static_cast<std::ptrdiff_t>(range.start())),
                     static_cast<std::size_t>(static_cast<std::ptrdiff_t>(range.length())));
}

int SPString::m(Regexp& expression) const
{
    return expression.match(*this);
}

int SPString::m(char const* pattern, char const* opts) const
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    return m(expression);
}

int SPString::m(Regexp& expression, SPStringList& groups) const
{
    if (!expression.match(*this))
        return 0;
    if (!groups.holdsElement(*this)) {
        groups.reset();
        return groups.pushGroups(expression, *this);
    }
    SPString const text(*this);
    groups.reset();
    return groups.pushGroups(expression, text);
}

int SPString::m(char const* pattern, SPStringList& groups, char const* opts) const
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    return m(expression, groups);
}

SPStringList SPString::split(char const* pattern, int limit) const
{
    SPStringList fields;
    fields.splitText({*this, text_.viewLength()}, pattern, limit);
    return fields;
}

int SPString::compare(char const* other) const noexcept
{
    return std::strcmp(text_, other ? other : "");
}

// Replaces `count` characters at `pos`, or those that there are, by `length` characters of `text`.
void SPString::insert(std::size_t pos, std::size_t count, char const* text, std::size_t length)
{
    text_.replace(pos, count, text, length);
}

SPString::substring::substring(SPString& str, std::size_t pos, std::size_t len) noexcept
    : pos_(std::min(pos, str.length())), len_(std::min(len, str.length() - pos_)), str_(str),
      pt_(pos_ < str.length() ? str.text_.text_ + pos_ : nullptr)
{
}

SPString::substring& SPString::substring::operator=(SPString const& text)
{
    replace(text, text.text_.viewLength());
    return *this;
}

SPString::substring& SPString::substring::operator=(char const* text)
{
    replace(text ? text : "", text ? std::strlen(text) : 0);
    return *this;
}

SPString::substring& SPString::substring::operator=(substring const& other)
{
    std::string_view const text(other.text(), other.length());
    replace(text.data(), std::min(text.find('\0'), text.size()));
    return *this;
}

// Where the window's characters are now, also if the string was changed in the meantime.
char const* SPString::substring::text() const noexcept
{
    return str_.text_.text_ + std::min(pos_, str_.length());
}

std::size_t SPString::substring::length() const noexcept
{
    return std::min(len_, str_.length() - std::min(pos_, str_.length()));
}

void SPString::substring::replace(char const* text, std::size_t length)
{
    str_.insert(pos_, len_, text, length);
    pt_ = pos_ < str_.length() ? str_.text_.text_ + pos_ : nullptr;
}

std::ostream& operator<<(std::ostream& stream, SPString const& text)
{
    return stream << static_cast<char const*>(text);
}

namespace {

constexpr int stretch = 131;
constexpr int endOfStream = std::char_traits<char>::eof();

// Reads up to `stretch` characters of a line, the first of which is `c`, and leaves in `c` what
// comes behind them.
int readStretch(std::streambuf& source, int& c, char* buffer)
{
    int count = 0;
    for (; count < stretch && c != endOfStream && c != '\n'; c = source.sbumpc())
        buffer[count++] = static_cast<char>(c);
    buffer[count] = '\0';
    return count;
}

}  // namespace

std::istream& operator>>(std::istream& stream, SPString& text)
{
    text = "";
    std::istream::sentry const ready(stream, true);
    if (!ready)
        return stream;
    std::ios_base::iostate state = std::ios_base::goodbit;
    try {
        std::streambuf& source = *stream.rdbuf();
        bool hasRead = false;
        for (int c = source.sbumpc(); c != '\n' && state == std::ios_base::goodbit;) {
            char buffer[stretch + 1];
            int const count = readStretch(source, c, buffer);
            text += buffer;
            hasRead = hasRead || count > 0;
            if (c == endOfStream)
                state = hasRead ? std::ios_base::eofbit : std::ios_base::eofbit | std::ios_base::failbit;
        }
    } catch (std::bad_alloc const&) {
        throw;
    } catch (...) {
        // The stream's source failed. As after the stream's own operations, the stream is bad then.
        if (stream.exceptions() & std::ios_base::badbit)
            throw;
        state = std::ios_base::badbit;
    }
    if (state != std::ios_base::goodbit)
        stream.setstate(state);
    return stream;
}
