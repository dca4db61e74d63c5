#include "Foundtn/util/preferences.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/freshProcess.h"

#include "Foundtn/util/IToolMode.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

constexpr char section[] = "UserPreferences";

// -- Conversion of rich text ------------------------------------------------------------

TEST_IN_FRESH_PROCESS(RtfConversion, isOffIfTheProfileSaysSoAtTheFirstCall)
{
    MemoryProfile profile;
    profile.set(section, "RTFConversionOff", "TRUE");
    EXPECT_TRUE(IToolMode::isRTFConversionOff());

    profile.set(section, "RTFConversionOff", "FALSE");
    EXPECT_TRUE(IToolMode::isRTFConversionOff()) << "read once";
}

TEST_IN_FRESH_PROCESS(RtfConversion, isOnByDefault)
{
    MemoryProfile profile;
    EXPECT_FALSE(IToolMode::isRTFConversionOff());

    profile.set(section, "RTFConversionOff", "TRUE");
    EXPECT_FALSE(IToolMode::isRTFConversionOff()) << "read once";
}

TEST_IN_FRESH_PROCESS(RtfConversion, isOnForGoodWithoutAProfileAtTheFirstCall)
{
    ScopedEnvironment const set("RTFConversionOff", "TRUE");
    EXPECT_FALSE(IToolMode::isRTFConversionOff());

    MemoryProfile profile;
    profile.set(section, "RTFConversionOff", "TRUE");
    EXPECT_FALSE(IToolMode::isRTFConversionOff());
}

TEST_IN_FRESH_PROCESS(RtfConversion, isOnWhateverTheEnvironmentSays)
{
    ScopedEnvironment const set("RTFConversionOff", "TRUE");
    MemoryProfile profile;

    EXPECT_FALSE(IToolMode::isRTFConversionOff());
}

// -- Label mode ----------------------------------------------------------------------------

TEST_IN_FRESH_PROCESS(LabelMode, isReadAtTheFirstCallAndWithRefresh)
{
    ScopedEnvironment const none("LabelMode", nullptr);
    MemoryProfile profile;
    EXPECT_FALSE(IToolMode::isLabelMode(false));

    profile.set(section, "LabelMode", "TRUE");
    EXPECT_FALSE(IToolMode::isLabelMode(false));
    EXPECT_TRUE(IToolMode::isLabelMode(true));

    profile.set(section, "LabelMode", "FALSE");
    EXPECT_TRUE(IToolMode::isLabelMode(false));
    EXPECT_FALSE(IToolMode::isLabelMode(true));
}

TEST_IN_FRESH_PROCESS(LabelMode, comesFromTheEnvironmentToo)
{
    MemoryProfile profile;
    {
        ScopedEnvironment const set("LabelMode", "tRUE");
        EXPECT_TRUE(IToolMode::isLabelMode(false));
    }
    ScopedEnvironment const other("LabelMode", "1");
    EXPECT_FALSE(IToolMode::isLabelMode(true));
}

TEST_IN_FRESH_PROCESS(LabelMode, comesFromTheEnvironmentWithoutAProfile)
{
    ScopedEnvironment const set("LabelMode", "True");
    EXPECT_TRUE(IToolMode::isLabelMode(false));
}

TEST_IN_FRESH_PROCESS(LabelMode, staysAsItWasWhenTheProfileIsGone)
{
    ScopedEnvironment const none("LabelMode", nullptr);
    {
        MemoryProfile profile;
        profile.set(section, "LabelMode", "TRUE");
        EXPECT_TRUE(IToolMode::isLabelMode(false));
    }
    EXPECT_TRUE(IToolMode::isLabelMode(true));
}

TEST_IN_FRESH_PROCESS(LabelMode, isOffIfTheProfileSaysSoWhateverTheEnvironmentSays)
{
    ScopedEnvironment const set("LabelMode", "True");
    MemoryProfile profile;
    profile.set(section, "LabelMode", "FALSE");

    EXPECT_FALSE(IToolMode::isLabelMode(false));
}

// -- Gradient mode ---------------------------------------------------------------------------

TEST_IN_FRESH_PROCESS(GradientMode, isOnByDefault)
{
    EXPECT_TRUE(IToolMode::isGradientMode(false));

    MemoryProfile profile;
    EXPECT_TRUE(IToolMode::isGradientMode(true));
}

TEST_IN_FRESH_PROCESS(GradientMode, isReadAtTheFirstCallAndWithRefresh)
{
    MemoryProfile profile;
    profile.set(section, "GradientMode", "FALSE");
    EXPECT_FALSE(IToolMode::isGradientMode(false));

    profile.set(section, "GradientMode", "TRUE");
    EXPECT_FALSE(IToolMode::isGradientMode(false));
    EXPECT_TRUE(IToolMode::isGradientMode(true));
}

TEST_IN_FRESH_PROCESS(GradientMode, doesNotLookAtTheEnvironment)
{
    ScopedEnvironment const set("GradientMode", "True");
    MemoryProfile profile;
    profile.set(section, "GradientMode", "FALSE");

    EXPECT_FALSE(IToolMode::isGradientMode(false));
}

TEST_IN_FRESH_PROCESS(GradientMode, isOnWhateverTheEnvironmentSays)
{
    ScopedEnvironment const set("GradientMode", "FALSE");
    MemoryProfile profile;

    EXPECT_TRUE(IToolMode::isGradientMode(true));
}

// -- Migration ----------------------------------------------------------------------------------

TEST_IN_FRESH_PROCESS(KmMigration, needsTheSettingAndTheServerAtTheFirstCall)
{
    MemoryProfile profile;
    profile.set("General", "EnableKmToZmmMigration", "TRUE");
    IToolMode::setZktMode(IToolMode::ZMM);
    EXPECT_TRUE(IToolMode::isKmMigrationEnabled());

    IToolMode::setZktMode(IToolMode::KM);
    profile.set("General", "EnableKmToZmmMigration", "FALSE");
    EXPECT_TRUE(IToolMode::isKmMigrationEnabled()) << "read once";
}

TEST_IN_FRESH_PROCESS(KmMigration, isOffWithAnotherServerAtTheFirstCall)
{
    MemoryProfile profile;
    profile.set("General", "EnableKmToZmmMigration", "TRUE");
    IToolMode::setZktMode(IToolMode::KM);
    EXPECT_FALSE(IToolMode::isKmMigrationEnabled());

    IToolMode::setZktMode(IToolMode::ZMM);
    EXPECT_FALSE(IToolMode::isKmMigrationEnabled()) << "read once";
}

TEST_IN_FRESH_PROCESS(KmMigration, isOffWithoutTheSetting)
{
    MemoryProfile profile;
    IToolMode::setZktMode(IToolMode::ZMM);

    EXPECT_FALSE(IToolMode::isKmMigrationEnabled());
}

// -- Code generation ---------------------------------------------------------------------------

TEST(InternalCodeGeneration, isForcedByTheTextTrueAtEachCall)
{
    ScopedEnvironment const none("ForceInternalCG", nullptr);
    EXPECT_FALSE(ForceInternalCG());
    MemoryProfile profile;
    for (char const* const text : {"True", "TRUE", "true"}) {
        profile.set("CodeGen", "ForceInternalCG", text);
        EXPECT_TRUE(ForceInternalCG()) << text;
    }
    for (char const* const text : {"False", "1", "yes", "True!"}) {
        profile.set("CodeGen", "ForceInternalCG", text);
        EXPECT_FALSE(ForceInternalCG()) << text;
    }
    ScopedEnvironment const set("ForceInternalCG", "true");
    profile.set("CodeGen", "ForceInternalCG", "");
    EXPECT_TRUE(ForceInternalCG()) << "from the environment";
}

}  // namespace
