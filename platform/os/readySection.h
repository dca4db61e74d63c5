// readySection.h: a critical section that needs no initialisation call.
//
//   CRITICAL_SECTION section = zk::os::readySection();
//   EnterCriticalSection(&section);
#pragma once

#include "platform/os/os.h"

namespace zk::os {

/// A free section, owned by nobody and owning nothing: it may be copied while it is free, and forgotten.
inline CRITICAL_SECTION readySection() noexcept
{
#ifdef _WIN32
    // No debugger's record, and the count of a section that nobody is in.
    return {reinterpret_cast<PRTL_CRITICAL_SECTION_DEBUG>(-1), -1, 0, nullptr, nullptr, 0};
#else
    return {};
#endif
}

}  // namespace zk::os
