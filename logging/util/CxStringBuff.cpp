#include "logging/util/CxStringBuff.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

constexpr std::int64_t firstCapacity = 1024;

}  // namespace

CxStringBuff::~CxStringBuff()
{
    std::free(text_);
}

bool CxStringBuff::append(std::size_t count, char byte)
{
    if (count >= static_cast<std::size_t>(capacity_ - length_) && !grow(count))
        return false;
    std::memset(text_ + length_, byte, count);
    length_ += static_cast<std::int32_t>(count);
    text_[length_] = '\0';
    return true;
}

void CxStringBuff::truncate(std::int32_t length) noexcept
{
    if (length >= length_ || length < 0)
        return;
    length_ = length;
    text_[length_] = '\0';
}

char* CxStringBuff::take() noexcept
{
    if (!text_)
        append(std::string_view());
    char* const text = text_;
    text_ = nullptr;
    length_ = 0;
    capacity_ = 0;
    return text;
}

bool CxStringBuff::grow(std::size_t addition) noexcept
{
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    if (addition >= static_cast<std::size_t>(largest - length_))
        return false;
    std::int64_t const needed = length_ + static_cast<std::int64_t>(addition) + 1;
    std::int64_t capacity = std::max<std::int64_t>(capacity_, firstCapacity);
    while (capacity < needed)
        capacity *= 2;
    capacity = std::min(capacity, largest);
    char* const larger = static_cast<char*>(std::realloc(text_, static_cast<std::size_t>(capacity)));
    if (!larger)
        return false;
    text_ = larger;
    text_[length_] = '\0';
    capacity_ = static_cast<std::int32_t>(capacity);
    return true;
}
