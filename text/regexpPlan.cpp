#include "text/regexpPlan.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace zk {

static_assert(std::is_trivially_copyable_v<RegexpPlan> && std::is_trivially_copyable_v<RegexpStep>);

namespace {

class PlanMaker {
public:
    PlanMaker(regexp& expression, std::size_t programSize, std::size_t nodes, std::size_t sets,
              CaseFolding const* folding);
    void run();

private:
    static constexpr int positions = PrefixFilter::depthLimit;

    struct Prefix {
        ByteSet at[positions];
        int depth = 0;
    };

    void numberNodes();
    void makeSteps();
    void makeStep(std::size_t offset, RegexpStep& step);
    std::uint16_t addSet(char const* node);
    std::uint16_t addStopSet(char const* node);
    ByteSet membersOf(RegexpStep const& step) const;
    void addByte(char c, ByteSet& bytes) const;
    bool hasCase(RegexpStep const& step) const;
    void resolveJumps();
    void findFirstBytes();
    bool firstBytesOf(RegexpStep const& step, ByteSet& result) const;
    void chooseSearch();
    void chooseRequired(double& best);
    void choosePrefix(double& best, std::uint16_t leading);
    struct Weighed;

    Prefix prefixFrom(std::uint16_t index) const;
    void addConsumed(std::size_t from, std::size_t to, ByteSet& bytes) const;
    void addConsumed(RegexpStep const& step, ByteSet& bytes) const;

    RegexpStep& stepAt(std::size_t offset) const { return steps_[numberAt_[offset]]; }
    std::size_t nextOffset(std::size_t offset) const
    {
        char const* const node = program_ + offset;
        return opcodeOf(node) == opBack ? offset - offsetOf(node) : offset + offsetOf(node);
    }

    regexp& expression_;
    char* program_;
    std::size_t programSize_;
    RegexpPlan& plan_;
    ByteSet* firsts_;
    ByteTable* sets_;
    RegexpStep* steps_;
    std::uint16_t* numberAt_;     // of the node at an offset in the program
    CaseFolding const* folding_;  // or null
    bool hasLoops_ = false;
};

PlanMaker::PlanMaker(regexp& expression, std::size_t programSize, std::size_t nodes, std::size_t sets,
                     CaseFolding const* folding)
    : expression_(expression), program_(expression.program), programSize_(programSize),
      plan_(*reinterpret_cast<RegexpPlan*>(reinterpret_cast<char*>(&expression) + planOffset(programSize))),
      folding_(folding)
{
    plan_ = RegexpPlan();
    plan_.programSize = static_cast<std::uint32_t>(programSize);
    plan_.stepCount = static_cast<std::uint16_t>(nodes);
    plan_.setCount = static_cast<std::uint16_t>(sets);
    firsts_ = const_cast<ByteSet*>(plan_.firsts());
    sets_ = const_cast<ByteTable*>(plan_.sets());
    steps_ = const_cast<RegexpStep*>(plan_.steps());
    char* const copy = const_cast<char*>(plan_.programCopy());
    std::memcpy(copy, program_, programSize);
    if (folding) {
        std::memcpy(copy + programSize, folding->lower, sizeof folding->lower);
        plan_.foldsCase = true;
        plan_.locale = folding->locale;
    }
    std::size_t const kept = programSize + (folding ? sizeof folding->lower : 0);
    numberAt_ = reinterpret_cast<std::uint16_t*>(copy + (kept + 1) / 2 * 2);
}

void PlanMaker::run()
{
    plan_.regmust = expression_.regmust;
    plan_.regmlen = expression_.regmlen;
    plan_.regstart = expression_.regstart;
    plan_.reganch = expression_.reganch;
    numberNodes();
    makeSteps();
    resolveJumps();
    findFirstBytes();
    chooseSearch();
    sealRecord(expression_, programSize_);
}

// The nodes stand one behind the other, operands that are nodes among them.
void PlanMaker::numberNodes()
{
    std::uint16_t number = 0;
    for (std::size_t offset = 1; offset < programSize_;) {
        numberAt_[offset] = number++;
        char const* const node = program_ + offset;
        switch (opcodeOf(node)) {
        case opExactly:
        case opAnyOf:
        case opAnyBut: offset += nodeSize + std::strlen(operandOf(node)) + 1; break;
        default: offset += nodeSize;
        }
    }
    plan_.stepCount = number;
}

void PlanMaker::makeSteps()
{
    plan_.setCount = 0;
    plan_.groupCount = 1;
    std::uint16_t number = 0;
    for (std::size_t offset = 1; offset < programSize_; ++number) {
        RegexpStep& step = steps_[number];
        step = RegexpStep();
        makeStep(offset, step);
        char const* const node = program_ + offset;
        unsigned char const op = opcodeOf(node);
        offset += nodeSize;
        if (op == opExactly)
            offset += step.length + 1u;
        else if (op == opAnyOf || op == opAnyBut)
            offset += step.length + 1u;
    }
}

void PlanMaker::makeStep(std::size_t offset, RegexpStep& step)
{
    char const* const node = program_ + offset;
    unsigned char const op = opcodeOf(node);
    step.operand = static_cast<std::uint16_t>(offset + nodeSize);
    step.other = RegexpStep::none;
    step.next = op == opEnd || offsetOf(node) == 0 ? RegexpStep::none : numberAt_[nextOffset(offset)];
    switch (op) {
    case opEnd: step.kind = RegexpStep::end; break;
    case opBol: step.kind = RegexpStep::startOfText; break;
    case opEol: step.kind = RegexpStep::endOfText; break;
    case opAny: step.kind = RegexpStep::anyByte; break;
    case opAnyOf:
    case opAnyBut:
        step.kind = RegexpStep::byteOf;
        step.length = static_cast<std::uint16_t>(std::strlen(operandOf(node)));
        step.set = addSet(node);
        break;
    case opExactly:
        step.length = static_cast<std::uint16_t>(std::strlen(operandOf(node)));
        step.kind = step.length == 1 ? RegexpStep::character : RegexpStep::text;
        step.byte = *operandOf(node);
        if (folding_ && hasCase(step))
            step.kind = step.length == 1 ? RegexpStep::foldedCharacter : RegexpStep::foldedText;
        break;
    case opStar:
    case opPlus: {
        step.kind = RegexpStep::run;
        step.length = op == opPlus ? 1 : 0;
        step.set = addStopSet(node + nodeSize);
        step.memo = plan_.choiceCount++;
        break;
    }
    case opBranch: {
        std::size_t const next = nextOffset(offset);
        bool const hasOther = opcodeOf(program_ + next) == opBranch;
        step.kind = RegexpStep::choice;
        step.other = hasOther ? numberAt_[next] : RegexpStep::none;
        step.next = numberAt_[offset + nodeSize];
        step.memo = plan_.choiceCount++;
        break;
    }
    case opBack: hasLoops_ = true; [[fallthrough]];
    case opNothing: step.kind = RegexpStep::jump; break;
    default:
        step.kind = RegexpStep::save;
        if (isOpen(op)) {
            step.slot = static_cast<std::uint8_t>(op - opOpen);
            plan_.groupCount =
                std::max<std::uint16_t>(plan_.groupCount, static_cast<std::uint16_t>(step.slot + 1));
        } else {
            step.slot = static_cast<std::uint8_t>(NSUBEXP + op - opClose);
        }
    }
}

// The bytes that a node with a set takes.
std::uint16_t PlanMaker::addSet(char const* node)
{
    ByteSet& set = sets_[plan_.setCount].set;
    set = ByteSet();
    for (char const* member = operandOf(node); *member; ++member)
        set.add(*member);
    if (opcodeOf(node) == opAnyBut) {
        set.invert();
        set.remove('\0');
    }
    if (folding_)
        folding_->fold(set);
    return plan_.setCount++;
}

// The bytes, the NUL among them, at which a run of the node stops.
std::uint16_t PlanMaker::addStopSet(char const* node)
{
    ByteTable& stop = sets_[plan_.setCount];
    stop = ByteTable();
    switch (opcodeOf(node)) {
    case opAny: stop.add('\0'); break;
    case opExactly:
        stop.add(*operandOf(node));
        stop.invert();
        break;
    default:
        for (char const* member = operandOf(node); *member; ++member)
            stop.add(*member);
        if (opcodeOf(node) == opAnyBut)
            stop.add('\0');
        else
            stop.invert();
    }
    if (folding_)
        folding_->fold(stop);
    return plan_.setCount++;
}

// Adds the bytes of a text that a byte of the program stands for.
void PlanMaker::addByte(char c, ByteSet& bytes) const
{
    if (folding_)
        folding_->addVariants(c, bytes);
    else
        bytes.add(c);
}

bool PlanMaker::hasCase(RegexpStep const& step) const
{
    bool result = false;
    for (std::size_t i = 0; i < step.length; ++i)
        result = result || folding_->hasVariants(program_[step.operand + i]);
    return result;
}

// What a step that takes single characters may take.
ByteSet PlanMaker::membersOf(RegexpStep const& step) const
{
    ByteSet members;
    if (step.kind == RegexpStep::anyByte) {
        members.fill();
        members.remove('\0');
    } else if (step.kind == RegexpStep::character || step.kind == RegexpStep::foldedCharacter) {
        addByte(step.byte, members);
    } else {
        members = sets_[step.set].set;
        if (step.kind == RegexpStep::run)
            members.invert();
    }
    return members;
}

// Leads every step past the nodes that match nothing, and past a branch
// without a choice. A way back leads to a choice or a group, never to another jump.
void PlanMaker::resolveJumps()
{
    // A branch is without a choice if no branch leads to it either.
    for (std::size_t number = 0; number < plan_.stepCount; ++number) {
        RegexpStep& step = steps_[number];
        if (step.kind == RegexpStep::choice && step.other != RegexpStep::none)
            steps_[step.other].isOther = true;
    }
    auto const target = [this](std::uint16_t number) {
        return number != RegexpStep::none && steps_[number].kind == RegexpStep::jump ? steps_[number].next
                                                                                     : number;
    };
    for (std::size_t number = plan_.stepCount; number-- > 0;) {
        RegexpStep& step = steps_[number];
        if (step.kind == RegexpStep::choice && step.other == RegexpStep::none && !step.isOther)
            step.kind = RegexpStep::jump;
        step.next = target(step.next);
    }
    plan_.firstStep = target(0);
}

bool PlanMaker::firstBytesOf(RegexpStep const& step, ByteSet& result) const
{
    ByteSet const before = result;
    switch (step.kind) {
    case RegexpStep::end: result.fill(); break;
    case RegexpStep::endOfText: result.add('\0'); break;
    case RegexpStep::character:
    case RegexpStep::text: result.add(step.byte); break;
    case RegexpStep::foldedCharacter:
    case RegexpStep::foldedText: addByte(step.byte, result); break;
    case RegexpStep::anyByte:
    case RegexpStep::byteOf: result.add(membersOf(step)); break;
    case RegexpStep::run:
        result.add(membersOf(step));
        if (step.length == 0)
            result.add(firsts_[step.next]);
        break;
    case RegexpStep::choice:
        result.add(firsts_[step.next]);
        if (step.other != RegexpStep::none)
            result.add(firsts_[step.other]);
        break;
    default:
        if (step.next != RegexpStep::none)
            result.add(firsts_[step.next]);
    }
    return !(result == before);
}

// For each step the bytes on which it, and all behind it, may succeed; the NUL
// stands for the end of the text. Sets only grow, so this ends: each loop
// level needs one more round.
void PlanMaker::findFirstBytes()
{
    std::memset(static_cast<void*>(firsts_), 0, plan_.stepCount * sizeof *firsts_);
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t number = plan_.stepCount; number-- > 0;)
            changed |= firstBytesOf(steps_[number], firsts_[number]);
        changed = changed && hasLoops_;
    }
    for (std::size_t number = 0; number < plan_.stepCount; ++number) {
        RegexpStep& step = steps_[number];
        if (step.kind == RegexpStep::run)
            step.exclusive = !membersOf(step).meets(firsts_[step.next]);
    }
}

// Searches are weighed by what they cost for each byte of running text: the
// pass itself, and a try at each place that it finds.
struct PlanMaker::Weighed {
    static constexpr double literalPass = 0.06;  // ns
    static constexpr double prefixPass = 0.15;
    static constexpr double setPass = 0.12;
    static constexpr double oneTry = 30;

    static double cost(double pass, double frequency) { return pass + oneTry * frequency; }
    static double frequency(char byte) { return frequencyOf(byte) / 65536.0; }
    static double frequency(ByteSet const& set) { return frequencyOf(set) / 65536.0; }
};

void PlanMaker::chooseSearch()
{
    plan_.start = firsts_[plan_.firstStep];
    bool const canBeEmpty = plan_.start.has('\0');
    plan_.start.add('\0');

    std::uint16_t leading = plan_.firstStep;
    while (steps_[leading].kind == RegexpStep::save)
        leading = steps_[leading].next;
    if (expression_.reganch || steps_[leading].kind == RegexpStep::startOfText) {
        plan_.search = RegexpSearch::atStartOnly;
        return;
    }
    plan_.search = RegexpSearch::everywhere;
    if (canBeEmpty && plan_.start == ByteSet::full())
        return;
    double best = Weighed::cost(0, 1);
    double const byFirst = Weighed::cost(Weighed::setPass, Weighed::frequency(plan_.start));
    if (byFirst < best) {
        best = byFirst;
        plan_.search = RegexpSearch::firstBytes;
    }
    choosePrefix(best, leading);
    chooseRequired(best);
    if (plan_.search == RegexpSearch::firstBytes)
        plan_.startTable.assign(plan_.start);
}

void PlanMaker::addConsumed(RegexpStep const& step, ByteSet& bytes) const
{
    switch (step.kind) {
    case RegexpStep::character:
    case RegexpStep::text:
    case RegexpStep::foldedCharacter:
    case RegexpStep::foldedText:
        for (std::size_t i = 0; i < step.length; ++i)
            addByte(program_[step.operand + i], bytes);
        break;
    case RegexpStep::anyByte:
    case RegexpStep::byteOf:
    case RegexpStep::run: bytes.add(membersOf(step)); break;
    default: break;
    }
}

// Adds the bytes that the nodes in this part of the program may take.
void PlanMaker::addConsumed(std::size_t from, std::size_t to, ByteSet& bytes) const
{
    for (std::size_t number = numberAt_[from]; number < numberAt_[to]; ++number)
        addConsumed(steps_[number], bytes);
}

// Follows the nodes that every match must pass, and picks the literal or the
// set that is best looked for.
void PlanMaker::chooseRequired(double& best)
{
    ByteSet before;
    std::size_t least = 0;
    bool limited = true;

    auto const choose = [&](RegexpSearch search, double cost) {
        best = cost;
        plan_.search = search;
        plan_.before = before;
        plan_.leastBefore = static_cast<std::uint32_t>(least);
        plan_.prefixHasLimit = limited;
    };
    auto const considerLiteral = [&](RegexpStep const& step) {
        TextNeedle const needle = makeNeedle(program_ + step.operand, step.length);
        double frequency = Weighed::frequency(needle.text[needle.first]);
        if (needle.length > 1)
            frequency *= Weighed::frequency(needle.text[needle.second]);
        double const cost = Weighed::cost(Weighed::literalPass, frequency);
        if (cost < best) {
            choose(RegexpSearch::literal, cost);
            plan_.needle = needle;
        }
    };
    auto const considerSet = [&](ByteSet const& members) {
        double const cost = Weighed::cost(Weighed::setPass, Weighed::frequency(members));
        // Places found this way leave more to do than those where a match starts.
        if (cost < best * 0.8) {
            choose(RegexpSearch::oneOf, cost);
            plan_.required.assign(members);
            plan_.required.add('\0');
        }
    };

    // The rarest character of the text, with what stands before it in the text.
    auto const considerFoldedText = [&](RegexpStep const& step) {
        ByteSet const beforeText = before;
        std::size_t const leastBeforeText = least;
        auto const members = [&](std::size_t i) {
            ByteSet result;
            addByte(program_[step.operand + i], result);
            return result;
        };
        std::size_t rarest = 0;
        for (std::size_t i = 1; i < step.length; ++i)
            if (frequencyOf(members(i)) < frequencyOf(members(rarest)))
                rarest = i;
        for (std::size_t i = 0; i < rarest; ++i)
            before.add(members(i));
        least += rarest;
        considerSet(members(rarest));
        before = beforeText;
        least = leastBeforeText;
    };

    for (std::size_t offset = 1; opcodeOf(program_ + offset) != opEnd;) {
        char const* const node = program_ + offset;
        RegexpStep const& step = stepAt(offset);
        std::size_t next = nextOffset(offset);
        switch (opcodeOf(node)) {
        case opExactly:
            if (step.kind == RegexpStep::foldedCharacter)
                considerSet(membersOf(step));
            else if (step.kind == RegexpStep::foldedText)
                considerFoldedText(step);
            else
                considerLiteral(step);
            addConsumed(step, before);
            least += step.length;
            break;
        case opAny:
        case opAnyOf:
        case opAnyBut:
            if (step.kind == RegexpStep::byteOf)
                considerSet(membersOf(step));
            addConsumed(step, before);
            ++least;
            break;
        case opPlus:
            considerSet(membersOf(step));
            ++least;
            [[fallthrough]];
        case opStar:
            addConsumed(step, before);
            limited = false;
            break;
        case opBranch: {
            if (opcodeOf(program_ + next) != opBranch) {
                next = offset + nodeSize;
                break;
            }
            // What lies within the alternatives need not be passed.
            while (opcodeOf(program_ + next) == opBranch)
                next = nextOffset(next);
            addConsumed(offset, next, before);
            limited = false;
            break;
        }
        default: break;
        }
        offset = next;
    }
}

// The bytes with which a match of the steps from here on begins, as far as they are fixed in number.
PlanMaker::Prefix PlanMaker::prefixFrom(std::uint16_t index) const
{
    Prefix result;
    while (result.depth < positions) {
        RegexpStep const& step = steps_[index];
        switch (step.kind) {
        case RegexpStep::save: index = step.next; continue;
        case RegexpStep::character:
        case RegexpStep::text:
        case RegexpStep::foldedCharacter:
        case RegexpStep::foldedText:
            for (std::size_t i = 0; i < step.length && result.depth < positions; ++i)
                addByte(program_[step.operand + i], result.at[result.depth++]);
            index = step.next;
            continue;
        case RegexpStep::anyByte:
        case RegexpStep::byteOf:
            addConsumed(step, result.at[result.depth++]);
            index = step.next;
            continue;
        default: break;
        }
        // One more position is known, whatever the step is, and behind it another one of a run.
        if (firsts_[index].has('\0'))
            break;
        result.at[result.depth++] = firsts_[index];
        if (step.kind == RegexpStep::run && step.length == 1 && result.depth < positions &&
            !firsts_[step.next].has('\0')) {
            result.at[result.depth] = firsts_[step.next];
            result.at[result.depth++].add(membersOf(step));
        }
        break;
    }
    return result;
}

void PlanMaker::choosePrefix(double& best, std::uint16_t leading)
{
    double frequency = 0;
    auto const add = [&](std::uint16_t from, int bucket) {
        Prefix const prefix = prefixFrom(from);
        double product = 1;
        for (int position = 0; position < positions; ++position) {
            if (position < prefix.depth) {
                plan_.prefix.allow(position, bucket, prefix.at[position]);
                product *= Weighed::frequency(prefix.at[position]);
            } else {
                plan_.prefix.allowAll(position, bucket);
            }
        }
        frequency += product;
    };
    if (steps_[leading].kind != RegexpStep::choice) {
        add(leading, 0);
    } else {
        int alternative = 0;
        for (std::uint16_t index = leading; index != RegexpStep::none; index = steps_[index].other)
            add(steps_[index].next, alternative++ % PrefixFilter::bucketLimit);
    }
    double const cost = Weighed::cost(Weighed::prefixPass, frequency);
    if (cost < best) {
        best = cost;
        plan_.search = RegexpSearch::prefix;
    }
}

}  // namespace

void makePlan(regexp& expression, std::size_t programSize, std::size_t nodes, std::size_t sets,
              CaseFolding const* folding)
{
    PlanMaker(expression, programSize, nodes, sets, folding).run();
}

void refold(regexp& expression, RegexpPlan const& plan)
{
    CaseFolding const folding = CaseFolding::ofLocale();
    makePlan(expression, plan.programSize, plan.stepCount, plan.setCount, &folding);
}

}  // namespace zk
