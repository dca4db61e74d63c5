#include "platform/os/nativeSeparator.h"

#include <atomic>

namespace zk::os {
namespace {

#ifdef _WIN32
constinit std::atomic<char> separator = '\\';
#else
constinit std::atomic<char> separator = '/';
#endif

}  // namespace

char nativeSeparator() noexcept
{
    return separator.load(std::memory_order_relaxed);
}

ScopedNativeSeparator::ScopedNativeSeparator(char other) noexcept : previous_(separator.exchange(other))
{
}

ScopedNativeSeparator::~ScopedNativeSeparator()
{
    separator.store(previous_);
}

}  // namespace zk::os
