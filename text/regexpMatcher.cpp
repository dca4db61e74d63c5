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

// Whether the text, lower-cased, holds `wanted`.
bool holdsFolded(char const* text, char const* wanted, unsigned char const* lower)
{
    for (;; ++text) {
        std::size_t same = 0;
        while (wanted[same] != '\0' &&
               static_cast<char>(lower[static_cast<unsigned char>(text[same])]) == wanted[same])
            ++same;
        if (wanted[same] == '\0')
            return true;
        if (*text == '\0')
            return false;
    }
}

// Whether a search without success has tried a position at all. If not, it has
// left the groups of the match before it alone.
bool hasTried(regexp const& expression, zk::RegexpPlan const& plan, zk::RegexpRunner const& runner,
              char const* text)
{
    auto const holds = [&](char const* wanted) {
        return plan.foldsCase ? holdsFolded(text, wanted, plan.lower())
                              : std::strstr(text, wanted) != nullptr;
    };
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

namespace zk {

bool matchFolded(regexp& expression, char const* text, RegexpOutcome& outcome)
{
    if (static_cast<unsigned char>(*static_cast<char const*>(expression.program)) != regexpMagic)
        return false;
    RegexpPlan const* const plan = planOf(expression);
    if (!plan || !plan->foldsCase || plan->locale != CaseFolding::localeNow())
        return false;
    outcome = matchWith(*plan, expression, text, UINT64_MAX);
    return true;
}

}  // namespace zk

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
    std::fprintf(stderr, "regerror: %s\n", message);
}
