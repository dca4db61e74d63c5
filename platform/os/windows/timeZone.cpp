#include "platform/os/timeZone.h"

#include <ctime>

namespace zk::os {

long secondsWestOfGreenwich() noexcept
{
    return _timezone;
}

bool hasDaylightSavingTime() noexcept
{
    return _daylight != 0;
}

}  // namespace zk::os
