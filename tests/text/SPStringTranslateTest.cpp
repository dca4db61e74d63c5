#include "text/SPString.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using zk::test::fieldsOf;

namespace {

struct Row {
    char const* text;
    char const* from;
    char const* to;
    char const* opts;
    char const* expected;
    int count;
};

void expectRows(std::initializer_list<Row> rows)
{
    for (Row const& row : rows) {
        SPString text(row.text);

        int const count = text.tr(row.from, row.to, row.opts);

        EXPECT_STREQ(text, row.expected) << row.from << " " << row.to << " " << row.opts;
        EXPECT_EQ(count, row.count) << row.from << " " << row.to << " " << row.opts;
        EXPECT_EQ(text.length(), std::string(row.expected).size());
    }
}

}  // namespace

TEST(SPStringTranslate, replacesCharacters)
{
    expectRows({
        {"abcabc", "ab", "xy", "", "xycxyc", 4},
        {"hello", "a-z", "A-Z", "", "HELLO", 5},
        {"abc", "x", "y", "", "abc", 0},
        {"", "a", "b", "", "", 0},
        {"abc", "", "x", "", "abc", 0},
        {"a-b", "-", "+", "", "a+b", 1},
        {"aab", "aa", "xy", "", "yyb", 2},
    });
}

TEST(SPStringTranslate, anEmptyReplacementCounts)
{
    expectRows({
        {"Hello", "a-z", "", "", "Hello", 4},
        {"Hello", "a-z", "", "c", "Hello", 1},
    });
    SPString text("Hello");
    EXPECT_EQ(text.tr("a-z", nullptr, nullptr), 4);
    EXPECT_EQ(text.tr(nullptr, "x"), 0);
}

TEST(SPStringTranslate, aShortReplacementGoesOnWithItsLastCharacter)
{
    expectRows({
        {"abcd", "a-c", "x", "", "xxxd", 3},
        {"abcd", "abc", "xy", "", "xyyd", 3},
    });
}

TEST(SPStringTranslate, deletesWhatHasNoCounterpart)
{
    expectRows({
        {"abcd", "a-c", "x", "d", "xd", 3},
        {"abcd", "b-c", "", "d", "ad", 2},
        {"abcd", "abc", "xyz", "d", "xyzd", 3},
    });
}

TEST(SPStringTranslate, squeezesByTheResult)
{
    expectRows({
        {"aabbcc", "a-z", "", "s", "abc", 6},
        {"aabb", "ab", "x", "s", "x", 4},
        {"xaab", "a", "x", "s", "xb", 2},     // the x before was not translated
        {"aaxxb", "a", "x", "s", "xxxb", 2},  // characters that are not found are never left out
        {"aabb", "a", "b", "sd", "bbb", 2},
    });
}

TEST(SPStringTranslate, complementTakesTheOthers)
{
    expectRows({
        {"a1b2", "a-z", "-", "c", "a-b-", 2},
        {"a1b2", "a-z", "xy", "c", "ayby", 2},
        {"a1b2", "a-z", "", "cd", "ab", 2},
        {"a1b2", "a-z", "x", "cd", "ab", 2},
        {"a11b", "a-z", "-", "cs", "a-b", 2},
        {"a11b", "a-z", "", "cs", "a1b", 2},
        {"aa11", "a-z", "", "c", "aa11", 2},
        {"-11-", "-", "-", "cs", "--", 2},
    });
}

TEST(SPStringTranslate, unknownOptionsAreIgnored)
{
    expectRows({{"abc", "a", "x", "gzr", "xbc", 1}});
}

TEST(SPStringTranslate, aRangeEndsAtItsUpperBound)
{
    expectRows({
        {"abcdef", "b-d", "1-9", "", "a123ef", 3},
        {"abc-", "a-", "x", "", "xbc-", 1},
        {"cba", "c-a", "x", "", "xba", 1},  // a range that runs backward holds its first character
        {"abc", "a-a", "x", "", "xbc", 1},
        {"abz", "ab", "x-", "", "xxz", 2},  // a range without an upper bound adds nothing
        {"\xE0\xE4\xFF", "\xE0-\xFF", "x", "", "xxx", 3},
        {"\xFF"
         "a",
         "\xFF", "y", "", "ya", 1},
    });
}

TEST(SPStringTranslate, aRangeBehindARangeStartsAtTheFirstCharacter)
{
    // "a-c-e" holds a to c, and then everything up to e: "a" is number 100.
    SPString text("abcde!");

    EXPECT_EQ(text.tr("a-c-e", "x"), 6);

    EXPECT_STREQ(text, "xxxxxx");
}

TEST(SPStringTranslate, aLaterMentionOverwritesTheNumber)
{
    expectRows({{"abc", "abca", "1234", "", "423", 3}});
}

TEST(SPStringTranslate, aSecondRangeStartsAtThePlaceInTheSource)
{
    expectRows({
        // "a-c" becomes "abc"; then "x" is added, and the range at place 4 starts behind character 3, the x.
        {"1234567", "1-7", "a-cx-z", "", "abcxyzz", 7},
        // "ab", then "x": place 3 lies at the end, so that the range adds nothing.
        {"1234567", "1-7", "a-bx-z", "", "abxxxxx", 7},
        // "abcdef", then "1": the range at place 4 starts behind character 3, the d.
        {"123456789", "1-9", "a-f1-g", "", "abcdef1ef", 9},
    });
}

TEST(SPStringTranslate, moreThan255CharactersKeepTheirNumbers)
{
    std::string from, to;
    for (int round = 0; round < 3; ++round)
        for (char c = 'a'; c <= 'z'; ++c) {
            from += std::string(5, c);
            to += std::string(5, char(c - 'a' + 'A'));
        }
    SPString text("hello, world");

    EXPECT_EQ(text.tr(from.c_str(), to.c_str()), 10);

    EXPECT_STREQ(text, "HELLO, WORLD");
}

TEST(SPStringTranslate, argumentsMayBePartsOfTheString)
{
    SPString text("abc");

    EXPECT_EQ(text.tr(text, static_cast<char const*>(text) + 1), 3);

    EXPECT_STREQ(text, "bcc");
}

TEST(SPStringTranslate, aBufferThatIsFullTakesTheSizeOfTheResult)
{
    SPString exact("abc");
    SPString longer(std::string(40, 'a').c_str());
    SPString roomy;
    roomy = "abc";

    exact.tr("a", "x");
    longer.tr("a", "x");
    roomy.tr("a", "x");

    EXPECT_EQ(fieldsOf(exact).allocated, 32u);
    EXPECT_EQ(fieldsOf(exact).allocinc, 32u);
    EXPECT_EQ(fieldsOf(longer).allocated, 64u);
    EXPECT_EQ(fieldsOf(roomy).allocated, 32u);
    EXPECT_STREQ(exact, "xbc");
}

TEST(SPStringTranslate, aResultThatIsShorterKeepsTheBuffer)
{
    SPString text("abc");

    text.tr("a", "", "d");

    EXPECT_STREQ(text, "bc");
    EXPECT_EQ(fieldsOf(text).allocated, 4u);
}

// Against a plain table, for every length up to some blocks, and for lengths at which counters fill.
TEST(SPStringTranslate, longTextsAreTranslatedAndCountedLikeShortOnes)
{
    struct {
        char const* from;
        char const* to;
    } const rows[] = {{"a-z", "A-Z"}, {"a-zA-Z", "A-Za-z"}, {"aeiou", "AEIOU"}, {"a-z", "b-za"}, {"b", "b"}};
    std::vector<std::size_t> lengths{4079, 4080, 4081, 4095, 4096, 4097, 8160, 8161, 100000};
    for (std::size_t length = 1; length < 40; ++length)
        lengths.push_back(length);
    for (auto const& row : rows) {
        char table[256];
        for (int c = 0; c < 256; ++c) {
            SPString one(static_cast<char>(c));
            one.tr(row.from, row.to);
            table[c] = one[0];
        }
        for (std::size_t const length : lengths) {
            std::string source;
            for (std::size_t i = 0; i < length; ++i)
                source += length == 100000 ? 'b' : static_cast<char>(1 + i * 7 % 255);
            SPString text(source.c_str());
            std::string expected;
            int count = 0;
            for (char const c : source) {
                expected += table[static_cast<unsigned char>(c)];
                count += SPString(c).tr(row.from, row.to);
            }

            EXPECT_EQ(text.tr(row.from, row.to), count) << row.from << " " << length;
            EXPECT_STREQ(text, expected.c_str()) << row.from << " " << length;
        }
    }
}
