#include "platform/os/os.h"
#include "tests/support/ScopedTimeZone.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <string>

namespace {

ULONGLONG ticks(FILETIME const& time)
{
    return ULONGLONG(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

FILETIME fileTime(ULONGLONG ticks)
{
    return {DWORD(ticks), DWORD(ticks >> 32)};
}

std::string text(SYSTEMTIME const& time)
{
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%u-%u-%u (%u) %u:%u:%u.%u", time.wYear, time.wMonth, time.wDay,
                  time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    return buffer;
}

constexpr ULONGLONG ticksPerSecond = 10'000'000;
constexpr ULONGLONG ticksPerDay = 24 * 60 * 60 * ticksPerSecond;

struct Moment {
    ULONGLONG ticks;
    char const* text;
};

constexpr Moment moments[] = {
    {0, "1601-1-1 (1) 0:0:0.0"},
    {ticksPerDay - 10'000, "1601-1-1 (1) 23:59:59.999"},
    {116'444'736'000'000'000, "1970-1-1 (4) 0:0:0.0"},
    {125'911'583'999'990'000, "1999-12-31 (5) 23:59:59.999"},
    {125'963'423'990'000'000, "2000-2-29 (2) 23:59:59.0"},
    {133'536'384'000'000'000, "2024-2-29 (4) 0:0:0.0"},
    {INT64_MAX / 10'000 * 10'000, "30828-9-14 (4) 2:48:5.477"},
};

// The distance of the local zone, as the C library tells it for this moment.
LONGLONG secondsAheadOfUtc()
{
    __time64_t const now = std::time(nullptr);
    std::tm local, utc;
    EXPECT_EQ(_localtime64_s(&local, &now), 0);
    EXPECT_EQ(_gmtime64_s(&utc, &now), 0);
    int const days = local.tm_year != utc.tm_year ? local.tm_year - utc.tm_year : local.tm_yday - utc.tm_yday;
    return ((days * 24LL + local.tm_hour - utc.tm_hour) * 60 + local.tm_min - utc.tm_min) * 60 +
        local.tm_sec - utc.tm_sec;
}

}  // namespace

TEST(FileTimes, areTakenApart)
{
    for (Moment const& moment : moments) {
        FILETIME const time = fileTime(moment.ticks);
        SYSTEMTIME parts;
        std::memset(&parts, 0xAB, sizeof parts);

        EXPECT_TRUE(FileTimeToSystemTime(&time, &parts));

        EXPECT_EQ(text(parts), moment.text);
    }
}

TEST(FileTimes, arePutTogether)
{
    for (Moment const& moment : moments) {
        FILETIME const time = fileTime(moment.ticks);
        SYSTEMTIME parts;
        FileTimeToSystemTime(&time, &parts);
        parts.wDayOfWeek = 77;  // not looked at
        FILETIME back = {7, 7};

        EXPECT_TRUE(SystemTimeToFileTime(&parts, &back)) << moment.text;

        EXPECT_EQ(ticks(back), moment.ticks) << moment.text;
    }
}

TEST(FileTimes, ofAllDaysComeBack)
{
    for (ULONGLONG day = 0; day < 300'000; ++day) {  // up to the year 2422
        FILETIME const time = fileTime(day * ticksPerDay);
        SYSTEMTIME parts;
        FILETIME back;
        ASSERT_TRUE(FileTimeToSystemTime(&time, &parts));
        ASSERT_TRUE(SystemTimeToFileTime(&parts, &back)) << text(parts);
        ASSERT_EQ(ticks(back), ticks(time)) << text(parts);
        ASSERT_EQ(parts.wDayOfWeek, (day + 1) % 7) << text(parts);
    }
}

TEST(FileTimes, thatAreNoneAreRefused)
{
    FILETIME const none = fileTime(ULONGLONG(INT64_MAX) + 1);
    SYSTEMTIME parts;
    EXPECT_FAILS(FileTimeToSystemTime(&none, &parts), ERROR_INVALID_PARAMETER);

    SYSTEMTIME const rows[] = {
        {1600, 12, 0, 31, 0, 0, 0, 0},  {2023, 0, 0, 1, 0, 0, 0, 0},  {2023, 13, 0, 1, 0, 0, 0, 0},
        {2023, 1, 0, 0, 0, 0, 0, 0},    {2023, 1, 0, 32, 0, 0, 0, 0}, {2023, 4, 0, 31, 0, 0, 0, 0},
        {2023, 1, 0, 1, 24, 0, 0, 0},   {2023, 1, 0, 1, 0, 60, 0, 0}, {2023, 1, 0, 1, 0, 0, 60, 0},
        {2023, 1, 0, 1, 0, 0, 0, 1000}, {65535, 1, 0, 1, 0, 0, 0, 0}, {2023, 2, 0, 30, 0, 0, 0, 0},
    };
    for (SYSTEMTIME const& row : rows) {
        FILETIME time = {7, 7};
        SCOPED_TRACE(text(row));
        EXPECT_FAILS(SystemTimeToFileTime(&row, &time), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ticks(time), ticks({7, 7}));
    }
}

TEST(FileTimes, areCompared)
{
    FILETIME const early = {0xFFFFFFFF, 1};
    FILETIME const late = {0, 2};

    EXPECT_EQ(CompareFileTime(&early, &late), -1);
    EXPECT_EQ(CompareFileTime(&late, &early), 1);
    EXPECT_EQ(CompareFileTime(&late, &late), 0);
}

TEST(FileTimes, moveToTheLocalZoneAndBack)
{
    FILETIME const time = fileTime(125'963'423'990'000'000);
    FILETIME local, back;

    EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
    EXPECT_TRUE(LocalFileTimeToFileTime(&local, &back));

    EXPECT_EQ(ticks(back), ticks(time));
    EXPECT_EQ(LONGLONG(ticks(local)) - LONGLONG(ticks(time)), secondsAheadOfUtc() * LONGLONG(ticksPerSecond));
}

TEST(Clock, tellsTheTimeInUtcInThreeWays)
{
    FILETIME before, fromParts, after;
    SYSTEMTIME parts;

    GetSystemTimeAsFileTime(&before);
    GetSystemTime(&parts);
    GetSystemTimeAsFileTime(&after);

    ASSERT_TRUE(SystemTimeToFileTime(&parts, &fromParts));
    EXPECT_GE(ticks(fromParts) + 10'000, ticks(before)) << "parts end at milliseconds";
    EXPECT_LE(ticks(fromParts), ticks(after) + 10'000);
    LONGLONG const seconds = LONGLONG(ticks(after) / ticksPerSecond) - 11'644'473'600;
    EXPECT_NEAR(double(seconds), double(std::time(nullptr)), 2.0);
}

TEST(Clock, tellsTheLocalTimeWithTheZonesDistance)
{
    FILETIME utc, local, fromParts;
    SYSTEMTIME parts;

    GetSystemTimeAsFileTime(&utc);
    GetLocalTime(&parts);

    FileTimeToLocalFileTime(&utc, &local);
    ASSERT_TRUE(SystemTimeToFileTime(&parts, &fromParts));
    EXPECT_NEAR(double(ticks(fromParts)), double(ticks(local)), 5.0 * ticksPerSecond);
}

TEST(Counters, countInUnitsOf100Nanoseconds)
{
    LARGE_INTEGER frequency, first, second;

    EXPECT_TRUE(QueryPerformanceFrequency(&frequency));
    EXPECT_TRUE(QueryPerformanceCounter(&first));
    EXPECT_TRUE(QueryPerformanceCounter(&second));

    EXPECT_EQ(frequency.QuadPart, 10'000'000);
    EXPECT_GT(first.QuadPart, 0);
    EXPECT_GE(second.QuadPart, first.QuadPart);
}

TEST(Counters, agreeOnTheMilliseconds)
{
    ULONGLONG const before = GetTickCount64();
    DWORD const half = GetTickCount();
    ULONGLONG const after = GetTickCount64();

    EXPECT_LE(DWORD(half - DWORD(before)), DWORD(after - before));
}

TEST(Sleeping, lastsAtLeastAsLongAsAskedFor)
{
    LARGE_INTEGER before, after;
    QueryPerformanceCounter(&before);

    Sleep(20);

    QueryPerformanceCounter(&after);
    EXPECT_GE(after.QuadPart - before.QuadPart, 190'000)
        << "clocks of the other target may be a little apart";
    Sleep(0);
}
