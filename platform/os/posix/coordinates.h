// coordinates.h: sums of coordinates that any caller may give.
//
//   wrappedSum(LONG_MAX, 1);       // LONG_MIN: how points move
//   clampedSum(LONG_MAX, 1);       // LONG_MAX: where windows end
#pragma once

#include "platform/os/posix/types.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zk::os {

inline LONG wrappedSum(LONG left, LONG right) noexcept
{
    return static_cast<LONG>(static_cast<ULONG>(left) + static_cast<ULONG>(right));
}

inline LONG wrappedDifference(LONG left, LONG right) noexcept
{
    return static_cast<LONG>(static_cast<ULONG>(left) - static_cast<ULONG>(right));
}

inline LONG clampedToLong(std::int64_t value) noexcept
{
    using Limits = std::numeric_limits<LONG>;
    return static_cast<LONG>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

inline LONG clampedSum(LONG left, LONG right) noexcept
{
    return clampedToLong(std::int64_t(left) + right);
}

inline LONG clampedDifference(LONG left, LONG right) noexcept
{
    return clampedToLong(std::int64_t(left) - right);
}

}  // namespace zk::os
