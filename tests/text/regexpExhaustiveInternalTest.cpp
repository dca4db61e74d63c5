// Compares the engine, on each of its ways through an expression, with the obvious one on all short patterns.
#include "tests/support/ReferenceMatcher.h"
#include "text/regexpRunner.h"
#include "text/regexpWalker.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Free {
    void operator()(regexp* expression) const { std::free(expression); }
};
using Expression = std::unique_ptr<regexp, Free>;

std::string describe(std::optional<ReferenceMatcher::Groups> const& groups)
{
    if (!groups)
        return "no match";
    std::string result;
    for (auto const& [start, end] : *groups)
        result += start < 0 ? "-" : "(" + std::to_string(start) + "," + std::to_string(end) + ")";
    return result;
}

using Groups = std::optional<ReferenceMatcher::Groups>;

Groups groupsOf(RegexpOutcome outcome, regexp const& expression, std::string const& subject)
{
    if (outcome != RegexpOutcome::match)
        return std::nullopt;
    ReferenceMatcher::Groups result;
    for (int group = 0; group < NSUBEXP; ++group) {
        auto const offset = [&](char const* position) {
            return position ? static_cast<int>(position - subject.c_str()) : -1;
        };
        result[static_cast<std::size_t>(group)] = {offset(expression.startp[group]),
                                                   offset(expression.endp[group])};
    }
    return result;
}

bool agree(regexp& expression, std::string const& pattern, std::string const& subject, Groups const& expected)
{
    auto const check = [&](char const* way, RegexpOutcome outcome) {
        Groups const found = groupsOf(outcome, expression, subject);
        if (expected != found)
            ADD_FAILURE() << way << ": /" << pattern << "/ on \"" << subject << "\": " << describe(found)
                          << ", expected " << describe(expected);
        return expected == found;
    };
    zk::RegexpPlan const* const plan = zk::planOf(expression);
    if (!plan) {
        ADD_FAILURE() << "no plan for /" << pattern << "/";
        return false;
    }
    return check("engine",
                 regexec(&expression, subject.c_str()) ? RegexpOutcome::match : RegexpOutcome::noMatch) &&
        check("remembering", zk::RegexpRunner(expression, *plan, subject.c_str(), UINT64_MAX, 0).search()) &&
        check("walking",
              zk::RegexpWalker(expression, plan->programSize, UINT64_MAX).search(subject.c_str())) &&
        check("walking with notes",
              zk::RegexpWalker(expression, plan->programSize, UINT64_MAX, 0).search(subject.c_str()));
}

std::vector<std::string> allSubjects(std::string const& letters, std::size_t longest)
{
    std::vector<std::string> result{""};
    for (std::size_t from = 0; result[from].size() < longest; ++from) {
        for (char const letter : letters)
            result.push_back(result[from] + letter);
    }
    return result;
}

// Compares on the first `count` subjects and on one of the others in turn. False at the first difference.
bool agree(std::string const& pattern, std::vector<std::string> const& subjects, std::size_t count,
           std::size_t turn)
{
    ReferenceMatcher reference(pattern);
    RegexpFault fault;
    Expression const expression(regcomp(pattern.c_str(), fault));
    EXPECT_EQ(reference.error(), expression ? "" : fault.message) << pattern;
    if (!expression)
        return !reference.error().empty();
    auto const same = [&](std::string const& subject) {
        return agree(*expression, pattern, subject, reference.match(subject));
    };
    for (std::size_t i = 0; i < count; ++i) {
        if (!same(subjects[i]))
            return false;
    }
    return count == subjects.size() || same(subjects[count + turn % (subjects.size() - count)]);
}

}  // namespace

// All subjects of up to 6 letters for the patterns of up to 3 symbols. For
// those of 4 (5) symbols, all of up to 4 (2) letters and one longer one each,
// which moves on from pattern to pattern.
TEST(RegexpExhaustive, agreesWithTheReferenceOnAllPatternsOfFiveSymbols)
{
    std::vector<std::string> const symbols{"a", "b", ".", "*", "?", "+", "|", "(", ")", "^", "$", "[ab]"};
    std::vector<std::string> const subjects = allSubjects("ab", 6);
    std::vector<std::string> patterns{""};
    std::size_t firstOfLength = 0;
    std::size_t turn = 0;

    for (int length = 0; length <= 5; ++length) {
        std::size_t const end = patterns.size();
        for (std::size_t i = firstOfLength; i < end; ++i) {
            if (!agree(patterns[i], subjects, length < 4 ? subjects.size() : length == 4 ? 31 : 7, turn += 7))
                return;
            if (length < 5) {
                for (std::string const& symbol : symbols)
                    patterns.push_back(patterns[i] + symbol);
            }
        }
        firstOfLength = end;
    }
    EXPECT_EQ(patterns.size(), 271453u);
}

// Longer patterns and subjects of chance, with a fixed seed.
TEST(RegexpExhaustive, agreesWithTheReferenceOnPatternsOfChance)
{
    static char const* const pieces[] = {
        "a", "b", "c", "ab", "abc", "bca", ".",   "[ab]", "[^a]", "[b-c]",  "(",     "(",      ")", ")",
        "|", "*", "+", "?",  "^",   "$",   "\\.", "a*",   "b+",   "(a|b)*", "(ab)?", "(a*b)*", ".*"};
    std::uint64_t state = 20240601;
    auto const random = [&state](std::size_t below) {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<std::size_t>(state >> 33) % below;
    };
    int compiled = 0;
    for (int round = 0; round < 60000; ++round) {
        std::string pattern;
        for (std::size_t pieceCount = 1 + random(9); pieceCount > 0; --pieceCount)
            pattern += pieces[random(std::size(pieces))];
        ReferenceMatcher reference(pattern);
        RegexpFault fault;
        Expression const expression(regcomp(pattern.c_str(), fault));
        ASSERT_EQ(reference.error(), expression ? "" : fault.message) << pattern;
        if (!expression)
            continue;
        ++compiled;
        for (int text = 0; text < 4; ++text) {
            std::string subject;
            for (std::size_t letters = random(text == 3 ? 40 : 12); letters > 0; --letters)
                subject += "abc."[random(4)];
            auto const expected = reference.match(subject, 200000);
            if (reference.gaveUp())
                continue;
            if (!agree(*expression, pattern, subject, expected))
                return;
        }
    }
    EXPECT_GT(compiled, 10000);
}
