#include "platform/os/os.h"

#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

// TZ names and counts hours west of Greenwich: this zone is two hours ahead.
constexpr char twoHoursAhead[] = "ABC-2";

tm poisoned()
{
    tm calendar = {};
    calendar.tm_year = calendar.tm_hour = calendar.tm_isdst = 77;
    return calendar;
}

}  // namespace

TEST(Calendar, splitsATimeUp)
{
    ScopedTimeZone const zone(twoHoursAhead);
    __time64_t const time = 1000000000;
    tm calendar = poisoned();

    EXPECT_EQ(_gmtime64_s(&calendar, &time), 0);
    EXPECT_EQ(calendar.tm_year, 101);
    EXPECT_EQ(calendar.tm_mon, 8);
    EXPECT_EQ(calendar.tm_mday, 9);
    EXPECT_EQ(calendar.tm_hour, 1);
    EXPECT_EQ(calendar.tm_min, 46);
    EXPECT_EQ(calendar.tm_sec, 40);
    EXPECT_EQ(calendar.tm_wday, 0);
    EXPECT_EQ(calendar.tm_yday, 251);
    EXPECT_EQ(calendar.tm_isdst, 0);

    EXPECT_EQ(_localtime64_s(&calendar, &time), 0);
    EXPECT_EQ(calendar.tm_hour, 3);
    EXPECT_EQ(calendar.tm_isdst, 0);
}

TEST(Calendar, refusesTimesOutsideItsRange)
{
    for (__time64_t time : {__time64_t(-1), __time64_t(-1000000000000), __time64_t(1) << 40}) {
        tm calendar = poisoned();
        EXPECT_EQ(_gmtime64_s(&calendar, &time), EINVAL) << time;
        EXPECT_EQ(calendar.tm_year, -1);
        EXPECT_EQ(calendar.tm_isdst, -1);

        calendar = poisoned();
        EXPECT_EQ(_localtime64_s(&calendar, &time), EINVAL) << time;
        EXPECT_EQ(calendar.tm_hour, -1);
    }
}

TEST(Calendar, refusesNullArguments)
{
    __time64_t const time = 0;
    tm calendar = poisoned();

    EXPECT_EQ(_localtime64_s(nullptr, &time), EINVAL);
    EXPECT_EQ(_localtime64_s(&calendar, nullptr), EINVAL);
    EXPECT_EQ(calendar.tm_year, -1);
}

TEST(Calendar, putsATimeTogetherAndNormalisesIt)
{
    ScopedTimeZone const zone(twoHoursAhead);
    tm calendar = {};
    calendar.tm_year = 101;
    calendar.tm_mon = 12;
    calendar.tm_mday = 32;
    calendar.tm_isdst = -1;

    EXPECT_EQ(_mktime64(&calendar), 1012514400);  // 1 February 2002, midnight
    EXPECT_EQ(calendar.tm_year, 102);
    EXPECT_EQ(calendar.tm_mon, 1);
    EXPECT_EQ(calendar.tm_mday, 1);
    EXPECT_EQ(calendar.tm_wday, 5);
    EXPECT_EQ(calendar.tm_yday, 31);
}

TEST(Calendar, hasNoTimeForYearsOutsideItsRange)
{
    ScopedTimeZone const zone(twoHoursAhead);
    for (int year : {0, 1900, 1969, 3001, 9999}) {
        tm calendar = {};
        calendar.tm_year = year - 1900;
        calendar.tm_mday = 15;
        calendar.tm_mon = 5;
        EXPECT_EQ(_mktime64(&calendar), -1) << year;
    }
}
