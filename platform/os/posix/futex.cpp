#include "platform/os/posix/futex.h"

#include "platform/os/posix/systemCalls.h"

#include <linux/futex.h>

#include <cerrno>

namespace zk::os {
namespace {

int operation(int what, Sharing sharing) noexcept
{
    return sharing == Sharing::ofProcess ? what | FUTEX_PRIVATE_FLAG : what;
}

// The kernel takes the plain word; std::atomic adds nothing to it here.
static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t));

std::uint32_t* plain(std::atomic<std::uint32_t>& word) noexcept
{
    return reinterpret_cast<std::uint32_t*>(&word);
}

}  // namespace

Deadline::Deadline(DWORD milliseconds) noexcept : isNever_(milliseconds == INFINITE)
{
    if (isNever_)
        return;
    clock_gettime(CLOCK_MONOTONIC, &moment_);
    moment_.tv_sec += milliseconds / 1000;
    moment_.tv_nsec += long(milliseconds % 1000) * 1000000;
    if (moment_.tv_nsec >= 1000000000) {
        moment_.tv_nsec -= 1000000000;
        ++moment_.tv_sec;
    }
}

Wake sleepOn(std::atomic<std::uint32_t>& word, std::uint32_t expected, Sharing sharing,
             Deadline const& deadline) noexcept
{
    long const result = systemCalls().futex(plain(word), operation(FUTEX_WAIT_BITSET, sharing), expected,
                                            deadline.moment(), nullptr, FUTEX_BITSET_MATCH_ANY);
    return result == -1 && errno == ETIMEDOUT ? Wake::timedOut : Wake::maybe;
}

void wake(std::atomic<std::uint32_t>& word, Sharing sharing, int count) noexcept
{
    systemCalls().futex(plain(word), operation(FUTEX_WAKE, sharing), std::uint32_t(count), nullptr, nullptr,
                        0);
}

}  // namespace zk::os
