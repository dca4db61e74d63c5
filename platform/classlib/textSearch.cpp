#include "platform/classlib/textSearch.h"

#include <cstring>
#include <memory>
#include <new>

namespace zk {

namespace {

// A text read forward or backward.
template <bool forward>
struct Reading {
    std::string_view text;
    char operator[](std::size_t i) const { return forward ? text[i] : text[text.size() - 1 - i]; }
    std::size_t size() const { return text.size(); }
};

// Knuth, Morris and Pratt: looks at each character once, at the price of a table.
template <bool forward>
std::ptrdiff_t findByTable(Reading<forward> text, Reading<forward> part, std::size_t const border[],
                           std::size_t from)
{
    for (std::size_t i = from, k = 0; i < text.size(); ++i) {
        while (k > 0 && text[i] != part[k])
            k = border[k];
        if (text[i] == part[k])
            ++k;
        if (k == part.size())
            return static_cast<std::ptrdiff_t>(i + 1 - k);
    }
    return -1;
}

// How long the longest beginning of the part is that also ends its first k characters; null without memory.
template <bool forward>
std::unique_ptr<std::size_t[]> bordersOf(Reading<forward> part)
{
    std::unique_ptr<std::size_t[]> border(new (std::nothrow) std::size_t[part.size() + 1]());
    for (std::size_t i = 1, k = 0; border && i < part.size(); ++i) {
        while (k > 0 && part[i] != part[k])
            k = border[k];
        if (part[i] == part[k])
            ++k;
        border[i + 1] = k;
    }
    return border;
}

// Place by place, as long as that does not compare much more than there is to read.
template <bool forward>
std::ptrdiff_t find(Reading<forward> text, Reading<forward> part, std::size_t from)
{
    if (part.size() == 0)
        return static_cast<std::ptrdiff_t>(from);
    std::size_t compared = 0;
    for (std::size_t i = from; i + part.size() <= text.size(); ++i) {
        if constexpr (forward) {
            char const* const start = text.text.data() + i;
            auto const found =
                static_cast<char const*>(std::memchr(start, part[0], text.size() - part.size() - i + 1));
            if (!found)
                return -1;
            i += found - start;
        }
        std::size_t k = 0;
        while (k < part.size() && text[i + k] == part[k])
            ++k;
        if (k == part.size())
            return static_cast<std::ptrdiff_t>(i);
        compared += k;
        if (compared <= 4 * (i - from) + 256)
            continue;
        if (std::unique_ptr<std::size_t[]> const border = bordersOf(part))
            return findByTable(text, part, border.get(), i + 1);
    }
    return -1;
}

}  // namespace

std::ptrdiff_t findFirst(std::string_view text, std::string_view part, std::size_t from) noexcept
{
    return find<true>({text}, {part}, from);
}

std::ptrdiff_t findLast(std::string_view text, std::string_view part) noexcept
{
    std::ptrdiff_t const place = find<false>({text}, {part}, 0);
    return place < 0 ? -1 : static_cast<std::ptrdiff_t>(text.size() - part.size()) - place;
}

}  // namespace zk
