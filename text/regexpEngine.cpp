// The engine's entries: they check what they are given, and pick the compiler and the matcher.
#include "text/regexpEngine.h"
#include "text/regexpCompiler.h"
#include "text/regexpPlan.h"
#include "text/regexpRunner.h"
#include "text/regexpWalker.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

namespace {

void clearGroups(regexp& expression)
{
    std::memset(expression.startp, 0, sizeof expression.startp);
    std::memset(expression.endp, 0, sizeof expression.endp);
}

bool hasGroups(regexp const& expression)
{
    return std::any_of(std::begin(expression.startp), std::end(expression.startp),
                       [](char const* place) { return place != nullptr; }) ||
        std::any_of(std::begin(expression.endp), std::end(expression.endp),
                    [](char const* place) { return place != nullptr; });
}

// Whether a search without success has tried a position at all. If not, it has
// left the groups of the match before it alone.
bool hasTried(regexp const& expression, zk::RegexpPlan const& plan, zk::RegexpRunner const& runner,
              char const* text)
{
    std::string lowered;
    if (plan.foldsCase) {
        lowered = text;
        for (char& c : lowered)
            c = static_cast<char>(plan.lower()[static_cast<unsigned char>(c)]);
        text = lowered.c_str();
    }
    auto const holds = [text](char const* wanted) { return std::strstr(text, wanted) != nullptr; };
    if (expression.regmust) {
        bool const looked =
            plan.search == zk::RegexpSearch::literal && plan.needle.text == expression.regmust;
        if (looked ? runner.literalIsMissing() : !holds(expression.regmust))
            return false;
    }
    char const first[] = {expression.regstart, '\0'};
    return expression.reganch || !expression.regstart || holds(first);
}

RegexpOutcome matchWith(zk::RegexpPlan const& plan, regexp& expression, char const* text,
                        std::uint64_t stepLimit)
{
    zk::RegexpRunner runner(expression, plan, text, stepLimit);
    RegexpOutcome const outcome = runner.search();
    if (outcome == RegexpOutcome::noMatch && hasGroups(expression) &&
        hasTried(expression, plan, runner, text))
        clearGroups(expression);
    return outcome;
}

RegexpOutcome walk(regexp& expression, char const* text, std::uint64_t stepLimit)
{
    std::size_t const size = zk::sealedSize(expression);
    zk::RegexpWalker walker(expression, size ? size : zk::regexpSizeLimit, stepLimit);
    return walker.search(text);
}

}  // namespace

namespace zk {

bool matchFolded(regexp& expression, char const* text, RegexpOutcome& outcome)
{
    if (static_cast<unsigned char>(*static_cast<char const*>(expression.program)) != regexpMagic)
        return false;
    RegexpPlan const* const plan = planOf(expression);
    if (!plan || !plan->foldsCase)
        return false;
    if (plan->locale != CaseFolding::localeNow())
        refold(expression, *plan);
    outcome = matchWith(*plan, expression, text, UINT64_MAX);
    return true;
}

}  // namespace zk

regexp* regcomp(char const* exp)
{
    RegexpFault fault;
    regexp* const result = regcomp(exp, fault);
    if (!result)
        regerror(fault.message);
    return result;
}

regexp* regcomp(char const* exp, RegexpFault& fault)
{
    return zk::compileRegexp(exp, fault, std::malloc);
}

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
    RegexpOutcome const outcome = plan && !plan->foldsCase ? matchWith(*plan, *prog, string, stepLimit)
                                                           : walk(*prog, string, stepLimit);
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
    std::fprintf(stderr, "regerror: %s\n", message ? message : "");
}
