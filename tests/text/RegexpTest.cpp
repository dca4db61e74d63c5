#include "text/Regexp.h"

#include "platform/classlib/textTables.h"
#include "tests/support/ScopedLocale.h"
#include "tests/text/expressionSupport.h"

#include <cctype>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

using namespace zk::test;

namespace {

std::string textOf(Range const& range, std::string const& subject)
{
    return range
        ? subject.substr(static_cast<std::size_t>(range.start()), static_cast<std::size_t>(range.length()))
        : "";
}

}  // namespace

TEST(Regexp, findsItsGroupsInTheSubject)
{
    Regexp assignment("([a-z]+)=([0-9]*)");
    std::string const subject = "  key=42;";

    EXPECT_EQ(assignment.match(subject.c_str()), 1);

    EXPECT_EQ(assignment.groups(), 3);
    EXPECT_EQ(textOf(assignment.getgroup(0), subject), "key=42");
    EXPECT_EQ(textOf(assignment.getgroup(1), subject), "key");
    EXPECT_EQ(textOf(assignment.getgroup(2), subject), "42");
    EXPECT_EQ(assignment.getgroup(2).start(), 6);
    EXPECT_EQ(assignment.getgroup(2).end(), 7);
    EXPECT_EQ(assignment.getgroup(2).length(), 2);
}

TEST(Regexp, givesAnEmptyGroupALengthOfZero)
{
    Regexp expression("a(x*)b");

    EXPECT_EQ(expression.match("ab"), 1);

    EXPECT_EQ(expression.getgroup(1).start(), 1);
    EXPECT_EQ(expression.getgroup(1).end(), 0);
    EXPECT_EQ(expression.getgroup(1).length(), 0);
}

TEST(Regexp, countsGroupsUpToTheFirstThatTookNoPart)
{
    Regexp expression("(a)|(b)");

    EXPECT_EQ(expression.match("b"), 1);

    EXPECT_EQ(expression.groups(), 1);
    EXPECT_EQ(expression.getgroup(1).start(), 0);
    EXPECT_EQ(expression.getgroup(1).end(), -1);
    EXPECT_EQ(expression.getgroup(1).length(), 0);
    EXPECT_EQ(expression.getgroup(2).length(), 1);
}

TEST(Regexp, countsAllTwentyGroups)
{
    std::string pattern;
    for (int i = 0; i < 19; ++i)
        pattern += "(a)";
    Regexp expression(pattern.c_str());

    EXPECT_EQ(expression.match(std::string(19, 'a').c_str()), 1);

    EXPECT_EQ(expression.groups(), 20);
    EXPECT_EQ(expression.getgroup(19).start(), 18);
}

TEST(Regexp, givesAnEmptyRangeForANumberThatNoGroupHas)
{
    Regexp expression("a");
    EXPECT_EQ(expression.match("a"), 1);

    for (int const number : {-1, 1, 19, 20, 1000}) {
        EXPECT_EQ(expression.getgroup(number).end(), -1) << number;
        EXPECT_EQ(expression.getgroup(number).length(), 0) << number;
    }
}

TEST(Regexp, takesUpperAndLowerCaseAsTheSameOnDemand)
{
    Regexp expression("[A-Z]+ \\WORLD", 1);

    EXPECT_EQ(expression.match("say Hello World!"), 1);

    EXPECT_EQ(expression.getgroup(0).start(), 4);
    EXPECT_EQ(expression.getgroup(0).length(), 11);
}

TEST(Regexp, foldsSetsAsAWhole)
{
    // "[Z-a]" becomes "[z-a]", which is no range any more.
    EXPECT_EQ(standardErrorOf([] { Regexp const expression("[Z-a]", 1); }).substr(0, 27),
              "regerror: invalid [] range\n");
    EXPECT_EQ(Regexp("[Z-a]", 0).match("_"), 1);
}

TEST(Regexp, foldsForTheFlagOneAlone)
{
    EXPECT_EQ(Regexp("abc", 1).match("ABC"), 1);
    EXPECT_EQ(Regexp("abc", 2).match("ABC"), 0);
    EXPECT_EQ(Regexp("abc", -1).match("ABC"), 0);
    EXPECT_EQ(Regexp("abc").match("ABC"), 0);
}

TEST(Regexp, keepsTheGroupsOfACaseFreeMatchWhenTheSubjectIsGone)
{
    Regexp expression("(b+)", 1);
    {
        std::string const subject = std::string(5000, 'A') + "BBB";
        EXPECT_EQ(expression.match(subject.c_str()), 1);
    }

    EXPECT_EQ(expression.getgroup(1).start(), 5000);
    EXPECT_EQ(expression.getgroup(1).end(), 5002);
}

TEST(Regexp, clearsItsGroupsOnATryThatFails)
{
    Regexp expression("(a)|b");
    EXPECT_EQ(expression.match("a"), 1);

    EXPECT_EQ(expression.match("c"), 0);

    EXPECT_EQ(expression.groups(), 0);
    EXPECT_EQ(expression.getgroup(0).length(), 0);
}

TEST(Regexp, hasNoGroupsBeforeItsFirstMatch)
{
    Regexp const expression("(a)");

    EXPECT_EQ(expression.groups(), 0);
    EXPECT_EQ(expression.getgroup(0).end(), -1);
}

TEST(Regexp, reportsAPatternThatDoesNotCompile)
{
    static ZkText const texts[] = {{49972, "No expression: "}, {49973, "Have another look at it."}};
    zkRegisterTexts(texts, std::size(texts));

    std::string const printed = standardErrorOf([] { Regexp const expression("a**"); });

    zkUnregisterTexts(texts);
    EXPECT_EQ(printed, "regerror: nested *?+\nNo expression: a**.\nHave another look at it.\n");
}

TEST(Regexp, namesThePatternAsItWasGiven)
{
    std::string const printed = standardErrorOf([] { Regexp const expression("(ABC", 1); });

    EXPECT_NE(printed.find("(ABC."), std::string::npos) << printed;
}

TEST(Regexp, neverMatchesIfItDidNotCompile)
{
    for (int const flag : {0, 1}) {
        std::string const printed = standardErrorOf([flag] {
            Regexp expression("(", flag);
            testing::internal::GetCapturedStderr();
            testing::internal::CaptureStderr();
            EXPECT_EQ(expression.match("("), 0);
            EXPECT_EQ(expression.groups(), 0);
            EXPECT_EQ(expression.getgroup(0).length(), 0);
            EXPECT_EQ(expression.getgroup(0).end(), -1);
            EXPECT_EQ(expression.match("a"), 0);
        });

        EXPECT_EQ(printed, "regerror: NULL parameter\nregerror: NULL parameter\n");
    }
}

TEST(Regexp, takesNullAsAnError)
{
    for (int const flag : {0, 1}) {
        EXPECT_EQ(standardErrorOf([flag] { Regexp const expression(nullptr, flag); }).substr(0, 24),
                  "regerror: NULL argument\n");
        Regexp expression("a", flag);
        EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(expression.match(nullptr), 0); }),
                  "regerror: NULL parameter\n");
    }
}

TEST(Regexp, isMovedNotCopied)
{
    static_assert(!std::is_copy_constructible_v<Regexp> && !std::is_copy_assignable_v<Regexp>);
    Regexp first("(b)");
    EXPECT_EQ(first.match("ab"), 1);

    Regexp second(std::move(first));
    Regexp third("x");
    third = std::move(second);

    EXPECT_EQ(third.getgroup(1).start(), 1);
    EXPECT_EQ(third.match("aab"), 1);
    EXPECT_EQ(third.getgroup(1).start(), 2);
}

TEST(Regexp, holdsTheExpressionTheTargetAndTheFlagInThisOrder)
{
    Regexp expression("a", 1);
    char const* const subject = "A";
    EXPECT_EQ(expression.match(subject), 1);

    unsigned char const* const bytes = reinterpret_cast<unsigned char const*>(&expression);
    regexp* program;
    char const* target;
    std::int32_t flag;
    std::memcpy(&program, bytes, sizeof program);
    std::memcpy(&target, bytes + 8, sizeof target);
    std::memcpy(&flag, bytes + 16, sizeof flag);
    EXPECT_EQ(static_cast<unsigned char>(program->program[0]), 156);
    EXPECT_EQ(target, subject);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(sizeof(Regexp), 24u);
}

// A case-free match is the match of the lower-cased expression on the lower-cased subject.
TEST(Regexp, findsWithoutCaseWhatItFindsInLowerCase)
{
    static char const* const pieces[] = {"a", "B",      "Ab", "bC5", ".",  "[A-c]",  "[^aB]", "[b-c]",
                                         "(", "(",      ")",  ")",   "|",  "*",      "+",     "?",
                                         "$", "(A|b)*", "A+", "5",   "c5", "[5-C]*", "\\D",   "^"};
    std::uint64_t state = 99;
    auto const random = [&state](std::size_t below) {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<std::size_t>(state >> 33) % below;
    };
    auto const lowerCased = [](std::string text) {
        for (char& c : text)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return text;
    };
    int matches = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string pattern;
        for (std::size_t count = 1 + random(7); count > 0; --count)
            pattern += pieces[random(std::size(pieces))];
        RegexpFault fault;
        if (!Expression(regcomp(lowerCased(pattern).c_str(), fault)))
            continue;
        Regexp withoutCase(pattern.c_str(), 1);
        Regexp inLowerCase(lowerCased(pattern).c_str());
        for (int text = 0; text < 3; ++text) {
            std::string subject;
            for (std::size_t letters = random(20); letters > 0; --letters)
                subject += "aAbBcC5D."[random(9)];
            int const matched = withoutCase.match(subject.c_str());
            std::string const lowered = lowerCased(subject);

            ASSERT_EQ(matched, inLowerCase.match(lowered.c_str())) << pattern << " on " << subject;
            matches += matched;
            ASSERT_EQ(withoutCase.groups(), inLowerCase.groups()) << pattern << " on " << subject;
            for (int group = 0; matched && group < NSUBEXP; ++group) {
                ASSERT_EQ(withoutCase.getgroup(group).start(), inLowerCase.getgroup(group).start())
                    << pattern << " on " << subject;
                ASSERT_EQ(withoutCase.getgroup(group).end(), inLowerCase.getgroup(group).end())
                    << pattern << " on " << subject;
            }
        }
    }
    EXPECT_GT(matches, 5000);
}

// The way for an expression that is not as it was made: here one whose seal is gone.
TEST(Regexp, findsWithoutCaseOnACopyIfTheExpressionWasChanged)
{
    Regexp expression("(b+)C", 1);
    regexp* program;
    std::memcpy(&program, static_cast<void const*>(&expression), sizeof program);
    std::memset(program->seal, 0, sizeof program->seal);
    {
        std::string const subject = std::string(100, 'A') + "BBc";
        EXPECT_EQ(expression.match(subject.c_str()), 1);
    }

    EXPECT_EQ(expression.groups(), 2);
    EXPECT_EQ(expression.getgroup(0).start(), 100);
    EXPECT_EQ(expression.getgroup(1).end(), 101);
    EXPECT_EQ(expression.match("bb"), 0);
}

TEST(Regexp, keepsItsFlagWhenItIsMoved)
{
    Regexp first("B", 1);
    Regexp keeping("x");

    Regexp second(std::move(first));
    EXPECT_EQ(second.match("abc"), 1);
    keeping = std::move(second);

    EXPECT_EQ(keeping.match("abc"), 1);
    EXPECT_EQ(keeping.match("ABC"), 1);
}

TEST(Regexp, knowsTheLastMatchThatWasFoundAfterOneThatFails)
{
    Regexp expression("abc");
    std::string const other = "xyz";
    EXPECT_EQ(expression.match("..abc"), 1);

    EXPECT_EQ(expression.match(other.c_str()), 0);
    EXPECT_EQ(expression.groups(), 1);
    EXPECT_EQ(expression.getgroup(0).start(), 2);
    EXPECT_EQ(expression.match("abd"), 0);  // which was tried

    EXPECT_EQ(expression.groups(), 0);
    EXPECT_EQ(expression.getgroup(0).length(), 0);
}

// Case-free searches keep the groups of the match before them just as searches with case do.
TEST(Regexp, keepsItsGroupsWithoutCaseWhereNothingWasTried)
{
    Regexp expression("x*bC", 1);
    EXPECT_EQ(expression.match("aXBc"), 1);

    EXPECT_EQ(expression.match("axb"), 0);
    EXPECT_EQ(expression.getgroup(0).end(), 3);
    EXPECT_EQ(Regexp("x*b[c-d]", 1).match("axB"), 0);
    EXPECT_EQ(expression.match("abC"), 1);

    EXPECT_EQ(expression.getgroup(0).start(), 1);
}

TEST(Regexp, foldsAsTheLocaleInForceDoes)
{
    Regexp madeBefore("\xE4+X", 1);
    EXPECT_EQ(madeBefore.match("\xC4x"), 0);
    {
        ScopedLocale const german("German_Germany.1252");
        if (!german.isSet() || std::tolower(0xC4) != 0xE4)
            GTEST_SKIP() << "there is no locale here that folds bytes above 127";
        EXPECT_EQ(madeBefore.match("\xC4\xE4x"), 1);
        EXPECT_EQ(Regexp("\xC4", 1).match("\xE4"), 1);
    }

    EXPECT_EQ(madeBefore.match("\xC4x"), 0);
    EXPECT_EQ(madeBefore.match("\xE4x"), 1);
}

TEST(Regexp, foldsTheSameInALocaleThatFoldsTheSame)
{
    Regexp expression("([b-c]+)D", 1);
    ScopedLocale const other("C.UTF-8");
    if (!other.isSet())
        GTEST_SKIP() << "there is no other locale here";

    EXPECT_EQ(expression.match("aBcd"), 1);

    EXPECT_EQ(expression.getgroup(1).start(), 1);
    EXPECT_EQ(expression.getgroup(1).end(), 2);
}

// What stands in the middle of a text is found by its rarest letter.
TEST(Regexp, findsATextWithoutCaseBehindARepeat)
{
    Regexp expression("([a-f]*)xyLOphone", 1);
    std::string const subject = std::string(1000, '.') + "xylophonXylo AbcXYLOphone";

    EXPECT_EQ(expression.match(subject.c_str()), 1);

    EXPECT_EQ(expression.getgroup(0).start(), 1013);
    EXPECT_EQ(expression.getgroup(1).length(), 3);
    EXPECT_EQ(expression.match("abcxylophon"), 0);
}
