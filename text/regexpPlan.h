// regexpPlan.h: the faster form of a byte program.
//
// The plan stands behind the program in the block that regcomp makes:
//
//   regexp | program | RegexpPlan | sets of first bytes | other sets | steps | copy of the program | ...
//
// It says the same as the program, so it may only be used while the program is
// what it was made from. Two marks see to that. The record's seal is bound to
// the block's address: a record that was built by hand or copied has no valid
// one, and such a copy is walked node by node. And the copy of the program,
// compared before each match, shows a program that was changed in place.
#pragma once

#include "text/byteSearch.h"
#include "text/caseFolding.h"
#include "text/regexpProgram.h"

namespace zk {

/// One node of the program, with all that the matcher needs to know of it.
struct RegexpStep {
    enum Kind : std::uint8_t {
        end,
        startOfText,
        endOfText,
        character,        // `byte`
        text,             // `length` bytes at `operand` of the program
        foldedCharacter,  // as character, but for the folded text
        foldedText,       // as text, likewise
        anyByte,
        byteOf,  // a member of `set`
        save,    // `slot`: startp of group n is n, endp NSUBEXP + n
        choice,  // the alternative that starts at `next`; `other` is the choice after it or `none`
        run,     // as many members of `set` as there are, at least `length`; then `next`
        jump,    // nothing; other steps lead past it
    };

    static constexpr std::uint16_t none = 0xFFFF;

    Kind kind;
    char byte;
    std::uint8_t slot;
    bool exclusive;  // run: what follows starts with no member, so that only the longest run can do
    bool isOther;    // choice: one that another choice leads to
    std::uint16_t next;
    std::uint16_t other;
    std::uint16_t operand;
    std::uint16_t length;
    std::uint16_t set;   // run: holds the bytes at which the run stops
    std::uint16_t memo;  // its number among the choices and runs
};

/// How the places are found at which a match may start.
enum class RegexpSearch : std::uint8_t {
    atStartOnly,
    everywhere,
    firstBytes,  // where a byte of the first step's set stands
    prefix,      // where `prefix` lets through
    literal,     // around each place of `needle`, which every match holds
    oneOf,       // around each byte of `required`, one of which every match holds
};

struct RegexpPlan {
    // What the plan was made from.
    std::uint32_t programSize;
    std::int32_t regmlen;
    char* regmust;
    char regstart;
    char reganch;

    RegexpSearch search;
    bool prefixHasLimit;  // `before` has a limit to its length, which then is `leastBefore`
    std::uint16_t stepCount;
    std::uint16_t choiceCount;
    std::uint16_t firstStep;
    std::uint16_t groupCount;  // with the whole match
    std::uint16_t setCount;
    bool foldsCase;        // matches texts as if they were lower-cased
    std::uint64_t locale;  // for which it does

    std::uint32_t leastBefore;  // of the match, before the needle or the required byte
    TextNeedle needle;
    ByteTable required;  // with the NUL
    ByteSet before;      // bytes that a match may have before the needle or the required byte
    PrefixFilter prefix;
    ByteSet start;         // bytes that a match may start with, and the NUL
    ByteTable startTable;  // the same, if that is how the search goes

    ByteSet const* firsts() const { return reinterpret_cast<ByteSet const*>(this + 1); }
    ByteTable const* sets() const { return reinterpret_cast<ByteTable const*>(firsts() + stepCount); }
    RegexpStep const* steps() const { return reinterpret_cast<RegexpStep const*>(sets() + setCount); }
    char const* programCopy() const { return reinterpret_cast<char const*>(steps() + stepCount); }

    /// The lower form of each byte, if the plan folds case.
    unsigned char const* lower() const
    {
        return reinterpret_cast<unsigned char const*>(programCopy()) + programSize;
    }
};

/// The bytes of a block for a program of this size, with so many nodes, and so many runs and sets among them.
/// `folds` says whether the plan is to fold case.
std::size_t regexpBlockSize(std::size_t programSize, std::size_t nodes, std::size_t sets, bool folds);

/// Where the plan starts in such a block.
std::size_t planOffset(std::size_t programSize);

/// Marks the record as one with a plan behind its program, at the address where it is.
void sealRecord(regexp& expression, std::size_t programSize);

/// Makes the plan behind the finished program, and the seal.
///
/// With a `folding` it matches as if the text were lower-cased; the program is then of a lower-cased expression.
void makePlan(regexp& expression, std::size_t programSize, std::size_t nodes, std::size_t sets,
              CaseFolding const* folding);

/// Compiles `expression`, lower-cased as a whole, for matchFolded. On failure null, with the reason in `fault`.
regexp* compileFolding(char const* expression, RegexpFault& fault);

/// Makes the plan anew for the locale in force.
void refold(regexp& expression, RegexpPlan const& plan);

/// The plan behind the program, or null if there is none that fits the record as it stands.
RegexpPlan const* planOf(regexp const& expression);

/// Matches as if `text` were lower-cased, without a copy of it: the groups point into `text`.
///
/// Where the locale is another one than before, the plan is adapted to it.
/// False, with nothing done, if the expression was not made for that or was
/// changed since.
bool matchFolded(regexp& expression, char const* text, RegexpOutcome& outcome);

/// The program's size, the magic byte included, if the seal is valid, else 0.
std::size_t sealedSize(regexp const& expression);

}  // namespace zk
