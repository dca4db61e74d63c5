// numbers.h: numbers in texts that anybody may have written.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace zk {

/// What atoi gives, and where that is not defined, the int that is nearest to the number.
inline int numberOf(char const* text)
{
    return int(std::clamp(std::strtoll(text, nullptr, 10), static_cast<long long>(INT_MIN),
                          static_cast<long long>(INT_MAX)));
}

}  // namespace zk
