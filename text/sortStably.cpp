#include "text/sortStably.h"

#include "text/SPString.h"

#include <cstdint>
#include <cstring>
#include <utility>
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

// Sorts by the prefixes alone, byte by byte from the last one on: no comparison, and stable.
void sortByPrefix(std::vector<Key>& keys)
{
    std::vector<Key> sorted(keys.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        std::size_t places[256] = {};
        for (Key const& key : keys)
            ++places[key.prefix >> shift & 0xFF];
        if (places[keys.front().prefix >> shift & 0xFF] == keys.size())
            continue;
        std::size_t before = 0;
        for (std::size_t& place : places)
            before += std::exchange(place, before);
        for (Key const& key : keys)
            sorted[places[key.prefix >> shift & 0xFF]++] = key;
        keys.swap(sorted);
    }
}

void sortKeys(std::vector<Key>& keys)
{
    constexpr std::size_t comparedUpTo = 1000;
    if (keys.size() <= comparedUpTo) {
        std::stable_sort(keys.begin(), keys.end());
        return;
    }
    sortByPrefix(keys);
    for (auto first = keys.begin(); first != keys.end();) {
        auto const last =
            std::find_if(first + 1, keys.end(), [&](Key const& key) { return key.prefix != first->prefix; });
        if (last - first > 1)
            std::stable_sort(first, last);
        first = last;
    }
}

}  // namespace

void sortStably(SPString const** elements, std::size_t count)
{
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i)
        keys[i] = {prefixOf(*elements[i]), elements[i]};
    sortKeys(keys);
    for (std::size_t i = 0; i < count; ++i)
        elements[i] = keys[i].text;
}

}  // namespace zk
