// CxStringBuff.h: a text that grows while it is written, and is then handed over without a copy.
//
//   CxStringBuff buffer;
//   buffer.append("2024-05-06");
//   buffer.append(' ');
//   char* const text = buffer.take();       // "2024-05-06 "; the buffer is empty
//   std::free(text);
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <cstring>
#include <string_view>

/// Memory comes with the first byte, 1024 bytes of it, and is doubled until what is added fits with
/// a terminator, which is there at all times. Without memory an addition is left out.
class ZK_UTIL_API CxStringBuff {
public:
    CxStringBuff() = default;
    ~CxStringBuff();
    CxStringBuff(CxStringBuff const&) = delete;
    CxStringBuff& operator=(CxStringBuff const&) = delete;

    /// Adds bytes, NULs too. Gives whether there was memory; 2147483646 bytes are the most.
    bool append(std::string_view bytes)
    {
        if (bytes.size() >= static_cast<std::size_t>(capacity_ - length_) && !grow(bytes.size()))
            return false;
        if (!bytes.empty())
            std::memcpy(text_ + length_, bytes.data(), bytes.size());
        length_ += static_cast<std::int32_t>(bytes.size());
        text_[length_] = '\0';
        return true;
    }

    bool append(char byte) { return append(std::string_view(&byte, 1)); }

    /// Adds `count` times the same byte.
    bool append(std::size_t count, char byte);

    std::int32_t length() const noexcept { return length_; }
    std::int32_t capacity() const noexcept { return capacity_; }

    /// The text, NUL-terminated; "" if nothing was added yet.
    char const* text() const noexcept { return text_ ? text_ : ""; }
    std::string_view view() const noexcept { return {text(), static_cast<std::size_t>(length_)}; }

    /// Cuts the text to `length` bytes; does nothing if it is no longer than that.
    void truncate(std::int32_t length) noexcept;

    /// Hands the text to the caller, who frees it with std::free(), and leaves the buffer empty.
    /// An empty buffer gives an empty text; null only without memory.
    char* take() noexcept;

private:
    bool grow(std::size_t addition) noexcept;

    std::int32_t length_ = 0;
    std::int32_t capacity_ = 0;
    char* text_ = nullptr;
};
