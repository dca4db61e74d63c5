// textOutput.h: collects a text, on the stack as long as it is short.
#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace zk {

/// Collects text on the stack, and on the heap once that is full. A text longer than an int counts is std::bad_alloc.
class TextOutput {
public:
    TextOutput() = default;
    TextOutput(TextOutput const&) = delete;
    TextOutput& operator=(TextOutput const&) = delete;
    ~TextOutput()
    {
        if (begin_ != local_)
            ::operator delete(begin_);
    }

    void append(char const* text, std::size_t length)
    {
        if (length == 0)
            return;
        std::memcpy(room(length), text, length);
        used_ += length;
    }
    void append(std::string_view text) { append(text.data(), text.size()); }
    void append(char character)
    {
        *room(1) = character;
        ++used_;
    }
    void fill(char character, std::size_t count)
    {
        if (count == 0)
            return;
        std::memset(room(count), static_cast<unsigned char>(character), count);
        used_ += count;
    }
    /// Where the next `length` bytes go, for a caller that then calls `advance`.
    char* room(std::size_t length)
    {
        if (length > size_ - used_)
            grow(length);
        return begin_ + used_;
    }
    void advance(std::size_t length) noexcept { used_ += length; }

    std::string_view text() const noexcept { return {begin_, used_}; }

private:
    void grow(std::size_t more)
    {
        if (more >= INT_MAX - used_)
            throw std::bad_alloc();
        std::size_t const size = std::max(used_ + more, size_ * 2);
        char* const block = static_cast<char*>(::operator new(size));
        std::memcpy(block, begin_, used_);
        if (begin_ != local_)
            ::operator delete(begin_);
        begin_ = block;
        size_ = size;
    }

    char local_[512];
    char* begin_ = local_;
    std::size_t used_ = 0;
    std::size_t size_ = sizeof local_;
};

}  // namespace zk
