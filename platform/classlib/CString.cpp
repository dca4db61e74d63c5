#include "platform/classlib/CString.h"

#include "platform/classlib/blanks.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>

namespace {

constexpr std::size_t maximalLength = INT_MAX - 1;

char upperOf(char character) noexcept
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

char lowerOf(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

int signOf(int difference) noexcept
{
    return (difference > 0) - (difference < 0);
}

// A length that a caller gave, brought into [0, limit].
int clamp(int length, int limit) noexcept
{
    return std::clamp(length, 0, limit);
}

}  // namespace

// -- Memory --------------------------------------------------------------------------

char* CString::allocate(std::size_t capacity)
{
    if (capacity > maximalLength)
        throw std::bad_alloc();
    return std::allocator<char>().allocate(capacity + 1);
}

void CString::release() noexcept
{
    std::allocator<char>().deallocate(data_, static_cast<std::size_t>(capacity_) + 1);
}

// Takes over a block in place of the present one.
void CString::adopt(char* block, int length, int capacity) noexcept
{
    if (data_ != local_)
        release();
    data_ = block;
    capacity_ = capacity;
    setLength(length);
}

// What to allocate for a text that grew to `length`: twice the present size at
// least, so that appending byte by byte costs a constant time each.
int CString::capacityFor(std::size_t length) const
{
    if (length > maximalLength)
        throw std::bad_alloc();
    std::size_t const doubled = std::min(static_cast<std::size_t>(capacity_) * 2, maximalLength);
    return static_cast<int>(std::max(length, doubled));
}

void CString::grow(std::size_t more)
{
    int const capacity = capacityFor(static_cast<std::size_t>(length_) + more);
    char* const block = allocate(static_cast<std::size_t>(capacity));
    std::memcpy(block, data_, static_cast<std::size_t>(length_));
    adopt(block, length_, capacity);
}

CString& CString::appendGrowing(char const* text, std::size_t length)
{
    // `text` may lie in the old block: that one goes last.
    std::size_t const total = std::min(length, maximalLength + 1) + static_cast<std::size_t>(length_);
    int const capacity = capacityFor(total);
    char* const block = allocate(static_cast<std::size_t>(capacity));
    std::memcpy(block, data_, static_cast<std::size_t>(length_));
    std::memcpy(block + length_, text, length);
    adopt(block, static_cast<int>(total), capacity);
    return *this;
}

CString& CString::assign(char const* text, std::size_t length)
{
    if (length <= static_cast<std::size_t>(capacity_)) {
        if (length != 0)
            std::memmove(data_, text, length);  // the text may be a part of this one
        setLength(static_cast<int>(length));
        return *this;
    }
    char* const block = allocate(length);
    std::memcpy(block, text, length);
    adopt(block, static_cast<int>(length), static_cast<int>(length));
    return *this;
}

CString::CString(char character, int repeat) : data_(local_)
{
    int const length = std::max(repeat, 0);
    if (length > localCapacity) {
        data_ = allocate(static_cast<std::size_t>(length));
        capacity_ = length;
    }
    std::memset(data_, static_cast<unsigned char>(character), static_cast<std::size_t>(length));
    setLength(length);
}

CString CString::concatenate(std::string_view left, std::string_view right)
{
    CString sum;
    std::size_t const length = left.size() + right.size();
    if (length > static_cast<std::size_t>(localCapacity)) {
        // A sum is often one of several: the next part finds room.
        std::size_t const capacity = std::max(length, std::min(length + length / 2, maximalLength));
        sum.data_ = allocate(capacity);
        sum.capacity_ = static_cast<int>(capacity);
    }
    std::memcpy(sum.data_, left.data(), left.size());
    std::memcpy(sum.data_ + left.size(), right.data(), right.size());
    sum.setLength(static_cast<int>(length));
    return sum;
}

void CString::swap(CString& other) noexcept
{
    CString kept(static_cast<CString&&>(other));
    other = static_cast<CString&&>(*this);
    *this = static_cast<CString&&>(kept);
}

// -- The buffer ------------------------------------------------------------------------

char* CString::GetBuffer(int minimum)
{
    if (minimum > capacity_) {
        int const length = length_;
        char* const block = allocate(static_cast<std::size_t>(minimum));
        std::memcpy(block, data_, static_cast<std::size_t>(length));
        adopt(block, length, minimum);
    }
    // Whatever the caller writes, ReleaseBuffer finds an end.
    data_[capacity_] = '\0';
    return data_;
}

char* CString::GetBufferSetLength(int length)
{
    int const wanted = std::max(length, 0);
    GetBuffer(wanted);
    setLength(wanted);
    return data_;
}

void CString::ReleaseBuffer(int length) noexcept
{
    if (length < 0) {
        void const* const end = std::memchr(data_, '\0', static_cast<std::size_t>(capacity_));
        length = end ? static_cast<int>(static_cast<char const*>(end) - data_) : capacity_;
    }
    setLength(std::min(length, capacity_));
}

void CString::FreeExtra()
{
    if (data_ == local_ || length_ == capacity_)
        return;
    if (length_ <= localCapacity) {
        std::memcpy(local_, data_, static_cast<std::size_t>(length_));
        adopt(local_, length_, localCapacity);
    } else {
        char* const block = allocate(static_cast<std::size_t>(length_));
        std::memcpy(block, data_, static_cast<std::size_t>(length_));
        adopt(block, length_, length_);
    }
}

// -- Comparing -------------------------------------------------------------------------

int CString::compareNoCase(std::string_view text) const noexcept
{
    std::size_t const common = std::min(static_cast<std::size_t>(length_), text.size());
    for (std::size_t i = 0; i < common; ++i) {
        int const difference =
            static_cast<unsigned char>(lowerOf(data_[i])) - static_cast<unsigned char>(lowerOf(text[i]));
        if (difference != 0)
            return signOf(difference);
    }
    return (static_cast<std::size_t>(length_) > common) - (text.size() > common);
}

int CString::Collate(char const* text) const noexcept
{
    return signOf(std::strcoll(data_, text ? text : ""));
}

int CString::CollateNoCase(char const* text) const
{
    CString mine(data_);
    CString other(text);
    return mine.MakeLower().Collate(other.MakeLower());
}

// -- Parts -----------------------------------------------------------------------------

CString CString::Left(int count) const
{
    return CString(data_, clamp(count, length_));
}

CString CString::Right(int count) const
{
    int const taken = clamp(count, length_);
    return CString(data_ + (length_ - taken), taken);
}

CString CString::Mid(int first, int count) const
{
    int const start = clamp(first, length_);
    return CString(data_ + start, clamp(count, length_ - start));
}

// -- Case and ends ---------------------------------------------------------------------

CString& CString::MakeUpper() noexcept
{
    std::transform(data_, data_ + length_, data_, upperOf);
    return *this;
}

CString& CString::MakeLower() noexcept
{
    std::transform(data_, data_ + length_, data_, lowerOf);
    return *this;
}

CString& CString::MakeReverse() noexcept
{
    std::reverse(data_, data_ + length_);
    return *this;
}

CString& CString::TrimLeft() noexcept
{
    int first = 0;
    while (first < length_ && zk::isBlank(data_[first]))
        ++first;
    Delete(0, first);
    return *this;
}

CString& CString::TrimLeft(char character) noexcept
{
    std::size_t const first = std::min(view().find_first_not_of(character), view().size());
    Delete(0, static_cast<int>(first));
    return *this;
}

CString& CString::TrimLeft(char const* characters) noexcept
{
    std::size_t const first = std::min(view().find_first_not_of(viewOf(characters)), view().size());
    Delete(0, static_cast<int>(first));
    return *this;
}

CString& CString::TrimRight() noexcept
{
    int end = length_;
    while (end > 0 && zk::isBlank(data_[end - 1]))
        --end;
    setLength(end);
    return *this;
}

// find_last_not_of gives npos, one below 0, where nothing is to stay.
CString& CString::TrimRight(char character) noexcept
{
    setLength(static_cast<int>(view().find_last_not_of(character) + 1));
    return *this;
}

CString& CString::TrimRight(char const* characters) noexcept
{
    setLength(static_cast<int>(view().find_last_not_of(viewOf(characters)) + 1));
    return *this;
}

// -- Inserting and deleting ------------------------------------------------------------

int CString::insert(int index, char const* text, std::size_t length)
{
    if (length == 0)
        return length_;
    std::size_t const at = static_cast<std::size_t>(clamp(index, length_));
    std::size_t const tail = static_cast<std::size_t>(length_) - at;
    if (!holds(text) && length <= static_cast<std::size_t>(capacity_ - length_)) {
        std::memmove(data_ + at + length, data_ + at, tail);
        std::memcpy(data_ + at, text, length);
        setLength(length_ + static_cast<int>(length));
    } else {
        std::size_t const total = std::min(length, maximalLength + 1) + static_cast<std::size_t>(length_);
        int const capacity = capacityFor(total);
        char* const block = allocate(static_cast<std::size_t>(capacity));
        std::memcpy(block, data_, at);
        std::memcpy(block + at, text, length);
        std::memcpy(block + at + length, data_ + at, tail);
        adopt(block, static_cast<int>(total), capacity);
    }
    return length_;
}

int CString::Delete(int index, int count) noexcept
{
    int const at = clamp(index, length_);
    int const removed = clamp(count, length_ - at);
    if (removed > 0) {
        std::memmove(data_ + at, data_ + at + removed, static_cast<std::size_t>(length_ - at - removed));
        setLength(length_ - removed);
    }
    return length_;
}

void CString::Truncate(int length) noexcept
{
    setLength(clamp(length, length_));
}

std::ostream& operator<<(std::ostream& stream, CString const& text)
{
    return stream << text.view();
}
