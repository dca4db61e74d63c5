#include "Foundtn/util/customColors.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

// One entry more than the functions may touch.
using Colors = std::array<unsigned long, 17>;

class CustomColors : public testing::Test {
protected:
    CustomColors() { colors.fill(untouched); }

    static constexpr unsigned long untouched = 0xABCDEF;
    ScopedEnvironment const environment{"CustomColors", nullptr};
    Colors colors{};
};

TEST_F(CustomColors, fillAsManyEntriesAsTheTextHasFields)
{
    MemoryProfile profile;
    profile.set("Settings", "CustomColors", "1,2,3:4,5,6");

    EXPECT_TRUE(omGetEnvCustomColors(colors.data()));

    EXPECT_EQ(colors[0], 0x030201ul);
    EXPECT_EQ(colors[1], 0x060504ul);
    EXPECT_EQ(std::count(colors.begin(), colors.end(), untouched), 15);
}

TEST_F(CustomColors, areBlackWhereAFieldIsNoColour)
{
    MemoryProfile profile;
    profile.set("Settings", "CustomColors", "x::1,1,1:");

    EXPECT_TRUE(omGetEnvCustomColors(colors.data()));

    EXPECT_EQ(colors[0], 0ul);
    EXPECT_EQ(colors[1], 0ul);
    EXPECT_EQ(colors[2], 0x010101ul);
    EXPECT_EQ(colors[3], 0ul) << "behind the last separator";
    EXPECT_EQ(colors[4], untouched);
}

TEST_F(CustomColors, stopAtSixteen)
{
    std::string text = "1,1,1";
    for (int i = 0; i < 100; ++i)
        text += ":1,1,1";
    MemoryProfile profile;
    profile.set("Settings", "CustomColors", text.c_str());

    EXPECT_TRUE(omGetEnvCustomColors(colors.data()));

    EXPECT_EQ(std::count(colors.begin(), colors.end(), 0x010101ul), 16);
    EXPECT_EQ(colors[16], untouched);
}

TEST_F(CustomColors, comeFromTheEnvironmentToo)
{
    ScopedEnvironment const set("CustomColors", "1,2,3");

    EXPECT_TRUE(omGetEnvCustomColors(colors.data()));

    EXPECT_EQ(colors[0], 0x030201ul);
}

TEST_F(CustomColors, areAbsentWithoutASetting)
{
    MemoryProfile profile;

    EXPECT_FALSE(omGetEnvCustomColors(colors.data()));

    EXPECT_EQ(std::count(colors.begin(), colors.end(), untouched), 17);
}

TEST_F(CustomColors, areWrittenAsSixteenFields)
{
    for (unsigned long i = 0; i < 16; ++i)
        colors[i] = i;
    MemoryProfile profile;

    EXPECT_TRUE(omSetEnvCustomColors(colors.data()));

    EXPECT_EQ(profile.text("Settings", "CustomColors"),
              "0,0,0:1,0,0:2,0,0:3,0,0:4,0,0:5,0,0:6,0,0:7,0,0:8,0,0:9,0,0:10,0,0:11,0,0:12,0,0:13,0,0:14,0,"
              "0:15,0,0");
    Colors read{};
    EXPECT_TRUE(omGetEnvCustomColors(read.data()));
    EXPECT_TRUE(std::equal(read.begin(), read.end() - 1, colors.begin()));
}

TEST_F(CustomColors, areNotWrittenWithoutAProfileOrAnArray)
{
    EXPECT_FALSE(omSetEnvCustomColors(colors.data()));

    MemoryProfile profile;
    EXPECT_FALSE(omSetEnvCustomColors(nullptr));
    EXPECT_EQ(profile.text("Settings", "CustomColors"), "");
}

}  // namespace
