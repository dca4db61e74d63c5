// regexpWalker.h: matches by walking the nodes of the byte program as they stand.
//
// It trusts nothing but that the program's first bytes can be read, so it also
// serves programs that were changed or built by hand.
#pragma once

#include "text/regexpProgram.h"

#include <cstdint>

namespace zk {

class RegexpWalker {
public:
    /// `size` is the program's length in bytes, the magic byte included. Nodes outside of it do not exist.
    RegexpWalker(regexp& expression, std::size_t size, std::uint64_t stepLimit)
        : expression_(expression), program_(expression.program), size_(size), stepsLeft_(stepLimit)
    {
    }

    /// Looks for a match as regexec describes it; the magic byte was checked.
    RegexpOutcome search(char* text);

private:
    class Stack;

    RegexpOutcome tryAt(char* start, Stack& stack);
    std::size_t countRun(char const* node, char const* input);
    char const* following(char const* node) const;
    bool exists(char const* node) const;
    bool hasText(char const* node) const;
    std::uint64_t placeOf(char const* node, char const* input) const;

    regexp& expression_;
    char const* program_;
    std::size_t size_;
    std::uint64_t stepsLeft_;
    char const* textStart_ = nullptr;
    bool abandoned_ = false;
};

}  // namespace zk
