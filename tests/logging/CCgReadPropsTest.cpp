#include "logging/CCgReadProps.h"
#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using zk::logging::readProperties;

// What a text gives: each pair as "[key]=[value]", or "failed" behind those before the mistake.
std::string parsed(std::string_view bytes)
{
    CCgStringToStringMap map;
    bool const done = readProperties(bytes, &map);
    std::string text;
    for (auto const& [key, value] : map)
        text += "[" + key + "]=[" + value + "]";
    return done ? text : text + "failed";
}

struct Row {
    std::string_view text;
    std::string pairs;
};

TEST(CCgReadProps, followsItsRulesStateByState)
{
    Row const rows[] = {
        {"", ""},
        {"\n\n", ""},
        {"a.b=1", "[a.b]=[1]"},
        {"a.b=1\n", "[a.b]=[1]"},
        {"a.b=1\r\nc=2\r\n", "[a.b]=[1][c]=[2]"},
        {"a.b=\n", "[a.b]=[]"},
        {"a.b=", "[a.b]=[]"},
        {"a.b:1\n", "[a.b]=[1]"},
        {"a.b 1\n", "[a.b]=[1]"},
        {"a.b \t\v\f= \t\v\f1 \n", "[a.b]=[1 ]"},
        {"a.b==1\n", "[a.b]=[=1]"},
        {"a = = 1\n", "[a]=[= 1]"},
        {"# comment = 1\n! another\na=1\n", "[a]=[1]"},
        {"  # comment\n \t! another\n  a=1\n", "[a]=[1]"},
        {"   \na=1\n", "[a]=[1]"},
        {"#comment at the end", ""},
        {"a=1#2!3\n", "[a]=[1#2!3]"},
        {"a=1\na=2\n", "[a]=[2]"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(parsed(row.text), row.pairs) << row.text;
}

TEST(CCgReadProps, failsForKeysWithoutASeparatorOnTheirLine)
{
    EXPECT_EQ(parsed("justkey\n"), "failed");
    EXPECT_EQ(parsed("a=1\njustkey \n"), "[a]=[1]failed");
    EXPECT_EQ(parsed("a=1\n=2\n"), "[a]=[1]failed");  // "=2" is a key
}

TEST(CCgReadProps, failsForABlankAndASeparatorAtALinesBegin)
{
    EXPECT_EQ(parsed(" =1\n"), "failed");
    EXPECT_EQ(parsed("\t:1\n"), "failed");
}

TEST(CCgReadProps, separatorOrBackslashInTheFirstColumnBelongsToTheKey)
{
    EXPECT_EQ(parsed("=abc.d=1\n"), "[=abc.d]=[1]");
    EXPECT_EQ(parsed("\\a=1\n"), "[\\a]=[1]");
}

TEST(CCgReadProps, keyAtTheEndOfTheFileCounts)
{
    EXPECT_EQ(parsed("a.b"), "[a.b]=[]");
    EXPECT_EQ(parsed("a.b "), "[a.b]=[]");
    EXPECT_EQ(parsed("a=\\u00"), "[a]=[]");
    EXPECT_EQ(parsed("a=x\\"), "[a]=[x]");
}

TEST(CCgReadProps, keyHoldsWhatStandsBehindABackslash)
{
    EXPECT_EQ(parsed("a\\ b\\=c\\:d\\\\e\\\tf=1\n"), "[a b=c:d\\e\tf]=[1]");
    EXPECT_EQ(parsed("a\\n=1\n"), "failed");
    EXPECT_EQ(parsed("a\\\n=1\n"), "failed");
}

TEST(CCgReadProps, valueEndingInABackslashGoesOnInTheNextLine)
{
    EXPECT_EQ(parsed("a=one  \\\n   two\n"), "[a]=[one  two]");
    EXPECT_EQ(parsed("a=one\\\r\n\t two\r\n"), "[a]=[onetwo]");
    EXPECT_EQ(parsed("a=one\\\n\\\n two\n"), "[a]=[onetwo]");
    EXPECT_EQ(parsed("a=one\\\n  \nb=2\n"), "[a]=[one][b]=[2]");
    EXPECT_EQ(parsed("a \\\n b\n"), "[a]=[b]");
}

TEST(CCgReadProps, emptyLineBehindAJoinedOneIsSkipped)
{
    EXPECT_EQ(parsed("a=one\\\n\nb=2\n"), "[a]=[oneb=2]");
}

TEST(CCgReadProps, valueHoldsBlanksQuotesAndBackslashesBehindABackslash)
{
    EXPECT_EQ(parsed("a=\\ \\\t\\\v\\\f\\\"\\'\\\\x\n"), "[a]=[ \t\v\f\"'\\x]");
}

TEST(CCgReadProps, unknownEscapeFailsAndIsTold)
{
    testing::internal::CaptureStderr();

    EXPECT_EQ(parsed("key=a\\n\n"), "failed");

    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "CCG0052E The value of property 'key' in the properties file could not be parsed, because it "
              "contains a backslash character that is not part of a valid escape sequence.\n");
}

TEST(CCgReadProps, fourDigitsAreACodePoint)
{
    EXPECT_EQ(parsed("a=\\u0041\n"), "[a]=[A]");
    EXPECT_EQ(parsed("a=x\\U0041y\n"), "[a]=[xAy]");
    EXPECT_EQ(parsed("a=\\u20AC\n"), "[a]=[\xE2\x80\x82]");  // 0x2002: the letters count from 0 on
    EXPECT_EQ(parsed("a=\\u004\n"), "failed");
    EXPECT_EQ(parsed("a=\\u00g1\n"), "failed");
}

TEST(CCgReadProps, lettersAmongTheDigitsCountFromZero)
{
    EXPECT_EQ(parsed("a=x\\u000ay\n"), "[a]=[x]");  // a NUL, which ends the text
    EXPECT_EQ(parsed("a=\\u004B\n"), "[a]=[A]");
    EXPECT_EQ(parsed("a=\\u004f\n"), "[a]=[E]");
}

TEST(CCgReadProps, escapesAddUpWithinAFile)
{
    EXPECT_EQ(parsed("a=\\u0041\nb=\\u0041\n"), "[a]=[A][b]=[\xC2\x82]");
    // The next file starts anew.
    EXPECT_EQ(parsed("a=\\u0041\n"), "[a]=[A]");
}

TEST(CCgReadProps, codePointsThatAddUpEndAtTheLastOne)
{
    std::string text("a=");
    for (int i = 0; i < 100000; ++i)
        text += "\\u9999";

    CCgStringToStringMap map;
    ASSERT_TRUE(readProperties(text, &map));

    EXPECT_TRUE(map.find("a")->ends_with("\xFD\xBF\xBF\xBF\xBF\xBF"));
}

TEST(CCgReadProps, nulEndsAKeyAndAValue)
{
    EXPECT_EQ(parsed(std::string_view("a\0b=1\0002\n", 8)), "[a]=[1]");
}

TEST(CCgReadProps, bytesAboveAsciiAreLettersLikeOthers)
{
    EXPECT_EQ(parsed("\xC3\xA4=\xFF\xFE\n"), "[\xC3\xA4]=[\xFF\xFE]");
}

TEST(CCgReadProps, fileThatCannotBeReadFails)
{
    TemporaryFolder const folder;
    CCgStringToStringMap map;

    EXPECT_FALSE(CCgReadProps(folder.path("missing").c_str(), &map));
    EXPECT_FALSE(CCgReadProps(folder.path().c_str(), &map));
    EXPECT_FALSE(CCgReadProps(nullptr, &map));
}

TEST(CCgReadProps, longFileIsReadWhole)
{
    TemporaryFolder const folder;
    folder.write("long", "a=" + std::string(100000, 'x') + "\\\n" + std::string(70000, 'y') + "\nb=2\n");
    CCgStringToStringMap map;

    ASSERT_TRUE(CCgReadProps(folder.path("long").c_str(), &map));

    EXPECT_EQ(map.find("a")->size(), 170000u);
    EXPECT_EQ(*map.find("b"), "2");
}

}  // namespace
