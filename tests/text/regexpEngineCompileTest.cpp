// What an expression is compiled to, and which ones are refused.
#include "tests/text/expressionSupport.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

using namespace zk::test;

namespace {

// A program as text: each node as its offset, name, operand and the offset of the next node.
std::string programOf(regexp const& expression, std::size_t size)
{
    char const* const program = expression.program;
    std::string result;
    for (std::size_t at = 1; at < size;) {
        int const op = static_cast<unsigned char>(program[at]);
        std::size_t const way =
            static_cast<unsigned char>(program[at + 1]) * 256u + static_cast<unsigned char>(program[at + 2]);
        static char const* const names[] = {"END",    "BOL",  "EOL",     "ANY",     "ANYOF", "ANYBUT",
                                            "BRANCH", "BACK", "EXACTLY", "NOTHING", "STAR",  "PLUS"};
        result += std::to_string(at) + ":";
        result += op < 12 ? names[op]
            : op > 40     ? "CLOSE" + std::to_string(op - 40)
                          : "OPEN" + std::to_string(op - 20);
        std::size_t const node = at;
        at += 3;
        if (op == 4 || op == 5 || op == 8) {
            result += "'" + std::string(program + at) + "'";
            at += std::strlen(program + at) + 1;
        }
        if (way != 0)
            result += ">" + std::to_string(op == 7 ? node - way : node + way);
        result += " ";
        if (op == 0)
            break;
    }
    return result.substr(0, result.size() - 1);
}

}  // namespace

TEST(RegexpCompile, makesTheProgramOfEachForm)
{
    struct Row {
        char const* pattern;
        char const* program;
    };
    static constexpr Row rows[] = {
        {"", "1:BRANCH>7 4:NOTHING>7 7:END"},
        {"abc", "1:BRANCH>11 4:EXACTLY'abc'>11 11:END"},
        {"^a$", "1:BRANCH>15 4:BOL>7 7:EXACTLY'a'>12 12:EOL>15 15:END"},
        {".", "1:BRANCH>7 4:ANY>7 7:END"},
        {"a|b", "1:BRANCH>9 4:EXACTLY'a'>17 9:BRANCH>17 12:EXACTLY'b'>17 17:END"},
        {"a||", "1:BRANCH>9 4:EXACTLY'a'>21 9:BRANCH>15 12:NOTHING>21 15:BRANCH>21 18:NOTHING>21 21:END"},
        {"(a)", "1:BRANCH>18 4:OPEN1>7 7:BRANCH>15 10:EXACTLY'a'>15 15:CLOSE1>18 18:END"},
        {"(a|b)c",
         "1:BRANCH>31 4:OPEN1>7 7:BRANCH>15 10:EXACTLY'a'>23 15:BRANCH>23 18:EXACTLY'b'>23 "
         "23:CLOSE1>26 26:EXACTLY'c'>31 31:END"},
        {"abc*", "1:BRANCH>18 4:EXACTLY'ab'>10 10:STAR>18 13:EXACTLY'c' 18:END"},
        {"abc+", "1:BRANCH>18 4:EXACTLY'ab'>10 10:PLUS>18 13:EXACTLY'c' 18:END"},
        {".*x", "1:BRANCH>15 4:STAR>10 7:ANY 10:EXACTLY'x'>15 15:END"},
        {"a?", "1:BRANCH>18 4:BRANCH>12 7:EXACTLY'a'>15 12:BRANCH>15 15:NOTHING>18 18:END"},
        {"(a)*",
         "1:BRANCH>30 4:BRANCH>24 7:OPEN1>10 10:BRANCH>18 13:EXACTLY'a'>18 18:CLOSE1>21 21:BACK>4 "
         "24:BRANCH>27 27:NOTHING>30 30:END"},
        {"(a)+",
         "1:BRANCH>30 4:OPEN1>7 7:BRANCH>15 10:EXACTLY'a'>15 15:CLOSE1>18 18:BRANCH>24 21:BACK>4 "
         "24:BRANCH>27 27:NOTHING>30 30:END"},
        {"(a)?",
         "1:BRANCH>27 4:BRANCH>21 7:OPEN1>10 10:BRANCH>18 13:EXACTLY'a'>18 18:CLOSE1>24 "
         "21:BRANCH>24 24:NOTHING>27 27:END"},
        {"[abc]", "1:BRANCH>11 4:ANYOF'abc'>11 11:END"},
        {"[^a]", "1:BRANCH>9 4:ANYBUT'a'>9 9:END"},
        {"[a-e]", "1:BRANCH>13 4:ANYOF'abcde'>13 13:END"},
        {"[]a]", "1:BRANCH>10 4:ANYOF']a'>10 10:END"},
        {"[^]a]", "1:BRANCH>10 4:ANYBUT']a'>10 10:END"},
        {"[-a]", "1:BRANCH>10 4:ANYOF'-a'>10 10:END"},
        {"[a-]", "1:BRANCH>10 4:ANYOF'a-'>10 10:END"},
        {"[a-c-e]", "1:BRANCH>13 4:ANYOF'abcde'>13 13:END"},
        {"[--0]", "1:BRANCH>12 4:ANYOF'-./0'>12 12:END"},
        {"[b-a]", "1:BRANCH>9 4:ANYOF'b'>9 9:END"},
        {"[a-a]", "1:BRANCH>9 4:ANYOF'a'>9 9:END"},
        {"[^-a]", "1:BRANCH>10 4:ANYBUT'-a'>10 10:END"},
        {"[]-a]", "1:BRANCH>13 4:ANYOF']^_`a'>13 13:END"},
        {"[\x7F-\x80]", "1:BRANCH>10 4:ANYOF'\x7F\x80'>10 10:END"},
        {"[a\\]", "1:BRANCH>10 4:ANYOF'a\\'>10 10:END"},
        {"\\*\\a", "1:BRANCH>14 4:EXACTLY'*'>9 9:EXACTLY'a'>14 14:END"},
        {"a]{}b", "1:BRANCH>13 4:EXACTLY'a]{}b'>13 13:END"},
    };
    for (Row const& row : rows) {
        Expression const expression = compiled(row.pattern);
        ASSERT_NE(expression, nullptr);

        EXPECT_EQ(static_cast<unsigned char>(expression->program[0]), 156) << row.pattern;
        EXPECT_EQ(programOf(*expression, 32767), row.program) << row.pattern;
    }
}

TEST(RegexpCompile, setsTheHintsOfTheSearch)
{
    struct Row {
        char const* pattern;
        char regstart;
        char reganch;
        char const* regmust;
    };
    static constexpr Row rows[] = {
        {"abc", 'a', 0, nullptr},      {"a|b", 0, 0, nullptr},
        {"^abc", 0, 1, nullptr},       {"(abc)", 0, 0, nullptr},
        {"a*bc", 0, 0, "bc"},          {"a+bc", 0, 0, nullptr},
        {"(a|b)*cd.efg", 0, 0, "efg"}, {"a*bcd.efg", 0, 0, "efg"},
        {"a*bcde.fg", 0, 0, "bcde"},   {"a?b", 0, 0, "b"},
        {".*", 0, 0, nullptr},         {"", 0, 0, nullptr},
        {"(a*b)c", 0, 0, "c"},         {"xa*bc", 'x', 0, nullptr},
        {"a*(bcd)e", 0, 0, "e"},       {"[a]*b|c", 0, 0, nullptr},
        {"(a|b*c)d", 0, 0, "d"},
    };
    for (Row const& row : rows) {
        Expression const expression = compiled(row.pattern);
        ASSERT_NE(expression, nullptr);

        EXPECT_EQ(expression->regstart, row.regstart) << row.pattern;
        EXPECT_EQ(expression->reganch, row.reganch) << row.pattern;
        if (!row.regmust) {
            EXPECT_EQ(expression->regmust, nullptr) << row.pattern;
            EXPECT_EQ(expression->regmlen, 0) << row.pattern;
            continue;
        }
        ASSERT_NE(expression->regmust, nullptr) << row.pattern;
        EXPECT_STREQ(expression->regmust, row.regmust) << row.pattern;
        EXPECT_EQ(expression->regmlen, static_cast<int>(std::strlen(row.regmust))) << row.pattern;
        EXPECT_GT(expression->regmust, expression->program);
    }
}

TEST(RegexpCompile, startsWithClearedGroups)
{
    Expression const expression = compiled("(a)");

    EXPECT_EQ(groupsIn(*expression, nullptr), "");
}

TEST(RegexpCompile, laysTheRecordOutAsItsUsersKnowIt)
{
    EXPECT_EQ(offsetof(regexp, startp), 0u);
    EXPECT_EQ(offsetof(regexp, endp), 160u);
    EXPECT_EQ(offsetof(regexp, regstart), 320u);
    EXPECT_EQ(offsetof(regexp, reganch), 321u);
    EXPECT_EQ(offsetof(regexp, regmust), 328u);
    EXPECT_EQ(offsetof(regexp, regmlen), 336u);
    EXPECT_EQ(offsetof(regexp, program), 340u);
}

TEST(RegexpCompile, refusesWhatItCannotRead)
{
    struct Row {
        char const* pattern;
        char const* message;
        std::size_t offset;
    };
    static constexpr Row rows[] = {
        {"(a", "unmatched ()", 2},
        {"(a|b", "unmatched ()", 4},
        {"a)", "unmatched ()", 1},
        {")", "unmatched ()", 0},
        {"(((((((((((((((((((())))))))))))))))))))", "too many ()", 20},
        {"(a*)*", "*+ operand could be empty", 4},
        {"(a?)+", "*+ operand could be empty", 4},
        {"()*", "*+ operand could be empty", 2},
        {"^*", "*+ operand could be empty", 1},
        {"a$+", "*+ operand could be empty", 2},
        {"(a|b*)+", "*+ operand could be empty", 6},
        {"a**", "nested *?+", 2},
        {"a?+", "nested *?+", 2},
        {"(ab)*?", "nested *?+", 5},
        {"[c-a]", "invalid [] range", 2},
        {"[z-a]", "invalid [] range", 2},
        {"[\x80-a]", "invalid [] range", 2},
        {"[abc", "unmatched []", 4},
        {"[^", "unmatched []", 2},
        {"[^a-", "unmatched []", 4},
        {"[", "unmatched []", 1},
        {"[]", "unmatched []", 2},
        {"[^]", "unmatched []", 3},
        {"[a-", "unmatched []", 3},
        {"[z-", "unmatched []", 3},
        {"*a", "?+* follows nothing", 0},
        {"a|+", "?+* follows nothing", 2},
        {"(?a)", "?+* follows nothing", 1},
        {"abc\\", "trailing \\", 3},
    };
    for (Row const& row : rows) {
        RegexpFault fault;
        Expression expression;

        std::string const quiet = standardErrorOf([&] { expression.reset(regcomp(row.pattern, fault)); });

        EXPECT_EQ(expression, nullptr) << row.pattern;
        EXPECT_STREQ(fault.message, row.message) << row.pattern;
        EXPECT_EQ(fault.offset, row.offset) << row.pattern;
        EXPECT_EQ(quiet, "") << row.pattern;
        std::string const printed = standardErrorOf([&] { expression.reset(regcomp(row.pattern)); });
        EXPECT_EQ(expression, nullptr) << row.pattern;
        EXPECT_EQ(printed, std::string("regerror: ") + row.message + "\n") << row.pattern;
    }
}

TEST(RegexpCompile, refusesNull)
{
    EXPECT_EQ(standardErrorOf([] { EXPECT_EQ(regcomp(nullptr), nullptr); }), "regerror: NULL argument\n");
    RegexpFault fault{"", 7};
    EXPECT_EQ(regcomp(nullptr, fault), nullptr);
    EXPECT_STREQ(fault.message, "NULL argument");
    EXPECT_EQ(fault.offset, 0u);
}

TEST(RegexpCompile, leavesTheFaultAloneWhereThereIsNone)
{
    RegexpFault fault{"untouched", 77};

    Expression const expression(regcomp("(a*)?", fault));

    EXPECT_NE(expression, nullptr);
    EXPECT_STREQ(fault.message, "untouched");
    EXPECT_EQ(fault.offset, 77u);
}

TEST(RegexpCompile, takesNineteenGroups)
{
    std::string pattern;
    std::string subject;
    for (char letter = 'a'; letter < 'a' + 19; ++letter) {
        pattern += std::string("(") + letter + ")";
        subject += letter;
    }

    std::string const groups = groupsOfMatch(pattern, subject);

    EXPECT_EQ(groups.substr(0, 15), "0(0,19) 1(0,1) ");
    EXPECT_EQ(groups.substr(groups.size() - 9), "19(18,19)");
}

TEST(RegexpCompile, takesAProgramOf32766BytesAndNoMore)
{
    // The magic byte, BRANCH, EXACTLY with its NUL, and END take eleven.
    std::string const longest(32755, 'a');
    std::string const tooLong(32756, 'a');
    RegexpFault fault;

    EXPECT_EQ(groupsOfMatch(longest, "b" + longest), "0(1,32756)");
    EXPECT_EQ(Expression(regcomp(tooLong.c_str(), fault)), nullptr);
    EXPECT_STREQ(fault.message, "regexp too big");
    EXPECT_EQ(fault.offset, tooLong.size());
}

TEST(RegexpCompile, looksForMistakesBeforeItLooksAtTheSize)
{
    RegexpFault fault;

    EXPECT_EQ(Expression(regcomp((std::string(40000, 'a') + "(").c_str(), fault)), nullptr);
    EXPECT_STREQ(fault.message, "unmatched ()");
}

TEST(RegexpCompile, takesThousandsOfAlternatives)
{
    std::string pattern = "x";
    for (int i = 0; i < 3000; ++i)
        pattern += "|" + std::string(1, static_cast<char>('a' + i % 20)) + "y";

    EXPECT_EQ(groupsOfMatch(pattern, "..ty."), "0(2,4)");
    EXPECT_EQ(groupsOfMatch(pattern, "..tz."), "no match");
}

TEST(RegexpCompile, takesTheBoundsOfARangeAsUnsigned)
{
    Expression const expression = compiled("^[a-\xFF]$");

    for (char const* member : {"a", "z", "\x80", "\xFF"})
        EXPECT_EQ(regexec(expression.get(), member), 1) << member;
    EXPECT_EQ(regexec(expression.get(), "A"), 0);
}

TEST(RegexpError, isOneLineOnTheStandardErrorStream)
{
    EXPECT_EQ(standardErrorOf([] { regerror("100% wrong"); }), "regerror: 100% wrong\n");
    EXPECT_EQ(standardErrorOf([] { regerror(nullptr); }), "regerror: \n");
}
