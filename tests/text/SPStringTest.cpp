#include "text/SPString.h"

#include "tests/text/fieldsOf.h"
#include "text/Regexp.h"
#include "text/SPStringList.h"

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>
#include <utility>

using zk::test::fieldsOf;
using zk::test::StringFields;
using zk::test::WindowFields;

namespace {

void expectFields(SPString const& text, char const* view, std::size_t allocated, std::size_t allocinc = 32)
{
    StringFields const fields = fieldsOf(text);
    EXPECT_STREQ(text, view);
    EXPECT_EQ(text.length(), std::string(view).size());
    EXPECT_EQ(fields.allocated, allocated);
    EXPECT_EQ(fields.allocinc, allocinc);
}

}  // namespace

TEST(SPString, holdsOneVarStringAndNothingElse)
{
    static_assert(sizeof(SPString) == sizeof(VarString));
    static_assert(sizeof(VarString) == 4 * 8);
    static_assert(!std::is_polymorphic_v<SPString> && !std::is_polymorphic_v<VarString>);
    static_assert(std::is_nothrow_move_constructible_v<SPString>);
    static_assert(std::is_nothrow_move_assignable_v<SPString>);
}

TEST(SPString, isMadeAsItsStoreIs)
{
    expectFields(SPString(), "", 32);
    expectFields(SPString("abc"), "abc", 4);
    expectFields(SPString('c'), "c", 2);
    expectFields(SPString(SPString("abc")), "abc", 4);
}

TEST(SPString, isMadeFromAWindow)
{
    SPString text("abcdef");

    expectFields(SPString(text.substr(1, 3)), "bcd", 4);
    expectFields(SPString(text.substr(6)), "", 1);
}

TEST(SPString, assignmentKeepsABufferThatIsLargeEnough)
{
    SPString text;
    SPString const other("abc");

    text = other;
    expectFields(text, "abc", 32);
    text = "de";
    expectFields(text, "de", 32);
}

TEST(SPString, aTextThatDoesNotFitIsAssignedWithAStepOfRoom)
{
    SPString text("a");

    text = "abcd";

    expectFields(text, "abcd", 36);
}

TEST(SPString, aWindowThatDoesNotFitIsAssignedExactly)
{
    SPString text("ab");
    SPString other("abcdef");

    text = other.substr(1, 4);

    expectFields(text, "bcde", 5);
}

TEST(SPString, aWindowThatFitsKeepsTheBuffer)
{
    SPString text;
    SPString other("abcdef");

    text = other.substr(1, 4);

    expectFields(text, "bcde", 32);
}

TEST(SPString, aWindowOnItselfCanBeAssigned)
{
    SPString text("abcdef");

    text = text.substr(2, 3);
    expectFields(text, "cde", 7);
    text = text.substr(0);

    expectFields(text, "cde", 7);
}

TEST(SPString, comparesByUnsignedBytesWithCase)
{
    SPString const a("a"), b("b"), high("\xE4"), upper("A");

    EXPECT_EQ(a < b, 1);
    EXPECT_EQ(b < a, 0);
    EXPECT_EQ(a <= a, 1);
    EXPECT_EQ(b > a, 1);
    EXPECT_EQ(a >= b, 0);
    EXPECT_EQ(a == a, 1);
    EXPECT_EQ(a != b, 1);
    EXPECT_EQ(a == upper, 0);
    EXPECT_EQ(b < high, 1);
}

TEST(SPString, comparesWithTexts)
{
    SPString const text("abc");

    EXPECT_EQ(text == "abc", 1);
    EXPECT_EQ(text != "abc", 0);
    EXPECT_EQ(text < "abd", 1);
    EXPECT_EQ(text > "ab", 1);
    EXPECT_EQ(text <= "abc", 1);
    EXPECT_EQ(text >= "abd", 0);
    EXPECT_EQ("abc" == text, 1);
    EXPECT_EQ("abd" != text, 1);
    EXPECT_EQ("ab" < text, 1);
    EXPECT_EQ("abd" > text, 1);
    EXPECT_EQ("abc" <= text, 1);
    EXPECT_EQ("ab" >= text, 0);
    EXPECT_EQ(text == nullptr, 0);
}

TEST(SPString, joinsTexts)
{
    SPString const text("ab");

    expectFields(text + SPString("cd"), "abcd", 4 + 32);
    expectFields(text + "c", "abc", 3 + 32);
    expectFields(text + 'c', "abc", 3 + 32);
    expectFields("xy" + text, "xyab", 4 + 32);
    expectFields(text + "", "ab", 3);
}

TEST(SPString, aSumKeepsTheSizeOfItsLeftSide)
{
    SPString roomy;
    roomy = "ab";

    expectFields(roomy + "cd", "abcd", 32);
}

TEST(SPString, appendsTexts)
{
    SPString text;

    text += "ab";
    text += SPString("cd");
    text += 'e';
    (text += "f") += 'g';

    expectFields(text, "abcdefg", 32);
}

TEST(SPString, appendsItself)
{
    SPString text("abc");

    text += text;
    text += text;

    EXPECT_STREQ(text, "abcabcabcabc");
}

TEST(SPString, chopTakesTheLastCharacter)
{
    SPString text("ab");

    EXPECT_EQ(text.chop(), 'b');
    EXPECT_EQ(text.chop(), 'a');
    EXPECT_EQ(text.chop(), '\0');

    expectFields(text, "", 3);
}

TEST(SPString, indexFindsTheFirstOccurrence)
{
    struct {
        char const* text;
        char const* part;
        int offset;
        int expected;
    } const rows[] = {
        {"abcabc", "bc", 0, 1}, {"abcabc", "bc", 1, 1},    {"abcabc", "bc", 2, 4},   {"abcabc", "bc", 5, -1},
        {"abc", "", 0, 0},      {"abc", "", 2, 2},         {"abc", "", 3, -1},       {"abc", "x", 3, -1},
        {"", "", 0, -1},        {"", "a", 0, -1},          {"abc", "abcd", 0, -1},   {"abc", "abc", -5, 0},
        {"aab", "ab", 0, 1},    {"abc", "c", INT_MAX, -1}, {"abc", "c", INT_MIN, 2},
    };
    for (auto const& row : rows)
        EXPECT_EQ(SPString(row.text).index(row.part, row.offset), row.expected)
            << row.text << ", " << row.part << ", " << row.offset;
}

TEST(SPString, rindexFindsTheLastOccurrence)
{
    struct {
        char const* text;
        char const* part;
        std::size_t offset;
        int expected;
    } const rows[] = {
        {"abcabc", "bc", SPString::all, 4},
        {"abcabc", "bc", 5, 4},
        {"abcabc", "bc", 4, 1},
        {"abcabc", "bc", 2, 1},
        {"abcabc", "bc", 1, -1},
        {"abcabc", "bc", 100, 4},
        {"abc", "", SPString::all, 3},
        {"abc", "", 1, 2},
        {"", "", SPString::all, 0},
        {"", "a", SPString::all, -1},
        {"abc", "abcd", SPString::all, -1},
        {"a", "abc", 5, -1},
        {"aaa", "aa", SPString::all, 1},
    };
    for (auto const& row : rows)
        EXPECT_EQ(SPString(row.text).rindex(row.part, row.offset), row.expected)
            << row.text << ", " << row.part << ", " << row.offset;
}

TEST(SPString, rindexSearchesAllWhereTheOffsetLiesBeforeThePartsLength)
{
    EXPECT_EQ(SPString("abcabc").rindex("abc", 1), 3);
    EXPECT_EQ(SPString("abcabc").rindex("abc", 2), 0);
}

TEST(SPString, searchesLongTextsThatResembleThePart)
{
    std::string const text(1000000, 'a');
    std::string const part(100000, 'a');
    SPString const long1((text + "b").c_str());
    SPString const long2(("b" + text).c_str());

    EXPECT_EQ(long1.index((part + "b").c_str()), 900000);
    EXPECT_EQ(long1.index((part + "c").c_str()), -1);
    EXPECT_EQ(long2.rindex(("b" + part).c_str()), 0);
    EXPECT_EQ(long2.rindex(("c" + part).c_str()), -1);
}

TEST(SPString, substrIsClampedToTheString)
{
    SPString text("abc");

    SPString::substring const window = text.substr(100, 5);

    WindowFields const fields = fieldsOf(window);
    EXPECT_EQ(fields.pos, 3u);
    EXPECT_EQ(fields.len, 0u);
    EXPECT_EQ(fields.str, &text);
    EXPECT_EQ(fields.pt, nullptr);
}

TEST(SPString, substrKnowsItsPlace)
{
    SPString text("abc");

    SPString::substring const window = text.substr(1, 100);

    WindowFields const fields = fieldsOf(window);
    EXPECT_EQ(fields.pos, 1u);
    EXPECT_EQ(fields.len, 2u);
    EXPECT_EQ(fields.pt, static_cast<char const*>(text) + 1);
}

TEST(SPString, substrWithoutALengthReachesToTheEnd)
{
    SPString text("abcdef");

    EXPECT_STREQ(SPString(text.substr(2)), "cdef");
    EXPECT_STREQ(SPString(text.substr(2, 3)), "cde");
}

TEST(SPString, substrTakesARange)
{
    SPString text("abcdef");

    EXPECT_STREQ(SPString(text.substr(Range(1, 3))), "bcd");
    EXPECT_STREQ(SPString(text.substr(Range(1, 0))), "");
    EXPECT_STREQ(SPString(text.substr(Range(1, -1))), "bcdef");
    EXPECT_STREQ(SPString(text.substr(Range(-1, 1))), "");
}

TEST(SPString, assigningToAWindowReplacesItsCharacters)
{
    SPString text("abcdef");

    text.substr(1, 2) = "xyz";
    EXPECT_STREQ(text, "axyzdef");
    text.substr(0, 4) = SPString("-");
    EXPECT_STREQ(text, "-def");
    text.substr(1, 1) = "";
    EXPECT_STREQ(text, "-ef");

    EXPECT_EQ(text.length(), 3u);
}

TEST(SPString, assigningPastTheEndAppends)
{
    SPString text("abc");

    text.substr(100, 5) = "def";

    EXPECT_STREQ(text, "abcdef");
}

TEST(SPString, aStringCanBeAssignedToItsOwnWindow)
{
    SPString text("abcdef");
    SPString other("abcdef");

    text.substr(2, 3) = text;
    other.substr(0, 1) = static_cast<char const*>(other) + 4;

    EXPECT_STREQ(text, "ababcdeff");
    EXPECT_STREQ(other, "efbcdef");
}

TEST(SPString, aWindowCanBeAssignedToAWindow)
{
    SPString text("abcdef");
    SPString other("123");

    text.substr(0, 2) = other.substr(1, 2);
    EXPECT_STREQ(text, "23cdef");
    text.substr(0, 1) = text.substr(4);

    EXPECT_STREQ(text, "ef3cdef");
}

TEST(SPString, aWindowThatOutlivesAChangeReadsInsideTheString)
{
    SPString text("a text that is long enough to be given a block of its own");
    SPString::substring window = text.substr(50, 5);

    text = SPString("ab");
    EXPECT_STREQ(SPString(window), "");
    window = "c";

    EXPECT_STREQ(text, "abc");
}

TEST(SPString, matchesAnExpression)
{
    SPString const text("key=42");
    Regexp number("[0-9]+");
    Regexp blank(" ");

    EXPECT_EQ(text.m(number), 1);
    EXPECT_EQ(text.m(blank), 0);
    EXPECT_EQ(text.m("^key"), 1);
    EXPECT_EQ(text.m("KEY"), 0);
    EXPECT_EQ(text.m("KEY", "i"), 1);
    EXPECT_EQ(text.m("KEY", "gi"), 1);
}

TEST(SPString, aMatchReplacesAListByItsGroups)
{
    SPString const text("key=42;");
    Regexp pair("([a-z]+)=([0-9]+)");
    SPStringList groups;
    groups.push("old");

    EXPECT_EQ(text.m(pair, groups), 3);
    EXPECT_STREQ(groups.join("|"), "key=42|key|42");
    EXPECT_EQ(text.m("(K)E", groups, "i"), 2);
    EXPECT_STREQ(groups.join("|"), "ke|k");
}

TEST(SPString, aMatchThatFailsLeavesTheListAlone)
{
    SPStringList groups;
    groups.push("old");

    EXPECT_EQ(SPString("abc").m("x", groups), 0);

    EXPECT_STREQ(groups.join("|"), "old");
}

TEST(SPString, groupsEndAtTheFirstThatTookNoPart)
{
    SPStringList groups;

    EXPECT_EQ(SPString("b").m("(a)|(b)", groups), 1);

    EXPECT_STREQ(groups.join("|"), "b");
}

TEST(SPString, anElementOfTheListCanBeMatched)
{
    SPStringList groups;
    groups.push("a long text that lies in the list: key=42");

    EXPECT_EQ(groups[0].m("([a-z]+)=([0-9]+)", groups), 3);

    EXPECT_STREQ(groups.join("|"), "key=42|key|42");
}

TEST(SPString, aBadExpressionNeverMatches)
{
    SPString text("a**");

    testing::internal::CaptureStderr();
    int const matched = text.m("a**");
    int const replaced = text.s("a**", "x");
    std::string const messages = testing::internal::GetCapturedStderr();

    EXPECT_EQ(matched, 0);
    EXPECT_EQ(replaced, 0);
    EXPECT_STREQ(text, "a**");
    EXPECT_NE(messages.find("regerror: nested *?+"), messages.npos);
}

TEST(SPString, anExpressionThatDidNotCompileNeverMatches)
{
    SPString const text("a**");
    SPStringList groups;
    groups.push("old");
    testing::internal::CaptureStderr();
    Regexp expression("a**");

    int const plain = text.m(expression);
    int const withGroups = text.m(expression, groups);

    testing::internal::GetCapturedStderr();
    EXPECT_EQ(plain, 0);
    EXPECT_EQ(withGroups, 0);
    EXPECT_STREQ(groups.join("|"), "old");
}

TEST(SPString, aWindowCanBeASummand)
{
    SPString text("abcdef");

    EXPECT_STREQ(text + text.substr(1, 2), "abcdefbc");
    EXPECT_STREQ("<" + SPString(text.substr(4)), "<ef");
}

TEST(SPString, comparesWhatIsInViewWhateverTheLength)
{
    SPString text = SPString("ab") + '\0';
    text += 'c';

    EXPECT_EQ(text.length(), 4u);
    EXPECT_TRUE(text == "ab");
    EXPECT_TRUE(text == SPString("ab"));
    EXPECT_FALSE(text > SPString("ab"));
    EXPECT_TRUE(text < SPString("abc"));
}

TEST(SPString, writesItsTextWithoutANewline)
{
    std::ostringstream stream;

    stream << SPString("abc") << SPString("d");

    EXPECT_EQ(stream.str(), "abcd");
}

TEST(SPString, readsALine)
{
    std::istringstream stream("first\nsecond line\n");
    SPString text("old");

    stream >> text;
    EXPECT_STREQ(text, "first");
    stream >> text;
    EXPECT_STREQ(text, "second line");
    EXPECT_TRUE(stream.good());
    stream >> text;

    EXPECT_TRUE(stream.fail());
    EXPECT_STREQ(text, "");
}

TEST(SPString, keepsBlanksAtTheStartOfALine)
{
    std::istringstream stream("  two\n");
    SPString text;

    stream >> text;

    EXPECT_STREQ(text, "  two");
}

TEST(SPString, readsLinesOfAnyLength)
{
    for (std::size_t length : {0u, 1u, 130u, 131u, 132u, 262u, 263u, 1000u, 100000u}) {
        std::string const line(length, 'x');
        std::istringstream stream(line + "\nnext\n");
        SPString text;

        stream >> text;
        EXPECT_EQ(std::string(text), line);
        EXPECT_TRUE(stream.good()) << length;
        stream >> text;

        EXPECT_STREQ(text, "next") << length;
    }
}

TEST(SPString, readsALastLineWithoutANewline)
{
    for (std::size_t length : {1u, 130u, 131u, 132u, 262u, 263u}) {
        std::string const line(length, 'x');
        std::istringstream stream(line);
        SPString text;

        stream >> text;

        EXPECT_EQ(std::string(text), line);
        EXPECT_FALSE(stream.fail()) << length;
        EXPECT_TRUE(stream.eof()) << length;
    }
}

TEST(SPString, leavesOutWhatFollowsANul)
{
    std::istringstream stream(std::string("ab\0cd\nnext\n", 11));
    SPString text;

    stream >> text;
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(text.length(), 2u);
    stream >> text;

    EXPECT_STREQ(text, "next");
}

TEST(SPString, textIsAddedBeforeANulThatWasAdded)
{
    SPString sum = SPString("ab") + '\0';
    SPString fromWindow;
    fromWindow = SPString('\0').substr(0, 1);

    EXPECT_EQ(sum.length(), 3u);
    sum += "c";
    fromWindow += "x";

    EXPECT_STREQ(sum, "abc");
    EXPECT_EQ(sum.length(), 4u);
    EXPECT_STREQ(fromWindow, "x");
    EXPECT_EQ(fromWindow.length(), 2u);
}

TEST(SPString, aWindowTakesATextUpToItsNul)
{
    SPString text("abc");
    SPString other("abc");
    SPString nul('\0');

    text.substr(1, 1) = nul;
    other.substr(1, 1) = nul.substr(0, 1);

    EXPECT_STREQ(text, "ac");
    EXPECT_EQ(text.length(), 2u);
    EXPECT_STREQ(other, "ac");
}

TEST(SPString, aPartIsComparedUpToItsNul)
{
    SPString text("ab");
    text += '\0';
    text += 'x';
    SPString part("b");
    part += '\0';
    part += 'y';

    EXPECT_EQ(text.length(), 4u);
    EXPECT_EQ(text.index(part), 1);
    EXPECT_EQ(text.rindex(part), 1);
    EXPECT_EQ(SPString("abab").index(part), -1);
}

TEST(SPString, aWindowKnowsItsPlaceAfterAnAssignment)
{
    SPString text("abcdef");
    SPString::substring window = text.substr(2, 2);

    window = std::string(1000, 'x').c_str();

    EXPECT_EQ(fieldsOf(window).pt, static_cast<char const*>(text) + 2);
    EXPECT_EQ(text.length(), 1004u);
    EXPECT_STREQ(static_cast<char const*>(text) + 1002, "ef");
    EXPECT_EQ(fieldsOf(text).allocated, 1004u + 32u);
}

TEST(SPString, whatFollowsTheStretchOfANulIsKept)
{
    std::string line(300, 'a');
    line[100] = '\0';
    line[131] = 'b';
    std::istringstream stream(line);
    SPString text;

    stream >> text;

    EXPECT_STREQ(text, (std::string(100, 'a') + "b" + std::string(168, 'a')).c_str());
}

namespace {

// Gives two characters and then throws.
class FailingBuffer : public std::streambuf {
protected:
    int_type underflow() override
    {
        if (given_)
            throw std::runtime_error("no more");
        given_ = true;
        setg(text_, text_, text_ + 2);
        return 'a';
    }

private:
    char text_[2] = {'a', 'b'};
    bool given_ = false;
};

}  // namespace

TEST(SPString, aSourceThatThrowsMakesTheStreamBad)
{
    FailingBuffer buffer;
    std::istream stream(&buffer);
    FailingBuffer otherBuffer;
    std::istream throwing(&otherBuffer);
    throwing.exceptions(std::ios_base::badbit);
    SPString text;

    EXPECT_NO_THROW(stream >> text);
    EXPECT_TRUE(stream.bad());

    EXPECT_THROW(throwing >> text, std::runtime_error);
}

TEST(SPString, offsetsBeyondAllTextsSearchAllOfIt)
{
    EXPECT_EQ(SPString("abcabc").rindex("abc", std::size_t(1) << 63), 3);
    EXPECT_EQ(SPString("abcabc").rindex("abc", static_cast<std::size_t>(-2)), 3);
}

TEST(SPString, aMatchOfAnExpressionThatDidNotCompileFails)
{
    testing::internal::CaptureStderr();
    Regexp expression("a**");
    SPStringList groups;
    groups.push("old");

    EXPECT_EQ(SPString("a").m(expression), 0);
    EXPECT_EQ(SPString("a").m(expression, groups), 0);

    testing::internal::GetCapturedStderr();
    EXPECT_EQ(groups.count(), 1);
}
