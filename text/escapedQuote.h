// escapedQuote.h: whether a quote ends its string.
#pragma once

#include <cstddef>
#include <string_view>

namespace zk {

/// Whether what stands at `position` follows an odd number of backslashes.
constexpr bool isEscaped(std::string_view text, std::size_t position)
{
    std::size_t run = 0;
    while (run < position && text[position - run - 1] == '\\')
        ++run;
    return run % 2 != 0;
}

}  // namespace zk
