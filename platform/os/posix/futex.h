// futex.h: sleeping on a 32-bit word until another thread changes it, and until when.
//
//   Deadline const deadline(500);                            // from now on
//   while (word.load() == 0)
//       if (sleepOn(word, 0, Sharing::ofProcess, deadline) == Wake::timedOut)
//           return WAIT_TIMEOUT;
//
// Times are those of the monotonic clock: setting the system's clock moves no deadline.
#pragma once

#include "platform/os/posix/types.h"

#include <time.h>

#include <atomic>
#include <cstdint>

namespace zk::os {

/// A moment to give up at, or never for INFINITE.
class Deadline {
public:
    explicit Deadline(DWORD milliseconds) noexcept;

    /// The moment, or null for never.
    timespec const* moment() const noexcept { return isNever_ ? nullptr : &moment_; }

private:
    timespec moment_{};
    bool const isNever_;
};

/// Who may sleep on a word.
enum class Sharing { ofProcess, betweenProcesses };

enum class Wake {
    maybe,     ///< woken, interrupted, or the word had changed: look at it
    timedOut,  ///< the deadline has passed
};

/// Sleeps as long as `word` holds `expected`, until a wake-up or the deadline.
Wake sleepOn(std::atomic<std::uint32_t>& word, std::uint32_t expected, Sharing sharing,
             Deadline const& deadline) noexcept;

/// Wakes up to `count` sleepers of a word.
void wake(std::atomic<std::uint32_t>& word, Sharing sharing, int count) noexcept;

inline constexpr int everySleeper = 0x7FFFFFFF;

}  // namespace zk::os
