#include "text/SPString.h"

#include "platform/classlib/textSearch.h"
#include "text/Regexp.h"
#include "text/SPStringList.h"
#include "text/options.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <memory>
#include <string_view>

namespace {

std::string_view viewOf(SPString const& text)
{
    return {text, text.length()};
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
    return SPString(*this, &right, 1);
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
    return static_cast<int>(zk::findFirst(viewOf(*this), viewOf(s), start));
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
    return static_cast<int>(zk::findLast(viewOf(*this).substr(0, pos + n), viewOf(s)));
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
    SPString const text(*this);  // which may be an element of the list
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
    std::unique_ptr<char[]> copy;
    if (text_.holds(text)) {
        copy.reset(new char[length + 1]);
        std::memcpy(copy.get(), text, length);
        text = copy.get();
    }
    text_.remove(pos, count);
    text_.insert(pos, text, length);
}

SPString::substring::substring(SPString& str, std::size_t pos, std::size_t len) noexcept
    : pos_(std::min(pos, str.length())), len_(std::min(len, str.length() - pos_)), str_(str),
      pt_(pos_ < str.length() ? str.text_.text_ + pos_ : nullptr)
{
}

SPString::substring& SPString::substring::operator=(SPString const& text)
{
    replace(text, text.length());
    return *this;
}

SPString::substring& SPString::substring::operator=(char const* text)
{
    replace(text ? text : "", text ? std::strlen(text) : 0);
    return *this;
}

SPString::substring& SPString::substring::operator=(substring const& other)
{
    replace(other.text(), other.length());
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

std::istream& operator>>(std::istream& stream, SPString& text)
{
    constexpr int stretch = 131;
    constexpr int end = std::char_traits<char>::eof();

    text = "";
    std::istream::sentry const ready(stream, true);
    if (!ready)
        return stream;
    std::ios_base::iostate state = std::ios_base::goodbit;
    std::streambuf& source = *stream.rdbuf();
    bool hasRead = false;
    for (int c = source.sbumpc(); c != '\n';) {
        char buffer[stretch + 1];
        int count = 0;
        for (; count < stretch && c != end && c != '\n'; c = source.sbumpc())
            buffer[count++] = static_cast<char>(c);
        buffer[count] = '\0';
        text += buffer;
        hasRead = hasRead || count > 0;
        if (c == end) {
            state = hasRead ? std::ios_base::eofbit : std::ios_base::eofbit | std::ios_base::failbit;
            break;
        }
    }
    if (state != std::ios_base::goodbit)
        stream.setstate(state);
    return stream;
}
