#include "platform/os/commandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using zk::os::joinCommandLine;
using zk::os::splitCommandLine;

namespace {

using Arguments = std::vector<std::string>;

}  // namespace

TEST(CommandLine, isSplitByTheRulesOfTheRuntime)
{
    struct Row {
        char const* line;
        Arguments arguments;
    };
    Row const rows[] = {
        {R"(zk a b)", {"zk", "a", "b"}},
        {"zk  a \t b\t", {"zk", "a", "b"}},
        {R"(zk "a b" c)", {"zk", "a b", "c"}},
        {R"(zk a"b c"d)", {"zk", "ab cd"}},
        {R"(zk "")", {"zk", ""}},
        {R"(zk a "" b)", {"zk", "a", "", "b"}},
        {R"(zk "ab\"c" "\\" d)", {"zk", R"(ab"c)", R"(\)", "d"}},
        {R"(zk a\\\b d"e f"g h)", {"zk", R"(a\\\b)", "de fg", "h"}},
        {R"(zk a\\\"b c d)", {"zk", R"(a\"b)", "c", "d"}},
        {R"(zk a\\\\"b c" d e)", {"zk", R"(a\\b c)", "d", "e"}},
        {R"(zk "a""b" c)", {"zk", R"(a"b)", "c"}},
        {R"(zk "a"" b)", {"zk", R"(a" b)"}},
        {R"(zk """a b""" c)", {"zk", R"("a b")", "c"}},
        {R"(zk """)", {"zk", R"(")"}},
        {R"(zk "a b)", {"zk", "a b"}},
        {R"(zk c:\dir\ x)", {"zk", R"(c:\dir\)", "x"}},
        {R"(zk \)", {"zk", R"(\)"}},
    };
    for (Row const& row : rows)
        EXPECT_EQ(splitCommandLine(row.line), row.arguments) << row.line;
}

TEST(CommandLine, takesTheProgramsNameWithPlainBackslashes)
{
    struct Row {
        char const* line;
        Arguments arguments;
    };
    Row const rows[] = {
        {R"(c:\bin\zk.exe a)", {R"(c:\bin\zk.exe)", "a"}},
        {R"("c:\my bin\zk" a)", {R"(c:\my bin\zk)", "a"}},
        {R"("c:\my bin\" a)", {R"(c:\my bin\)", "a"}},
        {R"(c:\"my bin"\zk a)", {R"(c:\my bin\zk)", "a"}},
        {R"(" zk)", {" zk"}},
        {R"( zk a)", {"", "zk", "a"}},
        {"", {""}},
    };
    for (Row const& row : rows)
        EXPECT_EQ(splitCommandLine(row.line), row.arguments) << row.line;
}

TEST(CommandLine, isJoinedWithQuotesWhereTheyAreNeeded)
{
    EXPECT_EQ(joinCommandLine({"zk", "a", "b"}), "zk a b");
    EXPECT_EQ(joinCommandLine({"my zk", "a b", ""}), R"("my zk" "a b" "")");
    EXPECT_EQ(joinCommandLine({"zk", R"(c:\dir\)", R"(c:\my dir\)"}), R"(zk c:\dir\ "c:\my dir\\")");
    EXPECT_EQ(joinCommandLine({"zk", R"(a"b)", R"(a\"b)"}), R"(zk "a\"b" "a\\\"b")");
    EXPECT_EQ(joinCommandLine({}), "");
}

TEST(CommandLine, isSplitIntoWhatItWasJoinedFrom)
{
    // All texts of up to four of these characters, as the only argument and between two others.
    constexpr std::string_view alphabet = "a \t\"\\";
    Arguments texts = {""};
    for (std::size_t begin = 0, length = 0; length < 4; ++length) {
        std::size_t const end = texts.size();
        for (; begin < end; ++begin) {
            for (char const c : alphabet)
                texts.push_back(texts[begin] + c);
        }
    }
    for (std::string const& text : texts) {
        for (Arguments const& arguments : {Arguments{"zk", text}, Arguments{"z k", "a\\", text, "b"}})
            ASSERT_EQ(splitCommandLine(joinCommandLine(arguments)), arguments) << text;
    }
}

TEST(CommandLine, losesAQuoteInTheProgramsNameAlone)
{
    EXPECT_EQ(joinCommandLine({"a\"b c", "d"}), R"("ab c" d)");
}

TEST(CommandLine, mayBeLong)
{
    std::string const backslashes(1000000, '\\');

    EXPECT_EQ(splitCommandLine("zk " + backslashes).back(), backslashes);
    EXPECT_EQ(splitCommandLine("zk " + backslashes + '"').back().size(), 500000u);
    EXPECT_EQ(splitCommandLine(joinCommandLine({"zk", backslashes + '"'})).back(), backslashes + '"');
}
