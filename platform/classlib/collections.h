// collections.h: what lists, arrays and maps share: positions, hashing, comparing.
//
// A map finds its keys with two function templates that a program may
// specialise for its own types, at namespace scope before the first use:
//
//   template <>
//   UINT HashKey<Point const&>(Point const& key) { return UINT(key.x * 31 + key.y); }
//   template <>
//   BOOL CompareElements<Point, Point>(Point const* a, Point const* b) { return a->x == b->x && a->y == b->y; }
//
//   CMap<Point, Point const&, int, int> heights;
#pragma once

#include "platform/os/os.h"

#include "platform/classlib/CString.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <type_traits>

/// A place in a list or map; null behind the last element. It stays good until its own element goes.
struct ZkPosition;
using POSITION = ZkPosition*;

namespace zk {

/// A text as the argument of a container's call: a `char const*` or a CString, seen in place.
class TextArgument {
public:
    TextArgument(char const* text) noexcept : text_(CString::viewOf(text)) { }
    TextArgument(CString const& text) noexcept : text_(text.view()) { }
    explicit TextArgument(std::string_view text) noexcept : text_(text) { }

    operator std::string_view() const noexcept { return text_; }
    explicit operator CString() const { return CString(text_); }

    friend bool operator==(CString const& left, TextArgument right) noexcept
    {
        return left.view() == right.text_;
    }

private:
    std::string_view text_;
};

// The 32 bits that depend on all of a number's.
inline UINT hashNumber(std::uint64_t bits) noexcept
{
    return static_cast<UINT>((bits * 0x9E3779B97F4A7C15u) >> 32);
}

/// The hash of a text: the same on every target and in every run. Eight bytes per step.
inline UINT hashText(std::string_view text) noexcept
{
    std::uint64_t hash = text.size() * 0x9E3779B97F4A7C15u;
    char const* at = text.data();
    std::size_t left = text.size();
    std::uint64_t bits = 0;
    for (; left >= 8; at += 8, left -= 8) {
        std::memcpy(&bits, at, 8);
        hash = (hash ^ bits) * 0xBF58476D1CE4E5B9u;
        hash ^= hash >> 29;
    }
    if (left >= 4) {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::memcpy(&low, at, 4);
        std::memcpy(&high, at + left - 4, 4);
        hash ^= low | std::uint64_t(high) << 32;
    } else if (left > 0) {
        hash ^= std::uint64_t(static_cast<unsigned char>(at[0])) |
            std::uint64_t(static_cast<unsigned char>(at[left / 2])) << 8 |
            std::uint64_t(static_cast<unsigned char>(at[left - 1])) << 16;
    }
    return hashNumber(hash ^ (hash >> 32));
}

}  // namespace zk

/// The hash of a map's key. Texts (CString and char pointers) hash by their
/// bytes, numbers and pointers by value, other types by std::hash.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key)
{
    using Key = std::remove_cv_t<std::remove_reference_t<ARG_KEY>>;
    if constexpr (std::is_same_v<Key, CString>)
        return zk::hashText(key.view());
    else if constexpr (std::is_same_v<Key, char const*> || std::is_same_v<Key, char*>)
        return zk::hashText(CString::viewOf(key));
    else if constexpr (std::is_same_v<Key, zk::TextArgument>)
        return zk::hashText(key);
    else if constexpr (std::is_pointer_v<Key>)
        return zk::hashNumber(reinterpret_cast<std::uintptr_t>(key));
    else if constexpr ((std::is_integral_v<Key> || std::is_enum_v<Key>)&&sizeof(Key) <= sizeof(UINT))
        return static_cast<UINT>(key);  // a map spreads small numbers itself
    else if constexpr (std::is_integral_v<Key> || std::is_enum_v<Key>)
        return zk::hashNumber(static_cast<std::uint64_t>(key));
    else
        return zk::hashNumber(std::hash<Key>()(key));
}

/// Whether an element is the one looked for: by operator==.
template <class TYPE, class ARG_TYPE>
BOOL CompareElements(TYPE const* element, ARG_TYPE const* wanted)
{
    return *element == *wanted;
}
