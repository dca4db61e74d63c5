// The reports of the compiler that no expression can bring about, and an allocation that fails.
#include "text/regexpCompiler.h"
#include "text/regexpPlan.h"

#include <gtest/gtest.h>

#include <cstdlib>

using zk::RegexpCompiler;

TEST(RegexpCompiler, callsAnAtomThatCannotBeOneAnInternalMistake)
{
    for (char const* text : {"", "|a", ")"}) {
        RegexpCompiler compiler(text, nullptr);
        RegexpCompiler::Flags flags;

        EXPECT_EQ(compiler.atom(flags), 0u);
        EXPECT_STREQ(compiler.fault().message, "internal urp") << text;
    }
}

TEST(RegexpCompiler, callsAnEmptyRunOfLiteralsADisaster)
{
    RegexpCompiler compiler("(a)", nullptr);
    RegexpCompiler::Flags flags;

    EXPECT_EQ(compiler.literal(flags), 0u);
    EXPECT_STREQ(compiler.fault().message, "internal disaster");
}

TEST(RegexpCompiler, callsWhatIsLeftBehindTheTopLevelJunk)
{
    RegexpCompiler junk("a", nullptr);
    RegexpCompiler parenthesis(")", nullptr);

    EXPECT_FALSE(junk.atEnd());
    EXPECT_STREQ(junk.fault().message, "junk on end");
    EXPECT_FALSE(parenthesis.atEnd());
    EXPECT_STREQ(parenthesis.fault().message, "unmatched ()");
    EXPECT_TRUE(RegexpCompiler("", nullptr).atEnd());
}

TEST(RegexpCompiler, reportsMemoryThatItDoesNotGet)
{
    RegexpFault fault;

    EXPECT_EQ(zk::compileRegexp("abc", fault, [](std::size_t) -> void* { return nullptr; }), nullptr);

    EXPECT_STREQ(fault.message, "out of space");
}

TEST(RegexpCompiler, asksForOneBlockThatHoldsAll)
{
    static std::size_t asked;
    for (char const* pattern : {"", "a", "(a|[b-d]+)+x?", "^([^:]*):([^:]*):(.*)$"}) {
        RegexpFault fault;
        regexp* const expression = zk::compileRegexp(pattern, fault, [](std::size_t size) {
            asked = size;
            return std::malloc(size);
        });
        RegexpCompiler counting(pattern, nullptr);

        ASSERT_TRUE(counting.run());
        EXPECT_EQ(asked, zk::regexpBlockSize(counting.size(), counting.nodes(), counting.sets(), false));
        EXPECT_EQ(zk::sealedSize(*expression), counting.size());
        ASSERT_NE(zk::planOf(*expression), nullptr);
        EXPECT_EQ(zk::planOf(*expression)->stepCount, counting.nodes());
        EXPECT_EQ(zk::planOf(*expression)->setCount, counting.sets());
        std::free(expression);
    }
}

TEST(RegexpFolding, isAdaptedToTheLocaleInForce)
{
    // Made where "x" was the lower form of "Q", and that of "B" its own.
    zk::CaseFolding folding = zk::CaseFolding::ofLocale();
    folding.locale += 1;
    folding.lower['Q'] = 'x';
    folding.lower['B'] = 'B';
    RegexpFault fault;
    regexp* const expression = zk::compileRegexp("[a-b]+(x*)bc$", fault, std::malloc, &folding);
    RegexpOutcome outcome = RegexpOutcome::match;

    ASSERT_TRUE(zk::matchFolded(*expression, "aBQbc", outcome));
    EXPECT_EQ(outcome, RegexpOutcome::noMatch);
    ASSERT_TRUE(zk::matchFolded(*expression, "aBXBC", outcome));
    EXPECT_EQ(outcome, RegexpOutcome::match);

    EXPECT_EQ(zk::planOf(*expression)->locale, zk::CaseFolding::localeNow());
    std::free(expression);
}

TEST(RegexpFolding, isNotForTheEntryThatKeepsCase)
{
    zk::CaseFolding const folding = zk::CaseFolding::ofLocale();
    RegexpFault fault;
    regexp* const expression = zk::compileRegexp("abc", fault, std::malloc, &folding);

    EXPECT_EQ(regexec(expression, "ABC"), 0);
    EXPECT_EQ(regexec(expression, "abc"), 1);
    std::free(expression);
}

TEST(RegexpFolding, isRefusedForAnExpressionThatDoesNotFold)
{
    RegexpFault fault;
    regexp* const expression = zk::compileRegexp("abc", fault, std::malloc);
    RegexpOutcome outcome;

    EXPECT_FALSE(zk::matchFolded(*expression, "abc", outcome));

    std::free(expression);
}

TEST(RegexpFolding, takesAnyMappingOfBytes)
{
    // Two bytes that fold to "x", one of them above 127, and an "x" that folds away.
    zk::CaseFolding folding = zk::CaseFolding::ofLocale();
    folding.lower[0xE4] = 'x';
    folding.lower['x'] = 'y';
    folding.changed[folding.changedCount++] = 0xE4;
    folding.changed[folding.changedCount++] = 'x';
    RegexpFault fault;
    regexp* const expression = zk::compileRegexp("ax[x]x*z", fault, std::malloc, &folding);
    RegexpOutcome outcome;

    ASSERT_TRUE(zk::matchFolded(*expression, ".A\xE4X\xE4Xz", outcome));
    EXPECT_EQ(outcome, RegexpOutcome::match);
    ASSERT_TRUE(zk::matchFolded(*expression, "axXXz", outcome));
    EXPECT_EQ(outcome, RegexpOutcome::noMatch);
    std::free(expression);
}
