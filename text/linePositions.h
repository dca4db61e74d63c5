// linePositions.h: offsets in a text, and the lines and columns they stand for. All count from 0.
//
//   int start = 0, end = 0;
//   omGetStartAndEndPosOfLine("ab\ncd", 1, start, end);      // 3, 5
#pragma once

#include "zk_export.h"

#include "platform/classlib/CRect.h"
#include "platform/classlib/CString.h"

/// The column and line of `start` as left and top, those of `end` as right and bottom.
///
/// Lines end with a line feed. An `end` beyond the text counts as the text's end. The empty rectangle if
/// `start` is not below `end`, one of them is negative, or `start` lies beyond the text.
ZK_UTIL_API CRect omGetStartAndEndOfLineAndColInString(CString const& text, int start, int end);

/// The offset of a line and that of its line feed, or the text's length for the last line.
///
/// A text that ends in a line feed has an empty last line. 0 and 0 if there is no such line.
ZK_UTIL_API void omGetStartAndEndPosOfLine(CString const& text, int line, int& start, int& end);
