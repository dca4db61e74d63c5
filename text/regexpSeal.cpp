// How the record, its program and the plan behind it hold together.
#include "text/regexpPlan.h"

#include <cstring>

namespace zk {

static_assert(offsetof(regexp, seal) + sizeof regexp::seal == offsetof(regexp, regmust),
              "the seal takes padding only");
static_assert(sizeof regexp::seal == sizeof(std::uint16_t) + sizeof(std::uint32_t));

namespace {

// A number that only a program of this size at this address has in this process.
std::uint32_t markOf(regexp const& expression, std::size_t programSize)
{
    static char const secret = 0;  // its address differs from process to process
    std::uint64_t const mixed = (reinterpret_cast<std::uintptr_t>(&expression) >> 4) * 0x9E3779B97F4A7C15ull +
        (reinterpret_cast<std::uintptr_t>(&secret) + programSize) * 0xBF58476D1CE4E5B9ull;
    return static_cast<std::uint32_t>(mixed >> 32);
}

}  // namespace

std::size_t planOffset(std::size_t programSize)
{
    std::size_t const end = offsetof(regexp, program) + programSize;
    return (end + alignof(RegexpPlan) - 1) / alignof(RegexpPlan) * alignof(RegexpPlan);
}

std::size_t regexpBlockSize(std::size_t programSize, std::size_t nodes, std::size_t sets, bool folds)
{
    // The last parts are the table of lower case and PlanMaker::numberAt_.
    std::size_t const table = folds ? sizeof CaseFolding::lower : 0;
    return planOffset(programSize) + sizeof(RegexpPlan) + nodes * (sizeof(ByteSet) + sizeof(RegexpStep)) +
        sets * sizeof(ByteTable) + (programSize + table + 1) / 2 * 2 + programSize * sizeof(std::uint16_t);
}

void sealRecord(regexp& expression, std::size_t programSize)
{
    std::uint16_t const size = static_cast<std::uint16_t>(programSize);
    std::uint32_t const mark = markOf(expression, programSize);
    std::memcpy(expression.seal, &size, sizeof size);
    std::memcpy(expression.seal + sizeof size, &mark, sizeof mark);
}

std::size_t sealedSize(regexp const& expression)
{
    std::uint16_t size;
    std::uint32_t mark;
    std::memcpy(&size, expression.seal, sizeof size);
    std::memcpy(&mark, expression.seal + sizeof size, sizeof mark);
    return mark == markOf(expression, size) ? size : 0;
}

RegexpPlan const* planOf(regexp const& expression)
{
    std::size_t const size = sealedSize(expression);
    if (size == 0)
        return nullptr;
    RegexpPlan const* const plan =
        reinterpret_cast<RegexpPlan const*>(reinterpret_cast<char const*>(&expression) + planOffset(size));
    bool const same = plan->regmust == expression.regmust && plan->regmlen == expression.regmlen &&
        plan->regstart == expression.regstart && plan->reganch == expression.reganch &&
        std::memcmp(plan->programCopy(), expression.program, size) == 0;
    return same ? plan : nullptr;
}

}  // namespace zk
