#include "Foundtn/util/animationPorts.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/freshProcess.h"

#include "resources/hostTexts.h"

#include <gtest/gtest.h>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

TEST_IN_FRESH_PROCESS(AnimationPort, isTheSettingAsItWasFirstFound)
{
    MemoryProfile profile;
    profile.set("General", "AnimationPortNumber", "7001");
    EXPECT_EQ(zkGetAnimationPortNumber(), 7001);

    profile.set("General", "AnimationPortNumber", "7002");
    profile.reads = 0;

    EXPECT_EQ(zkGetAnimationPortNumber(), 7001);
    EXPECT_EQ(profile.reads, 0);
}

TEST_IN_FRESH_PROCESS(AnimationPort, isTheStandardOneWithoutASetting)
{
    zkRegisterHostTexts();
    ScopedEnvironment const none("AnimationPortNumber", nullptr);
    MemoryProfile profile;
    CString error;

    EXPECT_EQ(zkGetAnimationPortNumber(&error), 6423);

    CString expected;
    expected.Format(47322, "AnimationPortNumber", "AnimationPortNumber");
    EXPECT_STREQ(error, expected);
    profile.set("General", "AnimationPortNumber", "7001");
    EXPECT_EQ(zkGetAnimationPortNumber(), 6423) << "kept";
}

TEST_IN_FRESH_PROCESS(AnimationPort, isTheStandardOneForZero)
{
    MemoryProfile profile;
    profile.set("General", "AnimationPortNumber", "0");

    EXPECT_EQ(zkGetAnimationPortNumber(), 6423);
}

TEST_IN_FRESH_PROCESS(AnimationPort, isTheStandardOneForWhatIsNoNumber)
{
    MemoryProfile profile;
    profile.set("General", "AnimationPortNumber", "abc");

    EXPECT_EQ(zkGetAnimationPortNumber(), 6423);
}

TEST_IN_FRESH_PROCESS(AnimationPort, isTheNumberInFrontOfOtherText)
{
    ScopedEnvironment const set("AnimationPortNumber", "7001tcp");

    EXPECT_EQ(zkGetAnimationPortNumber(), 7001);
}

TEST_IN_FRESH_PROCESS(AnimationPort, canBeSetForTheProcess)
{
    EXPECT_EQ(zkGetDynamicAnimPortNumber(), -1);

    zkSetDynamicAnimPortNumber(5000);

    EXPECT_EQ(zkGetDynamicAnimPortNumber(), 5000);
}

struct NumberRow {
    char const* text;
    int bufferSize;
    int range;
};

TEST(AnimationSettings, areReadAtEachCall)
{
    zkRegisterHostTexts();
    ScopedEnvironment const noSize("AnimationSndBufSize", nullptr);
    ScopedEnvironment const noRange("AnimationPortRange", nullptr);
    MemoryProfile profile;
    for (NumberRow const& row : {NumberRow{"", -1, 0}, NumberRow{"0", -1, 0}, NumberRow{"abc", -1, 0},
                                 NumberRow{"17", 17, 17}, NumberRow{"-5 x", -5, -5}}) {
        profile.set("General", "AnimationSndBufSize", row.text);
        profile.set("General", "AnimationPortRange", row.text);
        CString error("old");

        EXPECT_EQ(zkGetAnimationSndBufSize(&error), row.bufferSize) << row.text;
        EXPECT_EQ(error != "old", *row.text == '\0');
        error = "old";
        EXPECT_EQ(zkGetAnimationPortRange(&error), row.range) << row.text;
        EXPECT_EQ(error != "old", *row.text == '\0');
    }
}

}  // namespace
