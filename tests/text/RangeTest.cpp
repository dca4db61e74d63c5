#include "text/Range.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

TEST(Range, holdsNothingByDefault)
{
    Range const range;

    EXPECT_EQ(range.start(), 0);
    EXPECT_EQ(range.end(), -1);
    EXPECT_EQ(range.length(), 0);
}

TEST(Range, computesItsLength)
{
    Range range(2, 4);
    EXPECT_EQ(range.length(), 3);

    range.set(7, 7);
    EXPECT_EQ(range.start(), 7);
    EXPECT_EQ(range.end(), 7);
    EXPECT_EQ(range.length(), 1);

    range.set(5, 2);
    EXPECT_EQ(range.length(), -2);
}

TEST(Range, isThreeFieldsOf32Bits)
{
    EXPECT_EQ(sizeof(Range), 12u);
}

TEST(Range, testsTrueOnlyIfItHoldsSomethingFromZeroOn)
{
    struct Row {
        int start, end;
        bool holds;
    };
    for (Row const& row :
         {Row{0, 0, true}, {0, -1, false}, {3, 2, false}, {-1, 4, false}, {-5, -2, false}, {2, 9, true}}) {
        Range const range(row.start, row.end);

        void* const converted = range;

        EXPECT_EQ(converted, row.holds ? static_cast<void const*>(&range) : nullptr) << range;
    }
}

TEST(Range, isOrderedByStartThenByEnd)
{
    EXPECT_TRUE(Range(1, 9) < Range(2, 3));
    EXPECT_FALSE(Range(2, 3) < Range(1, 9));
    EXPECT_TRUE(Range(2, 3) < Range(2, 4));
    EXPECT_FALSE(Range(2, 3) < Range(2, 3));
    EXPECT_TRUE(Range(-1, 0) < Range(0, 0));
}

TEST(Range, postfixIncrementExtendsItAtTheEnd)
{
    Range range(2, 4);

    Range const before = range++;

    EXPECT_EQ(before.end(), 4);
    EXPECT_EQ(range.start(), 2);
    EXPECT_EQ(range.end(), 5);
    EXPECT_EQ(range.length(), 4);
}

TEST(Range, prefixIncrementTakesOneOffTheFront)
{
    Range range(2, 4);

    Range const& after = ++range;

    EXPECT_EQ(&after, &range);
    EXPECT_EQ(range.start(), 3);
    EXPECT_EQ(range.end(), 4);
    EXPECT_EQ(range.length(), 2);
}

TEST(Range, isWrittenAsStartEndAndLength)
{
    std::ostringstream stream;

    stream << Range(2, 4) << Range();

    EXPECT_EQ(stream.str(), "2 - 4 (3)0 - -1 (0)");
}

TEST(Range, wrapsAroundAtTheEndsOfItsNumbers)
{
    Range range(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    EXPECT_EQ(range.length(), 0);

    range++;
    EXPECT_EQ(range.end(), std::numeric_limits<int>::min());
    EXPECT_EQ(range.length(), 1);
    Range last(std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
    ++last;
    EXPECT_EQ(last.start(), std::numeric_limits<int>::min());
    EXPECT_EQ(last.length(), 0);
}
