#include "platform/os/posix/calendar.h"

#include <cerrno>
#include <initializer_list>

namespace {

// The end of the year 3000 in the zone farthest west.
constexpr __time64_t lastTime = 32535291647;
constexpr int lastYear = 3000 - 1900;

int split(tm* calendar, __time64_t const* time, tm* (*convert)(time_t const*, tm*)) noexcept
{
    if (!calendar)
        return EINVAL;
    if (time && *time >= 0 && *time <= lastTime && convert(time, calendar))
        return 0;
    *calendar = tm();
    for (int* field :
         {&calendar->tm_sec, &calendar->tm_min, &calendar->tm_hour, &calendar->tm_mday, &calendar->tm_mon,
          &calendar->tm_year, &calendar->tm_wday, &calendar->tm_yday, &calendar->tm_isdst})
        *field = -1;
    return EINVAL;
}

}  // namespace

int _localtime64_s(tm* calendar, __time64_t const* time) noexcept
{
    tzset();  // localtime_r need not look at TZ
    return split(calendar, time, localtime_r);
}

int _gmtime64_s(tm* calendar, __time64_t const* time) noexcept
{
    return split(calendar, time, gmtime_r);
}

__time64_t _mktime64(tm* calendar) noexcept
{
    if (!calendar)
        return -1;
    tm filled = *calendar;
    time_t const time = mktime(&filled);
    if (time < 0 || filled.tm_year > lastYear)
        return -1;
    *calendar = filled;
    return time;
}
