#include "text/CWildCard.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

namespace {

std::string translated(char const* pattern, int matchEnd = 1, int matchStart = 1)
{
    return static_cast<char const*>(CWildCard(pattern, 1, matchEnd, matchStart).getRegexpPattern());
}

int matches(char const* pattern, char const* name, int caseSensitive = 1)
{
    return CWildCard(pattern, caseSensitive, 1, 1).match(name);
}

}  // namespace

TEST(CWildCard, becomesARegularExpression)
{
    struct {
        char const* pattern;
        char const* expression;
    } const rows[] = {
        {"*.txt", "^.*\\.txt$"},
        {"a?c", "^a.c$"},
        {"a\\*b", "^a\\*b$"},
        {"a\\?b", "^a\\?b$"},
        {"a\\b", "^a\\\\b$"},
        {"\\\\*", "^\\\\\\*$"},
        {"$()+.[]^|", "^\\$\\(\\)\\+\\.\\[\\]\\^\\|$"},
        {"{a,b}-", "^{a,b}-$"},
        {"**", "^.*.*$"},
        {"", "^$"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(translated(row.pattern), row.expression) << row.pattern;
}

TEST(CWildCard, theEndsAreOptional)
{
    EXPECT_EQ(translated("b", 0, 0), "b");
    EXPECT_EQ(translated("b", 1, 0), "b$");
    EXPECT_EQ(translated("b", 0, 1), "^b");
}

TEST(CWildCard, aPatternOfSpecialCharactersFitsItsBuffer)
{
    EXPECT_EQ(translated("$$"), "^\\$\\$$");
    EXPECT_EQ(translated(std::string(1000, '.').c_str()).size(), 2002u);
}

TEST(CWildCard, aQuestionMarkIsOneCharacter)
{
    EXPECT_EQ(matches("a?c", "abc"), 1);
    EXPECT_EQ(matches("a?c", "ac"), 0);
}

TEST(CWildCard, anEscapedStarIsAStar)
{
    EXPECT_EQ(matches("a\\*b", "a*b"), 1);
    EXPECT_EQ(matches("a\\*b", "axb"), 0);
    EXPECT_EQ(matches("a\\*b", "a\\b"), 0);
}

TEST(CWildCard, aMatchWithoutEndsIsAnywhere)
{
    EXPECT_EQ(CWildCard("b", 1, 0, 0).match("abc"), 1);
    EXPECT_EQ(CWildCard("b", 1, 1, 0).match("abc"), 0);
    EXPECT_EQ(CWildCard("b", 1, 0, 1).match("abc"), 0);
}

TEST(CWildCard, caseCountsOnlyIfAskedFor)
{
    EXPECT_EQ(matches("A*", "abc", 0), 1);
    EXPECT_EQ(matches("A*", "abc", 1), 0);
    EXPECT_EQ(matches("a*", "ABC", 0), 1);
}

TEST(CWildCard, aNullPatternIsEmpty)
{
    EXPECT_EQ(matches(nullptr, ""), 1);
    EXPECT_EQ(matches(nullptr, "a"), 0);
    EXPECT_EQ(matches("*", nullptr), 1);
}

TEST(CWildCard, copiesOwnTheirExpression)
{
    CWildCard first("*.txt", 1, 1, 1);
    CWildCard second("b", 1, 0, 0);

    CWildCard copy(first);
    second = first;
    CWildCard const moved(std::move(first));

    EXPECT_STREQ(copy.getRegexpPattern(), "^.*\\.txt$");
    EXPECT_EQ(second.match("a.txt"), 1);
    EXPECT_EQ(first.match("a.txt"), 1);  // an empty expression
}

TEST(CWildCard, holdsItsExpressionAndThreeOptions)
{
    struct Fields {
        void* table;
        char* expression;
        std::int32_t options[3];
    };

    static_assert(sizeof(CWildCard) == sizeof(Fields));
    static_assert(std::has_virtual_destructor_v<CWildCard>);
}
