// copyShort.h: copies texts that are mostly short.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zk {

/// Copies `length` bytes and gives their end in `out`. A call of memcpy costs more than most texts do.
inline char* copyShort(char* out, char const* text, std::size_t length)
{
    std::uint64_t head, tail;
    if (length > 2 * sizeof head) {
        std::memcpy(out, text, length);
    } else if (length >= sizeof head) {
        std::memcpy(&head, text, sizeof head);
        std::memcpy(&tail, text + length - sizeof tail, sizeof tail);
        std::memcpy(out, &head, sizeof head);
        std::memcpy(out + length - sizeof tail, &tail, sizeof tail);
    } else if (length >= sizeof head / 2) {
        std::uint32_t first, last;
        std::memcpy(&first, text, sizeof first);
        std::memcpy(&last, text + length - sizeof last, sizeof last);
        std::memcpy(out, &first, sizeof first);
        std::memcpy(out + length - sizeof last, &last, sizeof last);
    } else {
        for (std::size_t i = 0; i < length; ++i)
            out[i] = text[i];
    }
    return out + length;
}

}  // namespace zk
