#include "text/Range.h"

#include <ostream>

namespace {

// Positions at the ends of the number range wrap around instead of being undefined.
std::int32_t wrappingSum(std::int32_t left, std::int32_t right)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) + static_cast<std::uint32_t>(right));
}

std::int32_t lengthOf(std::int32_t start, std::int32_t end)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(end) - static_cast<std::uint32_t>(start) +
                                     1u);
}

}  // namespace

Range::Range(int start, int end) noexcept : start_(start), end_(end), length_(lengthOf(start, end))
{
}

void Range::set(int start, int end) noexcept
{
    *this = Range(start, end);
}

Range::operator void*() const noexcept
{
    return start_ <= end_ && start_ >= 0 ? const_cast<Range*>(this) : nullptr;
}

bool Range::operator<(Range const& other) const noexcept
{
    return start_ != other.start_ ? start_ < other.start_ : end_ < other.end_;
}

Range& Range::operator++() noexcept
{
    start_ = wrappingSum(start_, 1);
    length_ = wrappingSum(length_, -1);
    return *this;
}

Range Range::operator++(int) noexcept
{
    Range const before = *this;
    end_ = wrappingSum(end_, 1);
    length_ = wrappingSum(length_, 1);
    return before;
}

std::ostream& operator<<(std::ostream& stream, Range const& range)
{
    return stream << range.start() << " - " << range.end() << " (" << lengthOf(range.start(), range.end())
                  << ")";
}
