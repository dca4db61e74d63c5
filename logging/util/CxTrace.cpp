#include "logging/util/CxTrace.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int step = 3;
thread_local int indentation = 0;

void print(char const* word, char const* text) noexcept
{
    std::fprintf(stderr, "%*s%s%s\n", indentation, "", word, text ? text : "");
}

}  // namespace

void CxTraceEnter(char const* text) noexcept
{
    print("ENTER ", text);
    indentation += step;
}

void CxTraceLeave(char const* text) noexcept
{
    indentation = std::max(indentation - step, 0);
    print("LEAVE ", text);
}

void CxTrace(char const* text) noexcept
{
    print("... ", text);
}
