// sortStably.h: the order in which a list sorts its elements.
#pragma once

#include "zk_export.h"

#include <algorithm>
#include <cstddef>

class SPString;

namespace zk {

/// Sorts `count` pointers by what they point to, ascending; what is equal stays in its order.
template <class T>
void sortStably(T const** elements, std::size_t count)
{
    std::stable_sort(elements, elements + count, [](T const* a, T const* b) { return *a < *b; });
}

/// Strings, by the order of unsigned bytes.
ZK_UTIL_API void sortStably(SPString const** elements, std::size_t count);

}  // namespace zk
