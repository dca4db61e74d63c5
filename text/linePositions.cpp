#include "text/linePositions.h"

#include <algorithm>
#include <string_view>

namespace {

struct Place {
    int column;
    int line;
};

Place placeOf(std::string_view text, int position)
{
    std::string_view const before = text.substr(0, std::size_t(position));
    std::size_t const lineFeed = before.rfind('\n');
    int const lineStart = lineFeed == std::string_view::npos ? 0 : int(lineFeed) + 1;
    return {position - lineStart, int(std::count(before.begin(), before.end(), '\n'))};
}

}  // namespace

CRect omGetStartAndEndOfLineAndColInString(CString const& text, int start, int end)
{
    if (start < 0 || start >= end || start > text.GetLength())
        return CRect(0, 0, 0, 0);
    Place const from = placeOf(text.view(), start);
    Place const to = placeOf(text.view(), std::min(end, text.GetLength()));
    return CRect(from.column, from.line, to.column, to.line);
}

void omGetStartAndEndPosOfLine(CString const& text, int line, int& start, int& end)
{
    start = 0;
    end = 0;
    if (line < 0)
        return;
    int begin = 0;
    for (; line > 0; --line) {
        int const lineFeed = text.Find('\n', begin);
        if (lineFeed < 0)
            return;
        begin = lineFeed + 1;
    }
    int const lineFeed = text.Find('\n', begin);
    start = begin;
    end = lineFeed < 0 ? text.GetLength() : lineFeed;
}
