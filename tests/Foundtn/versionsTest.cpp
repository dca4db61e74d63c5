#include "Foundtn/util/versions.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(Versions, areThoseOfTheRelease)
{
    EXPECT_STREQ(omGetCurrentVersionId(), "8.4");
    EXPECT_STREQ(omGetCurrentMajorVersionId(), "8.4");
    EXPECT_STREQ(omGetCurrentMinorVersionId(), "");
    EXPECT_STREQ(omGetCurrentVersionText(), "8.4");
    EXPECT_STREQ(omGetCurrentFixPackID(), "8.4.0.0");
    EXPECT_STREQ(omGetCurrentIFixVersion(), "8.4.0.0.3");
    EXPECT_STREQ(omGetCurrentIFixStr(), "iFix003");
    EXPECT_STREQ(omGetCurrentZMMVersion(), "11.1.0");
    EXPECT_STREQ(omGetMinimumZMMServerVersion(), "11.0.0");
    EXPECT_STREQ(omGetCurrentXTCAPIVersion(), "8.4.0.0.0");
    EXPECT_STREQ(omGetBuildNumber(), "9844162");
}

TEST(Versions, copyTheBuildNumberWithItsTerminatorAndNoMore)
{
    char buffer[9];
    std::memset(buffer, '#', sizeof buffer);

    EXPECT_EQ(getBuildNo(buffer), 0);

    EXPECT_STREQ(buffer, "9844162");
    EXPECT_EQ(buffer[8], '#');
}

TEST(Versions, areThoseOfA64BitApplication)
{
    EXPECT_FALSE(is32BitsApplication());
    EXPECT_TRUE(is64BitsApplication());
    EXPECT_FALSE(IsLinuxEL4());
}

TEST(Versions, nameTheProcessInTheConnectionText)
{
    CString expected;
    expected.Format("ZENTRIKA2.8.4.0.0:%d:x64", static_cast<int>(GetCurrentProcessId()));

    EXPECT_STREQ(omGetConnectionString(), expected);
    EXPECT_STREQ(omGetConnectionString(), expected);
}

}  // namespace
