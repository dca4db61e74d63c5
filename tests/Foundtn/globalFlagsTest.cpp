#include "Foundtn/util/globalFlags.h"

#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"

#include <cstdlib>
#include <optional>

namespace {

// What lives longer than everything made later reads a flag at its end.
struct ReadsAFlagAtItsEnd {
    ~ReadsAFlagAtItsEnd()
    {
        if (globalFlags::instance()->getFlag("AtTheEnd") == CString('x', 100))
            std::_Exit(23);
    }
};

ZK_CHILD(readsAFlagAtItsEnd)
{
    static_cast<void>(parent);
    static ReadsAFlagAtItsEnd const last;
    globalFlags::instance()->setFlag("AtTheEnd", CString('x', 100));
    std::exit(0);
}

TEST(GlobalFlagsAtTheEnd, areStillThere)
{
    EXPECT_EQ(zk::test::ChildProcess("readsAFlagAtItsEnd").exitCode(), 23);
}

class GlobalFlags : public testing::Test {
protected:
    void TearDown() override
    {
        flags.removeFlag("Mode");
        flags.removeFlag("mode");
    }

    globalFlags& flags = *globalFlags::instance();
};

TEST_F(GlobalFlags, areOneObject)
{
    EXPECT_EQ(globalFlags::instance(), globalFlags::instance());
}

TEST_F(GlobalFlags, readAsEmptyUntilSet)
{
    EXPECT_STREQ(flags.getFlag("Mode"), "");

    flags.setFlag("Mode", "fast");
    EXPECT_STREQ(flags.getFlag("Mode"), "fast");
    flags.setFlag("Mode", "slow");
    EXPECT_STREQ(flags.getFlag("Mode"), "slow");

    flags.removeFlag("Mode");
    EXPECT_STREQ(flags.getFlag("Mode"), "");
    flags.removeFlag("Mode");
}

TEST_F(GlobalFlags, haveNamesThatMatchWithCase)
{
    flags.setFlag("Mode", "fast");

    EXPECT_STREQ(flags.getFlag("mode"), "");
    EXPECT_STREQ(flags.getFlag("Mode "), "");

    flags.setFlag("mode", "slow");
    EXPECT_STREQ(flags.getFlag("Mode"), "fast");
}

TEST_F(GlobalFlags, takeAnyNumberOfNames)
{
    constexpr int count = 5000;
    CString name;
    for (int i = 0; i < count; ++i) {
        name.Format("flag%d", i);
        flags.setFlag(name, name + "!");
    }
    for (int i = 0; i < count; ++i) {
        name.Format("flag%d", i);
        EXPECT_STREQ(flags.getFlag(name), name + "!");
        flags.removeFlag(name);
        EXPECT_STREQ(flags.getFlag(name), "");
    }
}

TEST_F(GlobalFlags, returnToTheirValueAtTheEndOfAScope)
{
    flags.setFlag("Mode", "fast");
    {
        setGlobalFlag const outer("Mode", "slow");
        EXPECT_STREQ(flags.getFlag("Mode"), "slow");
        {
            setGlobalFlag const inner("Mode", "");
            EXPECT_STREQ(flags.getFlag("Mode"), "");
        }
        EXPECT_STREQ(flags.getFlag("Mode"), "slow");
    }
    EXPECT_STREQ(flags.getFlag("Mode"), "fast");
}

TEST_F(GlobalFlags, areRemovedAtTheEndOfAScopeThatFoundNone)
{
    {
        setGlobalFlag const scope("Mode", "fast");
        EXPECT_STREQ(flags.getFlag("Mode"), "fast");
    }
    EXPECT_STREQ(flags.getFlag("Mode"), "");
}

TEST_F(GlobalFlags, areLeftAloneByAScopeThatFoundItsOwnValue)
{
    flags.setFlag("Mode", "fast");
    {
        setGlobalFlag const scope("Mode", "fast");
        flags.setFlag("Mode", "changed meanwhile");
    }
    EXPECT_STREQ(flags.getFlag("Mode"), "changed meanwhile");
}

TEST_F(GlobalFlags, compareValuesWithCase)
{
    flags.setFlag("Mode", "fast");
    {
        setGlobalFlag const scope("Mode", "FAST");
        EXPECT_STREQ(flags.getFlag("Mode"), "FAST");
    }
    EXPECT_STREQ(flags.getFlag("Mode"), "fast");
}

TEST_F(GlobalFlags, areRestoredThroughAPointerToTheScope)
{
    static_assert(std::has_virtual_destructor_v<setGlobalFlag>);
    auto scope = std::make_optional<setGlobalFlag>("Mode", "fast");
    EXPECT_STREQ(flags.getFlag("Mode"), "fast");

    scope.reset();

    EXPECT_STREQ(flags.getFlag("Mode"), "");
}

}  // namespace
