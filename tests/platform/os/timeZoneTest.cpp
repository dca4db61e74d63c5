#include "platform/os/timeZone.h"

#include "platform/os/os.h"
#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeZone, distanceIsPositiveInTheWestAndNegativeInTheEast)
{
    {
        ScopedTimeZone const west("ABC5");
        EXPECT_EQ(zk::os::secondsWestOfGreenwich(), 18000);
    }
    ScopedTimeZone const east("ABC-5:30");
    EXPECT_EQ(zk::os::secondsWestOfGreenwich(), -19800);
}

TEST(TimeZone, distanceIsThatOfStandardTimeWhereThereIsDaylightSavingTime)
{
    ScopedTimeZone const zone("EST5EDT");

    EXPECT_EQ(zk::os::secondsWestOfGreenwich(), 18000);
    EXPECT_TRUE(zk::os::hasDaylightSavingTime());
}

TEST(TimeZone, zoneOfOneTimeHasNoDaylightSavingTime)
{
    ScopedTimeZone const zone("ABC-2");

    EXPECT_FALSE(zk::os::hasDaylightSavingTime());
}

}  // namespace
