// outOfMemory.h: how a call ends that finds no memory for its work.
//
//   return report(guarded([&] { return copy(from, to); }));     // FALSE and ERROR_NOT_ENOUGH_MEMORY
//
// The calls of this folder throw nothing. One whose work allocates does it in
// here; what the work holds in objects is given back on the way out.
#pragma once

#include "platform/os/posix/lastError.h"

#include <new>

namespace zk::os {

/// Runs `work` and gives its error number; ERROR_NOT_ENOUGH_MEMORY where it ran out of memory.
template <class Work>
DWORD guarded(Work&& work) noexcept
{
    try {
        return work();
    } catch (std::bad_alloc const&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

}  // namespace zk::os
