#include "text/CWildCard.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
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
    CWildCard const card("a", 11, 22, 33);
    Fields fields;
    std::memcpy(&fields, static_cast<void const*>(&card), sizeof fields);

    EXPECT_STREQ(fields.expression, "^a$");
    EXPECT_EQ(fields.options[0], 11);  // caseSensitive
    EXPECT_EQ(fields.options[1], 22);  // matchEnd
    EXPECT_EQ(fields.options[2], 33);  // matchStart
}

TEST(CWildCard, takesEveryNumberButZeroAsYes)
{
    EXPECT_EQ(matches("a", "A", 2), 0);
    EXPECT_EQ(matches("a", "A", -1), 0);
    EXPECT_EQ(translated("b", 2, -1), "^b$");
}

TEST(CWildCard, copiesTakeTheOptionsAlong)
{
    CWildCard first("abc", 0, 1, 1);
    CWildCard assigned("x", 1, 1, 1);

    CWildCard const copy(first);
    assigned = first;
    CWildCard const moved(std::move(first));

    EXPECT_EQ(copy.match("ABC"), 1);
    EXPECT_EQ(assigned.match("ABC"), 1);
    EXPECT_EQ(moved.match("ABC"), 1);
}

TEST(CWildCard, reportsAPatternThatIsTooLongEachTime)
{
    CWildCard const card(std::string(40000, 'a').c_str(), 1, 1, 1);

    for (int time = 0; time < 2; ++time) {
        testing::internal::CaptureStderr();
        int const matched = card.match("a");
        std::string const printed = testing::internal::GetCapturedStderr();

        EXPECT_EQ(matched, 0);
        EXPECT_EQ(printed.find("regerror: regexp too big"), 0u) << printed.substr(0, 100);
    }
}
