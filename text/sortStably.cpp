#include "text/sortStably.h"

#include "text/SPString.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace zk {

namespace {

constexpr std::size_t prefixLength = 8;

// A string and its first eight characters as a number, which settles most comparisons without
// a look at the string.
struct Key {
    std::uint64_t prefix;
    SPString const* text;
};

std::uint64_t prefixOf(char const* text)
{
    std::uint64_t prefix = 0;
    std::size_t i = 0;
    for (; i < prefixLength && text[i] != '\0'; ++i)
        prefix = prefix << 8 | static_cast<unsigned char>(text[i]);
    return i == 0 ? 0 : prefix << 8 * (prefixLength - i);
}

bool operator<(Key const& a, Key const& b)
{
    if (a.prefix != b.prefix)
        return a.prefix < b.prefix;
    // A prefix that ends in NUL is all there is.
    return (a.prefix & 0xFF) != 0 && std::strcmp(*a.text + prefixLength, *b.text + prefixLength) < 0;
}

}  // namespace

void sortStably(SPString const** elements, std::size_t count)
{
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i)
        keys[i] = {prefixOf(*elements[i]), elements[i]};
    std::stable_sort(keys.begin(), keys.end());
    for (std::size_t i = 0; i < count; ++i)
        elements[i] = keys[i].text;
}

}  // namespace zk
