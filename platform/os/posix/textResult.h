// textResult.h: hands a text out in the manner of the calls that fill a caller's buffer.
//
//   char buffer[4];
//   giveText("abc", 4, buffer);     // 3: the length, with the text and its NUL in place
//   giveText("abcd", 4, buffer);    // 5: the room it needs; the buffer is as it was
#pragma once

#include "platform/os/posix/types.h"

#include <cstring>
#include <string_view>

namespace zk::os {

inline DWORD giveText(std::string_view text, DWORD room, char* buffer) noexcept
{
    if (!buffer || text.size() >= room)
        return DWORD(text.size() + 1);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return DWORD(text.size());
}

}  // namespace zk::os
