#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

TEST(TextOperations, compareWithoutCase)
{
    EXPECT_EQ(_stricmp("Model.INI", "mODEL.ini"), 0);
    EXPECT_LT(_stricmp("a", "B"), 0);
    EXPECT_GT(_stricmp("b", "A"), 0);
    EXPECT_LT(_stricmp("ab", "abc"), 0);
    EXPECT_GT(_stricmp("abc", "ab"), 0);
    EXPECT_EQ(_stricmp("", ""), 0);
}

TEST(TextOperations, compareInLowerCase)
{
    // '_' stands between the upper and the lower case letters.
    EXPECT_LT(_stricmp("_", "A"), 0);
    EXPECT_LT(_strnicmp("_", "A", 1), 0);
}

TEST(TextOperations, findNoCaseInBytesAbove127)
{
    EXPECT_NE(_stricmp("\xC4", "\xE4"), 0);
}

TEST(TextOperations, compareAtMostTheGivenCount)
{
    EXPECT_EQ(_strnicmp("ABx", "aby", 2), 0);
    EXPECT_LT(_strnicmp("ABx", "aby", 3), 0);
    EXPECT_EQ(_strnicmp("a", "A", 100), 0);
    EXPECT_EQ(_strnicmp("a", "b", 0), 0);
}

TEST(TextOperations, changeCaseInPlace)
{
    char text[] = "Az09[`{@\xC4\xE4";

    EXPECT_EQ(_strupr(text), text);
    EXPECT_STREQ(text, "AZ09[`{@\xC4\xE4");
    EXPECT_EQ(_strlwr(text), text);
    EXPECT_STREQ(text, "az09[`{@\xC4\xE4");
}

TEST(TextOperations, writeNumbers)
{
    char text[66];

    EXPECT_STREQ(_itoa(0, text, 10), "0");
    EXPECT_STREQ(_itoa(-255, text, 10), "-255");
    EXPECT_STREQ(_itoa(-255, text, 16), "ffffff01");
    EXPECT_STREQ(_itoa(INT_MIN, text, 10), "-2147483648");
    EXPECT_STREQ(_itoa(-1, text, 2), std::string(32, '1').c_str());
    EXPECT_STREQ(_ltoa(-42L, text, 10), "-42");
    EXPECT_STREQ(_ltoa(35L, text, 36), "z");
    EXPECT_STREQ(_ltoa(-1L, text, 8), "37777777777");
    EXPECT_STREQ(_ultoa(4294967295UL, text, 10), "4294967295");
    EXPECT_STREQ(_ultoa(4294967295UL, text, 36), "1z141z3");
    EXPECT_STREQ(_i64toa(LLONG_MIN, text, 10), "-9223372036854775808");
    EXPECT_STREQ(_i64toa(-1, text, 2), std::string(64, '1').c_str());
}

TEST(TextOperations, writeNoByteBehindTheLongestNumber)
{
    char text[35];
    text[33] = text[34] = 'x';

    _itoa(-1, text, 2);

    EXPECT_EQ(text[32], '\0');
    EXPECT_EQ(text[33], 'x');
}

TEST(SystemTextOperations, compareWithoutCase)
{
    EXPECT_EQ(lstrcmpiA("Model", "mODEL"), 0);
    EXPECT_LT(lstrcmpiA("a", "B"), 0);
    EXPECT_GT(lstrcmpiA("b", "A"), 0);
    EXPECT_LT(lstrcmpiA("ab", "abc"), 0);
}

TEST(SystemTextOperations, takeNullAsTheFirstOfTexts)
{
    EXPECT_EQ(lstrcmpiA(nullptr, nullptr), 0);
    EXPECT_LT(lstrcmpiA(nullptr, "a"), 0);
    EXPECT_GT(lstrcmpiA("a", nullptr), 0);
    EXPECT_EQ(lstrlenA(nullptr), 0);
    EXPECT_EQ(lstrlenA("abc"), 3);
}

TEST(SystemTextOperations, changeCaseInPlace)
{
    char text[] = "Az09[`{@";

    EXPECT_EQ(CharUpperA(text), text);
    EXPECT_STREQ(text, "AZ09[`{@");
    EXPECT_EQ(CharLowerA(text), text);
    EXPECT_STREQ(text, "az09[`{@");
}

TEST(SystemTextOperations, changeTheCaseOfOneCharacter)
{
    auto const asText = [](char c) { return reinterpret_cast<LPSTR>(static_cast<std::uintptr_t>(c)); };

    EXPECT_EQ(CharUpperA(asText('a')), asText('A'));
    EXPECT_EQ(CharLowerA(asText('Z')), asText('z'));
    EXPECT_EQ(CharUpperA(asText('1')), asText('1'));
    EXPECT_EQ(CharUpperA(nullptr), nullptr);
}

TEST(SystemTextOperations, changeTheCaseOfAPartOfABuffer)
{
    char text[] = "ab\0cd";

    EXPECT_EQ(CharUpperBuffA(text, 4), 4u);
    EXPECT_EQ(std::string(text, 5), std::string("AB\0Cd", 5));
    EXPECT_EQ(CharLowerBuffA(text, 1), 1u);
    EXPECT_EQ(std::string(text, 5), std::string("aB\0Cd", 5));
    EXPECT_EQ(CharUpperBuffA(text, 0), 0u);
}

TEST(SystemTextOperations, stepThroughATextAndStayAtItsEnds)
{
    char const text[] = "ab";

    EXPECT_EQ(CharNextA(text), text + 1);
    EXPECT_EQ(CharNextA(text + 2), text + 2);
    EXPECT_EQ(CharPrevA(text, text + 2), text + 1);
    EXPECT_EQ(CharPrevA(text, text), text);
}
