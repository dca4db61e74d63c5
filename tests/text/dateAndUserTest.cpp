#include "text/dateAndUser.h"

#include "platform/classlib/clock.h"
#include "platform/os/os.h"
#include "tests/support/ScopedLocale.h"
#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

constexpr std::time_t secondsPerHour = 3600;
constexpr std::time_t midnight = 1000166400;     // Tuesday, 11 September 2001, 0:00 UTC
constexpr std::time_t firstOfMonth = 999302400;  // Saturday, 1 September 2001, 0:00 UTC

std::string timeAt(std::time_t time)
{
    zk::ScopedClock const clock(time);
    return omGetCurrentTime().GetString();
}

// "12:00 ", the zone's name as the C library tells it, and " AM ".
std::string told(char const* clock, ScopedTimeZone const& zone, char const* half)
{
    return std::string(clock) + " " + zone.name() + " " + half + " ";
}

TEST(DateAndUser, tellsTheTimeOnAClockOfTwelveHours)
{
    ScopedTimeZone const zone("UTC0");

    EXPECT_EQ(timeAt(midnight), told("12:00", zone, "AM"));
    EXPECT_EQ(timeAt(midnight + 4 * secondsPerHour + 5 * 60), told("4:05", zone, "AM"));
    EXPECT_EQ(timeAt(midnight + 12 * secondsPerHour - 1), told("11:59", zone, "AM"));
    EXPECT_EQ(timeAt(midnight + 12 * secondsPerHour), told("12:00", zone, "PM"));
    EXPECT_EQ(timeAt(midnight + 23 * secondsPerHour), told("11:00", zone, "PM"));
}

TEST(DateAndUser, tellsTheLocalTimeAndTheNameOfItsZone)
{
    ScopedTimeZone const zone("EST5");

    EXPECT_EQ(timeAt(midnight), told("7:00", zone, "PM"));
}

TEST(DateAndUser, tellsTheLocalTimeEastOfGreenwich)
{
    ScopedTimeZone const zone("ABC-2");

    EXPECT_EQ(timeAt(midnight), told("2:00", zone, "AM"));
    EXPECT_EQ(timeAt(midnight + 11 * secondsPerHour), told("1:00", zone, "PM"));
    zk::ScopedClock const clock(midnight + 22 * secondsPerHour);
    EXPECT_STREQ(omGetCurrentDate(), "Wed, 12, Sep 2001 ");
}

TEST(DateAndUser, tellsTheDateWithTheNamesOfTheLocaleInForce)
{
    ScopedTimeZone const zone("UTC0");
    zk::ScopedClock const clock(midnight);
    for (char const* const name : {"German_Germany.1252", "de_DE.UTF-8", "fr_FR.UTF-8"}) {
        ScopedLocale const other(name);
        std::tm day{};
        day.tm_wday = 2;
        day.tm_mon = 8;
        char names[64];
        std::strftime(names, sizeof names, "%a, 11, %b 2001 ", &day);
        if (!other.isSet() || std::string(names).starts_with("Tue"))
            continue;

        EXPECT_STREQ(omGetCurrentDate(), names);
        return;
    }
    GTEST_SKIP() << "there is no locale here with other names of days";
}

TEST(DateAndUser, tellsTheDate)
{
    ScopedTimeZone const zone("UTC0");
    {
        zk::ScopedClock const clock(midnight);
        EXPECT_STREQ(omGetCurrentDate(), "Tue, 11, Sep 2001 ");
        EXPECT_STREQ(omGetCurrentYear(), "2001");
    }
    zk::ScopedClock const clock(firstOfMonth);
    EXPECT_STREQ(omGetCurrentDate(), "Sat, 1, Sep 2001 ");
}

TEST(DateAndUser, tellsTheLocalDate)
{
    ScopedTimeZone const zone("EST5");
    zk::ScopedClock const clock(978307200);  // 1 January 2001, 0:00 UTC

    EXPECT_STREQ(omGetCurrentDate(), "Sun, 31, Dec 2000 ");
    EXPECT_STREQ(omGetCurrentYear(), "2000");
}

TEST(DateAndUser, tellsTheNameOfTheAccount)
{
    char name[260] = {};
    DWORD length = sizeof name;
    ASSERT_TRUE(GetUserNameA(name, &length));

    EXPECT_STREQ(omGetCurrentUser(), name);
}

TEST(DateAndUser, takesTheHourOfAClockThatFailsForOneBeforeNoon)
{
    zk::ScopedClock const clock(-1);
    std::string const told = omGetCurrentTime().GetString();

    EXPECT_EQ(told.substr(told.size() - 3), "AM ");
}

}  // namespace
