#include "platform/classlib/CRect.h"
#include "platform/classlib/CPoint.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <vector>

// What a failed expectation prints.
void PrintTo(CRect const& rect, std::ostream* stream)
{
    *stream << '(' << rect.left << ',' << rect.top << ',' << rect.right << ',' << rect.bottom << ')';
}

void PrintTo(CPoint const& point, std::ostream* stream)
{
    *stream << '(' << point.x << ',' << point.y << ')';
}

void PrintTo(CSize const& size, std::ostream* stream)
{
    *stream << size.cx << 'x' << size.cy;
}

namespace {

constexpr LONG lowest = std::numeric_limits<LONG>::min();
constexpr LONG highest = std::numeric_limits<LONG>::max();

}  // namespace

TEST(CRect, isMadeInManyWays)
{
    RECT const plain = {1, 2, 3, 4};

    EXPECT_EQ(CRect(), CRect(0, 0, 0, 0));
    EXPECT_EQ(CRect(plain), CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(&plain), CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(static_cast<RECT const*>(nullptr)), CRect());
    EXPECT_EQ(CRect(CPoint(1, 2), CPoint(3, 4)), CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(CPoint(1, 2), CSize(3, 4)), CRect(1, 2, 4, 6));
}

TEST(CRect, givesItsMeasures)
{
    CRect const rect(10, 20, 110, 70);

    EXPECT_EQ(rect.Width(), 100);
    EXPECT_EQ(rect.Height(), 50);
    EXPECT_EQ(rect.Size(), CSize(100, 50));
    EXPECT_EQ(rect.TopLeft(), CPoint(10, 20));
    EXPECT_EQ(rect.BottomRight(), CPoint(110, 70));
    EXPECT_EQ(rect.CenterPoint(), CPoint(60, 45));
    EXPECT_EQ(CRect(highest - 2, 0, highest, 0).CenterPoint(), CPoint(highest - 1, 0));
}

TEST(CRect, isEmptyWithoutWidthOrHeight)
{
    EXPECT_FALSE(CRect(0, 0, 1, 1).IsRectEmpty());
    EXPECT_TRUE(CRect(0, 0, 0, 1).IsRectEmpty());
    EXPECT_TRUE(CRect(0, 0, 1, 0).IsRectEmpty());
    EXPECT_TRUE(CRect(2, 0, 1, 1).IsRectEmpty());
    EXPECT_TRUE(CRect(0, 2, 1, 1).IsRectEmpty());
    EXPECT_TRUE(CRect().IsRectNull());
    EXPECT_FALSE(CRect(1, 1, 1, 1).IsRectNull());
}

TEST(CRect, holdsPointsUpToItsRightAndBottomEdges)
{
    CRect const rect(10, 20, 30, 40);
    struct Row {
        CPoint point;
        bool inside;
    };
    for (auto const& [point, inside] : std::vector<Row>{
             {{10, 20}, true},
             {{29, 39}, true},
             {{30, 39}, false},
             {{29, 40}, false},
             {{9, 20}, false},
             {{10, 19}, false},
         })
        EXPECT_EQ(rect.PtInRect(point) != FALSE, inside) << testing::PrintToString(point);
}

TEST(CRect, isInflatedAndDeflated)
{
    CRect rect(10, 20, 30, 40);
    RECT const edges = {1, 2, 3, 4};

    rect.InflateRect(1, 2);
    EXPECT_EQ(rect, CRect(9, 18, 31, 42));
    rect.DeflateRect(1, 2);
    EXPECT_EQ(rect, CRect(10, 20, 30, 40));
    rect.InflateRect(CSize(1, 2));
    rect.DeflateRect(CSize(2, 3));
    EXPECT_EQ(rect, CRect(11, 21, 29, 39));
    rect.InflateRect(&edges);
    EXPECT_EQ(rect, CRect(10, 19, 32, 43));
    rect.DeflateRect(&edges);
    rect.InflateRect(1, 1, 1, 1);
    EXPECT_EQ(rect, CRect(10, 20, 30, 40));
    rect.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(11, 22, 27, 36));
}

TEST(CRect, isMoved)
{
    CRect rect(10, 20, 30, 40);

    rect.OffsetRect(1, 2);
    EXPECT_EQ(rect, CRect(11, 22, 31, 42));
    rect.OffsetRect(CPoint(-1, -2));
    rect.OffsetRect(CSize(5, 5));
    EXPECT_EQ(rect, CRect(15, 25, 35, 45));
    rect.MoveToX(0);
    rect.MoveToY(1);
    EXPECT_EQ(rect, CRect(0, 1, 20, 21));
    rect.MoveToXY(7, 8);
    EXPECT_EQ(rect, CRect(7, 8, 27, 28));
    rect.MoveToXY(CPoint(1, 1));
    EXPECT_EQ(rect, CRect(1, 1, 21, 21));
}

TEST(CRect, isTurnedRoundWhereItIsNegative)
{
    CRect rect(30, 40, 10, 20);

    rect.NormalizeRect();

    EXPECT_EQ(rect, CRect(10, 20, 30, 40));
    rect.NormalizeRect();
    EXPECT_EQ(rect, CRect(10, 20, 30, 40));
}

TEST(CRect, givesWhatTwoShare)
{
    struct Row {
        CRect first, second, shared;
    };
    for (auto const& [first, second, shared] : std::vector<Row>{
             {{0, 0, 10, 10}, {5, 5, 15, 15}, {5, 5, 10, 10}},
             {{0, 0, 10, 10}, {2, 2, 4, 4}, {2, 2, 4, 4}},
             {{0, 0, 10, 10}, {10, 0, 20, 10}, {}},
             {{0, 0, 10, 10}, {0, 10, 10, 20}, {}},
             {{0, 0, 10, 10}, {20, 20, 30, 30}, {}},
             {{0, 0, 10, 10}, {5, 5, 5, 8}, {}},
             {{10, 10, 0, 0}, {0, 0, 10, 10}, {}},
         }) {
        CRect result(7, 7, 7, 7);
        EXPECT_EQ(result.IntersectRect(&first, &second) != FALSE, !shared.IsRectEmpty());
        EXPECT_EQ(result, shared);
        EXPECT_EQ(first & second, shared);
        EXPECT_EQ(second & first, shared);
        result = first;
        result &= second;
        EXPECT_EQ(result, shared);
    }
}

TEST(CRect, givesWhatHoldsTwo)
{
    struct Row {
        CRect first, second, both;
    };
    for (auto const& [first, second, both] : std::vector<Row>{
             {{0, 0, 10, 10}, {5, 5, 15, 15}, {0, 0, 15, 15}},
             {{0, 0, 10, 10}, {20, -5, 30, 5}, {0, -5, 30, 10}},
             {{0, 0, 10, 10}, {50, 50, 50, 60}, {0, 0, 10, 10}},
             {{3, 3, 3, 3}, {0, 0, 0, 5}, {}},
         }) {
        CRect result(7, 7, 7, 7);
        EXPECT_EQ(result.UnionRect(&first, &second) != FALSE, !both.IsRectEmpty());
        EXPECT_EQ(result, both);
        EXPECT_EQ(first | second, both);
        EXPECT_EQ(second | first, both);
        result = first;
        result |= second;
        EXPECT_EQ(result, both);
    }
}

TEST(CRect, addsPointsSizesAndRectangles)
{
    CRect const rect(10, 20, 30, 40);
    RECT const edges = {1, 2, 3, 4};

    EXPECT_EQ(rect + CPoint(1, 2), CRect(11, 22, 31, 42));
    EXPECT_EQ(rect + CSize(1, 2), CRect(11, 22, 31, 42));
    EXPECT_EQ(rect - CPoint(1, 2), CRect(9, 18, 29, 38));
    EXPECT_EQ(rect - CSize(1, 2), CRect(9, 18, 29, 38));
    EXPECT_EQ(rect + &edges, CRect(9, 18, 33, 44));
    EXPECT_EQ(rect - &edges, CRect(11, 22, 27, 36));
}

TEST(CRect, isSetCopiedAndCompared)
{
    CRect rect;
    RECT const plain = {1, 2, 3, 4};

    rect.SetRect(1, 2, 3, 4);
    EXPECT_TRUE(rect.EqualRect(&plain));
    EXPECT_TRUE(rect == plain);
    EXPECT_FALSE(rect.EqualRect(nullptr));
    rect.SetRectEmpty();
    EXPECT_TRUE(rect != plain);
    rect.CopyRect(&plain);
    EXPECT_EQ(rect, CRect(1, 2, 3, 4));
    static_cast<LPRECT>(rect)->left = 9;
    EXPECT_EQ(static_cast<RECT const*>(rect)->left, 9);
}

TEST(CRect, wrapsAroundAtTheEndsOfItsRange)
{
    CRect rect(lowest, lowest, highest, highest);

    rect.InflateRect(1, 1);
    EXPECT_EQ(rect, CRect(highest, highest, lowest, lowest));
    EXPECT_EQ(rect.Width(), 1);
    rect.OffsetRect(1, 1);
    EXPECT_EQ(rect, CRect(lowest, lowest, lowest + 1, lowest + 1));
    EXPECT_EQ(-CSize(lowest, 1), CSize(lowest, -1));
}

TEST(CPoint, addsAndSubtracts)
{
    CPoint point(3, 4);

    EXPECT_EQ(point + CSize(1, 2), CPoint(4, 6));
    EXPECT_EQ(point - CSize(1, 2), CPoint(2, 2));
    EXPECT_EQ(point + CPoint(1, 2), CPoint(4, 6));
    EXPECT_EQ(point - CPoint(1, 2), CSize(2, 2));
    EXPECT_EQ(-point, CPoint(-3, -4));
    point += CSize(1, 1);
    point += CPoint(1, 1);
    point -= CSize(2, 2);
    point -= CPoint(1, 1);
    EXPECT_EQ(point, CPoint(2, 3));
    point.Offset(1, 1);
    point.Offset(CPoint(1, 1));
    point.Offset(CSize(1, 1));
    EXPECT_EQ(point, CPoint(5, 6));
    point.SetPoint(0, 1);
    EXPECT_EQ(point, CPoint(CSize(0, 1)));
    EXPECT_TRUE(point != CPoint());
}

TEST(CSize, addsAndSubtracts)
{
    CSize size(3, 4);

    EXPECT_EQ(size + CSize(1, 2), CSize(4, 6));
    EXPECT_EQ(size - CSize(1, 2), CSize(2, 2));
    EXPECT_EQ(-size, CSize(-3, -4));
    size += CSize(1, 1);
    size -= CSize(2, 2);
    EXPECT_EQ(size, CSize(CPoint(2, 3)));
    size.SetSize(0, 0);
    EXPECT_EQ(size, CSize());
    EXPECT_TRUE(size != CSize(1, 0));
}
