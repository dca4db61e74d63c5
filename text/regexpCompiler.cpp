#include "text/regexpCompiler.h"

#include "text/regexpPlan.h"

#include <cstdlib>
#include <cstring>

namespace zk {

namespace {

// The characters at which a run of literal ones stops.
constexpr char metacharacters[] = "^$.[()|?+*\\";

bool isRepeat(char c)
{
    return c == '*' || c == '+' || c == '?';
}

unsigned byteOf(char c)
{
    return static_cast<unsigned char>(c);
}

// The node after `node` in a program that is known to be sound, or null.
char const* nextNode(char const* node)
{
    std::size_t const offset = offsetOf(node);
    if (offset == 0)
        return nullptr;
    return opcodeOf(node) == opBack ? node - offset : node + offset;
}

// What the search may take for granted. Only an expression without
// alternatives at its top level gives such hints.
void setHints(regexp& result, RegexpCompiler::Flags flags)
{
    result.regstart = 0;
    result.reganch = 0;
    result.regmust = nullptr;
    result.regmlen = 0;
    char* const program = result.program;
    char* const branch = program + 1;
    if (opcodeOf(nextNode(branch)) != opEnd)
        return;

    char const* const first = operandOf(branch);
    if (opcodeOf(first) == opExactly)
        result.regstart = *operandOf(first);
    else if (opcodeOf(first) == opBol)
        result.reganch = 1;

    // Looking for a literal costs a pass over the text. It pays where the match
    // begins with a repeat, since each try is then expensive.
    if (!(flags & RegexpCompiler::spStart))
        return;
    for (char const* node = first; node; node = nextNode(node)) {
        if (opcodeOf(node) != opExactly)
            continue;
        std::size_t const length = std::strlen(operandOf(node));
        if (length >= static_cast<std::size_t>(result.regmlen)) {
            result.regmust = program + (operandOf(node) - program);
            result.regmlen = static_cast<std::int32_t>(length);
        }
    }
}

}  // namespace

RegexpCompiler::Node RegexpCompiler::fail(char const* message)
{
    fault_.message = message;
    fault_.offset = static_cast<std::size_t>(next_ - expression_);
    return 0;
}

bool RegexpCompiler::run()
{
    if (program_)
        program_[0] = static_cast<char>(regexpMagic);
    return alternatives(false, flags_) != 0;
}

bool RegexpCompiler::atEnd()
{
    if (*next_ == '\0')
        return true;
    fail(*next_ == ')' ? "unmatched ()" : "junk on end");
    return false;
}

// One level of alternatives, with the parentheses around it: the opening one
// is taken already.
RegexpCompiler::Node RegexpCompiler::alternatives(bool parenthesised, Flags& flags)
{
    flags = hasWidth;
    Node first = 0;
    int group = 0;
    if (parenthesised) {
        if (groups_ >= NSUBEXP)
            return fail("too many ()");
        group = groups_++;
        first = emit(static_cast<unsigned char>(opOpen + group));
    }

    Node const firstBranch = size_;
    Node last = first;
    for (;;) {
        Flags branchFlags;
        Node const next = branch(branchFlags);
        if (!next)
            return 0;
        if (last)
            link(last, next);
        else
            first = next;
        last = next;
        if (!(branchFlags & hasWidth))
            flags &= ~hasWidth;
        flags |= branchFlags & spStart;
        if (*next_ != '|')
            break;
        ++next_;
    }

    Node const end = emit(static_cast<unsigned char>(parenthesised ? opClose + group : opEnd));
    link(last, end);
    if (program_) {
        for (Node next = firstBranch; next != end; next += offsetOf(program_ + next))
            linkOperandTail(next, end);
    }

    if (!parenthesised)
        return atEnd() ? first : 0;
    if (*next_ != ')')
        return fail("unmatched ()");
    ++next_;
    return first;
}

// One alternative: the pieces up to `|`, `)` or the end.
RegexpCompiler::Node RegexpCompiler::branch(Flags& flags)
{
    flags = worst;
    Node const result = emit(opBranch);
    Node previous = 0;
    while (*next_ != '\0' && *next_ != '|' && *next_ != ')') {
        Flags pieceFlags;
        Node const next = piece(pieceFlags);
        if (!next)
            return 0;
        flags |= pieceFlags & hasWidth;
        if (previous)
            linkTail(previous, next);
        else
            flags |= pieceFlags & spStart;
        previous = next;
    }
    if (!previous)
        emit(opNothing);
    return result;
}

// An atom and the repeat behind it. A repeat of more than one character is
// built from branches, with x for the atom and & for the way back:
//
//   x*  is (x&|)        x+  is x(&|)        x?  is (x|)
RegexpCompiler::Node RegexpCompiler::piece(Flags& flags)
{
    Flags atomFlags;
    Node const result = atom(atomFlags);
    if (!result)
        return 0;
    char const repeat = *next_;
    if (!isRepeat(repeat)) {
        flags = atomFlags;
        return result;
    }
    if (!(atomFlags & hasWidth) && repeat != '?')
        return fail("*+ operand could be empty");
    flags = repeat == '+' ? hasWidth : spStart;

    if (repeat != '?' && (atomFlags & simple)) {
        insert(repeat == '*' ? opStar : opPlus, result);
    } else if (repeat == '*') {
        insert(opBranch, result);
        Node const back = emit(opBack);
        linkOperandTail(result, back);
        link(back, result);
        linkTail(result, emit(opBranch));
        linkTail(result, emit(opNothing));
    } else if (repeat == '+') {
        Node const again = emit(opBranch);
        linkTail(result, again);
        link(emit(opBack), result);
        linkTail(again, emit(opBranch));
        linkTail(result, emit(opNothing));
    } else {
        insert(opBranch, result);
        linkTail(result, emit(opBranch));
        Node const nothing = emit(opNothing);
        linkTail(result, nothing);
        linkOperandTail(result, nothing);
    }

    ++next_;
    if (isRepeat(*next_))
        return fail("nested *?+");
    return result;
}

RegexpCompiler::Node RegexpCompiler::atom(Flags& flags)
{
    flags = worst;
    switch (*next_) {
    case '^': ++next_; return emit(opBol);
    case '$': ++next_; return emit(opEol);
    case '.':
        ++next_;
        flags = hasWidth | simple;
        return emit(opAny);
    case '[': return set(flags);
    case '(': {
        ++next_;
        Flags inner;
        Node const result = alternatives(true, inner);
        flags = inner & (hasWidth | spStart);
        return result;
    }
    case '\0':
    case '|':
    case ')': return fail("internal urp");
    case '?':
    case '+':
    case '*': return fail("?+* follows nothing");
    case '\\': {
        if (next_[1] == '\0')
            return fail("trailing \\");
        Node const result = emit(opExactly);
        emitByte(next_[1]);
        emitByte('\0');
        next_ += 2;
        flags = hasWidth | simple;
        return result;
    }
    default: return literal(flags);
    }
}

// "[...]" and "[^...]"; `next_` stands on the opening bracket.
RegexpCompiler::Node RegexpCompiler::set(Flags& flags)
{
    ++next_;
    bool const excluding = *next_ == '^';
    if (excluding)
        ++next_;
    Node const result = emit(excluding ? opAnyBut : opAnyOf);
    if (*next_ == ']' || *next_ == '-')
        emitByte(*next_++);
    while (*next_ != '\0' && *next_ != ']') {
        bool const isRange = *next_ == '-' && next_[1] != ']' && next_[1] != '\0';
        if (!isRange) {
            emitByte(*next_++);
            continue;
        }
        // The lower bound is in the set already. One that is just above the upper bound adds nothing.
        unsigned const lower = byteOf(next_[-1]);
        unsigned const upper = byteOf(next_[1]);
        if (lower > upper + 1)
            return fail("invalid [] range");
        for (unsigned member = lower + 1; member <= upper; ++member)
            emitByte(static_cast<char>(member));
        next_ += 2;
    }
    emitByte('\0');
    if (*next_ != ']')
        return fail("unmatched []");
    ++next_;
    flags = hasWidth | simple;
    return result;
}

// A run of characters that stand for themselves. A repeat behind it applies to
// the last one alone, which is then left for the next atom.
RegexpCompiler::Node RegexpCompiler::literal(Flags& flags)
{
    std::size_t length = std::strcspn(next_, metacharacters);
    if (length < 1)
        return fail("internal disaster");
    if (length > 1 && isRepeat(next_[length]))
        --length;
    flags = hasWidth;
    if (length == 1)
        flags |= simple;
    Node const result = emit(opExactly);
    for (; length > 0; --length)
        emitByte(*next_++);
    emitByte('\0');
    return result;
}

void RegexpCompiler::count(unsigned char op)
{
    ++nodes_;
    sets_ += op == opAnyOf || op == opAnyBut || op == opStar || op == opPlus;
}

RegexpCompiler::Node RegexpCompiler::emit(unsigned char op)
{
    count(op);
    Node const result = size_;
    if (program_) {
        program_[size_] = static_cast<char>(op);
        program_[size_ + 1] = 0;
        program_[size_ + 2] = 0;
    }
    size_ += nodeSize;
    return result;
}

void RegexpCompiler::emitByte(char byte)
{
    if (program_)
        program_[size_] = byte;
    ++size_;
}

// Puts a node before an operand that is written already. Ways within the
// operand are relative and stay right.
void RegexpCompiler::insert(unsigned char op, Node before)
{
    count(op);
    if (program_) {
        char* const place = program_ + before;
        std::memmove(place + nodeSize, place, size_ - before);
        place[0] = static_cast<char>(op);
        place[1] = 0;
        place[2] = 0;
    }
    size_ += nodeSize;
}

void RegexpCompiler::link(Node node, Node target)
{
    if (!program_)
        return;
    std::size_t const offset = opcodeOf(program_ + node) == opBack ? node - target : target - node;
    program_[node + 1] = static_cast<char>(offset >> 8);
    program_[node + 2] = static_cast<char>(offset & 0xFF);
}

// Lets the last of the nodes that follow each other from `first` on lead to `target`.
void RegexpCompiler::linkTail(Node first, Node target)
{
    if (!program_)
        return;
    char const* last = program_ + first;
    while (char const* const next = nextNode(last))
        last = next;
    link(static_cast<Node>(last - program_), target);
}

void RegexpCompiler::linkOperandTail(Node branch, Node target)
{
    if (program_ && opcodeOf(program_ + branch) == opBranch)
        linkTail(branch + nodeSize, target);
}

regexp* compileRegexp(char const* expression, RegexpFault& fault, RegexpAllocator allocate,
                      CaseFolding const* folding)
{
    if (!expression) {
        fault = {"NULL argument", 0};
        return nullptr;
    }
    RegexpCompiler counting(expression, nullptr);
    if (!counting.run()) {
        fault = counting.fault();
        return nullptr;
    }
    if (counting.size() >= regexpSizeLimit) {
        fault = {"regexp too big", std::strlen(expression)};
        return nullptr;
    }
    void* const block =
        allocate(regexpBlockSize(counting.size(), counting.nodes(), counting.sets(), folding));
    if (!block) {
        fault = {"out of space", 0};
        return nullptr;
    }
    regexp* const result = static_cast<regexp*>(block);
    std::memset(block, 0, offsetof(regexp, program));

    RegexpCompiler writing(expression, result->program);
    writing.run();
    setHints(*result, writing.flags());
    makePlan(*result, counting.size(), counting.nodes(), counting.sets(), folding);
    return result;
}

regexp* compileFolding(char const* expression, RegexpFault& fault)
{
    CaseFolding const folding = CaseFolding::ofLocale();
    return compileRegexp(folding.lowerOf(expression).c_str(), fault, std::malloc, &folding);
}

}  // namespace zk
