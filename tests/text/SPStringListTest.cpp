#include "text/SPStringList.h"

#include "platform/classlib/textTables.h"
#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

using zk::test::fieldsOf;

namespace {

std::string split(char const* text, char const* pattern, int limit = -1)
{
    return std::string(SPString(text).split(pattern, limit).join("|"));
}

SPStringList listOf(std::initializer_list<char const*> texts)
{
    SPStringList list;
    for (char const* text : texts)
        list.push(text);
    return list;
}

}  // namespace

TEST(SPStringList, addsNoFields)
{
    static_assert(sizeof(SPStringList) == sizeof(SPList<SPString>));
    static_assert(std::is_base_of_v<SPList<SPString>, SPStringList>);
}

TEST(SPStringList, splitsAtMatches)
{
    struct {
        char const* text;
        char const* pattern;
        int limit;
        char const* fields;
        int count;
    } const rows[] = {
        {"a,b,c", ",", -1, "a|b|c", 3},
        {"a,b,,", ",", -1, "a|b", 2},
        {"a,b,,", ",", 4, "a|b|", 3},
        {"a,b,,", ",", 9, "a|b|", 3},
        {",a", ",", -1, "|a", 2},
        {"a,b,c", ",", 2, "a|b,c", 2},
        {"a,b,c", ",", 1, "a,b,c", 1},
        {"a,b,c", ",", 0, "a,b,c", 1},
        {"a1b", "([0-9])", -1, "a|1|b", 3},
        {"a1b2c", "([0-9])", 2, "a|1|b2c", 3},
        {"a1b", "(x)|([0-9])", -1, "a|b", 2},
        {"abc", ",", -1, "abc", 1},
        {"", ",", -1, "", 0},
        {",,,", ",", -1, "", 0},
        {"a  b", " +", -1, "a|b", 2},
        {"aXbxc", "x", -1, "aXb|c", 2},
        {"abab", "^a", -1, "|bab", 2},
        {"aab", "^a", -1, "||b", 3},
    };
    for (auto const& row : rows) {
        SPStringList fields;

        int const count = fields.split(row.text, row.pattern, row.limit);

        EXPECT_STREQ(fields.join("|"), row.fields) << row.text << " by " << row.pattern;
        EXPECT_EQ(count, row.count) << row.text << " by " << row.pattern;
        EXPECT_EQ(fields.count(), row.count);
    }
}

TEST(SPStringList, splitsIntoCharacters)
{
    EXPECT_EQ(split("abc", ""), "a|b|c");
    EXPECT_EQ(split("x", ""), "x");
    EXPECT_EQ(split("abc", "", 2), "a|b|c");
    EXPECT_EQ(split("", ""), "");
}

TEST(SPStringList, splitsIntoWords)
{
    EXPECT_EQ(split("  a \t b\nc  ", "' '"), "a|b|c");
    EXPECT_EQ(split("a b c", "' '", 2), "a|b|c");
    EXPECT_EQ(split("", "' '"), "");
    EXPECT_EQ(split(" \n", "' '"), "");
    EXPECT_EQ(split("a\rb\vc", "' '"), "a\rb\vc");
}

TEST(SPStringList, anEmptyMatchEndsSplittingWithoutALimit)
{
    EXPECT_EQ(split("abc", "x*"), "abc");
    EXPECT_EQ(split("xxabc", "x*"), "|abc");
    EXPECT_EQ(split("abc", "$"), "abc");
}

TEST(SPStringList, anEmptyMatchComesAgainUpToALimit)
{
    EXPECT_EQ(split("abc", "x*", 3), "||abc");
}

TEST(SPStringList, splitAppends)
{
    SPStringList list = listOf({"old"});

    EXPECT_EQ(list.split("a,b", ","), 3);

    EXPECT_STREQ(list.join("|"), "old|a|b");
}

TEST(SPStringList, splitWithoutALimitRemovesEmptyElementsOfEarlierSplitsToo)
{
    SPStringList list;
    list.split("a,,,", ",", 9);
    EXPECT_EQ(list.count(), 3);

    list.split("", ",");
    EXPECT_STREQ(list.join("|"), "a");
    list.push("");
    list.split("", "");
    EXPECT_STREQ(list.join("|"), "a");
    list.push("");
    list.split(" ", "' '");

    EXPECT_STREQ(list.join("|"), "a");
}

TEST(SPStringList, splitsItsOwnElement)
{
    SPStringList list = listOf({"one,two,three,four,five,six,seven,eight,nine,ten,eleven,twelve"});

    list.split(list[0], ",");

    EXPECT_EQ(list.count(), 13);
    EXPECT_EQ(list[12], "twelve");
}

TEST(SPStringList, splitOfNullTextsIsEmpty)
{
    EXPECT_EQ(SPStringList().split(nullptr, ","), 0);
    EXPECT_EQ(SPStringList().split(nullptr, "", 3), 0);
}

TEST(SPStringList, aBadExpressionSplitsNothing)
{
    testing::internal::CaptureStderr();
    std::string const fields = split("a**b", "a**");
    int const found = listOf({"a", "a**"}).grep("a**").count();
    std::string const messages = testing::internal::GetCapturedStderr();

    EXPECT_EQ(fields, "a**b");
    EXPECT_EQ(found, 0);
    EXPECT_NE(messages.find("nested *?+"), messages.npos);
}

TEST(SPStringList, splitsAMillionFields)
{
    std::string text;
    for (int i = 0; i < 1000000; ++i)
        text += "ab,";
    SPStringList list;

    EXPECT_EQ(list.split(text.c_str(), ","), 1000000);

    EXPECT_EQ(list[999999], "ab");
}

TEST(SPStringList, joinsWithASeparator)
{
    EXPECT_STREQ(listOf({"a", "b", "c"}).join(", "), "a, b, c");
    EXPECT_STREQ(listOf({"a", "b"}).join(""), "ab");
    EXPECT_STREQ(listOf({"a", "b"}).join(nullptr), "ab");
    EXPECT_STREQ(listOf({"a"}).join(", "), "a");
    EXPECT_STREQ(listOf({"", ""}).join(","), ",");
    EXPECT_STREQ(SPStringList().join(","), "");
}

TEST(SPStringList, joinGrowsAsAppendingDoes)
{
    SPString appended;
    SPStringList list;
    for (int i = 0; i < 100; ++i) {
        list.push(std::string(std::size_t(i), 'x').c_str());
        appended += list[i];
        if (i < 99)
            appended += "--";
    }

    SPString const joined = list.join("--");

    EXPECT_STREQ(joined, appended);
    EXPECT_EQ(fieldsOf(joined).allocated, fieldsOf(appended).allocated);
    EXPECT_EQ(fieldsOf(SPStringList().join("")).allocated, 32u);
}

TEST(SPStringList, joinsLongListsOfTextsOfAnyLength)
{
    for (std::size_t longest : {0, 5, 3000}) {
        SPStringList list;
        std::string expected;
        for (std::size_t i = 0; i < 5000; ++i) {
            // Short ones first, and none at all at first.
            std::string const text(longest == 0 || i < 2100 ? 0 : i * i % longest, 'x');
            list.push(text.c_str());
            expected += (i ? "," : "") + text;
        }

        EXPECT_STREQ(list.join(","), expected.c_str());
        EXPECT_EQ(list.join(",").length(), expected.size());
        EXPECT_EQ(list.join("").length(), expected.size() - 4999);
    }
}

// Short texts and separators are copied in blocks where the buffers allow it.
TEST(SPStringList, joinsTextsAroundTheSizeOfABlock)
{
    std::mt19937 chance(3);
    for (int round = 0; round < 2000; ++round) {
        std::string const separator(chance() % 20, '-');
        SPStringList list;
        std::string expected;
        for (unsigned i = 0, count = 1 + chance() % 6; i < count; ++i) {
            std::string const text(chance() % 20, static_cast<char>('a' + i));
            SPString element(text.c_str());  // in a buffer that just holds it
            SPString roomy;
            roomy = element;  // in one of 32 bytes
            list.push(chance() % 2 ? std::move(element) : std::move(roomy));
            expected += (i ? separator : "") + text;
        }

        SPString const joined = list.join(separator.c_str());

        ASSERT_STREQ(joined, expected.c_str());
        ASSERT_EQ(joined.length(), expected.size());
    }
}

TEST(SPStringList, aMatchAppendsItsGroups)
{
    SPStringList list = listOf({"old"});

    EXPECT_EQ(list.m("([a-z]+)=([0-9]+)", "key=42"), 3);
    EXPECT_EQ(list.m("x", "key=42"), 0);
    EXPECT_EQ(list.m("K", "key", "i"), 1);

    EXPECT_STREQ(list.join("|"), "old|key=42|key|42|k");
}

TEST(SPStringList, isMadeFromTheGroupsOfAMatch)
{
    SPStringList const groups("([a-z]+)=([0-9]+)", "key=42");
    SPStringList const none("x", "key=42", "");
    SPStringList const folded("(K)", "key", "i");

    EXPECT_STREQ(groups.join("|"), "key|42");
    EXPECT_EQ(none.count(), 0);
    EXPECT_EQ(fieldsOf(groups).first, 11);
    EXPECT_EQ(fieldsOf(none).first, 11);
    EXPECT_STREQ(folded.join("|"), "k");
}

TEST(SPStringList, grepPicksTheElementsThatMatch)
{
    SPStringList const list = listOf({"abc", "xyz", "ABC", "cab"});

    EXPECT_STREQ(list.grep("^ab").join("|"), "abc");
    EXPECT_STREQ(list.grep("ab", "i").join("|"), "abc|ABC|cab");
    EXPECT_EQ(list.grep("q").count(), 0);
    EXPECT_EQ(list.count(), 4);
}

TEST(SPStringList, aCopyStartsWith20Slots)
{
    SPStringList list(7);
    list.push("a");
    list.push("b");

    SPStringList const copy(list);

    EXPECT_STREQ(copy.join("|"), "a|b");
    EXPECT_EQ(fieldsOf(copy).allocated, 20);
    EXPECT_EQ(fieldsOf(copy).first, 10);
}

TEST(SPStringList, assignmentKeepsTheSlots)
{
    SPStringList list(7);
    list.push("old");
    SPStringList const& same = list;

    list = same;
    EXPECT_STREQ(list.join("|"), "old");
    list = listOf({"a", "b"}).reverse();
    EXPECT_STREQ(list.join("|"), "b|a");
    SPStringList const other = listOf({"c"});
    SPStringList target(7);
    target = other;

    EXPECT_STREQ(target.join("|"), "c");
    EXPECT_EQ(fieldsOf(target).allocated, 7);
}

TEST(SPStringList, movesHandTheSlotsOver)
{
    SPStringList list = listOf({"a", "b"});

    SPStringList target(std::move(list));
    SPStringList assigned;
    assigned = std::move(target);

    EXPECT_STREQ(assigned.join("|"), "a|b");
    EXPECT_EQ(list.count(), 0);
    list.push("c");
    EXPECT_STREQ(list.join("|"), "c");
}

TEST(SPStringList, writesALineForEachElement)
{
    std::ostringstream stream;

    stream << listOf({"a", "", "b"});

    EXPECT_EQ(stream.str(), "a\n\nb\n");
}

TEST(SPStringList, readsTheLinesOfAStream)
{
    std::istringstream stream("first\n\n  third\nlast");
    SPStringList list = listOf({"old"});

    stream >> list;

    EXPECT_STREQ(list.join("|"), "first||  third|last");
}

TEST(SPStringList, readsNothingFromAnEmptyStream)
{
    std::istringstream stream("");
    SPStringList list = listOf({"old"});

    stream >> list;

    EXPECT_EQ(list.count(), 0);
}

TEST(SPStringList, fieldsHaveTheBufferOfAnElementThatWasAssigned)
{
    std::string const longText(40, 'x');
    SPStringList pushed;
    pushed.push(SPString("abc"));
    SPStringList const fields = SPString(("abc," + longText).c_str()).split(",");
    SPStringList const groups("(a)(b*)", "a");
    SPStringList const characters = SPString("ab").split("");

    EXPECT_EQ(fieldsOf(fields[0]).allocated, 32u);
    EXPECT_EQ(fieldsOf(fields[1]).allocated, 41u);
    EXPECT_EQ(fieldsOf(fields[1]).allocinc, 32u);
    EXPECT_EQ(fieldsOf(groups[0]).allocated, 32u);
    EXPECT_EQ(fieldsOf(characters[1]).allocated, 32u);
    EXPECT_EQ(fieldsOf(groups[1]).allocated, 32u);
}

TEST(SPStringList, aSplitThatLeavesNothingPassesTheSlotsOfItsFields)
{
    SPStringList list;

    list.split(",,,", ",");

    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(fieldsOf(list).first, 13);
}

TEST(SPStringList, itsOwnElementCanBeMatchedWhileItGrows)
{
    SPStringList list = listOf({"abcdefghijklmnopq"});

    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(list.m("(a)(b)(c)(d).*", list[0]), 5);

    EXPECT_EQ(list.count(), 51);
    EXPECT_EQ(list[50], "d");
    EXPECT_EQ(list[46], "abcdefghijklmnopq");
}

TEST(SPStringList, joinsElementsUpToTheirNul)
{
    SPStringList list = listOf({"ab", "c"});
    list[0] += '\0';

    EXPECT_STREQ(list.join("-"), "ab-c");
    EXPECT_EQ(list.join("-").length(), 4u);
}

TEST(SPStringList, everyUseOfABadExpressionIsReportedInFull)
{
    static ZkText const texts[] = {{49972, "No expression: "}, {49973, "Have another look at it."}};
    zkRegisterTexts(texts, std::size(texts));
    SPString text("a**b");
    SPStringList list = listOf({"a"});
    auto const printedBy = [](auto operation) {
        testing::internal::CaptureStderr();
        operation();
        return testing::internal::GetCapturedStderr();
    };
    auto const withoutReturns = [](std::string printed) {
        printed.erase(std::remove(printed.begin(), printed.end(), '\r'), printed.end());
        return printed;
    };
    std::string const report = "regerror: nested *?+\nNo expression: a**.\nHave another look at it.\n"
                               "regerror: NULL parameter\n";

    EXPECT_EQ(withoutReturns(printedBy([&] { text.s("a**", "x", "g"); })), report);
    EXPECT_EQ(withoutReturns(printedBy([&] { text.s("a**", "x", "i"); })), report);
    EXPECT_EQ(withoutReturns(printedBy([&] { text.m("a**"); })), report);
    EXPECT_EQ(withoutReturns(printedBy([&] { text.split("a**"); })), report);
    EXPECT_EQ(withoutReturns(printedBy([&] { list.grep("a**"); })), report);
    EXPECT_EQ(withoutReturns(printedBy([&] { list.m("a**", "a"); })), report);
    zkUnregisterTexts(texts);
}
