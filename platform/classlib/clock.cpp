#include "platform/classlib/clock.h"

#include <atomic>
#include <limits>

namespace zk {
namespace {

constexpr std::int64_t systemClock = std::numeric_limits<std::int64_t>::min();
constinit std::atomic<std::int64_t> fixedTime = systemClock;

}  // namespace

std::time_t currentTime() noexcept
{
    std::int64_t const fixed = fixedTime.load(std::memory_order_relaxed);
    return fixed == systemClock ? std::time(nullptr) : static_cast<std::time_t>(fixed);
}

ScopedClock::ScopedClock(std::time_t time) noexcept : previous_(fixedTime.exchange(time))
{
}

ScopedClock::~ScopedClock()
{
    fixedTime.store(previous_);
}

void ScopedClock::set(std::time_t time) noexcept
{
    fixedTime.store(time);
}

void ScopedClock::advance(std::time_t seconds) noexcept
{
    fixedTime.fetch_add(seconds);
}

}  // namespace zk
