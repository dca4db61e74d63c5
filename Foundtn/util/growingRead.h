// growingRead.h: reads a text of unknown length from a call that takes a buffer.
//
//   CString path;
//   zk::readEnvironmentVariable("Path", path);      // the length; 0 if there is none
#pragma once

#include "platform/classlib/CString.h"
#include "platform/os/os.h"

#include <limits>

namespace zk {

/// Fills a text from a call that takes a buffer and its room and gives a count, with ever more room
/// until `isEnough(count, capacity)`. Gives the last count.
template <class Read, class IsEnough>
DWORD readGrowing(CString& text, Read read, IsEnough isEnough)
{
    constexpr int firstCapacity = 260;
    constexpr int growth = 4;
    for (int capacity = firstCapacity;; capacity *= growth) {
        DWORD const count = read(text.GetBuffer(capacity), static_cast<DWORD>(capacity) + 1);
        bool const isLast = capacity > std::numeric_limits<int>::max() / growth;
        if (isLast || isEnough(count, static_cast<DWORD>(capacity))) {
            DWORD const most = static_cast<DWORD>(capacity);
            text.ReleaseBuffer(static_cast<int>(count < most ? count : most));
            return count;
        }
        text.ReleaseBuffer(0);
    }
}

/// A variable of the process environment as it stands; the count is 0 for an absent and an empty one.
inline DWORD readEnvironmentVariable(char const* name, CString& value)
{
    return readGrowing(
        value, [&](char* buffer, DWORD room) { return ::GetEnvironmentVariableA(name, buffer, room); },
        [](DWORD read, DWORD capacity) { return read <= capacity; });
}

}  // namespace zk
