// Compiles and matches anything, with case and without, and compares with the obvious engine.
//
// The input is a pattern, a newline, and the subject.
#include "tests/support/ReferenceMatcher.h"
#include "text/regexpCompiler.h"
#include "text/regexpRunner.h"
#include "text/regexpWalker.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using Groups = std::optional<ReferenceMatcher::Groups>;

Groups groupsOf(RegexpOutcome outcome, regexp const& expression, std::string const& subject)
{
    if (outcome != RegexpOutcome::match)
        return std::nullopt;
    ReferenceMatcher::Groups result;
    for (std::size_t group = 0; group < NSUBEXP; ++group) {
        auto const offset = [&](char const* place) {
            return place ? static_cast<int>(place - subject.c_str()) : -1;
        };
        result[group] = {offset(expression.startp[group]), offset(expression.endp[group])};
    }
    return result;
}

void require(bool condition, char const* what, std::string const& pattern, std::string const& subject)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s differs: /%s/ on \"%s\"\n", what, pattern.c_str(), subject.c_str());
    std::abort();
}

// The recursion of the reference is for short ones.
constexpr std::size_t longestPattern = 60;
constexpr std::size_t longestSubject = 80;
constexpr std::uint64_t stepLimit = 20000;

std::string lowerCased(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// A match without case is one of the lower-cased pattern on the lower-cased subject.
void matchWithoutCase(std::string const& pattern, std::string const& subject)
{
    zk::CaseFolding const folding = zk::CaseFolding::ofLocale();
    std::string const loweredPattern = lowerCased(pattern);
    RegexpFault fault;
    regexp* const expression = zk::compileRegexp(loweredPattern.c_str(), fault, std::malloc, &folding);
    if (!expression)
        return;
    RegexpOutcome outcome = RegexpOutcome::outOfSteps;
    bool const folded = zk::matchFolded(*expression, subject.c_str(), outcome);
    require(folded, "case-free plan", pattern, subject);
    if (pattern.size() < longestPattern && subject.size() < longestSubject) {
        ReferenceMatcher reference(loweredPattern);
        Groups const expected = reference.match(lowerCased(subject), stepLimit);
        if (!reference.gaveUp()) {
            require(groupsOf(outcome, *expression, subject) == expected, "case-free", pattern, subject);
            RegexpOutcome const remembering =
                zk::RegexpRunner(*expression, *zk::planOf(*expression), subject.c_str(), UINT64_MAX, 0)
                    .search();
            require(groupsOf(remembering, *expression, subject) == expected, "case-free, remembering",
                    pattern, subject);
        }
    }
    std::free(expression);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const input(reinterpret_cast<char const*>(data), size);
    std::size_t const split = input.find('\n');
    std::string const pattern(std::string(input.substr(0, split)).c_str());
    std::string const subject(split == input.npos ? "" : std::string(input.substr(split + 1)).c_str());

    RegexpFault fault;
    regexp* const expression = regcomp(pattern.c_str(), fault);
    if (pattern.size() < longestPattern) {
        ReferenceMatcher reference(pattern);
        require(reference.error() == (expression ? "" : fault.message), "error", pattern, subject);
        Groups expected;
        if (expression && subject.size() < longestSubject)
            expected = reference.match(subject, stepLimit);
        if (expression && subject.size() < longestSubject && !reference.gaveUp()) {
            RegexpOutcome const plain = regexec(expression, subject.c_str(), UINT64_MAX);
            require(groupsOf(plain, *expression, subject) == expected, "engine", pattern, subject);
            zk::RegexpPlan const& plan = *zk::planOf(*expression);
            RegexpOutcome const remembering =
                zk::RegexpRunner(*expression, plan, subject.c_str(), UINT64_MAX, 0).search();
            require(groupsOf(remembering, *expression, subject) == expected, "remembering", pattern, subject);
            RegexpOutcome const walking =
                zk::RegexpWalker(*expression, plan.programSize, UINT64_MAX).search(subject.c_str());
            require(groupsOf(walking, *expression, subject) == expected, "walking", pattern, subject);
            RegexpOutcome const noting =
                zk::RegexpWalker(*expression, plan.programSize, UINT64_MAX, 0).search(subject.c_str());
            require(groupsOf(noting, *expression, subject) == expected, "walking with notes", pattern,
                    subject);
        }
    }
    if (expression)
        regexec(expression, subject.c_str());
    std::free(expression);
    matchWithoutCase(pattern, subject);
    return 0;
}
