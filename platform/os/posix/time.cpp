#include "platform/os/posix/time.h"

#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"

#include <sched.h>
#include <time.h>

#include <limits>

using namespace zk::os;

namespace {

constexpr LONGLONG ticksPerMillisecond = ticksPerSecond / 1000;
constexpr LONGLONG secondsPerDay = 24 * 60 * 60;
constexpr LONGLONG ticksPerDay = secondsPerDay * ticksPerSecond;

struct Date {
    LONGLONG year;
    unsigned month;
    unsigned day;
};

// Both count in years that begin with March, in which a leap day comes last,
// from 1 March 1600 on: the beginning of a period of 400 years.
constexpr LONGLONG daysPer400Years = 146097;
constexpr LONGLONG daysFromMarch1600To1601 = 306;

constexpr LONGLONG daysBefore(Date const& date) noexcept
{
    LONGLONG const year = date.year - 1600 - (date.month <= 2);
    unsigned const monthFromMarch = (date.month + 9) % 12;
    LONGLONG const dayOfYear = (153 * monthFromMarch + 2) / 5 + date.day - 1;
    return year * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - daysFromMarch1600To1601;
}

constexpr Date dateOf(LONGLONG daysFrom1601) noexcept
{
    LONGLONG const days = daysFrom1601 + daysFromMarch1600To1601;
    LONGLONG const period = days / daysPer400Years;
    LONGLONG const dayOfPeriod = days % daysPer400Years;
    LONGLONG const yearOfPeriod =
        (dayOfPeriod - dayOfPeriod / 1460 + dayOfPeriod / 36524 - dayOfPeriod / 146096) / 365;
    auto const dayOfYear =
        unsigned(dayOfPeriod - (365 * yearOfPeriod + yearOfPeriod / 4 - yearOfPeriod / 100));
    unsigned const monthFromMarch = (5 * dayOfYear + 2) / 153;
    unsigned const month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    unsigned const day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    return {1600 + period * 400 + yearOfPeriod + (month <= 2), month, day};
}

static_assert(daysBefore({1601, 1, 1}) == 0 &&
              daysBefore({1970, 1, 1}) * secondsPerDay == secondsFrom1601To1970);

SYSTEMTIME partsOf(LONGLONG ticks) noexcept
{
    LONGLONG const days = ticks / ticksPerDay;
    LONGLONG const milliseconds = ticks % ticksPerDay / ticksPerMillisecond;
    LONGLONG const seconds = milliseconds / 1000;
    Date const date = dateOf(days);
    SYSTEMTIME parts;
    parts.wYear = WORD(date.year);
    parts.wMonth = WORD(date.month);
    parts.wDayOfWeek = WORD((days + 1) % 7);  // 1 January 1601 was a Monday
    parts.wDay = WORD(date.day);
    parts.wHour = WORD(seconds / 3600);
    parts.wMinute = WORD(seconds / 60 % 60);
    parts.wSecond = WORD(seconds % 60);
    parts.wMilliseconds = WORD(milliseconds % 1000);
    return parts;
}

bool isTimeOfDay(SYSTEMTIME const& parts) noexcept
{
    return parts.wHour < 24 && parts.wMinute < 60 && parts.wSecond < 60 && parts.wMilliseconds < 1000;
}

bool isDate(SYSTEMTIME const& parts) noexcept
{
    constexpr WORD lastYear = 30828;  // ends within it, as file times do
    if (parts.wYear < 1601 || parts.wYear > lastYear || parts.wMonth < 1 || parts.wMonth > 12 ||
        parts.wDay < 1)
        return false;
    // The calendar has the day if it comes back from the count of days as it was.
    Date const date = dateOf(daysBefore({parts.wYear, parts.wMonth, parts.wDay}));
    return date.month == parts.wMonth && date.day == parts.wDay;
}

timespec now(clockid_t clock) noexcept
{
    timespec time = {};
    systemCalls().clock_gettime(clock, &time);
    return time;
}

// Local time minus UTC, as it is now.
LONGLONG zoneDistance() noexcept
{
    time_t const seconds = now(CLOCK_REALTIME).tv_sec;
    tm local;
    tzset();
    return localtime_r(&seconds, &local) ? local.tm_gmtoff * ticksPerSecond : 0;
}

FILETIME moved(FILETIME const& time, LONGLONG distance) noexcept
{
    ULONGLONG const ticks = ticksOf(time);
    ULONGLONG const result = ticks + ULONGLONG(distance);
    if (distance < 0 && result > ticks)
        return fileTimeOfTicks(0);
    if (distance > 0 && result < ticks)
        return fileTimeOfTicks(UINT64_MAX);
    return fileTimeOfTicks(result);
}

LONGLONG ticksOfCounter(clockid_t clock) noexcept
{
    timespec const time = now(clock);
    return time.tv_sec * ticksPerSecond + time.tv_nsec / 100;
}

}  // namespace

BOOL WINAPI FileTimeToSystemTime(FILETIME const* time, LPSYSTEMTIME parts) noexcept
{
    ULONGLONG const ticks = ticksOf(*time);
    if (ticks > ULONGLONG(INT64_MAX))
        return report(ERROR_INVALID_PARAMETER);
    *parts = partsOf(LONGLONG(ticks));
    return TRUE;
}

BOOL WINAPI SystemTimeToFileTime(SYSTEMTIME const* parts, LPFILETIME time) noexcept
{
    if (!isDate(*parts) || !isTimeOfDay(*parts))
        return report(ERROR_INVALID_PARAMETER);
    ULONGLONG const days = ULONGLONG(daysBefore({parts->wYear, parts->wMonth, parts->wDay}));
    ULONGLONG const seconds = parts->wHour * 3600u + parts->wMinute * 60u + parts->wSecond;
    ULONGLONG const ticks =
        days * ticksPerDay + seconds * ticksPerSecond + parts->wMilliseconds * ULONGLONG(ticksPerMillisecond);
    if (ticks > ULONGLONG(INT64_MAX))
        return report(ERROR_INVALID_PARAMETER);
    *time = fileTimeOfTicks(ticks);
    return TRUE;
}

BOOL WINAPI FileTimeToLocalFileTime(FILETIME const* time, LPFILETIME local) noexcept
{
    *local = moved(*time, zoneDistance());
    return TRUE;
}

BOOL WINAPI LocalFileTimeToFileTime(FILETIME const* local, LPFILETIME time) noexcept
{
    *time = moved(*local, -zoneDistance());
    return TRUE;
}

LONG WINAPI CompareFileTime(FILETIME const* first, FILETIME const* second) noexcept
{
    ULONGLONG const left = ticksOf(*first);
    ULONGLONG const right = ticksOf(*second);
    return (left > right) - (left < right);
}

void WINAPI GetSystemTime(LPSYSTEMTIME time) noexcept
{
    *time = partsOf(LONGLONG(ticksOf(fileTimeOf(now(CLOCK_REALTIME)))));
}

void WINAPI GetLocalTime(LPSYSTEMTIME time) noexcept
{
    FILETIME const local = moved(fileTimeOf(now(CLOCK_REALTIME)), zoneDistance());
    *time = partsOf(LONGLONG(ticksOf(local)));
}

void WINAPI GetSystemTimeAsFileTime(LPFILETIME time) noexcept
{
    *time = fileTimeOf(now(CLOCK_REALTIME));
}

BOOL WINAPI QueryPerformanceCounter(LARGE_INTEGER* ticks) noexcept
{
    ticks->QuadPart = ticksOfCounter(CLOCK_MONOTONIC);
    return TRUE;
}

BOOL WINAPI QueryPerformanceFrequency(LARGE_INTEGER* perSecond) noexcept
{
    perSecond->QuadPart = ticksPerSecond;
    return TRUE;
}

DWORD WINAPI GetTickCount() noexcept
{
    return DWORD(GetTickCount64());
}

ULONGLONG WINAPI GetTickCount64() noexcept
{
    return ULONGLONG(ticksOfCounter(CLOCK_BOOTTIME) / ticksPerMillisecond);
}

void WINAPI Sleep(DWORD milliseconds) noexcept
{
    if (milliseconds == 0) {
        sched_yield();
        return;
    }
    // A moment to sleep until is not moved by a signal.
    timespec end = now(CLOCK_MONOTONIC);
    LONGLONG const nanoseconds = end.tv_nsec + milliseconds % 1000 * LONGLONG(1'000'000);
    end.tv_sec += milliseconds / 1000 + nanoseconds / 1'000'000'000;
    end.tv_nsec = nanoseconds % 1'000'000'000;
    if (milliseconds == INFINITE)
        end.tv_sec = std::numeric_limits<time_t>::max();
    while (systemCalls().clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) { }
}
