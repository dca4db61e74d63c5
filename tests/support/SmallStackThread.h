// SmallStackThread.h: runs a function on a thread whose stack is small.
//
//   runWithSmallStack(256 * 1024, [&] { result = expression.match(longText); });
#pragma once

#include <cstddef>
#include <functional>

/// Returns when `function` has. A stack that overflows ends the program.
void runWithSmallStack(std::size_t stackSize, std::function<void()> const& function);
