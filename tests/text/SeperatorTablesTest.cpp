#include "text/SeperatorTables.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string acceptedBy(int const* table)
{
    std::string accepted;
    for (int code = 0; code < 256; ++code) {
        EXPECT_TRUE(table[code] == 0 || table[code] == 1) << code;
        if (table[code] == 1)
            accepted.push_back(char(code));
    }
    return accepted;
}

std::string const digits = "0123456789";
std::string const upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
std::string const lower = "abcdefghijklmnopqrstuvwxyz";

TEST(SeperatorTables, acceptExactlyTheirCharactersInOrderOfCode)
{
    EXPECT_EQ(acceptedBy(SeperatorTables::getIdentifier()), digits + upper + "_" + lower);
    EXPECT_EQ(acceptedBy(SeperatorTables::getIdentifierD()), "-" + digits + upper + "_" + lower);
    EXPECT_EQ(acceptedBy(SeperatorTables::getIdentifierX()), " \"-." + digits + "<=>?" + upper + "_" + lower);
    EXPECT_EQ(acceptedBy(SeperatorTables::getFloat()), "." + digits);
    EXPECT_EQ(acceptedBy(SeperatorTables::getHandleName()), "." + digits + ":" + upper + "_" + lower);
}

TEST(SeperatorTables, acceptEveryByteOfAStringButTheOnesThatEndOrEscape)
{
    std::string expected;
    for (int code = 1; code < 256; ++code) {
        if (code != '\\' && code != '"')
            expected.push_back(char(code));
    }

    EXPECT_EQ(acceptedBy(SeperatorTables::getString()), expected);
}

int const* const seenByAStaticInitialiser = SeperatorTables::getIdentifier();

TEST(SeperatorTables, areFilledBeforeStaticInitialisersOfOthersRun)
{
    EXPECT_EQ(seenByAStaticInitialiser, SeperatorTables::getIdentifier());
    EXPECT_EQ(seenByAStaticInitialiser['a'], 1);
}

}  // namespace
