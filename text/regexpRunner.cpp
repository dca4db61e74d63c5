#include "text/regexpRunner.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zk {

void ChoiceStack::grow()
{
    std::size_t const size = static_cast<std::size_t>(limit_ - bottom_);
    std::unique_ptr<std::uint64_t[]> bigger(new std::uint64_t[size * 2]);
    std::memcpy(bigger.get(), bottom_, size * sizeof(std::uint64_t));
    heap_ = std::move(bigger);
    bottom_ = heap_.get();
    top_ = bottom_ + size;
    limit_ = bottom_ + size * 2;
}

RegexpRunner::RegexpRunner(regexp& expression, RegexpPlan const& plan, char const* text,
                           std::uint64_t stepLimit, std::uint64_t workWithoutMemo)
    : expression_(expression), plan_(plan), steps_(plan.steps()), firsts_(plan.firsts()), sets_(plan.sets()),
      lower_(plan.lower()), text_(text), credit_(std::min(stepLimit, workWithoutMemo)),
      stepsLeft_(stepLimit - credit_)
{
}

// Pays for steps when the credit is used up; false if the caller's limit is reached.
bool RegexpRunner::refill(std::uint64_t work)
{
    credit_ += std::exchange(stepsLeft_, 0);
    if (credit_ < work) {
        abandoned_ = true;
        return false;
    }
    credit_ -= work;
    if (!memo_)
        memo_ = std::make_unique<FailureMemo>();
    return true;
}

RegexpOutcome RegexpRunner::search()
{
    clearSlots();

    bool found = false;
    char const* start = text_;
    switch (plan_.search) {
    case RegexpSearch::atStartOnly: found = tryAt(start); break;
    case RegexpSearch::literal:
    case RegexpSearch::oneOf: found = searchAround(); break;
    case RegexpSearch::everywhere:
        while (!(found = tryAt(start)) && !abandoned_ && *start != '\0')
            ++start;
        break;
    case RegexpSearch::firstBytes:
        for (;; ++start) {
            // Often the next one is near.
            for (int i = 0; i < 2 && !plan_.start.has(*start); ++i)
                ++start;
            if (!plan_.start.has(*start))
                start = findInSet(start, plan_.startTable);
            if ((found = tryAt(start)) || abandoned_ || *start == '\0')
                break;
        }
        break;
    case RegexpSearch::prefix:
        for (;; ++start) {
            start = findPrefix(start, plan_.prefix);
            if ((found = plan_.start.has(*start) && tryAt(start)) || abandoned_ || *start == '\0')
                break;
        }
        break;
    }
    if (abandoned_)
        return RegexpOutcome::outOfSteps;
    if (!found)
        return RegexpOutcome::noMatch;
    store();
    return RegexpOutcome::match;
}

// Every match holds the needle, or a byte of the required set, and before it
// bytes of `before` alone. So a match cannot start before the row of such bytes
// that ends at the first place of the needle; all starts in the row are tried,
// then the next place is looked for.
bool RegexpRunner::searchAround()
{
    bool const literal = plan_.search == RegexpSearch::literal;
    auto const find = [&](char const* from) -> char const* {
        if (literal)
            return findText(from, plan_.needle);
        char const* const found = findInSet(from, plan_.required);
        return *found == '\0' ? nullptr : found;
    };

    char const* start = text_;
    char const* place = find(text_);
    literalIsMissing_ = !place && literal;
    for (; place; place = find(place + 1)) {
        if (static_cast<std::size_t>(place - start) < plan_.leastBefore)
            continue;
        char const* const last = place - plan_.leastBefore;
        if (plan_.prefixHasLimit) {
            start = last;
        } else {
            char const* row = place;
            while (row > start && plan_.before.has(row[-1]))
                --row;
            start = row;
        }
        for (; start <= last; ++start) {
            if (plan_.start.has(*start) && tryAt(start))
                return true;
            if (abandoned_)
                return false;
        }
    }
    return false;
}

// One past the last of the characters from `input` on that the run takes.
char const* RegexpRunner::runEnd(RegexpStep const& step, char const* input) const
{
    ByteTable const& stop = sets_[step.set];
    if (stop.has(input[0]))
        return input;
    if (stop.has(input[1]))
        return input + 1;
    return findInSet(input + 2, stop);
}

// The same, but only as far as to where the run has been before: what follows
// from there on has failed. Null if that leaves nothing to try.
char const* RegexpRunner::newRunEnd(RegexpStep const& step, char const* least)
{
    ByteTable const& stop = sets_[step.set];
    for (char const* end = least;; ++end) {
        if (memo_->testAndSet(step.memo, static_cast<std::size_t>(end - text_)))
            return step.exclusive || end == least ? nullptr : end - 1;
        if (stop.has(*end))
            return end;
    }
}

// Takes the run that starts at `input`; null if there is none, else its end.
// The shorter runs that may do as well are left on the stack.
char const* RegexpRunner::enterRun(RegexpStep const& step, char const* input)
{
    char const* const least = input + step.length;
    if (step.length == 1 && sets_[step.set].has(*input))
        return nullptr;
    char const* end = memo_ ? newRunEnd(step, least) : runEnd(step, least);
    if (!end || !spend(1 + static_cast<std::uint64_t>(end - input) / 16))
        return nullptr;
    if (step.exclusive)
        return end;

    ByteSet const& follow = firsts_[step.next];
    while (end > least && !follow.has(*end))
        --end;
    if (end > least) {
        stack_.push(static_cast<std::uint64_t>(least - text_));
        stack_.push(pack(Entry::run, static_cast<std::size_t>(&step - steps_), end));
    }
    return end;
}

// Takes back the last choice and gives the way to go on; false if there is no choice left.
bool RegexpRunner::backUp(RegexpStep const*& step, char const*& input)
{
    while (!stack_.empty()) {
        std::uint64_t const word = stack_.pop();
        switch (static_cast<Entry>(word & 3)) {
        case Entry::restore: slots_[numberIn(word)] = positionIn(word); break;
        case Entry::run: {
            RegexpStep const& run = steps_[numberIn(word)];
            char const* const least = text_ + stack_.pop();
            ByteSet const& follow = firsts_[run.next];
            char const* end = positionIn(word) - 1;
            while (end > least && !follow.has(*end))
                --end;
            if (end > least) {
                stack_.push(static_cast<std::uint64_t>(least - text_));
                stack_.push(pack(Entry::run, numberIn(word), end));
            } else if (!follow.has(*end)) {
                break;
            }
            step = &steps_[run.next];
            input = end;
            return spend(1);
        }
        case Entry::alternative: {
            // The alternative can start with this byte; so may others after it.
            RegexpStep const& choice = steps_[numberIn(word)];
            input = positionIn(word);
            for (std::uint16_t other = choice.other; other != RegexpStep::none; other = steps_[other].other) {
                if (firsts_[steps_[other].next].has(*input)) {
                    stack_.push(pack(Entry::alternative, other, input));
                    break;
                }
            }
            step = &steps_[choice.next];
            return spend(1);
        }
        }
    }
    return false;
}

// Whether the expression matches from `start` on.
bool RegexpRunner::tryAt(char const* start)
{
    RegexpStep const* const steps = steps_;
    ByteSet const* const firsts = firsts_;
    stack_.clear();
    RegexpStep const* step = &steps[plan_.firstStep];
    char const* input = start;
    bool overwritten = false;
    for (;;) {
        switch (step->kind) {
        case RegexpStep::character:
            if (*input != step->byte)
                break;
            ++input;
            step = &steps[step->next];
            continue;
        case RegexpStep::text: {
            char const* const wanted = expression_.program + step->operand;
            std::size_t same = 0;
            while (same < step->length && input[same] == wanted[same])
                ++same;
            if (same < step->length)
                break;
            input += same;
            step = &steps[step->next];
            continue;
        }
        case RegexpStep::foldedCharacter:
            if (static_cast<char>(lower_[static_cast<unsigned char>(*input)]) != step->byte)
                break;
            ++input;
            step = &steps[step->next];
            continue;
        case RegexpStep::foldedText: {
            char const* const wanted = expression_.program + step->operand;
            std::size_t same = 0;
            while (same < step->length &&
                   static_cast<char>(lower_[static_cast<unsigned char>(input[same])]) == wanted[same])
                ++same;
            if (same < step->length)
                break;
            input += same;
            step = &steps[step->next];
            continue;
        }
        case RegexpStep::anyByte:
            if (*input == '\0')
                break;
            ++input;
            step = &steps[step->next];
            continue;
        case RegexpStep::byteOf:
            if (!sets_[step->set].has(*input))
                break;
            ++input;
            step = &steps[step->next];
            continue;
        case RegexpStep::run:
            if (char const* const end = enterRun(*step, input)) {
                input = end;
                step = &steps[step->next];
                continue;
            }
            break;
        case RegexpStep::save:
            if (stack_.empty())
                overwritten = true;
            else
                stack_.push(pack(Entry::restore, step->slot, slots_[step->slot]));
            slots_[step->slot] = input;
            step = &steps[step->next];
            continue;
        case RegexpStep::choice: {
            if (memo_ && memo_->testAndSet(step->memo, static_cast<std::size_t>(input - text_)))
                break;
            if (!spend(1))
                break;
            std::uint16_t chosen = RegexpStep::none;
            std::uint16_t number = static_cast<std::uint16_t>(step - steps);
            for (; number != RegexpStep::none; number = steps[number].other) {
                if (!firsts[steps[number].next].has(*input))
                    continue;
                if (chosen != RegexpStep::none) {
                    stack_.push(pack(Entry::alternative, number, input));
                    break;
                }
                chosen = number;
            }
            if (chosen == RegexpStep::none)
                break;
            step = &steps[steps[chosen].next];
            continue;
        }
        case RegexpStep::startOfText:
            if (input != text_)
                break;
            step = &steps[step->next];
            continue;
        case RegexpStep::endOfText:
            if (*input != '\0')
                break;
            step = &steps[step->next];
            continue;
        case RegexpStep::jump: step = &steps[step->next]; continue;
        case RegexpStep::end:
            slots_[0] = start;
            slots_[NSUBEXP] = input;
            return true;
        }
        // This way failed.
        if (abandoned_ || !backUp(step, input))
            break;
    }
    // Positions that were stored while there was no choice to go back to.
    if (overwritten)
        clearSlots();
    spend(1);
    return false;
}

void RegexpRunner::clearSlots()
{
    for (int group = 0; group < plan_.groupCount; ++group)
        slots_[group] = slots_[NSUBEXP + group] = nullptr;
}

// Hands the groups to the record.
void RegexpRunner::store()
{
    // In pieces that become a few wide stores each.
    constexpr std::size_t piece = 64;
    constexpr std::size_t groupsSize = sizeof regexp::startp + sizeof regexp::endp;
    static_assert(offsetof(regexp, regstart) == groupsSize && groupsSize % piece == 0);
    char* const groups = reinterpret_cast<char*>(&expression_);
    for (std::size_t offset = 0; offset < groupsSize; offset += piece)
        std::memset(groups + offset, 0, piece);

    for (int group = 0; group < plan_.groupCount; ++group) {
        expression_.startp[group] = const_cast<char*>(slots_[group]);
        expression_.endp[group] = const_cast<char*>(slots_[NSUBEXP + group]);
    }
}

}  // namespace zk
