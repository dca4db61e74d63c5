#include "text/SPString.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <string>

using zk::test::fieldsOf;

namespace {

struct Row {
    char const* text;
    char const* pattern;
    char const* replacement;
    char const* opts;
    char const* expected;
    int count;
};

void expectRows(std::initializer_list<Row> rows)
{
    for (Row const& row : rows) {
        SPString text(row.text);

        int const count = text.s(row.pattern, row.replacement, row.opts);

        EXPECT_STREQ(text, row.expected) << row.text << " " << row.pattern;
        EXPECT_EQ(count, row.count) << row.text << " " << row.pattern;
        EXPECT_EQ(text.length(), std::string(row.expected).size());
    }
}

// The plain way to replace all: one match after the other, what stands behind it first, as a string of its
// own.
int substituteEndsFirst(SPString& text, char const* pattern, char const* replacement)
{
    SPString head(text);
    if (!head.m(pattern))
        return 0;
    // Where the match ends: the longest end that is kept when the match is replaced by a mark.
    SPString marked(text);
    marked.s(pattern, "\x01");
    int const start = marked.index("\x01");
    std::size_t const behind = marked.length() - static_cast<std::size_t>(start) - 1;
    std::size_t const end = text.length() - behind;
    int count = 0;
    if (end < text.length() && end > 0) {
        SPString tail(text.substr(end));
        count = substituteEndsFirst(tail, pattern, replacement);
        text.substr(end) = tail;
    }
    SPString match(head.substr(0, end));
    match.s(pattern, replacement);
    text.substr(0, end) = match;
    return count + 1;
}

}  // namespace

TEST(SPStringSubstitute, replacesTheFirstMatch)
{
    expectRows({
        {"abcabc", "b", "x", "", "axcabc", 1},
        {"abc", "x", "y", "", "abc", 0},
        {"abc", "b", "", "", "ac", 1},
        {"abc", "", "-", "", "-abc", 1},
        {"abc", "$", "-", "", "abc-", 1},
        {"", "^", "x", "", "x", 1},
        {"abc", "B", "x", "", "abc", 0},
        {"abc", "B", "x", "i", "axc", 1},
        {"aBc", "[a-b]+", "x", "i", "xc", 1},
    });
}

TEST(SPStringSubstitute, replacesEveryMatchWithG)
{
    expectRows({
        {"abcabc", "b", "x", "g", "axcaxc", 2},
        {"aaa", "a", "bb", "g", "bbbbbb", 3},
        {"aaa", "a", "", "g", "", 3},
        {"a,b,,c", ",", "--", "g", "a--b----c", 3},
        {"AbaB", "b", "x", "gi", "Axax", 2},
        {"AbaB", "(b)", "<$1>", "ig", "A<b>a<B>", 2},
    });
}

TEST(SPStringSubstitute, theTextBehindAMatchIsAStringOfItsOwn)
{
    expectRows({
        {"aaab", "^a", "x", "g", "xxxb", 3},
        {"abab", "^ab", "x", "g", "xx", 2},
        {"baab", "^a", "x", "g", "baab", 0},
    });
}

TEST(SPStringSubstitute, anEmptyMatchIsReplacedOnceAndEndsTheSearch)
{
    expectRows({
        {"abc", "x*", "-", "g", "-abc", 1},
        {"xxabc", "x*", "-", "g", "--abc", 2},
        {"xx", "x*", "-", "g", "-", 1},
        {"", "x*", "-", "g", "-", 1},
        {"abc", "^", "-", "g", "-abc", 1},
        {"abc", "$", "-", "g", "abc-", 1},
        {"abc", "b|$", "-", "g", "a-c-", 2},
    });
}

TEST(SPStringSubstitute, aReplacementMayHoldGroups)
{
    expectRows({
        {"key=42", "([a-z]+)=([0-9]+)", "$2=$1", "", "42=key", 1},
        {"key=42", "([a-z]+)=([0-9]+)", "[$&]", "", "[key=42]", 1},
        {"key=42", "([a-z]+)=([0-9]+)", "[$0]", "", "[key=42]", 1},
        {"abc", "b", "$1", "", "ac", 1},
        {"ab", "(a)", "$10", "", "a0b", 1},
        {"b", "(a)|(b)", "<$1$2>", "", "<b>", 1},
        {"a1b2", "([a-z])([0-9])", "$2$1", "g", "1a2b", 2},
        {"AB", "(a)(b)", "$2$1", "i", "BA", 1},
    });
}

TEST(SPStringSubstitute, otherDollarsAndBackslashesStandForThemselves)
{
    expectRows({
        {"a", "a", "$", "", "$", 1},
        {"a", "a", "$x", "", "$x", 1},
        {"a", "a", "$$", "", "$$", 1},
        {"a", "a", "$$&", "", "$a", 1},
        {"a", "a", "\\$", "", "$", 1},
        {"a", "a", "\\\\$", "", "\\$", 1},
        {"a", "a", "\\\\$&", "", "\\a", 1},
        {"a", "a", "\\$&", "", "$&", 1},
        {"a", "a", "\\n$", "", "\\n$", 1},
        {"a", "a", "$\\", "", "$\\", 1},
        {"a", "a", "\\n", "", "\\n", 1},
        {"a", "a", "\\\\", "", "\\\\", 1},
    });
}

TEST(SPStringSubstitute, argumentsMayBePartsOfTheString)
{
    SPString text("abc");

    int const count = text.s(text, text);
    EXPECT_EQ(count, 1);
    EXPECT_STREQ(text, "abc");
    text.s("b", text);
    EXPECT_STREQ(text, "aabcc");
    text.s("a", static_cast<char const*>(text) + 3, "g");

    EXPECT_STREQ(text, "ccccbcc");
}

TEST(SPStringSubstitute, nullArgumentsAreEmptyTexts)
{
    SPString text("abc");

    EXPECT_EQ(text.s("b", nullptr, nullptr), 1);

    EXPECT_STREQ(text, "ac");
}

TEST(SPStringSubstitute, equalsTheReplacementOfEndsFirst)
{
    char const* const patterns[] = {"a", "ab", "^a", "a+", "(a|b)c", "b$", "[bc]", "a.c", "^(a|b)"};
    char const* const replacements[] = {"", "x", "long replacement", "<$&>", "$1"};
    for (char const* pattern : patterns)
        for (char const* replacement : replacements)
            for (int number = 0; number < 3 * 3 * 3 * 3 * 3 * 3; ++number) {
                std::string source;
                for (int rest = number, i = 0; i < 6; ++i, rest /= 3)
                    source += static_cast<char>('a' + rest % 3);
                SPString literal(source.c_str());
                SPString text(source.c_str());

                int const count = text.s(pattern, replacement, "g");

                EXPECT_EQ(count, substituteEndsFirst(literal, pattern, replacement)) << source << pattern;
                EXPECT_STREQ(text, literal) << source << " " << pattern;
                EXPECT_EQ(fieldsOf(text).allocated, fieldsOf(literal).allocated)
                    << source << " " << pattern << " " << replacement;
            }
}

TEST(SPStringSubstitute, aMillionMatchesTakeNoStack)
{
    std::string const source(1000000, 'a');
    SPString text(source.c_str());

    int const count = text.s("(a)", "$1b", "g");

    EXPECT_EQ(count, 1000000);
    EXPECT_EQ(text.length(), 2000000u);
    EXPECT_EQ(std::string(text).substr(1999990), "ababababab");
}

TEST(SPStringSubstitute, replacesAMillionMatchesWithoutCase)
{
    std::string source;
    for (int i = 0; i < 500000; ++i)
        source += "aB";
    SPString text(source.c_str());

    EXPECT_EQ(text.s("[A-B]", "<$&>", "gi"), 1000000);

    EXPECT_EQ(std::string(text).substr(0, 12), "<a><B><a><B>");
}
