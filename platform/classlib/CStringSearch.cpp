// The searching half of CString: finding, spans, tokens, replacing and removing.
#include "platform/classlib/CString.h"
#include "platform/classlib/textSearch.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

// What a replacement has made of a text.
struct Replaced {
    std::size_t length;
    int count;
};

std::size_t findPlace(std::string_view text, std::string_view part, std::size_t from) noexcept
{
    return static_cast<std::size_t>(zk::findFirst(text, part, from));  // -1 is npos
}

// Replaces in place by a text that is not longer; the first occurrence is at `found`.
Replaced replaceInPlace(char* data, std::size_t length, std::string_view from, std::string_view to,
                        std::size_t found) noexcept
{
    std::string_view const text(data, length);
    char* out = data + found;
    std::size_t copied = found;
    int count = 0;
    // What stands between two places moves down by what was saved so far.
    auto const copyUpTo = [&](std::size_t end) {
        std::size_t const piece = end - copied;
        if (piece != 0 && out != data + copied)
            std::memmove(out, data + copied, piece);
        out += piece;
    };
    do {
        copyUpTo(found);
        std::memcpy(out, to.data(), to.size());
        out += to.size();
        copied = found + from.size();
        found = findPlace(text, from, copied);
        ++count;
    } while (found != std::string_view::npos);
    copyUpTo(length);
    return {static_cast<std::size_t>(out - data), count};
}

}  // namespace

int CString::find(std::string_view text, int start) const noexcept
{
    if (start < 0 || start > length_)
        return -1;
    return static_cast<int>(zk::findFirst(view(), text, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(char character) const noexcept
{
    if (character == '\0')
        return length_;
    // Eight bytes per step: one that is equal becomes 0, and a borrow shows in its top bit.
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t tops = 0x8080808080808080u;
    std::uint64_t const wanted = ones * static_cast<unsigned char>(character);
    int end = length_;
    for (; end >= 8; end -= 8) {
        std::uint64_t bytes;
        std::memcpy(&bytes, data_ + (end - 8), 8);
        bytes ^= wanted;
        if (((bytes - ones) & ~bytes & tops) != 0)
            break;
    }
    while (end > 0 && data_[end - 1] != character)
        --end;
    return end - 1;
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
    std::size_t const found = findPlace(view(), from, 0);
    if (found == std::string_view::npos)
        return 0;
    // Text that does not grow is changed in place, unless that changes an argument too.
    if (to.size() > from.size() || holds(from.data()) || holds(to.data()))
        return replaceGrowing(from, to, found);
    Replaced const replaced = replaceInPlace(data_, view().size(), from, to, found);
    setLength(static_cast<int>(replaced.length));
    return replaced.count;
}

int CString::replaceGrowing(std::string_view from, std::string_view to, std::size_t found)
{
    std::string_view const text = view();
    CString result;
    if (text.size() > static_cast<std::size_t>(localCapacity))
        result.Preallocate(length_ / 4 * 5);  // room to grow; more is made where it is needed
    std::size_t copied = 0;
    int count = 0;
    for (; found != std::string_view::npos; found = findPlace(text, from, copied), ++count) {
        result.append(text.data() + copied, found - copied);
        result.append(to.data(), to.size());
        copied = found + from.size();
    }
    result.append(text.data() + copied, text.size() - copied);
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
