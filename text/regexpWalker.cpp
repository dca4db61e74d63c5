#include "text/regexpWalker.h"

#include "text/failureMemo.h"

#include <cstring>
#include <vector>

namespace zk {

// What is still to be tried, the latest on top, and the group positions to put
// back on the way there.
class RegexpWalker::Stack {
public:
    enum class Kind {
        alternative,  // go on at `node` from `input`
        repeat,       // `node` follows a run of characters that ends at `input`; it may shrink to `least`
        restore,      // `*slot` held `input`
    };

    struct Entry {
        Kind kind;
        char const* node;
        char* input;
        char* least;
        char** slot;
        std::size_t idleNodes;
    };

    std::vector<Entry> entries;

    // A long search notes what has failed: at the number of a node the choices
    // and the places behind a run, by turns.
    FailureMemo failed;
    std::uint64_t workBeforeNotes;
};

bool RegexpWalker::exists(char const* node) const
{
    return node >= program_ + 1 && node < program_ + size_ &&
        static_cast<std::size_t>(program_ + size_ - node) >= nodeSize;
}

// Whether the text behind the node ends within the program.
bool RegexpWalker::hasText(char const* node) const
{
    char const* const operand = operandOf(node);
    std::size_t const room = static_cast<std::size_t>(program_ + size_ - operand);
    return std::memchr(operand, '\0', room) != nullptr;
}

// The node after `node`, or null if there is none within the program.
char const* RegexpWalker::following(char const* node) const
{
    std::size_t const offset = offsetOf(node);
    if (offset == 0)
        return nullptr;
    std::size_t const here = static_cast<std::size_t>(node - program_);
    if (opcodeOf(node) == opBack)
        return offset < here ? node - offset : nullptr;
    return offset + nodeSize <= size_ - here ? node + offset : nullptr;
}

RegexpOutcome RegexpWalker::search(char const* subject)
{
    char* const text = const_cast<char*>(subject);  // as the record holds it
    textStart_ = text;
    if (char const* const literal = expression_.regmust) {
        std::size_t const length =
            expression_.regmlen < 0 ? 0 : static_cast<std::size_t>(expression_.regmlen);
        char const* found = text;
        while ((found = std::strchr(found, *literal)) && std::strncmp(found, literal, length) != 0)
            found = *found == '\0' ? nullptr : found + 1;
        if (!found)
            return RegexpOutcome::noMatch;
    }

    Stack stack{{}, {}, workWithoutNotes_};
    if (expression_.reganch)
        return tryAt(text, stack);
    for (char* start = text;; ++start) {
        if (expression_.regstart) {
            start = std::strchr(start, expression_.regstart);
            if (!start)
                return RegexpOutcome::noMatch;
        }
        RegexpOutcome const outcome = tryAt(start, stack);
        if (outcome != RegexpOutcome::noMatch || abandoned_ || *start == '\0')
            return outcome;
    }
}

// Whether there is a node that takes single characters.
bool RegexpWalker::canRepeat(char const* node) const
{
    if (!exists(node))
        return false;
    unsigned char const op = opcodeOf(node);
    return op == opAny || ((op == opExactly || op == opAnyOf || op == opAnyBut) && hasText(node));
}

// The number of characters from `input` on that the node takes.
std::size_t RegexpWalker::countRun(char const* node, char const* input)
{
    switch (canRepeat(node) ? opcodeOf(node) : static_cast<unsigned char>(opEnd)) {
    case opAny: return std::strlen(input);
    case opExactly: {
        char const wanted = *operandOf(node);
        std::size_t count = 0;
        while (wanted != '\0' && input[count] == wanted)
            ++count;
        return count;
    }
    case opAnyOf: return std::strspn(input, operandOf(node));
    case opAnyBut: return std::strcspn(input, operandOf(node));
    default: regerror("internal foulup"); return 0;
    }
}

// The same for the node that `repeat` repeats, but only as far as to where the
// run has been before: what follows from there on has failed. Below `least` if
// that leaves nothing to try.
std::ptrdiff_t RegexpWalker::countNewRun(char const* repeat, char const* input, std::ptrdiff_t least,
                                         Stack& stack) const
{
    char const* const node = operandOf(repeat);
    unsigned char const op = opcodeOf(node);
    std::size_t const number = static_cast<std::size_t>(repeat - program_) * 2 + 1;
    for (std::ptrdiff_t count = 0;; ++count) {
        char const c = input[count];
        if (count >= least &&
            stack.failed.testAndSet(number, static_cast<std::size_t>(input + count - textStart_)))
            return count - 1;
        bool const takes = c != '\0' &&
            (op == opAny           ? true
                 : op == opExactly ? c == *operandOf(node)
                                   : (std::strchr(operandOf(node), c) != nullptr) == (op == opAnyOf));
        if (!takes)
            return count;
    }
}

RegexpOutcome RegexpWalker::tryAt(char* start, Stack& stack)
{
    std::memset(expression_.startp, 0, sizeof expression_.startp);
    std::memset(expression_.endp, 0, sizeof expression_.endp);
    stack.entries.clear();

    char const* node = program_ + 1;
    char* input = start;
    // Nodes passed since the last character. A sound program takes a character
    // before it comes round to a node again.
    std::size_t idleNodes = 0;

    // Takes back the last choice and goes on with the next one.
    auto const backUp = [&] {
        while (!stack.entries.empty()) {
            Stack::Entry& top = stack.entries.back();
            switch (top.kind) {
            case Stack::Kind::restore:
                *top.slot = top.input;
                stack.entries.pop_back();
                break;
            case Stack::Kind::alternative:
                node = top.node;
                input = top.input;
                idleNodes = top.idleNodes;
                stack.entries.pop_back();
                return true;
            case Stack::Kind::repeat: {
                char const* const next = top.node;
                bool const lookAhead = next && opcodeOf(next) == opExactly && hasText(next);
                char const wanted = lookAhead ? *operandOf(next) : '\0';
                while (lookAhead && top.input > top.least && *top.input != wanted)
                    --top.input;
                node = next;
                input = top.input;
                idleNodes = top.idleNodes;
                bool const fits = !lookAhead || *input == wanted;
                if (input == top.least)
                    stack.entries.pop_back();
                else
                    --top.input;
                if (fits)
                    return true;
                break;
            }
            }
        }
        return false;
    };

    bool going = true;
    while (going) {
        bool failed = false;
        char const* next = nullptr;
        char const* const inputBefore = input;
        unsigned char const op = node ? opcodeOf(node) : 0;
        if (node)
            next = following(node);

        bool const needsText = op == opExactly || op == opAnyOf || op == opAnyBut;
        if (!node || (needsText && !hasText(node))) {
            regerror("corrupted pointers");
            failed = true;
        } else if (op == opBranch && stack.workBeforeNotes == 0 &&
                   stack.failed.testAndSet(static_cast<std::size_t>(node - program_) * 2,
                                           static_cast<std::size_t>(input - textStart_))) {
            failed = true;
        } else if (op == opEnd) {
            expression_.startp[0] = start;
            expression_.endp[0] = input;
            return RegexpOutcome::match;
        } else if (op == opBol) {
            failed = input != textStart_;
        } else if (op == opEol) {
            failed = *input != '\0';
        } else if (op == opAny || op == opAnyOf || op == opAnyBut) {
            if (*input == '\0')
                failed = true;
            else if (op != opAny)
                failed = (std::strchr(operandOf(node), *input) != nullptr) != (op == opAnyOf);
            input += !failed;
        } else if (op == opExactly) {
            std::size_t const length = std::strlen(operandOf(node));
            failed = *input != *operandOf(node) || std::strncmp(input, operandOf(node), length) != 0;
            if (!failed)
                input += length;
        } else if (op == opNothing || op == opBack) {
            // nothing to match
        } else if (isOpen(op) || isClose(op)) {
            char** const slot =
                isOpen(op) ? &expression_.startp[op - opOpen] : &expression_.endp[op - opClose];
            stack.entries.push_back({Stack::Kind::restore, nullptr, *slot, nullptr, slot, 0});
            *slot = input;
        } else if (op == opBranch) {
            if (next && opcodeOf(next) == opBranch)
                stack.entries.push_back({Stack::Kind::alternative, next, input, nullptr, nullptr, idleNodes});
            next = operandOf(node);
            if (!exists(next))
                next = nullptr;
        } else if (op == opStar || op == opPlus) {
            std::ptrdiff_t const least = op == opPlus ? 1 : 0;
            bool const noting = stack.workBeforeNotes == 0 && canRepeat(operandOf(node));
            std::ptrdiff_t const most = noting
                ? countNewRun(node, input, least, stack)
                : static_cast<std::ptrdiff_t>(countRun(operandOf(node), input));
            if (most >= least)
                stack.entries.push_back(
                    {Stack::Kind::repeat, next, input + most, input + least, nullptr, idleNodes});
            failed = true;  // the way on is the entry just made, if any
        } else {
            regerror("memory corruption");
            failed = true;
        }

        if (failed) {
            stack.workBeforeNotes -= stack.workBeforeNotes > 0;
            if (stepsLeft_-- == 0) {
                abandoned_ = true;
                return RegexpOutcome::outOfSteps;
            }
            going = backUp();
            continue;
        }
        idleNodes = input == inputBefore ? idleNodes + 1 : 0;
        if (idleNodes > size_) {
            regerror("corrupted pointers");
            abandoned_ = true;
            return RegexpOutcome::noMatch;
        }
        node = next;
    }
    return RegexpOutcome::noMatch;
}

}  // namespace zk
