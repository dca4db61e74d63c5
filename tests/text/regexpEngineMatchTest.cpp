// What an expression finds, and what it leaves in the record.
#include "tests/text/expressionSupport.h"

#include <string>

using namespace zk::test;

namespace {

struct Row {
    char const* pattern;
    char const* subject;
    char const* groups;
};

void expectAll(std::initializer_list<Row> rows)
{
    for (Row const& row : rows)
        EXPECT_EQ(groupsOfMatch(row.pattern, row.subject), row.groups)
            << "/" << row.pattern << "/ on \"" << row.subject << "\"";
}

}  // namespace

TEST(RegexpMatch, findsTheLeftmostMatch)
{
    expectAll({{"abc", "xabcabc", "0(1,4)"},
               {"b", "aab", "0(2,3)"},
               {"abc", "ab", "no match"},
               {"", "abc", "0(0,0)"},
               {"", "", "0(0,0)"},
               {"x*", "aaxx", "0(0,0)"},
               {"a", "", "no match"}});
}

TEST(RegexpMatch, takesTheFirstAlternativeThatLetsTheWholeMatch)
{
    expectAll({{"a|ab", "ab", "0(0,1)"},
               {"(a|ab)c", "abc", "0(0,3) 1(0,2)"},
               {"(a|ab)(c|bcd)(d*)", "abcd", "0(0,4) 1(0,1) 2(1,4) 3(4,4)"},
               {"a|b|", "c", "0(0,0)"},
               {"|a", "a", "0(0,0)"}});
}

TEST(RegexpMatch, takesAsMuchAsItCanWithRepeats)
{
    expectAll({{"a*", "aaa", "0(0,3)"},
               {"a*ab", "aaab", "0(0,4)"},
               {"a+", "baa", "0(1,3)"},
               {"a+b", "bbab", "0(2,4)"},
               {"ab?c", "xacabc", "0(1,3)"},
               {"(ab)?", "abab", "0(0,2) 1(0,2)"},
               {".*b", "abab", "0(0,4)"},
               {"[ab]*b", "abac", "0(0,2)"},
               {"(a*)(a*)", "aa", "0(0,2) 1(0,2) 2(2,2)"}});
}

TEST(RegexpMatch, keepsTheLastRoundOfAGroupInALoop)
{
    expectAll({{"(a|b)*", "aba", "0(0,3) 1(2,3)"},
               {"((a)|b)*", "ab", "0(0,2) 1(1,2) 2(0,1)"},
               {"(a*b)+", "aabab", "0(0,5) 1(3,5)"},
               {"((a*b)*c)*", "aabbcabc", "0(0,8) 1(5,8) 2(5,7)"},
               {"(ab|a)*b", "abab", "0(0,4) 1(2,3)"}});
}

TEST(RegexpMatch, leavesAGroupNullThatTookNoPart)
{
    expectAll(
        {{"(a)|(b)", "b", "0(0,1) 2(0,1)"}, {"(a)?b", "b", "0(0,1)"}, {"(a*)?b", "b", "0(0,1) 1(0,0)"}});
}

TEST(RegexpMatch, knowsTheEndsOfTheWholeTextOnly)
{
    expectAll({{"^b", "a\nb", "no match"},
               {"^b", "bb", "0(0,1)"},
               {"a$", "a\nb", "no match"},
               {"b$", "abb", "0(2,3)"},
               {"a^b", "ab", "no match"},
               {"a$b", "ab", "no match"},
               {"(^a)|b", "ba", "0(0,1)"},
               {"(^|x)b", "abxb", "0(2,4) 1(2,3)"},
               {"$", "abc", "0(3,3)"},
               {"^$", "", "0(0,0)"}});
}

TEST(RegexpMatch, takesAnyCharacterButTheEndWithADot)
{
    expectAll(
        {{".", "\n", "0(0,1)"}, {"a.b", "a\nb", "0(0,3)"}, {".", "", "no match"}, {"a.", "a", "no match"}});
}

TEST(RegexpMatch, looksUpSets)
{
    expectAll({{"[a-c]+", "xxabcd", "0(2,5)"},
               {"[^a-c]+", "abxyc", "0(2,4)"},
               {"[]a]+", "x]a", "0(1,3)"},
               {"[a-]+", "x-a-", "0(1,4)"},
               {"[^]a]", "]ab", "0(2,3)"},
               {"[b-a]", "ab", "0(1,2)"},
               {"[^x]", "", "no match"},
               {"[A-Z]", "abc", "no match"},
               {"[\\]", "a\\", "0(1,2)"}});
}

TEST(RegexpMatch, takesBytesAbove127AsTheyAre)
{
    expectAll({{"[\x80-\xFF]+", "a\xC3\xA4z", "0(1,3)"},
               {"\xFF", "a\xFF", "0(1,2)"},
               {"[^a]", "a\xE9", "0(1,2)"},
               {"(\xE4|\xF6)\xFC*", "\xF6\xFC\xFC", "0(0,3) 1(0,1)"}});
}

TEST(RegexpMatch, takesAnEscapedCharacterAsItself)
{
    expectAll({{"\\.", "a.", "0(1,2)"},
               {"\\d", "1d", "0(1,2)"},
               {"\\\\", "a\\", "0(1,2)"},
               {"a\\**", "a**", "0(0,3)"}});
}

TEST(RegexpMatch, canBeUsedAgain)
{
    Expression const expression = compiled("(a)|(b)");
    char const* const first = "xa";
    char const* const second = "b";

    EXPECT_EQ(regexec(expression.get(), first), 1);
    EXPECT_EQ(groupsIn(*expression, first), "0(1,2) 1(1,2)");
    EXPECT_EQ(regexec(expression.get(), second), 1);
    EXPECT_EQ(groupsIn(*expression, second), "0(0,1) 2(0,1)");
    EXPECT_EQ(regexec(expression.get(), "c"), 0);
    EXPECT_EQ(groupsIn(*expression, second), "");
}

// Where the hints show at once that there is no match, nothing is tried and nothing is cleared.
TEST(RegexpMatch, leavesTheGroupsAloneWhereNothingWasTried)
{
    struct HintRow {
        char const* pattern;
        char const* matching;
        char const* other;
        bool cleared;
    };
    for (HintRow const& row :
         {HintRow{"a*bc", "aabc", "aab", false},  // the literal is not there
          HintRow{"abc", "abc", "xyz", false},    // nor the first character
          HintRow{"abc", "abc", "xay", true}, HintRow{"^abc", "abc", "xyz", true},
          HintRow{"a|b", "a", "", true}, HintRow{"[a-z]*ing", "king", "kin", false},
          HintRow{"[a-z]+ing", "king", "kin", true}, HintRow{"a*bc$", "bc", "bcd", true}}) {
        Expression const expression = compiled(row.pattern);
        ASSERT_EQ(regexec(expression.get(), row.matching), 1) << row.pattern;
        std::string const before = groupsIn(*expression, row.matching);

        EXPECT_EQ(regexec(expression.get(), row.other), 0) << row.pattern;

        EXPECT_EQ(groupsIn(*expression, row.matching), row.cleared ? "" : before) << row.pattern;
    }
}

TEST(RegexpMatch, doesNotDependOnWhereTheTextLies)
{
    std::string const word = "Sherlock Holmes";
    Expression const byLiteral = compiled("Sherlock [A-Z][a-z]+");
    Expression const byWords = compiled("cat|dog|Holmes|fish");
    Expression const byFirst = compiled("[A-Z]");
    for (std::size_t room = 0; room < 70; ++room) {
        for (std::size_t shift = 0; shift < 16; ++shift) {
            // A literal right before the text must not be found.
            std::string const text = "SherlockSherlock Holmes catdog." + std::string(shift, '.') + '\0' +
                std::string(room, '.') + word;
            char const* const subject = text.c_str() + 32 + shift;

            ASSERT_EQ(regexec(byLiteral.get(), subject), 1);
            ASSERT_EQ(byLiteral->startp[0] - subject, static_cast<std::ptrdiff_t>(room));
            ASSERT_EQ(regexec(byWords.get(), subject), 1);
            ASSERT_EQ(byWords->startp[0] - subject, static_cast<std::ptrdiff_t>(room + 9));
            ASSERT_EQ(regexec(byFirst.get(), subject), 1);
            ASSERT_EQ(byFirst->startp[0] - subject, static_cast<std::ptrdiff_t>(room));
        }
    }
}

TEST(RegexpMatch, endsAtTheNulWhateverStandsBehindIt)
{
    std::string const text = std::string("no luck") + '\0' + "cat dog Sherlock Holmes king";
    for (char const* pattern : {"cat|dog", "Sherlock [A-Z]", "[a-z]+ing", "(a|b)*[H]", "S", "ca"})
        EXPECT_EQ(regexec(compiled(pattern).get(), text.c_str()), 0) << pattern;
}

TEST(RegexpLimit, saysMatchOrNoMatchWithinTheLimit)
{
    Expression const expression = compiled("(a|b)*c");

    EXPECT_EQ(regexec(expression.get(), "abc", 1000), RegexpOutcome::match);
    EXPECT_EQ(regexec(expression.get(), "abd", 1000), RegexpOutcome::noMatch);
}

TEST(RegexpLimit, saysThatItGaveUpBeyondTheLimit)
{
    Expression const expression = compiled("(a|b|ab)*(ax|[ab][^ab])");
    std::string const subject(5000, 'a');
    ASSERT_EQ(regexec(expression.get(), "aax"), 1);

    EXPECT_EQ(regexec(expression.get(), subject.c_str(), 3000), RegexpOutcome::outOfSteps);

    EXPECT_EQ(groupsIn(*expression, subject.c_str()), "");
    EXPECT_EQ(regexec(expression.get(), subject.c_str(), 10000000), RegexpOutcome::noMatch);
}

TEST(RegexpLimit, ofZeroGivesUpAtTheFirstStep)
{
    Expression const expression = compiled("(a|b)*[cd]");

    EXPECT_EQ(regexec(expression.get(), "abcd", 0), RegexpOutcome::outOfSteps);
}

TEST(RegexpLimit, countsSixteenCharactersOfARepeatAsAStep)
{
    Expression const expression = compiled(".*x");
    std::string const subject = std::string(160000, 'a') + "x";

    EXPECT_EQ(regexec(expression.get(), subject.c_str(), 9000), RegexpOutcome::outOfSteps);
    EXPECT_EQ(regexec(expression.get(), subject.c_str(), 11000), RegexpOutcome::match);
}

TEST(RegexpLimit, holdsForACopyOfARecordToo)
{
    RecordCopy copy("(a|b|ab)*(ax|[ab][^ab])");
    std::string const subject(5000, 'a');

    EXPECT_EQ(regexec(copy.get(), subject.c_str(), 3000), RegexpOutcome::outOfSteps);
    EXPECT_EQ(groupsIn(*copy.get(), subject.c_str()), "");
    EXPECT_EQ(regexec(copy.get(), "aax", 3000), RegexpOutcome::match);
    EXPECT_EQ(regexec(copy.get(), "aab", 3000), RegexpOutcome::noMatch);
}
