// newText.h: texts as an object's entries give them to the toolkit.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string_view>

/// A copy for std::free().
inline char* newText(std::string_view text)
{
    char* const copy = static_cast<char*>(std::malloc(text.size() + 1));
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}
