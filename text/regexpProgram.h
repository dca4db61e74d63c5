// regexpProgram.h: the byte program of an expression, for the compiler and the matchers.
#pragma once

#include "text/regexpEngine.h"

namespace zk {

// The op-codes; what they mean stands at `regexp`.
enum RegexpOpcode : unsigned char {
    opEnd = 0,
    opBol = 1,
    opEol = 2,
    opAny = 3,
    opAnyOf = 4,
    opAnyBut = 5,
    opBranch = 6,
    opBack = 7,
    opExactly = 8,
    opNothing = 9,
    opStar = 10,
    opPlus = 11,
    opOpen = 20,   // + number of the group, from 1 to 19
    opClose = 40,  // likewise
};

inline constexpr unsigned char regexpMagic = 0x9C;

/// A program must stay below this many bytes, the magic byte included.
inline constexpr std::size_t regexpSizeLimit = 32767;

/// The bytes of a node before its operand.
inline constexpr std::size_t nodeSize = 3;

inline bool isOpen(unsigned char op)
{
    return op > opOpen && op < opOpen + NSUBEXP;
}

inline bool isClose(unsigned char op)
{
    return op > opClose && op < opClose + NSUBEXP;
}

inline unsigned char opcodeOf(char const* node)
{
    return static_cast<unsigned char>(*node);
}

inline std::size_t offsetOf(char const* node)
{
    return static_cast<std::size_t>(static_cast<unsigned char>(node[1])) << 8 |
        static_cast<unsigned char>(node[2]);
}

inline char const* operandOf(char const* node)
{
    return node + nodeSize;
}

}  // namespace zk
