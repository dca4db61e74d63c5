// blanks.h: the six blanks of the C locale, and texts without them at their ends.
#pragma once

#include <string_view>

namespace zk {

/// A space, or one of \t \n \v \f \r: what CString::Trim takes off.
constexpr bool isBlank(char character) noexcept
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr std::string_view withoutLeadingBlanks(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

constexpr std::string_view trimmed(std::string_view text)
{
    text = withoutLeadingBlanks(text);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace zk
