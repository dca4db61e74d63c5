#include "text/Slice.h"

#include "platform/classlib/textTables.h"
#include "text/SPStringList.h"

#include <gtest/gtest.h>

#include <climits>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>

namespace {

constexpr ZkText texts[] = {
    {48155, "no end in '%s'"},
    {48156, "no comma in '%s' but '%s'"},
    {48157, "unknown in '%s': '%s'"},
};

// Catches what is written to the standard streams, and gives the numbered texts.
class SliceText : public testing::Test {
protected:
    SliceText() : oldOut_(std::cout.rdbuf(out_.rdbuf())), oldErr_(std::cerr.rdbuf(err_.rdbuf()))
    {
        zkRegisterTexts(texts, 3);
    }
    ~SliceText() override
    {
        std::cout.rdbuf(oldOut_);
        std::cerr.rdbuf(oldErr_);
        zkUnregisterTexts(texts);
    }

    std::ostringstream out_;
    std::ostringstream err_;

private:
    std::streambuf* oldOut_;
    std::streambuf* oldErr_;
};

std::string rangesOf(Slice const& slice)
{
    std::string text;
    for (int i = 0; i < slice.count(); ++i)
        text += (i ? "," : "") + std::to_string(slice[i].start()) + "-" + std::to_string(slice[i].end());
    return text;
}

}  // namespace

TEST(Slice, isEmptyByDefault)
{
    EXPECT_EQ(Slice().count(), 0);
}

TEST(Slice, holdsOnePointer)
{
    static_assert(sizeof(Slice) == sizeof(void*));
}

TEST(Slice, takesNumbersUpToANegativeOne)
{
    EXPECT_EQ(rangesOf(Slice(1, 2, 3, 7, -1)), "1-3,7-7");
    EXPECT_EQ(rangesOf(Slice(1, -1, 5)), "1-1");
    EXPECT_EQ(rangesOf(Slice(4, 5)), "4-5");
    EXPECT_EQ(rangesOf(Slice(0)), "0-0");
}

TEST(Slice, takesAtLeastTheFirstNumber)
{
    EXPECT_EQ(rangesOf(Slice(-1, 3, -1)), "-1--1,3-3");
}

TEST(Slice, takesARange)
{
    EXPECT_EQ(rangesOf(Slice(Range(3, 5))), "3-5");
}

TEST(Slice, aNumberBehindTheLastRangeExtendsIt)
{
    Slice slice(Range(3, 5));

    slice.add(6);
    slice.add(6);
    slice.add(5);
    slice.add(6);

    EXPECT_EQ(rangesOf(slice), "3-6,6-6,5-6");
    EXPECT_EQ(slice[0].length(), 4);
}

TEST(Slice, theLowestNumberExtendsNoRange)
{
    Slice slice(Range(3, INT_MAX));

    slice.add(INT_MIN);

    EXPECT_EQ(slice.count(), 2);
    EXPECT_EQ(slice[1].start(), INT_MIN);
    EXPECT_EQ(slice[1].end(), INT_MIN);
}

TEST(Slice, anIndexPastTheEndAddsEmptyRanges)
{
    Slice const slice(3);

    EXPECT_EQ(slice[2].length(), 0);

    EXPECT_EQ(slice.count(), 3);
}

TEST(Slice, aCopyIsIndependent)
{
    Slice first(1);

    Slice second(first);
    second.add(5);

    EXPECT_EQ(rangesOf(first), "1-1");
    EXPECT_EQ(rangesOf(second), "1-1,5-5");
}

TEST(Slice, assignedSlicesShareTheirRanges)
{
    Slice second(9);
    {
        Slice first(1);
        second = first;
        first.add(5);
        second.add(6);
        EXPECT_EQ(rangesOf(first), "1-1,5-6");
    }

    EXPECT_EQ(rangesOf(second), "1-1,5-6");
}

TEST(Slice, assignmentToItselfDoesNothing)
{
    Slice slice(1);
    Slice const& same = slice;

    slice = same;

    EXPECT_EQ(rangesOf(slice), "1-1");
}

TEST(Slice, aSliceThatWasMovedFromIsEmptyAndUsable)
{
    Slice first(1);

    Slice second(std::move(first));

    EXPECT_EQ(rangesOf(second), "1-1");
    EXPECT_EQ(first.count(), 0);
    first.add(2);
    EXPECT_EQ(rangesOf(first), "2-2");
}

TEST(Slice, writesALineForEachRange)
{
    std::ostringstream stream;

    stream << Slice(1, 2, 7);

    EXPECT_EQ(stream.str(), "1 - 2 (2)\n7 - 7 (1)\n");
}

TEST_F(SliceText, isReadFromNumbersAndRanges)
{
    struct {
        char const* text;
        char const* expected;
    } const rows[] = {
        {"1-3,7", "1-3,7-7"}, {"0..3,5", "0-3,5-5"}, {"1-4", "1-4"},     {"2,4,7", "2-2,4-4,7-7"},
        {"3", "3-3"},         {"1,2,3", "1-3"},      {"1-3,4", "1-4"},   {"1,2-3", "1-1,2-3"},
        {"5-2", "5-2"},       {"3,", "3-3"},         {"1-3,", "1-3"},    {"", ""},
        {"x", "0-0"},         {",2", "0-0,2-2"},     {" 1 - 3 ", "1-3"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(rangesOf(Slice(row.text)), row.expected) << row.text;
    EXPECT_EQ(err_.str(), "");
}

TEST_F(SliceText, isWrittenToTheStandardOutputOnceItWasRead)
{
    Slice("1-3,7");

    EXPECT_EQ(out_.str(), "1 - 3 (3)\n7 - 7 (1)\n\n");
}

TEST_F(SliceText, aSliceThatEndsInANumberIsWrittenToo)
{
    Slice("3");

    EXPECT_EQ(out_.str(), "3 - 3 (1)\n\n");
}

TEST_F(SliceText, anEmptyTextWritesAnEmptyLine)
{
    EXPECT_EQ(Slice(static_cast<char const*>(nullptr)).count(), 0);

    EXPECT_EQ(out_.str(), "\n");
}

TEST_F(SliceText, aRangeWithoutAnEndIsReportedAndEndsTheSlice)
{
    Slice const slice("5,1-");

    EXPECT_EQ(rangesOf(slice), "5-5");
    EXPECT_EQ(err_.str(), "no end in '5,1-'\n");
    EXPECT_EQ(out_.str(), "");
}

TEST_F(SliceText, aRangeWithoutACommaBehindItIsReportedAndTheSliceGoesOn)
{
    Slice const slice("1-3-7");

    EXPECT_EQ(rangesOf(slice), "1-3,7-7");
    EXPECT_EQ(err_.str(), "no comma in '1-3-7' but '-'\n");
    EXPECT_EQ(out_.str(), "1 - 3 (3)\n7 - 7 (1)\n\n");
}

TEST_F(SliceText, whatFollowsTheReportedSeparatorMayExtendTheRange)
{
    Slice const slice("1-3-4");

    EXPECT_EQ(rangesOf(slice), "1-4");
    EXPECT_EQ(out_.str(), "1 - 4 (4)\n\n");
}

TEST_F(SliceText, reportsWithoutTextsAreEmptyLines)
{
    zkUnregisterTexts(texts);
    zkUnregisterTexts(texts);

    Slice("1-");

    EXPECT_EQ(err_.str(), "\n");
}

TEST_F(SliceText, aPercentSignInTheTextIsText)
{
    Slice("%s%n1-");

    EXPECT_EQ(err_.str(), "no end in '%s%n1-'\n");
}

TEST_F(SliceText, numbersThatDoNotFitAreTheNearestOnes)
{
    Slice const slice("99999999999999999999");

    EXPECT_EQ(slice[0].start(), 2147483647);
}
