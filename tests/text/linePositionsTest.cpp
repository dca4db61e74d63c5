#include "text/linePositions.h"

#include <gtest/gtest.h>

namespace {

struct Span {
    int start;
    int end;
    CRect expected;
};

TEST(LinePositions, areTheColumnsAndLinesOfASpan)
{
    CString const text("ab\ncde\n\nf");
    Span const rows[] = {
        {0, 1, CRect(0, 0, 1, 0)},  {0, 2, CRect(0, 0, 2, 0)},  // the line feed belongs to the line it ends
        {1, 3, CRect(1, 0, 0, 1)},  {4, 7, CRect(1, 1, 0, 2)},  {7, 8, CRect(0, 2, 0, 3)},
        {8, 9, CRect(0, 3, 1, 3)},  {8, 99, CRect(0, 3, 1, 3)},  // cut to the text
        {9, 10, CRect(1, 3, 1, 3)},                              // its end is not beyond it
    };
    for (Span const& row : rows)
        EXPECT_TRUE(omGetStartAndEndOfLineAndColInString(text, row.start, row.end) == row.expected)
            << row.start << " to " << row.end;
}

TEST(LinePositions, areEmptyForASpanThatIsNone)
{
    CRect const empty(0, 0, 0, 0);

    EXPECT_TRUE(omGetStartAndEndOfLineAndColInString("a\nb", 2, 2) == empty);
    EXPECT_TRUE(omGetStartAndEndOfLineAndColInString("a\nb", 3, 2) == empty);
    EXPECT_TRUE(omGetStartAndEndOfLineAndColInString("a\nb", -1, 2) == empty);
    EXPECT_TRUE(omGetStartAndEndOfLineAndColInString("a\nb", -2, -1) == empty);
    EXPECT_TRUE(omGetStartAndEndOfLineAndColInString("a\nb", 4, 5) == empty);
}

struct Line {
    char const* text;
    int line;
    int start;
    int end;
};

TEST(LinePositions, areTheOffsetsOfALine)
{
    Line const rows[] = {
        {"ab\ncd", 0, 0, 2}, {"ab\ncd", 1, 3, 5},  {"ab\ncd", 2, 0, 0}, {"ab\n", 1, 3, 3}, {"ab\n", 2, 0, 0},
        {"\n\na", 1, 1, 1},  {"ab\ncd", -1, 0, 0}, {"", 0, 0, 0},       {"", 1, 0, 0},
    };
    for (Line const& row : rows) {
        int start = 99;
        int end = 99;

        omGetStartAndEndPosOfLine(row.text, row.line, start, end);

        EXPECT_EQ(start, row.start) << row.text << " line " << row.line;
        EXPECT_EQ(end, row.end) << row.text << " line " << row.line;
    }
}

}  // namespace
