// Long texts and hostile expressions, on a thread with a small stack.
#include "tests/support/SmallStackThread.h"
#include "tests/text/expressionSupport.h"

#include <cstring>
#include <string>
#include <vector>

using namespace zk::test;

namespace {

constexpr std::size_t smallStack = 256 * 1024;
constexpr std::size_t longText = 10u << 20;

std::string repeated(std::string const& piece, std::size_t size)
{
    std::string result;
    result.reserve(size + piece.size());
    while (result.size() < size)
        result += piece;
    return result;
}

// The groups of the first match, found on a thread with a small stack.
std::string groupsOnASmallStack(std::string const& pattern, std::string const& subject)
{
    std::string result;
    runWithSmallStack(smallStack, [&] { result = groupsOfMatch(pattern, subject); });
    return result;
}

}  // namespace

TEST(RegexpLongText, isTakenByALoopOfAlternatives)
{
    std::string subject = repeated("abcd", longText);
    std::string const size = std::to_string(subject.size());

    EXPECT_EQ(groupsOnASmallStack("(a|b|c|d)*z", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a|b|c|d)*[yz]", subject), "no match");
    subject += "z";
    std::string const end = std::to_string(subject.size());
    EXPECT_EQ(groupsOnASmallStack("(a|b|c|d)*z", subject),
              "0(0," + end + ") 1(" + std::to_string(subject.size() - 2) + "," + size + ")");
}

TEST(RegexpLongText, isTakenByNestedLoops)
{
    std::string const subject = repeated("aabbcabc", longText);
    std::string const end = std::to_string(subject.size());

    EXPECT_EQ(groupsOnASmallStack("((a*b)*c)*", subject),
              "0(0," + end + ") 1(" + std::to_string(subject.size() - 3) + "," + end + ") 2(" +
                  std::to_string(subject.size() - 3) + "," + std::to_string(subject.size() - 1) + ")");
    EXPECT_EQ(groupsOnASmallStack("((a*b)*c)*[xyz]", subject), "no match");
}

TEST(RegexpLongText, isTakenByLoopsThatLeaveAllChoicesOpen)
{
    std::string const subject = repeated("ab", longText / 4);

    EXPECT_EQ(groupsOnASmallStack("(.|a|ab)*[xy]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a|ab|b)*$", subject).substr(0, 3), "0(0");
    EXPECT_EQ(groupsOnASmallStack("(a|ab|b)*[^ab]", subject), "no match");
}

TEST(RegexpLongText, isTakenByDotStars)
{
    std::string const subject = repeated("abcdefgh\n", longText);
    std::string const end = std::to_string(subject.size());

    EXPECT_EQ(groupsOnASmallStack(".*", subject), "0(0," + end + ")");
    EXPECT_EQ(groupsOnASmallStack("(.*)(.*)(.*)$", subject),
              "0(0," + end + ") 1(0," + end + ") 2(" + end + "," + end + ") 3(" + end + "," + end + ")");
    EXPECT_EQ(groupsOnASmallStack(".*.*.*[xy]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("a.*b.*c.*[xy]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(.*)\n(.*)a", subject).substr(0, 3), "0(0");
}

TEST(RegexpLongText, ofOneLetterDoesNotTakeQuadraticTime)
{
    std::string const subject(longText, 'a');

    EXPECT_EQ(groupsOnASmallStack("a+[0-9]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a+)+[bc]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("a*a*a*[bc]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a|aa)+$", subject).substr(0, 11), "0(0,1048576");
    EXPECT_EQ(groupsOnASmallStack("(a?)(a?)(a?)aaa[bc]", subject), "no match");
}

TEST(RegexpLongText, ofExponentialFameIsAnsweredAtOnce)
{
    std::string const subject(64, 'a');
    std::string pattern;
    for (int i = 0; i < 19; ++i)
        pattern += "(a*)";

    EXPECT_EQ(groupsOnASmallStack(pattern + "[bc]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a|a|a|a)*[bc]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("((a+)+)+[bc]", subject), "no match");
    EXPECT_EQ(groupsOnASmallStack("(a|a?a)*[bc]", subject).substr(0, 8), "no match");
}

TEST(RegexpLongText, isCompiledWithoutStack)
{
    std::string const literals = repeated("a.", 8000);
    std::string const alternatives = repeated("a|", 6000);
    std::string const loops = repeated("a*", 7000);

    EXPECT_EQ(groupsOnASmallStack(literals, std::string(8000, 'a')), "0(0,8000)");
    EXPECT_EQ(groupsOnASmallStack(alternatives, "a"), "0(0,1)");
    EXPECT_EQ(groupsOnASmallStack(loops, "aaa"), "0(0,3)");
    RegexpFault fault;
    Expression expression;
    std::string const huge = repeated("(a|b)*[x-z]", longText);
    runWithSmallStack(smallStack, [&] { expression.reset(regcomp(huge.c_str(), fault)); });
    EXPECT_EQ(expression, nullptr);
    EXPECT_STREQ(fault.message, "too many ()");
}

// The way that is taken for a record without a plan.
TEST(RegexpLongText, isTakenByACopyOfARecordToo)
{
    Expression const original = compiled("((a|b)*c)*[xy]");
    std::vector<std::uint64_t> block(128);
    std::memcpy(block.data(), original.get(), 340 + 100);
    regexp* const copy = reinterpret_cast<regexp*>(block.data());
    std::string const subject = repeated("abababc", 100000) + "x";
    int matched = 0;

    runWithSmallStack(smallStack, [&] { matched = regexec(copy, subject.c_str()); });

    EXPECT_EQ(matched, 1);
    EXPECT_EQ(copy->endp[0] - copy->startp[0], static_cast<std::ptrdiff_t>(subject.size()));
}

TEST(RegexpLongText, ofOneLetterDoesNotTakeQuadraticTimeForACopyEither)
{
    std::string const subject(longText, 'a');
    for (char const* pattern : {"a+[0-9]", "(a+)+[bc]", "a*a*[bc]"}) {
        RecordCopy copy(pattern);
        int matched = -1;

        runWithSmallStack(smallStack, [&] { matched = regexec(copy.get(), subject.c_str()); });

        EXPECT_EQ(matched, 0) << pattern;
    }
}

// What has failed is remembered to the end, however many alternatives there are.
TEST(RegexpLongText, isSearchedOnceWithThousandsOfAlternativesToo)
{
    std::string const pattern = "(a|a?a)*[bc]|z(" + repeated("y|", 6000) + "y)";

    EXPECT_EQ(groupsOnASmallStack(pattern, std::string(720000, 'a')), "no match");
}
