// regexpWalker.h: matches by walking the nodes of the byte program as they stand.
//
// It trusts nothing but that as many bytes can be read as it is told that the
// program has, so it also serves programs that were changed or built by hand.
// Of one that was not made by regcomp nobody knows the size: it is taken to be
// as long as a program can be, so its block must be, or the program be sound.
#pragma once

#include "text/regexpProgram.h"

#include <cstdint>

namespace zk {

class RegexpWalker {
public:
    /// The ways that fail before a search takes memory to note what has failed.
    static constexpr std::uint64_t workBeforeNotes = 20000;

    /// `size` is the program's length in bytes, the magic byte included. Nodes outside of it do not exist.
    RegexpWalker(regexp& expression, std::size_t size, std::uint64_t stepLimit,
                 std::uint64_t workWithoutNotes = workBeforeNotes)
        : expression_(expression), program_(expression.program), size_(size), stepsLeft_(stepLimit),
          workWithoutNotes_(workWithoutNotes)
    {
    }

    /// Looks for a match as regexec describes it; the magic byte was checked.
    RegexpOutcome search(char const* text);

private:
    class Stack;

    RegexpOutcome tryAt(char* start, Stack& stack);
    std::size_t countRun(char const* node, char const* input);
    std::ptrdiff_t countNewRun(char const* repeat, char const* input, std::ptrdiff_t least,
                               Stack& stack) const;
    bool canRepeat(char const* node) const;
    char const* following(char const* node) const;
    bool exists(char const* node) const;
    bool hasText(char const* node) const;

    regexp& expression_;
    char const* program_;
    std::size_t size_;
    std::uint64_t stepsLeft_;
    std::uint64_t workWithoutNotes_;
    char const* textStart_ = nullptr;
    bool abandoned_ = false;
};

}  // namespace zk
