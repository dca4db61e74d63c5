#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedTimeZone.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

using namespace zk::os;
using namespace zk::test;

namespace {

ULONGLONG ticks(FILETIME const& time)
{
    return ULONGLONG(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

FILETIME fileTime(ULONGLONG ticks)
{
    return {DWORD(ticks), DWORD(ticks >> 32)};
}

constexpr ULONGLONG hour = 3600ULL * 10'000'000;

}  // namespace

TEST(InterruptedSleep, goesOnToItsEnd)
{
    FaultInjector<&SystemCalls::clock_nanosleep> const signals({.error = EINTR, .times = 5});
    LARGE_INTEGER before, after;
    QueryPerformanceCounter(&before);

    Sleep(5);

    QueryPerformanceCounter(&after);
    EXPECT_EQ(signals.calls(), 6);
    EXPECT_GE(after.QuadPart - before.QuadPart, 50'000);
}

TEST(LocalFileTimes, areAheadByTheZonesDistance)
{
    ScopedTimeZone const zone("ABC-2");
    FILETIME const time = fileTime(126'000'000'000'000'000);
    FILETIME local, back;

    EXPECT_TRUE(FileTimeToLocalFileTime(&time, &local));
    EXPECT_TRUE(LocalFileTimeToFileTime(&local, &back));

    EXPECT_EQ(ticks(local), ticks(time) + 2 * hour);
    EXPECT_EQ(ticks(back), ticks(time));
}

TEST(LocalFileTimes, stayWithinTheirLimits)
{
    FILETIME const first = fileTime(hour);
    FILETIME const last = fileTime(UINT64_MAX - hour);
    FILETIME local;
    {
        ScopedTimeZone const west("ABC8");
        FileTimeToLocalFileTime(&first, &local);
        EXPECT_EQ(ticks(local), 0u);
    }
    ScopedTimeZone const east("ABC-8");
    FileTimeToLocalFileTime(&last, &local);
    EXPECT_EQ(ticks(local), UINT64_MAX);
}

TEST(LocalTime, followsTheZone)
{
    ScopedTimeZone const zone("ABC-5:30");
    SYSTEMTIME utc, local;
    FILETIME utcTime, localTime;

    GetSystemTime(&utc);
    GetLocalTime(&local);

    SystemTimeToFileTime(&utc, &utcTime);
    SystemTimeToFileTime(&local, &localTime);
    auto const distance = LONGLONG(ticks(localTime) - ticks(utcTime));
    EXPECT_NEAR(double(distance), 5.5 * double(hour), double(hour) / 60);
}
