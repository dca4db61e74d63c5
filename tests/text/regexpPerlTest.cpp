// Compares with Perl on what both understand.
#include "tests/support/TemporaryFolder.h"
#include "tests/text/expressionSupport.h"

#include <cstdint>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace zk::test;

namespace {

// Patterns of chance that mean the same to both: no operator is followed by
// one that Perl would read with it, and `$` is written as "\z" for Perl.
class CaseMaker {
public:
    struct Case {
        std::string ours;
        std::string perls;
        std::string subject;
        std::set<int> inLoops;  // groups inside of a group that is repeated
    };

    Case next()
    {
        pattern_ = {};
        groups_ = 0;
        alternatives(3);
        std::string subject;
        for (std::size_t letters = below(13); letters > 0; --letters)
            subject += "aabbc."[below(6)];
        pattern_.subject = subject;
        return pattern_;
    }

private:
    std::size_t below(std::size_t limit)
    {
        state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<std::size_t>(state_ >> 33) % limit;
    }
    void both(std::string const& text) { add(text, text); }
    void add(std::string const& ours, std::string const& perls)
    {
        pattern_.ours += ours;
        pattern_.perls += perls;
    }

    // Each part tells whether it can match the empty text.
    bool alternatives(int depth)
    {
        bool empty = sequence(depth);
        for (std::size_t more = below(5) < 2 ? 1 + below(2) : 0; more > 0; --more) {
            both("|");
            empty |= sequence(depth);
        }
        return empty;
    }
    bool sequence(int depth)
    {
        bool empty = true;
        for (std::size_t pieces = below(12) == 0 ? 0 : 1 + below(3); pieces > 0; --pieces)
            empty &= piece(depth);
        return empty;
    }
    bool piece(int depth)
    {
        int const firstGroup = groups_ + 1;
        bool const empty = atom(depth);
        std::size_t const repeat = below(7);
        if (repeat > 2 || (empty && repeat < 2))
            return empty;
        both(std::string(1, "*+?"[repeat]));
        for (int inner = firstGroup + 1; inner <= groups_; ++inner)
            pattern_.inLoops.insert(inner);
        return repeat != 1;
    }
    bool atom(int depth)
    {
        static char const* const plain[] = {"a", "b", "c", "ab", ".", "[ab]", "[^a]", "[b-c]", "\\.", "[.c]"};
        std::size_t const kind = below(16);
        if (kind == 0 && depth < 3) {
            add("^", "(?:^)");
            return true;
        }
        if (kind == 1) {
            add("$", "(?:\\z)");
            return true;
        }
        if (kind < 6 && depth > 0 && groups_ < 9) {
            ++groups_;
            both("(");
            bool const empty = alternatives(depth - 1);
            both(")");
            return empty;
        }
        std::string const text = plain[below(std::size(plain))];
        both(text);
        return false;
    }

    std::uint64_t state_ = 4711;
    Case pattern_;
    int groups_ = 0;
};

// A group inside of a repeated group: where the loop takes back a round, Perl
// leaves what the round has stored there, or clears it. The engine restores it.
std::string withoutGroups(std::set<int> const& left, std::string const& groups)
{
    std::istringstream all(groups);
    std::string result;
    for (std::string group; all >> group;) {
        if (left.count(std::atoi(group.c_str())) == 0)
            result += group + " ";
    }
    return result;
}

constexpr char script[] = R"perl(
binmode STDIN; binmode STDOUT;
while (my $line = <STDIN>) {
    chomp $line;
    my ($pattern, $subject) = split /\t/, $line, -1;
    my $compiled = eval { no warnings; qr/$pattern/s };
    if (!defined $compiled) { print "refused\n"; next; }
    if ($subject !~ $compiled) { print "no match\n"; next; }
    my @groups = map { defined $-[$_] && defined $+[$_] ? "$_($-[$_],$+[$_])" : () } 0 .. $#-;
    print join(" ", @groups), "\n";
}
)perl";

}  // namespace

TEST(RegexpPerl, agreesOnTwentyThousandCases)
{
    TemporaryFolder const folder;
    std::string const perl = "perl \"" + folder.path("compare.pl") + "\" < \"" + folder.path("cases") +
        "\" > \"" + folder.path("results") + "\"";
    folder.write("compare.pl", script);
    folder.write("cases", "a(b)\tab\n");
    if (std::system((perl + " 2> \"" + folder.path("errors") + "\"").c_str()) != 0 ||
        folder.read("results") != "0(0,2) 1(1,2)\n")
        GTEST_SKIP() << "there is no perl to compare with";

    constexpr int caseCount = 20000;
    CaseMaker maker;
    std::vector<CaseMaker::Case> cases;
    std::string lines;
    for (int i = 0; i < caseCount; ++i) {
        cases.push_back(maker.next());
        lines += cases.back().perls + "\t" + cases.back().subject + "\n";
    }
    folder.write("cases", lines);
    ASSERT_EQ(std::system(perl.c_str()), 0);

    std::istringstream results(folder.read("results"));
    int matches = 0;
    int differences = 0;
    for (CaseMaker::Case const& each : cases) {
        std::string expected;
        ASSERT_TRUE(std::getline(results, expected));
        std::string const found = groupsOfMatch(each.ours, each.subject);
        matches += found != "no match";
        if (withoutGroups(each.inLoops, found) != withoutGroups(each.inLoops, expected)) {
            ADD_FAILURE() << "/" << each.ours << "/ on \"" << each.subject << "\": " << found
                          << ", Perl: " << expected;
            if (++differences == 20)
                break;
        }
    }
    EXPECT_GT(matches, caseCount / 3);
    EXPECT_LT(matches, caseCount);
}
