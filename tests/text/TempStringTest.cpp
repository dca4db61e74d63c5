#include "text/TempString.h"

#include <gtest/gtest.h>

#include <utility>

TEST(TempString, isAWritableCopy)
{
    char const source[] = "abc";

    TempString copy(source);
    static_cast<char*>(copy)[1] = 'x';

    EXPECT_STREQ(copy, "axc");
    EXPECT_STREQ(source, "abc");
}

TEST(TempString, takesAsMuchAsAskedFor)
{
    EXPECT_STREQ(TempString("abcdef", 3), "abc");
    EXPECT_STREQ(TempString("abcdef", 0), "");
    EXPECT_STREQ(TempString("abcdef", -1), "");
}

TEST(TempString, fillsUpAShorterText)
{
    TempString copy("ab", 5);
    char const* const text = copy;

    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(text[3], '\0');
    EXPECT_EQ(text[5], '\0');
}

TEST(TempString, aNullTextIsEmpty)
{
    EXPECT_STREQ(TempString(nullptr), "");
    EXPECT_STREQ(TempString(nullptr, 2), "");
}

TEST(TempString, copiesAreIndependent)
{
    TempString first("abc");
    TempString second(first);
    static_cast<char*>(second)[0] = 'x';
    TempString third("zz");

    third = second;

    EXPECT_STREQ(first, "abc");
    EXPECT_STREQ(third, "xbc");
}

TEST(TempString, movesHandTheCopyOver)
{
    TempString first("abc");
    char* const text = first;

    TempString second(std::move(first));

    EXPECT_EQ(static_cast<char*>(second), text);
    EXPECT_EQ(static_cast<char*>(first), nullptr);
}

TEST(TempString, holdsOnePointer)
{
    static_assert(sizeof(TempString) == sizeof(char*));
}
