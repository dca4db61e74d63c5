// What the matcher says to records that are not what regcomp made.
#include "tests/text/expressionSupport.h"

#include <cstring>
#include <string>
#include <vector>

using namespace zk::test;

namespace {

// Matches and gives what was printed.
std::string complaintsOf(regexp* expression, char const* subject)
{
    return standardErrorOf([&] { EXPECT_EQ(regexec(expression, subject), 0); });
}

}  // namespace

TEST(RegexpCorruption, ofNoExpressionOrNoTextIsANullParameter)
{
    Expression const expression = compiled("a");

    EXPECT_EQ(complaintsOf(nullptr, "a"), "regerror: NULL parameter\n");
    EXPECT_EQ(complaintsOf(expression.get(), nullptr), "regerror: NULL parameter\n");
}

TEST(RegexpCorruption, ofTheMagicByteIsACorruptedProgram)
{
    Expression const expression = compiled("a");
    expression->program[0] = 0;

    EXPECT_EQ(complaintsOf(expression.get(), "a"), "regerror: corrupted program\n");
}

TEST(RegexpCorruption, ofAnOpcodeIsMemoryCorruption)
{
    for (int const opcode : {12, 20, 40, 60, 255}) {
        Expression const expression = compiled("ab.");
        expression->regstart = 0;
        expression->program[4] = static_cast<char>(opcode);

        EXPECT_EQ(complaintsOf(expression.get(), ""), "regerror: memory corruption\n") << opcode;
    }
}

TEST(RegexpCorruption, ofAWayIsCorruptedPointers)
{
    Expression const expression = compiled("a");
    expression->program[6] = 0;  // EXACTLY leads nowhere

    EXPECT_EQ(complaintsOf(expression.get(), "a"), "regerror: corrupted pointers\n");
}

TEST(RegexpCorruption, ofAWayOutOfTheProgramIsCorruptedPointers)
{
    Expression const expression = compiled("a");
    expression->program[5] = 0x7F;

    EXPECT_EQ(complaintsOf(expression.get(), "a"), "regerror: corrupted pointers\n");
}

TEST(RegexpCorruption, ofARepeatedNodeIsAnInternalFoulup)
{
    Expression const expression = compiled("a*$");
    expression->program[7] = 9;  // STAR of NOTHING

    testing::internal::CaptureStderr();
    int const matched = regexec(expression.get(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "regerror: internal foulup\n");
    EXPECT_EQ(matched, 1);  // none of it, and then the end
}

TEST(RegexpCorruption, thatClosesALoopOfNothingEnds)
{
    Expression const expression = compiled("a|b");
    expression->program[4] = 7;  // BACK
    expression->program[5] = 0;
    expression->program[6] = 3;  // to the branch that it stands in

    EXPECT_EQ(complaintsOf(expression.get(), "a"), "regerror: corrupted pointers\n");
}

TEST(RegexpCorruption, leavesTheOtherAlternativesToBeTried)
{
    Expression const expression = compiled("a|b");
    expression->program[4] = 99;

    int matched = 0;
    std::string const printed = standardErrorOf([&] { matched = regexec(expression.get(), "b"); });

    EXPECT_EQ(printed, "regerror: memory corruption\n");
    EXPECT_EQ(matched, 1);
    EXPECT_STREQ(expression->startp[0], "b");
}

TEST(RegexpCorruption, isFollowedWhereTheProgramStillMakesSense)
{
    Expression const expression = compiled("abc");
    ASSERT_EQ(regexec(expression.get(), "xbc"), 0);
    expression->regstart = 'x';
    expression->program[7] = 'x';

    EXPECT_EQ(regexec(expression.get(), "abc"), 0);
    EXPECT_EQ(regexec(expression.get(), "xbc"), 1);
}

TEST(RegexpCorruption, ofAHintIsFollowedToo)
{
    Expression const expression = compiled("b");
    expression->regstart = 0;
    expression->reganch = 1;

    EXPECT_EQ(regexec(expression.get(), "ab"), 0);
    EXPECT_EQ(regexec(expression.get(), "ba"), 1);
}

// A copy has no plan behind its program: it is walked, with the same results.
TEST(RegexpCorruption, isNoneWhereARecordWasCopied)
{
    struct Row {
        char const* pattern;
        char const* subject;
        char const* groups;
    };
    for (Row const& row : {Row{"(a|ab)(c|bcd)(d*)", "xabcd", "0(1,5) 1(1,2) 2(2,5) 3(5,5)"},
                           Row{"[a-z]+ing$", "the king", "0(4,8)"}, Row{"^(a*)?b", "aab", "0(0,3) 1(0,2)"},
                           Row{"(a+)+b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaac", "no match"}}) {
        Expression const original = compiled(row.pattern);
        std::size_t const size = 340 + 200;  // more than the program takes
        std::vector<std::uint64_t> block(size / 8 + 1);
        std::memcpy(block.data(), original.get(), size);
        regexp* const copy = reinterpret_cast<regexp*>(block.data());
        if (copy->regmust)
            copy->regmust = copy->program + (original->regmust - original->program);

        bool const matched = regexec(copy, row.subject);

        EXPECT_EQ(matched ? groupsIn(*copy, row.subject) : "no match", row.groups) << row.pattern;
    }
}

// Every byte of some programs, with every value: nothing is read outside the
// block, and every search ends.
TEST(RegexpCorruption, ofAnyByteNeitherReadsOutsideNorHangs)
{
    std::string const subject = "aabbcab";
    std::string const printed = standardErrorOf([&] {
        for (char const* pattern : {"(a|b)*c", "a*[bc]+x?$", "((ab)?.)+|[^c]b"}) {
            Expression const original = compiled(pattern);
            std::size_t size = 1;
            for (std::size_t at = 1; at < 100;
                 ++at) {  // END is the last node with the op-code 0 and no way on
                if (std::memcmp(static_cast<char const*>(original->program) + at, "\0\0\0", 3) == 0) {
                    size = at + 3;
                    break;
                }
            }
            for (std::size_t at = 1; at < size; ++at) {
                Expression const changed = compiled(pattern);
                char* const program = changed->program;
                char const before = program[at];
                for (int value = 0; value < 256; ++value) {
                    program[at] = static_cast<char>(value);
                    regexec(changed.get(), subject.c_str(), 20000);
                }
                program[at] = before;
                EXPECT_EQ(regexec(changed.get(), subject.c_str()), regexec(original.get(), subject.c_str()));
            }
        }
    });

    EXPECT_NE(printed.find("memory corruption"), std::string::npos);
    EXPECT_NE(printed.find("corrupted pointers"), std::string::npos);
    EXPECT_NE(printed.find("internal foulup"), std::string::npos);
}

TEST(RegexpCorruption, ofTheRequiredTextIsFollowedBeforeAnythingIsTried)
{
    static char const other[] = "xyz";
    Expression const expression = compiled("a*bcd");
    char const* const subject = "aabcd";
    ASSERT_NE(expression->regmust, nullptr);
    EXPECT_EQ(regexec(expression.get(), subject), 1);
    expression->regmust = const_cast<char*>(other);

    EXPECT_EQ(regexec(expression.get(), subject), 0);

    EXPECT_EQ(groupsIn(*expression, subject), "0(0,5)");
    EXPECT_EQ(regexec(expression.get(), "xyzabcd"), 1);
}
