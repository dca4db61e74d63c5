// The operations that Perl has too, compared with Perl on what both describe alike.
//
// Each test makes its cases from a fixed seed, lets one Perl process answer all
// of them, and compares. Left out is what this library defines otherwise:
// anchors, empty matches and empty remainders, a second range in the
// replacement of `tr`, squeezing against characters that were not found, and
// offsets past the end.
#include "tests/support/TemporaryFolder.h"
#include "text/SPStringList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int caseCount = 20000;

using Fields = std::vector<std::string>;

class PerlComparison : public testing::Test {
protected:
    // What `code` prints for each case; the fields of a case are in @f. No field may hold a tab or a newline.
    void ask(std::string const& code, std::vector<Fields> const& cases)
    {
        if (std::system(("perl -e 1 2>" + quoted("errors")).c_str()) != 0)
            GTEST_SKIP() << "Perl is not installed";
        std::string input;
        for (Fields const& fields : cases) {
            for (std::size_t i = 0; i < fields.size(); ++i)
                input += (i ? "\t" : "") + fields[i];
            input += '\n';
        }
        folder_.write("cases", input);
        folder_.write("script", "while (<>) { chomp; my @f = split(/\\t/, $_, -1); " + code + " }\n");
        ASSERT_EQ(
            std::system(
                ("perl " + quoted("script") + " " + quoted("cases") + " >" + quoted("answers")).c_str()),
            0);
        std::istringstream answers(folder_.read("answers"));
        for (std::string line; std::getline(answers, line);)
            answers_.push_back(line);
        ASSERT_EQ(answers_.size(), cases.size());
    }

    std::string quoted(char const* file) const { return "\"" + folder_.path(file) + "\""; }

    std::size_t below(std::size_t limit) { return chance_() % limit; }
    template <std::size_t n>
    std::string oneOf(char const* const (&texts)[n])
    {
        return texts[below(n)];
    }
    std::string textOf(char const* letters, std::size_t maxLength)
    {
        std::string const alphabet = letters;
        std::string text(below(maxLength + 1), ' ');
        for (char& c : text)
            c = alphabet[below(alphabet.size())];
        return text;
    }

    std::mt19937 chance_{20240229};
    std::vector<std::string> answers_;

private:
    TemporaryFolder folder_;
};

std::string describe(Fields const& fields)
{
    std::string text;
    for (std::string const& field : fields)
        text += "'" + field + "' ";
    return text;
}

}  // namespace

TEST_F(PerlComparison, split)
{
    char const* const patterns[] = {",",       "[,;]",    "([,;])", " +",  "ab",     "a|b", ",+",
                                    "(,)( *)", "[a-c]+,", "(a|b)",  "\\.", "a.c",    "b?,", "(a+)(b*)",
                                    "[^ab]",   "' '",     "",       "1",   "x(1|2)+"};
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i) {
        std::string const pattern = oneOf(patterns);
        bool const isSpecial = pattern.empty() || pattern == "' '";
        int const limit = isSpecial ? -1 : int(below(6)) - 1;
        cases.push_back({textOf("aabbc,,;  .12x", 14), pattern, std::to_string(limit ? limit : 1)});
    }

    ask(R"(my ($t, $p, $l) = @f; my @r = $p eq "\x27 \x27" ? split(" ", $t) : $p eq "" ? split(//, $t)
           : $l < 0 ? split(/$p/, $t) : split(/$p/, $t, $l);
           pop @r if $l > 0 && @r && $r[-1] eq "";
           print scalar(@r), "\t", join("|", @r), "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPStringList fields;
        int const count = fields.split(cases[i][0].c_str(), cases[i][1].c_str(), std::stoi(cases[i][2]));
        ASSERT_EQ(std::to_string(count) + "\t" + std::string(fields.join("|")), answers_[i])
            << describe(cases[i]);
    }
}

TEST_F(PerlComparison, substitute)
{
    char const* const patterns[] = {"a",      "ab",    "[ab]",  "(a)(b)", "a+",       "(a|b)c",
                                    "a.c",    "b+c?",  "[^a]b", "(a*)b",  "\\.",      "(ab|ba)+",
                                    "c(a?)b", "(a)|b", "x(.)y", "..",     "(.)(.)(.)"};
    char const* const replacements[] = {"",     "x", "<$&>", "[$1]", "$2$1", "$1$1$1", "long replacement",
                                        "$0.$3"};
    char const* const opts[] = {"", "g", "i", "gi", "ig"};
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i)
        cases.push_back({textOf("aaabbbcABC.xy", 16), oneOf(patterns), oneOf(replacements), oneOf(opts)});

    ask(R"(my ($t, $p, $r, $o) = @f; my $orig = $t;
           my $expand = sub { my $x = $r;
               my @g = map { defined $-[$_] && defined $+[$_] ? substr($orig, $-[$_], $+[$_] - $-[$_]) : "" } 0..9;
               $x =~ s/\$(&|\d)/$g[$1 eq "&" ? 0 : $1]/g; $x };
           my $q = $o =~ /i/ ? qr/$p/i : qr/$p/;
           my $n = $o =~ /g/ ? ($t =~ s/$q/&$expand()/ge) : ($t =~ s/$q/&$expand()/e);
           print $n || 0, "\t", $t, "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPString text(cases[i][0].c_str());
        int const count = text.s(cases[i][1].c_str(), cases[i][2].c_str(), cases[i][3].c_str());
        ASSERT_EQ(std::to_string(count) + "\t" + std::string(text), answers_[i]) << describe(cases[i]);
    }
}

TEST_F(PerlComparison, translate)
{
    // The two letters that bound a range, in order.
    auto const rangeIn = [this](char first, char last) {
        char a = char(first + below(std::size_t(last - first + 1)));
        char b = char(first + below(std::size_t(last - first + 1)));
        return std::string{std::min(a, b), '-', std::max(a, b)};
    };
    char const* const opts[] = {"", "", "s", "d", "ds", "c", "cs", "cd", "cds"};
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i) {
        // Ranges from different parts of the alphabet, so that no letter is mentioned twice.
        std::string from;
        if (below(2))
            from += rangeIn('a', 'f');
        if (below(2) || from.empty())
            from += char('g' + below(3));
        if (below(3) == 0)
            from += rangeIn('k', 'p');
        std::string const opt = oneOf(opts);
        bool const isComplement = opt.find('c') != opt.npos;
        std::string to;
        if (isComplement) {
            to = below(2) ? "X" : "";
        } else {
            to = textOf("XYZ", 2);
            if (below(2))
                to += rangeIn('A', 'H');
            to += textOf("UVW", 2);
        }
        cases.push_back({textOf("aabbccdefghijkklmnopqrst 12", 20), from, to, opt});
    }

    ask(R"(my ($t, $from, $to, $o) = @f; my $n = eval "\$t =~ tr/$from/$to/$o";
           print $n, "\t", $t, "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPString text(cases[i][0].c_str());
        int const count = text.tr(cases[i][1].c_str(), cases[i][2].c_str(), cases[i][3].c_str());
        ASSERT_EQ(std::to_string(count) + "\t" + std::string(text), answers_[i]) << describe(cases[i]);
    }
}

TEST_F(PerlComparison, substr)
{
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i) {
        std::string const text = textOf("abcdef", 12);
        cases.push_back(
            {text, std::to_string(below(text.size() + 1)), std::to_string(below(14)), textOf("XYZ", 5)});
    }

    ask(R"(my ($t, $p, $l, $r) = @f; my $was = substr($t, $p, $l); substr($t, $p, $l) = $r;
           print $was, "\t", $t, "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPString text(cases[i][0].c_str());
        SPString::substring window = text.substr(std::stoul(cases[i][1]), std::stoul(cases[i][2]));
        std::string const was{SPString(window)};
        window = cases[i][3].c_str();
        ASSERT_EQ(was + "\t" + std::string(text), answers_[i]) << describe(cases[i]);
    }
}

TEST_F(PerlComparison, index)
{
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i)
        cases.push_back({textOf("aab", 30), "a" + textOf("ab", 4), std::to_string(below(34))});

    ask(R"(my ($t, $s, $o) = @f; my $end = $o + 1 - length($s);
           print index($t, $s, $o), "\t", rindex($t, $s), "\t",
               $end < 0 ? rindex($t, $s) : rindex($t, $s, $end), "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPString const text(cases[i][0].c_str());
        SPString const part(cases[i][1].c_str());
        int const offset = std::stoi(cases[i][2]);
        std::ostringstream answer;
        answer << text.index(part, offset) << "\t" << text.rindex(part) << "\t"
               << text.rindex(part, static_cast<std::size_t>(offset));
        ASSERT_EQ(answer.str(), answers_[i]) << describe(cases[i]);
    }
}

TEST_F(PerlComparison, splice)
{
    std::vector<Fields> cases;
    for (int i = 0; i < caseCount; ++i) {
        std::string const list = textOf("abcdefgh", 40);
        std::size_t const offset = below(list.size() + 1);
        std::size_t const length = below(list.size() - offset + 1);
        cases.push_back({list, std::to_string(offset), std::to_string(length), textOf("XYZ", 30)});
    }

    ask(R"(my ($t, $o, $l, $r) = @f; my @a = split(//, $t); my @cut = splice(@a, $o, $l, split(//, $r));
           print join("", @cut), "\t", join("", @a), "\n";)",
        cases);

    for (std::size_t i = 0; i < answers_.size(); ++i) {
        SPStringList list = SPString(cases[i][0].c_str()).split("");
        SPStringList const elements = SPString(cases[i][3].c_str()).split("");
        SPStringList const cut = list.splice(std::stoi(cases[i][1]), std::stoi(cases[i][2]), elements);
        ASSERT_EQ(std::string(cut.join("")) + "\t" + std::string(list.join("")), answers_[i])
            << describe(cases[i]);
    }
}
