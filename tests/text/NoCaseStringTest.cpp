#include "text/NoCaseString.h"

#include <gtest/gtest.h>

TEST(NoCaseString, comparesWithoutRegardToCase)
{
    EXPECT_EQ(NoCaseString("abc") == "ABC", 1);
    EXPECT_EQ(NoCaseString("abc") == "abd", 0);
    EXPECT_EQ(NoCaseString("abc") != "ABC", 0);
    EXPECT_EQ(NoCaseString("abc") != "ab", 1);
    EXPECT_EQ("ABC" == NoCaseString("abc"), 1);
    EXPECT_EQ("abd" != NoCaseString("abc"), 1);
}

TEST(NoCaseString, isEmptyByDefault)
{
    EXPECT_EQ(NoCaseString() == "", 1);
}

TEST(NoCaseString, isCopiedByValue)
{
    NoCaseString first("abc");
    NoCaseString second(first);
    NoCaseString third;

    third = second;
    first = NoCaseString("x");

    EXPECT_EQ(second == "ABC", 1);
    EXPECT_EQ(third == "ABC", 1);
    EXPECT_EQ(first == "X", 1);
}

TEST(NoCaseString, holdsOneText)
{
    static_assert(sizeof(NoCaseString) == sizeof(CString));
}
