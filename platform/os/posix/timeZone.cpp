#include "platform/os/timeZone.h"

#include <ctime>

namespace zk::os {

long secondsWestOfGreenwich() noexcept
{
    return ::timezone;
}

bool hasDaylightSavingTime() noexcept
{
    return ::daylight != 0;
}

}  // namespace zk::os
