// clock.h: the time of day, which a test can fix.
//
//   zk::ScopedClock clock(1000000000);     // 2001-09-09 01:46:40 UTC
//   CTime::GetCurrentTime().GetTime();     // 1000000000
//   clock.advance(60);
//   zk::currentTime();                     // 1000000060
#pragma once

#include "platform/os/exportMacro.h"

#include <cstdint>
#include <ctime>

namespace zk {

/// Seconds since 1970 in UTC, by the clock in force.
ZK_UTIL_API std::time_t currentTime() noexcept;

/// Fixes the time of day for the life of the object.
///
/// A hook for tests. Process-wide; objects must end in the reverse order of their making.
class ZK_UTIL_API ScopedClock {
public:
    explicit ScopedClock(std::time_t time) noexcept;
    ~ScopedClock();
    ScopedClock(ScopedClock const&) = delete;
    ScopedClock& operator=(ScopedClock const&) = delete;

    void set(std::time_t time) noexcept;
    void advance(std::time_t seconds) noexcept;

private:
    std::int64_t previous_;
};

}  // namespace zk
