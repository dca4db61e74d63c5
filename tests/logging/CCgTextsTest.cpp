#include "logging/CCgI18Msg.h"
#include "logging/CCgInternalError.h"
#include "logging/CCgLevel.h"
#include "logging/CCgMsgId.h"
#include "logging/CCgProps.h"
#include "logging/CCgStrTok.h"
#include "logging/CCgStringGroup.h"
#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

TEST(CCgLevel, isReadFromANumberOrAName)
{
    struct Row {
        char const* text;
        CCgLevel level;
    };
    Row const rows[] = {
        {"FATAL", 7000},
        {"ERROR", 6000},
        {"WARN", 5000},
        {"INFO", 4000},
        {"DEBUG_MIN", 3000},
        {"MIN", 3000},
        {"DEBUG_MID", 2000},
        {"MID", 2000},
        {"DEBUG_MAX", 1000},
        {"MAX", 1000},
        {"ALL", 0},
        {"OFF", 9999},
        {"warn", 5000},
        {"WARNING", 5000},
        {"MINIMUM", 3000},
        {"ALLOW", 0},
        {"off", 9999},
        {"4500", 4500},
        {" -7x", -7},
        {"+5", 5},
        {"", 0},
        {"  \t", 0},
        {"unknown", -9999},
        {"WAR", -9999},
        {"DEBUG", -9999},
        {" WARN", -9999},
        {"-", -9999},
        {"99999999999", std::numeric_limits<int>::max()},
    };
    for (Row const& row : rows)
        EXPECT_EQ(ccg_parseLevel(row.text), row.level) << row.text;
    EXPECT_EQ(ccg_parseLevel(nullptr), -9999);
}

TEST(CCgMsgId, isClassifiedByItsLettersDigitsAndSeverity)
{
    struct Row {
        char const* text;
        char const* name;
        int code, length, severityAt;
    };
    Row const rows[] = {
        {"ABCDEF123E", "Norvane6.3.1", 631, 10, 9},
        {"ABCDE1234W", "Norvane5.4.1", 541, 10, 9},
        {"ABCDE123I", "Norvane5.3.1", 531, 9, 8},
        {"ABCDE12E", "Norvane5.2.1", 521, 8, 7},
        {"ABCD1234E", "Norvane4.4.1", 441, 9, 8},
        {"ABCD123E", "Norvane4.3.1", 431, 8, 7},
        {"ABCD12345E", "Norvane4.5.1", 451, 10, 9},
        {"ABC1234E", "Norvane3.4.1", 341, 8, 7},
        {"ABC123W", "Norvane3.3.1", 331, 7, 6},
        {"abc12345I", "Norvane3.5.1", 351, 9, 8},
        {"ABC123456E", "Norvane3.6.1", 361, 10, 9},
        {"CCGBC0020E Out of memory.", "Norvane5.4.1", 541, 10, 9},
        {"CCGLG01E No listeners", "Norvane5.2.1", 521, 8, 7},
    };
    for (Row const& row : rows) {
        CCgMsgIdForm const form = ccg_classifyMsgId(row.text);
        EXPECT_STREQ(form.name, row.name) << row.text;
        EXPECT_EQ(form.code, row.code) << row.text;
        EXPECT_EQ(form.length, row.length) << row.text;
        EXPECT_EQ(form.severityAt, row.severityAt) << row.text;
    }
}

TEST(CCgMsgId, otherTextHasNone)
{
    for (char const* const text :
         {"", "ABC12W", "ABC123", "AB1234E", "1BC123E", "ABC123X", "ABC123e", "ABCDEF12E", "ABCDEFG123E",
          "ABC1234567E", "ABCDE1E", "ABC 123E", "ABCD12E", "plain text of a message"})
        EXPECT_EQ(ccg_classifyMsgId(text).length, 0) << text;
}

TEST(CCgStrTok, takesTheRunsBetweenSeparators)
{
    CCgStrTok tokens("  a, bc,,d ", " ,");

    EXPECT_EQ(tokens.next(), "a");
    EXPECT_EQ(tokens.next(), "bc");
    EXPECT_TRUE(tokens.hasMore());
    EXPECT_EQ(tokens.next(), "d");
    EXPECT_FALSE(tokens.hasMore());
    EXPECT_EQ(tokens.next(), std::nullopt);
    EXPECT_EQ(tokens.next(), std::nullopt);
}

TEST(CCgStrTok, withoutSeparatorsEachByteIsAToken)
{
    CCgStrTok tokens("a b");

    EXPECT_EQ(tokens.next(), "a");
    EXPECT_EQ(tokens.next(), " ");
    EXPECT_EQ(tokens.next(), "b");
    EXPECT_EQ(tokens.next(), std::nullopt);
}

TEST(CCgStringToStringMap, keepsTheOrderAndReplacesInPlace)
{
    CCgStringToStringMap map;
    map.set("b", "1");
    map.set("a", "2");
    map.set("b", "3");

    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(map.at(0), (std::pair<std::string, std::string>("b", "3")));
    EXPECT_EQ(map.at(1).first, "a");
    EXPECT_EQ(map.find("B"), nullptr);
}

TEST(CCgStringGroup, refusesANameThatIsThere)
{
    CCgStringGroup group;

    EXPECT_TRUE(group.add("a"));
    EXPECT_FALSE(group.add("a"));
    EXPECT_TRUE(group.add("A"));
    EXPECT_TRUE(group.remove("a"));
    EXPECT_FALSE(group.remove("a"));
    EXPECT_EQ(group.size(), 1u);
}

TEST(CCgProps, writesEachTypeAsText)
{
    CCgStringToStringMap map;
    CCgPropsSet(map, "boolean", true);
    CCgPropsSet(map, "int32", std::int32_t(-5));
    CCgPropsSet(map, "int64", std::numeric_limits<std::int64_t>::min());
    CCgPropsSet(map, "float", 0.5f);
    CCgPropsSet(map, "double", -2.25);
    CCgPropsSet(map, "char", 'A');

    EXPECT_EQ(*map.find("boolean"), "true");
    EXPECT_EQ(*map.find("int32"), "-5");
    EXPECT_EQ(*map.find("int64"), "-9223372036854775808");
    EXPECT_EQ(*map.find("float"), "0.500000");
    EXPECT_EQ(*map.find("double"), "-2.250000");
    EXPECT_EQ(*map.find("char"), "65");
}

TEST(CCgProps, readsBackWhatItWrote)
{
    CCgStringToStringMap map;
    CCgPropsSet(map, "boolean", true);
    CCgPropsSet(map, "int64", std::numeric_limits<std::int64_t>::min());
    CCgPropsSet(map, "double", -2.25);
    CCgPropsSet(map, "greatest", std::numeric_limits<double>::max());
    CCgPropsSet(map, "char", 'A');
    bool found = false;

    EXPECT_TRUE(CCgPropsGetBoolean(map, "boolean", found));
    EXPECT_TRUE(found);
    EXPECT_EQ(CCgPropsGetInt64(map, "int64", found), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(CCgPropsGetDouble(map, "double", found), -2.25);
    EXPECT_EQ(CCgPropsGetFloat(map, "double", found), -2.25f);
    EXPECT_EQ(CCgPropsGetDouble(map, "greatest", found), std::numeric_limits<double>::max());
    EXPECT_EQ(CCgPropsGetChar(map, "char", found), 'A');
}

TEST(CCgProps, textOfAnotherTypeIsNotFound)
{
    CCgStringToStringMap map;
    map.set("a", "text");
    bool found = true;

    EXPECT_EQ(CCgPropsGetInt32(map, "a", found), 0);
    EXPECT_FALSE(found);
    found = true;
    EXPECT_FALSE(CCgPropsGetBoolean(map, "a", found));
    EXPECT_FALSE(found);
}

TEST(CCgI18Msg, isFormattedWithItsParameters)
{
    CCgI18Msg message(nullptr, 0, 0, "%2$s has %1$d units%3$c");
    message.add(std::int32_t(12));
    message.add("model.cpp");
    message.add('.');

    EXPECT_EQ(taken(ccg_messageText(message)), "model.cpp has 12 units.");
}

TEST(CCgI18Msg, thatCannotBeFormattedIsItsTextAsItStands)
{
    EXPECT_EQ(taken(ccg_messageText(CCgI18Msg(nullptr, 0, 0, "50% of all"))), "50% of all");
    EXPECT_EQ(taken(ccg_messageText(CCgI18Msg(nullptr, 0, 0, "%s"))), "%s");
}

TEST(CCgI18Msg, ofACatalogThatIsMissingIsItsDefaultText)
{
    CCgI18Msg message("no such catalog", 1, 2, "default %s");
    message.add("text");

    EXPECT_EQ(taken(ccg_messageText(message)), "default text");
}

TEST(CCgI18Msg, endsAtANul)
{
    CCgI18Msg message(nullptr, 0, 0, "ab%ccd");
    message.add(false);

    EXPECT_EQ(taken(ccg_messageText(message)), "ab");
}

TEST(CCgI18Msg, withoutATextIsEmpty)
{
    EXPECT_EQ(taken(ccg_messageText(CCgI18Msg(nullptr, 0, 0, nullptr))), "");
}

TEST(CCgInternalError, textsAreThoseOfTheirKeys)
{
    using zk::logging::internalText;

    EXPECT_EQ(internalText(1), "CCGLG01E No listeners are registered with the logger %s.");
    EXPECT_EQ(internalText(33),
              "CCGBC0033E A \"NULL\" value for parameter %1$s was passed to the function %2$s. "
              "The function call will be ignored.");
    EXPECT_EQ(internalText(76),
              "CCGFF0020W The property 'mode' for message ID filter %1s was set to unknown value "
              "%2s. Expected values are 'BLOCK' or 'PASSTHRU'.");
    EXPECT_EQ(internalText(93), "CCGWH0092E An IPC channel could not be closed. The error code is %1$d.");
    EXPECT_EQ(internalText(95), "CCGWH0094W A message is discarded due to timeout.");
    EXPECT_EQ(internalText(4), "unused004");
    EXPECT_EQ(internalText(131), "unused131");
}

}  // namespace
