// reserve.h: room in a string for a length that was worked out, whatever it came to.
#pragma once

#include "platform/classlib/CString.h"

#include <climits>
#include <cstddef>
#include <new>

namespace zk {

/// Makes room for `length` characters; std::bad_alloc for more than a CString can hold.
inline void reserve(CString& text, std::size_t length)
{
    if (length > std::size_t(INT_MAX))
        throw std::bad_alloc();
    text.Preallocate(int(length));
}

}  // namespace zk
