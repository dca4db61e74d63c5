#include "Foundtn/util/globalFlags.h"

#include "tests/support/OutOfMemory.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

TEST(GlobalFlagOfAScope, isPutBackWithoutMemory)
{
    CString const before('b', 200);
    globalFlags* const flags = globalFlags::instance();
    flags->setFlag("Mode", before);
    std::optional<setGlobalFlag> scope(std::in_place, "Mode", "other");
    flags->removeFlag("Mode");
    flags->setFlag("Mode", "short");
    {
        zk::test::OutOfMemory const none;
        scope.reset();
    }
    EXPECT_EQ(flags->getFlag("Mode"), before);

    scope.emplace("Mode", "other");
    flags->removeFlag("Mode");
    {
        zk::test::OutOfMemory const none;
        scope.reset();
    }
    EXPECT_EQ(flags->getFlag("Mode"), "") << "it was away, and there was no memory for it";
}

}  // namespace
