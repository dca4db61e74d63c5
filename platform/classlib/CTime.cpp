#include "platform/classlib/CTime.h"

#include "platform/classlib/clock.h"

namespace {

// FILETIME counts tenths of a microsecond from 1601 on.
constexpr std::uint64_t ticksPerSecond = 10000000;
constexpr std::uint64_t secondsFrom1601To1970 = 11644473600;

std::time_t timeOf(FILETIME const& file)
{
    std::uint64_t const ticks = std::uint64_t(file.dwHighDateTime) << 32 | file.dwLowDateTime;
    std::uint64_t const seconds = ticks / ticksPerSecond;
    return seconds < secondsFrom1601To1970 ? 0 : static_cast<std::time_t>(seconds - secondsFrom1601To1970);
}

CTime localTime(SYSTEMTIME const& local, int daylight)
{
    if (local.wYear < 1900)
        return CTime();
    return CTime(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond, daylight);
}

// One part of a time in the local zone, or 0.
int part(CTime time, int tm::*field, int offset)
{
    tm calendar;
    return time.GetLocalTm(&calendar) ? calendar.*field + offset : 0;
}

// A difference that wraps around: what no calendar holds may be asked for too.
int less(int number, int offset)
{
    return static_cast<int>(static_cast<unsigned int>(number) - static_cast<unsigned int>(offset));
}

tm* placeFor(tm* calendar)
{
    thread_local tm own;
    return calendar ? calendar : &own;
}

}  // namespace

CTime CTime::GetCurrentTime() noexcept
{
    return CTime(zk::currentTime());
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int daylight) noexcept
{
    tm calendar = {};
    calendar.tm_year = less(year, 1900);
    calendar.tm_mon = less(month, 1);
    calendar.tm_mday = day;
    calendar.tm_hour = hour;
    calendar.tm_min = minute;
    calendar.tm_sec = second;
    calendar.tm_isdst = daylight;
    time_ = _mktime64(&calendar);
}

CTime::CTime(SYSTEMTIME const& local, int daylight) noexcept : time_(localTime(local, daylight).time_)
{
}

CTime::CTime(FILETIME const& utc, int) noexcept : time_(timeOf(utc))
{
}

int CTime::GetYear() const noexcept
{
    return part(*this, &tm::tm_year, 1900);
}

int CTime::GetMonth() const noexcept
{
    return part(*this, &tm::tm_mon, 1);
}

int CTime::GetDay() const noexcept
{
    return part(*this, &tm::tm_mday, 0);
}

int CTime::GetHour() const noexcept
{
    return part(*this, &tm::tm_hour, 0);
}

int CTime::GetMinute() const noexcept
{
    return part(*this, &tm::tm_min, 0);
}

int CTime::GetSecond() const noexcept
{
    return part(*this, &tm::tm_sec, 0);
}

int CTime::GetDayOfWeek() const noexcept
{
    return part(*this, &tm::tm_wday, 1);
}

tm* CTime::GetLocalTm(tm* calendar) const noexcept
{
    __time64_t const time = time_;
    tm* const place = placeFor(calendar);
    return _localtime64_s(place, &time) == 0 ? place : nullptr;
}

tm* CTime::GetGmtTm(tm* calendar) const noexcept
{
    __time64_t const time = time_;
    tm* const place = placeFor(calendar);
    return _gmtime64_s(place, &time) == 0 ? place : nullptr;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& local) const noexcept
{
    tm calendar;
    if (!GetLocalTm(&calendar))
        return false;
    local.wYear = static_cast<WORD>(calendar.tm_year + 1900);
    local.wMonth = static_cast<WORD>(calendar.tm_mon + 1);
    local.wDayOfWeek = static_cast<WORD>(calendar.tm_wday);
    local.wDay = static_cast<WORD>(calendar.tm_mday);
    local.wHour = static_cast<WORD>(calendar.tm_hour);
    local.wMinute = static_cast<WORD>(calendar.tm_min);
    local.wSecond = static_cast<WORD>(calendar.tm_sec);
    local.wMilliseconds = 0;
    return true;
}
