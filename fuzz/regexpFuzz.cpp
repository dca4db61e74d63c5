// Compiles and matches anything, and compares with the obvious engine.
//
// The input is a pattern, a newline, and the subject.
#include "tests/support/ReferenceMatcher.h"
#include "text/regexpRunner.h"
#include "text/regexpWalker.h"

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const input(reinterpret_cast<char const*>(data), size);
    std::size_t const split = input.find('\n');
    std::string const pattern(std::string(input.substr(0, split)).c_str());
    std::string const subject(split == input.npos ? "" : std::string(input.substr(split + 1)).c_str());

    RegexpFault fault;
    regexp* const expression = regcomp(pattern.c_str(), fault);
    // The recursion of the reference is for short ones.
    if (pattern.size() < 60) {
        ReferenceMatcher reference(pattern);
        require(reference.error() == (expression ? "" : fault.message), "error", pattern, subject);
        Groups expected;
        if (expression && subject.size() < 80)
            expected = reference.match(subject, 20000);
        if (expression && subject.size() < 80 && !reference.gaveUp()) {
            RegexpOutcome const plain = regexec(expression, subject.c_str(), UINT64_MAX);
            require(groupsOf(plain, *expression, subject) == expected, "engine", pattern, subject);
            zk::RegexpPlan const& plan = *zk::planOf(*expression);
            RegexpOutcome const remembering =
                zk::RegexpRunner(*expression, plan, subject.c_str(), UINT64_MAX, 0).search();
            require(groupsOf(remembering, *expression, subject) == expected, "remembering", pattern, subject);
            RegexpOutcome const walking = zk::RegexpWalker(*expression, plan.programSize, UINT64_MAX)
                                              .search(const_cast<char*>(subject.c_str()));
            require(groupsOf(walking, *expression, subject) == expected, "walking", pattern, subject);
        }
    }
    if (expression)
        regexec(expression, subject.c_str());
    std::free(expression);
    return 0;
}
