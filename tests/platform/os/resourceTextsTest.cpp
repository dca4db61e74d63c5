#include "platform/os/resourceTexts.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

TEST(ResourceTexts, leaveTheTextAloneWhereThereIsNone)
{
    std::string text("before");

    EXPECT_FALSE(zk::os::loadResourceText(9900003, text));

    EXPECT_EQ(text, "before");
}
