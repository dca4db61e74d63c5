// The searching half of CString: finding, spans, tokens, replacing and removing.
#include "platform/classlib/CString.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

int CString::find(std::string_view text, int start) const noexcept
{
    if (start < 0 || start > length_)
        return -1;
    std::size_t const found = view().find(text, static_cast<std::size_t>(start));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

int CString::ReverseFind(char character) const noexcept
{
    for (int i = length_; i >= 0; --i) {
        if (data_[i] == character)
            return i;
    }
    return -1;
}

int CString::FindOneOf(char const* characters) const noexcept
{
    std::size_t const found = view().find_first_of(viewOf(characters));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

CString CString::SpanIncluding(char const* characters) const
{
    std::size_t const end = view().find_first_not_of(viewOf(characters));
    return end == std::string_view::npos ? *this : Left(static_cast<int>(end));
}

CString CString::SpanExcluding(char const* characters) const
{
    int const end = FindOneOf(characters);
    return end < 0 ? *this : Left(end);
}

CString CString::Tokenize(char const* separators, int& start) const
{
    if (start >= 0 && start < length_) {
        std::string_view const set = viewOf(separators);
        std::size_t const first = view().find_first_not_of(set, static_cast<std::size_t>(start));
        if (first != std::string_view::npos) {
            int const begin = static_cast<int>(first);
            std::size_t const last = set.empty() ? std::string_view::npos : view().find_first_of(set, first);
            int const end = last == std::string_view::npos ? length_ : static_cast<int>(last);
            // Behind the separator, and behind the end where the text ended the token.
            start = end + 1;
            return Mid(begin, end - begin);
        }
    }
    start = -1;
    return CString();
}

int CString::Replace(char from, char to) noexcept
{
    if (from == to)
        return 0;
    int count = 0;
    for (char* at = data_; at != data_ + length_; ++at) {
        if (*at == from) {
            *at = to;
            ++count;
        }
    }
    return count;
}

int CString::replaceAll(std::string_view from, std::string_view to)
{
    if (from.empty())
        return 0;
    std::string_view const text = view();
    std::size_t found = text.find(from);
    if (found == std::string_view::npos)
        return 0;

    // Counted first: the result then takes one block, or none where it fits.
    int count = 0;
    std::size_t total = text.size();
    for (std::size_t at = found; at != std::string_view::npos; at = text.find(from, at + from.size()))
        ++count;
    if (to.size() > from.size() &&
        (to.size() - from.size()) > (INT_MAX - text.size()) / static_cast<std::size_t>(count))
        throw std::bad_alloc();
    total =
        total + static_cast<std::size_t>(count) * to.size() - static_cast<std::size_t>(count) * from.size();

    CString result;
    char* out = result.GetBufferSetLength(static_cast<int>(total));
    std::size_t copied = 0;
    for (; found != std::string_view::npos; found = text.find(from, copied)) {
        std::memcpy(out, text.data() + copied, found - copied);
        out += found - copied;
        std::memcpy(out, to.data(), to.size());
        out += to.size();
        copied = found + from.size();
    }
    std::memcpy(out, text.data() + copied, text.size() - copied);
    *this = static_cast<CString&&>(result);
    return count;
}

int CString::Remove(char character) noexcept
{
    char* const end = std::remove(data_, data_ + length_, character);
    int const count = static_cast<int>(data_ + length_ - end);
    setLength(length_ - count);
    return count;
}
