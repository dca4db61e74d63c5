#include "logging/CCgMisc.h"
#include "logging/CCgResult.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

namespace {

using namespace zk::logging;

TEST(CCgMisc, numberIsWhatATextBeginsWith)
{
    EXPECT_EQ(scanInt32("42"), 42);
    EXPECT_EQ(scanInt32(" \t\r\n-7 files"), -7);
    EXPECT_EQ(scanInt32("+3.9"), 3);
    EXPECT_EQ(scanInt32("0x10"), 0);
    EXPECT_EQ(scanInt64("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(scanInt64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(CCgMisc, textWithoutADigitAtItsBeginIsNoNumber)
{
    for (char const* text : {"", " ", "-", "+", "+-1", "x1", "- 1", ".5"})
        EXPECT_EQ(scanInt32(text), std::nullopt) << text;
}

TEST(CCgMisc, numberBeyondTheTypeIsItsNearestValue)
{
    EXPECT_EQ(scanInt32("2147483648"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(scanInt32("-99999999999999999999999"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(scanInt64("99999999999999999999999"), std::numeric_limits<std::int64_t>::max());
}

TEST(CCgMisc, decimalFractionHasAPointInEveryLocale)
{
    EXPECT_EQ(scanDouble(" 2.5x"), 2.5);
    EXPECT_EQ(scanDouble("+1e3"), 1000.0);
    EXPECT_EQ(scanDouble("text"), std::nullopt);
    EXPECT_EQ(scanDouble("+-1"), std::nullopt);
}

TEST(CCgMisc, booleanIsOneOfTwoWordsInAnyCase)
{
    EXPECT_EQ(scanBoolean("TRUE"), true);
    EXPECT_EQ(scanBoolean("false"), false);
    EXPECT_EQ(scanBoolean("on"), std::nullopt);
    EXPECT_EQ(scanBoolean(""), std::nullopt);
}

TEST(CCgMisc, caseCountsForNoLetterOfAscii)
{
    EXPECT_TRUE(sameIgnoringCase("PassThru", "PASSTHRU"));
    EXPECT_FALSE(sameIgnoringCase("PASS", "PASSTHRU"));
    EXPECT_FALSE(sameIgnoringCase("[", "{"));
}

TEST(CCgMisc, newTextIsACopyForTheCaller)
{
    char* const text = newText("abc");

    EXPECT_STREQ(text, "abc");
    std::free(text);
}

TEST(CCgMisc, asciiIsTheSameInEveryCodePage)
{
    EXPECT_EQ(utf8OfProcessText("plain text"), "plain text");
    EXPECT_EQ(processTextOfUtf8("plain text"), "plain text");
}

TEST(CCgResult, successIsAMinusAndZero)
{
    CCgResult const result;

    EXPECT_TRUE(result.ok());
    EXPECT_EQ(result.status, '-');
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(textOf(result), "");
}

TEST(CCgResult, libraryErrorHasTheTextOfTheLibrary)
{
    EXPECT_EQ(textOf({'p', 2}), std::strerror(2));
}

TEST(CCgResult, systemErrorHasTheSentenceOfTheSystemWithoutALineEnd)
{
    std::string const text = textOf({'w', 2});

    EXPECT_FALSE(text.empty());
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
    EXPECT_LE(text.size(), 511u);
}

TEST(CCgResult, systemErrorWithoutASentenceIsItsNumber)
{
    EXPECT_EQ(textOf({'w', 0x2FFFFFFF}), "error 805306367");
}

}  // namespace
