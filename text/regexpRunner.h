// regexpRunner.h: matches with the plan of an expression.
#pragma once

#include "text/failureMemo.h"
#include "text/regexpPlan.h"

#include <cstdint>
#include <memory>

namespace zk {

/// A stack of words that starts on the thread's stack and grows on the heap.
class ChoiceStack {
public:
    void push(std::uint64_t word)
    {
        if (top_ == limit_)
            grow();
        *top_++ = word;
    }
    std::uint64_t pop() { return *--top_; }
    bool empty() const { return top_ == bottom_; }
    void clear() { top_ = bottom_; }

private:
    void grow();

    static constexpr std::size_t firstSize = 128;
    std::uint64_t first_[firstSize];
    std::uint64_t* bottom_ = first_;
    std::uint64_t* top_ = first_;
    std::uint64_t* limit_ = first_ + firstSize;
    std::unique_ptr<std::uint64_t[]> heap_;
};

/// One search of one text.
class RegexpRunner {
public:
    /// The work that a search does before it takes memory to remember what has failed.
    static constexpr std::uint64_t workBeforeMemo = 2000;

    RegexpRunner(regexp& expression, RegexpPlan const& plan, char const* text, std::uint64_t stepLimit,
                 std::uint64_t workWithoutMemo = workBeforeMemo);

    /// Looks for the leftmost match; on success the record's groups are filled.
    RegexpOutcome search();

    /// Whether the search found out that the literal which it looks for does not occur.
    bool literalIsMissing() const { return literalIsMissing_; }

private:
    // What a word on the stack stands for.
    enum class Entry : std::uint64_t {
        alternative,  // go on with the alternative of a choice
        run,          // give a character of a run back; the run's least end stands below
        restore,      // a slot held this position
    };

    bool searchAround();
    bool tryAt(char const* start);
    char const* runEnd(RegexpStep const& step, char const* input) const;
    char const* newRunEnd(RegexpStep const& step, char const* least);
    char const* enterRun(RegexpStep const& step, char const* input);
    bool backUp(RegexpStep const*& step, char const*& input);
    // Pays for `work` steps; false if the caller's limit is reached.
    bool spend(std::uint64_t work)
    {
        if (credit_ < work)
            return refill(work);
        credit_ -= work;
        return true;
    }
    bool refill(std::uint64_t work);
    void clearSlots();
    void store();

    std::uint64_t pack(Entry entry, std::size_t number, char const* position) const
    {
        std::uint64_t const offset = position ? static_cast<std::uint64_t>(position - text_) : noOffset;
        return static_cast<std::uint64_t>(entry) | static_cast<std::uint64_t>(number) << 2 |
            offset << offsetShift;
    }
    char const* positionIn(std::uint64_t word) const
    {
        std::uint64_t const offset = word >> offsetShift;
        return offset == noOffset ? nullptr : text_ + offset;
    }
    static std::size_t numberIn(std::uint64_t word) { return word >> 2 & 0xFFFF; }

    static constexpr unsigned offsetShift = 18;
    static constexpr std::uint64_t noOffset = ~std::uint64_t(0) >> offsetShift;

    regexp& expression_;
    RegexpPlan const& plan_;
    RegexpStep const* const steps_;
    ByteSet const* const firsts_;
    ByteTable const* const sets_;
    unsigned char const* const lower_;
    char const* const text_;
    std::uint64_t credit_;
    std::uint64_t stepsLeft_;
    bool abandoned_ = false;
    bool literalIsMissing_ = false;
    std::unique_ptr<FailureMemo> memo_;
    ChoiceStack stack_;
    char const* slots_[2 * NSUBEXP];
};

}  // namespace zk
