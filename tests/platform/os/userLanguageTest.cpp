#include "platform/os/userLanguage.h"

#include <gtest/gtest.h>

#include <regex>

TEST(UserLanguage, isALanguageWithACountryWhereTheSystemTellsIt)
{
    EXPECT_TRUE(std::regex_match(zk::os::userLanguage(), std::regex("|[a-z]{2,3}|[a-z]{2,3}_[A-Z]{2}")))
        << zk::os::userLanguage();
}
