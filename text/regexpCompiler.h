// regexpCompiler.h: from an expression to its byte program.
#pragma once

#include "text/regexpProgram.h"

namespace zk {

/// One pass over an expression: checks it and counts the bytes of its program
/// or, given a place for them, writes them.
///
/// Both passes run the same code. A node is known by its offset in the program,
/// and since offset 0 is the magic byte, node 0 stands for "failed".
class RegexpCompiler {
public:
    using Node = std::size_t;
    using Flags = unsigned;

    // What is known of a part of the expression.
    static constexpr Flags worst = 0;
    static constexpr Flags hasWidth = 1;  // never matches the empty text
    static constexpr Flags simple = 2;    // one character: can stand under STAR and PLUS
    static constexpr Flags spStart = 4;   // starts with a repeat

    /// `program` is where the program goes, or null to count only.
    RegexpCompiler(char const* expression, char* program)
        : expression_(expression), next_(expression), program_(program)
    {
    }

    /// The whole pass. On failure the result is false and fault() says why.
    bool run();

    RegexpFault const& fault() const { return fault_; }
    std::size_t size() const { return size_; }

    /// How many nodes there are, and how many sets the plan needs for them.
    std::size_t nodes() const { return nodes_; }
    std::size_t sets() const { return sets_; }

    /// What run() found, for the search hints.
    Flags flags() const { return flags_; }

    // The levels of the grammar, for run() and for tests of what run() never comes to; each leaves what it knows of its part in `flags`.
    Node alternatives(bool parenthesised, Flags& flags);
    Node branch(Flags& flags);
    Node piece(Flags& flags);
    Node atom(Flags& flags);
    Node set(Flags& flags);
    Node literal(Flags& flags);

    /// Fails if the top level ended before the expression did.
    bool atEnd();

private:
    Node fail(char const* message);
    Node emit(unsigned char op);
    void emitByte(char byte);
    void count(unsigned char op);
    void insert(unsigned char op, Node before);
    void link(Node node, Node target);
    void linkTail(Node first, Node target);
    void linkOperandTail(Node branch, Node target);

    char const* expression_;
    char const* next_;
    char* program_;
    std::size_t size_ = 1;
    std::size_t nodes_ = 0;
    std::size_t sets_ = 0;
    int groups_ = 1;
    Flags flags_ = worst;
    RegexpFault fault_;
};

struct CaseFolding;

using RegexpAllocator = void* (*)(std::size_t);

/// What both forms of regcomp do; the block comes from `allocate`.
///
/// With a `folding` the plan matches as if the text were lower-cased; `expression` is lower-cased already.
regexp* compileRegexp(char const* expression, RegexpFault& fault, RegexpAllocator allocate,
                      CaseFolding const* folding = nullptr);

}  // namespace zk
