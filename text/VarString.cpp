#include "text/VarString.h"

#include "text/copyShort.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <new>

namespace {

char const* orEmpty(char const* text)
{
    return text ? text : "";
}

// How many bytes are really obtained for a buffer that counts as `size` bytes.
//
// The size that counts grows by a fixed step, so that a text built character by
// character would move at every step and cost quadratic time. Long blocks are
// therefore rounded up, to four sizes per power of two and, where the system
// gives memory only as it is touched, to the power itself: most steps then find
// their bytes in the block at hand. The size of the block follows from the size
// that counts, and needs no field of its own.
std::size_t blockSize(std::size_t size)
{
    constexpr std::size_t exactUpTo = 512;
    constexpr std::size_t quartersUpTo = std::size_t(1) << 18;
    constexpr std::size_t roundedUpTo = SIZE_MAX / 4;  // what is larger fails to be allocated
    if (size <= exactUpTo || size > roundedUpTo)
        return size;
    std::size_t const unit = size <= quartersUpTo ? std::bit_floor(size) / 4 : std::bit_ceil(size);
    return (size + unit - 1) / unit * unit;
}

}  // namespace

char const VarString::noText_[defaultSize] = {};

VarString::VarString(std::size_t size) : VarString()
{
    if (size > PTRDIFF_MAX)
        throw std::bad_alloc();
    size = std::max<std::size_t>(size, 1);
    text_ = new char[blockSize(size)];
    text_[0] = '\0';
    allocated_ = size;
    step_ = size;
}

VarString::VarString(int size) : VarString(static_cast<std::size_t>(size))
{
}

VarString::VarString(char const* text) : VarString()
{
    text = orEmpty(text);
    std::size_t const length = std::strlen(text);
    text_ = new char[blockSize(length + 1)];
    std::memcpy(text_, text, length + 1);
    length_ = length;
    allocated_ = length + 1;
}

VarString::VarString(char const* text, std::size_t length) : VarString()
{
    if (length >= PTRDIFF_MAX)
        throw std::bad_alloc();
    text = orEmpty(text);
    text_ = new char[blockSize(length + 1)];
    auto const end = static_cast<char const*>(std::memchr(text, '\0', length));
    std::size_t const found = end ? end - text : length;
    std::memcpy(text_, text, found);
    std::memset(text_ + found, 0, length + 1 - found);
    length_ = length;
    allocated_ = length + 1;
    irregular_ = found < length;
}

VarString::VarString(char c) : VarString(&c, 1)
{
}

VarString::VarString(VarString const& other) : VarString(other, "", 0)
{
}

VarString::VarString(VarString const& left, char const* text, std::size_t length) : VarString()
{
    std::size_t const view = left.viewLength();
    std::size_t const size = std::max(left.sizeToAdd(length), view + length + 1);
    if (size > defaultSize || view + length > 0) {
        text_ = new char[blockSize(size)];
        std::memcpy(text_, left.text_, view);
        std::memcpy(text_ + view, text, length);
        text_[view + length] = '\0';
    }
    allocated_ = size;
    step_ = left.step_;
    length_ = left.length_ + length;
    if (view < left.length_)
        std::memset(text_ + view + length, 0, left.length_ + 1 - view);
    irregular_ = view < left.length_ || (length == 1 && *text == '\0');
}

VarString& VarString::operator=(VarString const& other)
{
    if (this == &other)
        return *this;
    std::size_t const view = other.viewLength();
    bool const takesOver = other.length_ + 1 >= allocated_;
    std::size_t const size = std::max({takesOver ? other.allocated_ : allocated_, allocated_, view + 1});
    if (size > allocated_ || (text_ == noText() && view > 0))
        enlarge(size, 0);
    if (takesOver)
        step_ = other.step_;
    if (text_ != noText()) {
        std::memcpy(text_, other.text_, view);
        std::memset(text_ + view, 0, view < other.length_ ? other.length_ + 1 - view : 1);
    }
    length_ = other.length_;
    irregular_ = view < length_;
    return *this;
}

VarString& VarString::operator=(char const* text)
{
    text = orEmpty(text);
    std::size_t const length = std::strlen(text);
    std::size_t size = allocated_;
    if (length + 1 >= allocated_) {
        std::size_t const amount = step_ - allocated_ + length;
        size += amount ? amount : step_;
    }
    assign(text, length, size);
    return *this;
}

char& VarString::operator[](std::size_t index)
{
    if (text_ == noText()) {
        enlarge(allocated_, 0);
        std::memset(text_, 0, allocated_);
    }
    irregular_ = 1;  // the caller may write a NUL
    return text_[index];
}

void VarString::add(std::size_t pos, char const* text)
{
    text = orEmpty(text);
    insert(pos, text, std::strlen(text));
}

void VarString::remove(std::size_t pos, std::size_t count)
{
    if (pos >= length_)
        return;
    count = std::min(count, length_ - pos);
    std::memmove(text_ + pos, text_ + pos + count, length_ - pos - count + 1);
    length_ -= count;
}

std::size_t VarString::searchViewLength() const noexcept
{
    auto const end = static_cast<char const*>(std::memchr(text_, '\0', allocated_));
    return end ? end - text_ : allocated_ - 1;
}

bool VarString::holds(char const* text) const noexcept
{
    std::less_equal<char const*> const notBehind;
    return notBehind(text_, text) && notBehind(text, text_ + allocated_);
}

// The size of the buffer that takes `length` more characters.
std::size_t VarString::sizeToAdd(std::size_t length) const noexcept
{
    return length_ + length >= allocated_ ? length_ + length + step_ : allocated_;
}

// Raises the buffer to `size` bytes; the first `kept` characters stay, terminated.
//
// The result is the block that was given up, if any: what points into it stays
// valid until the caller lets go of it.
VarString::Block VarString::enlarge(std::size_t size, std::size_t kept)
{
    if (text_ != noText() && size <= blockSize(allocated_)) {
        allocated_ = size;
        return nullptr;
    }
    Block fresh(new char[blockSize(size)]);
    std::memcpy(fresh.get(), text_, kept);
    std::memset(fresh.get() + kept, 0, kept < length_ ? length_ + 1 - kept : 1);
    Block old(text_ == noText() ? nullptr : text_);
    text_ = fresh.release();
    allocated_ = size;
    return old;
}

void VarString::growForCharacter()
{
    enlarge(length_ + 1 >= allocated_ ? allocated_ + step_ : allocated_, viewLength());
}

void VarString::appendGrowing(char const* text, std::size_t length)
{
    if (length == 0)
        return;
    std::size_t const view = viewLength();
    irregular_ = view < length_;
    std::size_t const size = std::max(sizeToAdd(length), view + length + 1);
    Block old;
    if (size > allocated_ || text_ == noText())
        old = enlarge(size, view);
    std::memcpy(text_ + view, text, length);
    text_[view + length] = '\0';
    length_ += length;
}

// Makes the first `length` bytes of `text`, which may lie in this string, the text in a buffer of `size` bytes.
void VarString::assign(char const* text, std::size_t length, std::size_t size)
{
    Block old;
    if (size > allocated_ || (text_ == noText() && length > 0))
        old = enlarge(size, 0);
    if (text_ != noText()) {
        std::memmove(text_, text, length);
        text_[length] = '\0';
    }
    length_ = length;
    irregular_ = 0;
}

// Assigns a text as if it came in a buffer that just holds it.
void VarString::take(char const* text, std::size_t length)
{
    bool const fits = length + 1 < allocated_;
    assign(text, length, fits ? allocated_ : length + 1);
    if (!fits)
        step_ = defaultSize;
    // What stands behind a NUL is not taken.
    if (auto const end = static_cast<char*>(std::memchr(text_, '\0', length))) {
        std::memset(end, 0, static_cast<std::size_t>(text_ + length - end));
        irregular_ = 1;
    }
}

// The same for an unused string.
void VarString::begin(char const* text, std::size_t length)
{
    std::size_t const size = std::max(allocated_, length + 1);
    text_ = new char[blockSize(size)];
    *zk::copyShort(text_, text, length) = '\0';
    length_ = length;
    allocated_ = size;
}

// Puts `length` characters of `text` in the place of `count` at `pos`, or of those that there are. By
// the sizes it is a removal and then an insertion, but the room is made before anything changes.
// Not for a string in the state after erase().
void VarString::replace(std::size_t pos, std::size_t count, char const* text, std::size_t length)
{
    pos = std::min(pos, length_);
    count = std::min(count, length_ - pos);
    Block copy;
    if (length > 0 && holds(text)) {
        copy.reset(new char[length]);
        std::memcpy(copy.get(), text, length);
        text = copy.get();
    }
    if (irregular_) {  // which bytes are kept depends on where the view ends in between
        VarString changed(allocated_);
        std::memcpy(changed.text_, text_, length_ + 1);
        changed.length_ = length_;
        changed.step_ = step_;
        changed.irregular_ = 1;
        changed.remove(pos, count);
        changed.insert(pos, text, length);
        swap(changed);
        return;
    }
    std::size_t const newLength = length_ - count + length;
    std::size_t const size = length > 0 && newLength >= allocated_ ? newLength + step_ : allocated_;
    if (size > allocated_ || (length > 0 && text_ == noText()))
        enlarge(size, length_);
    if (text_ == noText())
        return;
    std::memmove(text_ + pos + length, text_ + pos + count, length_ - pos - count + 1);
    std::memcpy(text_ + pos, text, length);
    length_ = newLength;
}

void VarString::insert(std::size_t pos, char const* text, std::size_t length)
{
    if (length == 0)
        return;
    Block copy;
    if (holds(text)) {
        copy.reset(new char[length]);
        std::memcpy(copy.get(), text, length);
        text = copy.get();
    }
    pos = std::min(pos, length_);
    std::size_t const view = viewLength();
    bool const erased = view > length_;
    std::size_t size = sizeToAdd(length);
    if (erased)
        size = std::max({size, view + 1, length_ + length + 2});
    if (size > allocated_ || text_ == noText())
        enlarge(size, view);
    std::memmove(text_ + pos + length, text_ + pos, length_ - pos + 1);
    std::memcpy(text_ + pos, text, length);
    length_ += length;
    if (erased && view <= length_)
        text_[length_ + 1] = '\0';  // the character moved to length() stood in view
}
