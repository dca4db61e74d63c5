// The entries to the matchers: checks what they are given and picks the way.
#include "text/regexpEngine.h"
#include "text/regexpPlan.h"
#include "text/regexpRunner.h"
#include "text/regexpWalker.h"

#include <cstdio>
#include <cstring>

namespace {

void clearGroups(regexp& expression)
{
    std::memset(expression.startp, 0, sizeof expression.startp);
    std::memset(expression.endp, 0, sizeof expression.endp);
}

// Whether a search without success has tried a position at all. If not, it has
// left the groups of the match before it alone.
bool hasTried(regexp const& expression, zk::RegexpPlan const& plan, zk::RegexpRunner const& runner,
              char const* text)
{
    if (expression.regmust) {
        bool const looked =
            plan.search == zk::RegexpSearch::literal && plan.needle.text == expression.regmust;
        if (looked ? runner.literalIsMissing() : !std::strstr(text, expression.regmust))
            return false;
    }
    return expression.reganch || !expression.regstart || std::strchr(text, expression.regstart);
}

RegexpOutcome matchWith(zk::RegexpPlan const& plan, regexp& expression, char const* text,
                        std::uint64_t stepLimit)
{
    zk::RegexpRunner runner(expression, plan, text, stepLimit);
    RegexpOutcome const outcome = runner.search();
    if (outcome == RegexpOutcome::noMatch && hasTried(expression, plan, runner, text))
        clearGroups(expression);
    return outcome;
}

RegexpOutcome walk(regexp& expression, char const* text, std::uint64_t stepLimit)
{
    std::size_t const size = zk::sealedSize(expression);
    zk::RegexpWalker walker(expression, size ? size : zk::regexpSizeLimit, stepLimit);
    return walker.search(const_cast<char*>(text));
}

}  // namespace

RegexpOutcome regexec(regexp* prog, char const* string, std::uint64_t stepLimit)
{
    if (!prog || !string) {
        regerror("NULL parameter");
        return RegexpOutcome::noMatch;
    }
    if (static_cast<unsigned char>(*static_cast<char const*>(prog->program)) != zk::regexpMagic) {
        regerror("corrupted program");
        return RegexpOutcome::noMatch;
    }
    zk::RegexpPlan const* const plan = zk::planOf(*prog);
    RegexpOutcome const outcome =
        plan ? matchWith(*plan, *prog, string, stepLimit) : walk(*prog, string, stepLimit);
    if (outcome == RegexpOutcome::outOfSteps)
        clearGroups(*prog);
    return outcome;
}

int regexec(regexp* prog, char const* string)
{
    return regexec(prog, string, UINT64_MAX) == RegexpOutcome::match ? 1 : 0;
}

void regerror(char const* message)
{
    std::fprintf(stderr, "regerror: %s\n", message);
}
