#include "platform/classlib/CTime.h"
#include "platform/classlib/clock.h"

#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

// Two hours ahead of Greenwich, without daylight-saving time.
class CTimeTest : public testing::Test {
    ScopedTimeZone const zone_{"ABC-2"};
};

// 9 September 2001, 1:46:40 in UTC.
CTime const billion(1000000000);

}  // namespace

TEST_F(CTimeTest, is1970AtFirst)
{
    EXPECT_EQ(CTime().GetTime(), 0);
}

TEST_F(CTimeTest, givesItsPartsInTheLocalZone)
{
    EXPECT_EQ(billion.GetYear(), 2001);
    EXPECT_EQ(billion.GetMonth(), 9);
    EXPECT_EQ(billion.GetDay(), 9);
    EXPECT_EQ(billion.GetHour(), 3);
    EXPECT_EQ(billion.GetMinute(), 46);
    EXPECT_EQ(billion.GetSecond(), 40);
    EXPECT_EQ(billion.GetDayOfWeek(), 1);
}

TEST_F(CTimeTest, isMadeOfLocalParts)
{
    EXPECT_EQ(CTime(2001, 9, 9, 3, 46, 40), billion);
    EXPECT_EQ(CTime(1970, 1, 1, 2, 0, 0).GetTime(), 0);
    EXPECT_EQ(CTime(2001, 8, 40, 3, 46, 40), billion);
    EXPECT_EQ(CTime(2001, 9, 8, 26, 106, 40), CTime(2001, 9, 9, 3, 46, 40));
}

TEST_F(CTimeTest, hasNoTimeForPartsOutsideTheCalendar)
{
    EXPECT_EQ(CTime(1969, 12, 31, 0, 0, 0).GetTime(), -1);
    EXPECT_EQ(CTime(3001, 6, 1, 0, 0, 0).GetTime(), -1);
    EXPECT_EQ(CTime(0, 0, 0, 0, 0, 0).GetTime(), -1);
    EXPECT_EQ(CTime(-1, 1, 1, 0, 0, 0).GetTime(), -1);
}

TEST_F(CTimeTest, survivesPartsAtTheEndsOfTheirRange)
{
    CTime(INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN);
    CTime(INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX);
}

TEST_F(CTimeTest, givesZeroPartsForATimeWithoutCalendar)
{
    CTime const before(-1);
    tm calendar;
    SYSTEMTIME system;

    EXPECT_EQ(before.GetYear(), 0);
    EXPECT_EQ(before.GetMonth(), 0);
    EXPECT_EQ(before.GetDay(), 0);
    EXPECT_EQ(before.GetHour(), 0);
    EXPECT_EQ(before.GetMinute(), 0);
    EXPECT_EQ(before.GetSecond(), 0);
    EXPECT_EQ(before.GetDayOfWeek(), 0);
    EXPECT_EQ(before.GetLocalTm(&calendar), nullptr);
    EXPECT_EQ(before.GetGmtTm(&calendar), nullptr);
    EXPECT_FALSE(before.GetAsSystemTime(system));
    EXPECT_EQ(before.Format("%Y"), "");
    EXPECT_EQ(before.FormatGmt("%Y"), "");
}

TEST_F(CTimeTest, givesItsCalendarTime)
{
    tm calendar;

    EXPECT_EQ(billion.GetLocalTm(&calendar), &calendar);
    EXPECT_EQ(calendar.tm_hour, 3);
    EXPECT_EQ(billion.GetGmtTm(&calendar), &calendar);
    EXPECT_EQ(calendar.tm_hour, 1);
    EXPECT_EQ(billion.GetLocalTm()->tm_hour, 3);
    EXPECT_EQ(billion.GetGmtTm()->tm_hour, 1);
}

TEST_F(CTimeTest, isMadeOfASystemTimeAndGivesOne)
{
    SYSTEMTIME const local = {2001, 9, 0, 9, 3, 46, 40, 999};
    SYSTEMTIME given;

    EXPECT_EQ(CTime(local), billion);
    ASSERT_TRUE(billion.GetAsSystemTime(given));
    EXPECT_EQ(given.wYear, 2001);
    EXPECT_EQ(given.wMonth, 9);
    EXPECT_EQ(given.wDayOfWeek, 0);
    EXPECT_EQ(given.wDay, 9);
    EXPECT_EQ(given.wHour, 3);
    EXPECT_EQ(given.wMinute, 46);
    EXPECT_EQ(given.wSecond, 40);
    EXPECT_EQ(given.wMilliseconds, 0);
}

TEST_F(CTimeTest, isZeroForASystemTimeBefore1900)
{
    EXPECT_EQ(CTime(SYSTEMTIME{1899, 12, 0, 31, 0, 0, 0, 0}).GetTime(), 0);
    EXPECT_EQ(CTime(SYSTEMTIME{1601, 1, 0, 1, 0, 0, 0, 0}).GetTime(), 0);
}

TEST_F(CTimeTest, isMadeOfAFileTimeInUtc)
{
    auto const fileTime = [](std::uint64_t ticks) {
        return FILETIME{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    };

    EXPECT_EQ(CTime(fileTime(126444808000000000u)).GetTime(), 1000007200);
    EXPECT_EQ(CTime(fileTime(126444808009999999u)).GetTime(), 1000007200);
    EXPECT_EQ(CTime(fileTime(116444736000000000u)).GetTime(), 0);
    EXPECT_EQ(CTime(fileTime(116444736000000000u - 1)).GetTime(), 0);
    EXPECT_EQ(CTime(fileTime(0)).GetTime(), 0);
    EXPECT_EQ(CTime(fileTime(UINT64_MAX)).GetTime(), 1833029933770);
}

TEST_F(CTimeTest, movesBySpans)
{
    CTime time = billion;

    EXPECT_EQ(time + CTimeSpan(1, 0, 0, 0), CTime(1000086400));
    EXPECT_EQ(time - CTimeSpan(0, 1, 0, 0), CTime(999996400));
    EXPECT_EQ(CTime(1000000060) - time, CTimeSpan(60));
    time += 10;
    time -= 5;
    EXPECT_EQ(time.GetTime(), 1000000005);
}

TEST_F(CTimeTest, compares)
{
    CTime const later(1000000001);

    EXPECT_TRUE(billion == CTime(1000000000));
    EXPECT_TRUE(billion != later);
    EXPECT_TRUE(billion < later);
    EXPECT_TRUE(later > billion);
    EXPECT_TRUE(billion <= later);
    EXPECT_TRUE(later >= billion);
    EXPECT_FALSE(later <= billion);
}

TEST(CTimeSpanTest, splitsItselfUp)
{
    CTimeSpan const span(3, 4, 5, 6);

    EXPECT_EQ(span.GetTotalSeconds(), 273906);
    EXPECT_EQ(span.GetTimeSpan(), 273906);
    EXPECT_EQ(span.GetTotalMinutes(), 4565);
    EXPECT_EQ(span.GetTotalHours(), 76);
    EXPECT_EQ(span.GetDays(), 3);
    EXPECT_EQ(span.GetHours(), 4);
    EXPECT_EQ(span.GetMinutes(), 5);
    EXPECT_EQ(span.GetSeconds(), 6);
}

TEST(CTimeSpanTest, isNegativeInAllItsParts)
{
    CTimeSpan const span(-3, -4, -5, -6);

    EXPECT_EQ(span.GetDays(), -3);
    EXPECT_EQ(span.GetHours(), -4);
    EXPECT_EQ(span.GetMinutes(), -5);
    EXPECT_EQ(span.GetSeconds(), -6);
}

TEST(CTimeSpanTest, addsSubtractsAndCompares)
{
    CTimeSpan span(60);
    span += 30;
    span -= 10;

    EXPECT_EQ(span, CTimeSpan(80));
    EXPECT_EQ(span + CTimeSpan(1), CTimeSpan(81));
    EXPECT_EQ(span - CTimeSpan(1), CTimeSpan(79));
    EXPECT_TRUE(span != CTimeSpan(1));
    EXPECT_TRUE(span > CTimeSpan(1));
    EXPECT_TRUE(span >= CTimeSpan(1));
    EXPECT_TRUE(CTimeSpan(1) < span);
    EXPECT_TRUE(CTimeSpan(1) <= span);
    EXPECT_EQ(CTimeSpan(INT64_MAX) + CTimeSpan(1), CTimeSpan(INT64_MIN));
}

TEST(Clock, isTheSystemsWithoutAHook)
{
    std::time_t const before = std::time(nullptr);
    std::time_t const now = CTime::GetCurrentTime().GetTime();

    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr));
}

TEST(Clock, isFixedAndMovedByAHook)
{
    zk::ScopedClock clock(1000);

    EXPECT_EQ(CTime::GetCurrentTime().GetTime(), 1000);
    clock.advance(60);
    EXPECT_EQ(zk::currentTime(), 1060);
    clock.set(5);
    EXPECT_EQ(zk::currentTime(), 5);
}

TEST(Clock, isPutBackWhenTheHookEnds)
{
    {
        zk::ScopedClock const outer(1000);
        {
            zk::ScopedClock const inner(2000);
            EXPECT_EQ(zk::currentTime(), 2000);
        }
        EXPECT_EQ(zk::currentTime(), 1000);
    }

    EXPECT_GT(zk::currentTime(), 1000000);
}
