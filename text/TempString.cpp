#include "text/TempString.h"

#include <algorithm>
#include <cstring>
#include <utility>

TempString::TempString(char const* text) : text_(nullptr)
{
    if (!text)
        text = "";
    std::size_t const size = std::strlen(text) + 1;
    text_ = new char[size];
    std::memcpy(text_, text, size);
}

TempString::TempString(char const* text, int length) : text_(nullptr)
{
    std::size_t const bytes = std::max(length, 0);
    text_ = new char[bytes + 1]();
    if (text && bytes > 0) {
        auto const end = static_cast<char const*>(std::memchr(text, '\0', bytes));
        std::memcpy(text_, text, end ? end - text : bytes);
    }
}

TempString::TempString(TempString const& other) : TempString(other.text_)
{
}

TempString::TempString(TempString&& other) noexcept : text_(std::exchange(other.text_, nullptr))
{
}

TempString& TempString::operator=(TempString other) noexcept
{
    std::swap(text_, other.text_);
    return *this;
}

TempString::~TempString()
{
    delete[] text_;
}
