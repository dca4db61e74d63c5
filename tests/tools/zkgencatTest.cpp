#include "tests/tools/zkgencatFixture.h"

#include "tests/logging/CatalogBytes.h"

#include "logging/CCgCatalog.h"
#include "logging/CCgCodeset.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using zk::test::Output;
using zk::test::ProgramResult;

namespace {

// -- The program -----------------------------------------------------------------------

TEST_F(ZkGencat, doesAllThatItCanAsAProgram)
{
    folder.write("en.msg", "$set 1\n7 %s has %d units\n");
    folder.write("de.msg", "$set 1\n7 %2$d Einheiten in %1$s\n");

    EXPECT_EQ(start({"en.cat", "en.msg"}).code, 0);
    EXPECT_EQ(start({"de.cat", "de.msg"}).code, 0);
    EXPECT_EQ(start({"--dump", "de.cat"}).out, "$quote \"\n$set 1\n7 \"%2$d Einheiten in %1$s\"\n");
    EXPECT_EQ(start({"--check", "en.cat", "de.cat"}).code, 0);
}

TEST_F(ZkGencat, endsWithAnExitCodeOfItsOwnForEachKindOfFailure)
{
    folder.write("bad.msg", "7 good\nbad\n");
    folder.write("none.cat", "no catalog");

    ProgramResult const mistaken = start({"a.cat", "bad.msg"});
    EXPECT_EQ(mistaken.code, 1);
    EXPECT_EQ(mistaken.err, "bad.msg:2: a line begins with a number or with \"$\"\n");
    EXPECT_FALSE(folder.exists("a.cat"));
    ProgramResult const wrong = start({"--dump"});
    EXPECT_EQ(wrong.code, 2);
    EXPECT_EQ(wrong.err, "zkgencat: a catalog is missing\nTry 'zkgencat --help'.\n");
    ProgramResult const failed = start({"--dump", "none.cat"});
    EXPECT_EQ(failed.code, 3);
    EXPECT_EQ(failed.err, "zkgencat: 'none.cat' is no catalog\n");
}

TEST_F(ZkGencat, tellsThatItsOutputCannotBeWritten)
{
    ASSERT_EQ(compile("7 text\n"), "$set 1\n7 \"text\"\n");

    for (Output const output : {Output::closed, Output::unwritable}) {
        ProgramResult const result = start({"--dump", "a.cat"}, output);
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.err, "zkgencat: cannot write the output\n");
    }
}

// -- The command line ------------------------------------------------------------------

TEST_F(ZkGencat, printsItsUsageAndItsVersion)
{
    ProgramResult const help = run({"--help"});

    EXPECT_EQ(help.code, 0);
    EXPECT_THAT(help.out, HasSubstr("zkgencat --check CATALOG OTHER..."));
    EXPECT_THAT(help.out, HasSubstr("Exit codes: 0 done"));
    EXPECT_THAT(run({"--version"}).out, StartsWith("zkgencat 8.4"));
}

TEST_F(ZkGencat, refusesArgumentsThatMakeNoSense)
{
    struct Row {
        std::vector<std::string> arguments;
        char const* mistake;
    };
    Row const rows[] = {
        {{}, "a catalog is missing"},
        {{"a.cat"}, "a source is missing"},
        {{"", "a.msg"}, "a file's name is empty"},
        {{"--dump"}, "a catalog is missing"},
        {{"--dump", "a.cat", "b.cat"}, "--dump takes one catalog"},
        {{"--check", "a.cat"}, "a catalog to compare with is missing"},
        {{"--dump", "--check", "a.cat", "b.cat"}, "--dump and --check exclude each other"},
        {{"--dump", "--new", "a.cat"}, "--new and --from are for the making of a catalog"},
        {{"--check", "--from", "1252", "a.cat", "b.cat"}, "--new and --from are for the making of a catalog"},
        {{"--from", "", "a.cat", "a.msg"}, "the code set's name is empty"},
        {{"--nonsense"}, "--nonsense"},
    };
    for (Row const& row : rows) {
        ProgramResult const result = run(row.arguments);
        EXPECT_EQ(result.code, 2) << row.mistake;
        EXPECT_THAT(result.err, HasSubstr(row.mistake));
        EXPECT_THAT(result.err, EndsWith("\nTry 'zkgencat --help'.\n"));
        EXPECT_EQ(result.out, "");
    }
}

TEST_F(ZkGencat, hasAManPageThatTellsEveryOption)
{
    char const* const sources = std::getenv("ZK_SOURCE_DIR");
    std::filesystem::path const page =
        std::filesystem::path(sources ? sources : ZKGENCAT_SOURCES) / "tools" / "zkgencat.1";
    std::ifstream file(page);
    std::string const text{std::istreambuf_iterator<char>(file), {}};

    for (char const* const option : {"new", "from", "dump", "check", "help", "version"})
        EXPECT_THAT(text, HasSubstr("\\-\\-" + std::string(option))) << option;
}

// -- Sources ---------------------------------------------------------------------------

TEST_F(ZkGencat, readsNumbersAndTexts)
{
    EXPECT_EQ(compile("1 one\n20 twenty\n2147483647 last\n"),
              "$set 1\n1 \"one\"\n20 \"twenty\"\n2147483647 \"last\"\n");
    EXPECT_EQ(compile("1\ttab\n2  blank first\n3 blank last \n4 \n"),
              "$set 1\n1 \"tab\"\n2 \" blank first\"\n3 \"blank last \"\n4 \"\"\n");
    EXPECT_EQ(compile("2 in any\n1 order\n"), "$set 1\n1 \"order\"\n2 \"in any\"\n");
    EXPECT_EQ(compile("1 without a line end"), "$set 1\n1 \"without a line end\"\n");
    EXPECT_EQ(compile("\xEF\xBB\xBF"
                      "1 behind a mark\n"),
              "$set 1\n1 \"behind a mark\"\n");
}

TEST_F(ZkGencat, readsSets)
{
    EXPECT_EQ(compile("1 a\n$set 3 a comment\n1 b\n$set 2\n1 c\n$set 3\n2 d\n"),
              "$set 1\n1 \"a\"\n$set 2\n1 \"c\"\n$set 3\n1 \"b\"\n2 \"d\"\n");
}

TEST_F(ZkGencat, passesOverCommentsAndEmptyLines)
{
    EXPECT_EQ(compile("$ comment\n$\tcomment\n$\n\n   \t\n1 a\n"), "$set 1\n1 \"a\"\n");
}

TEST_F(ZkGencat, joinsLines)
{
    EXPECT_EQ(compile("1 a \\\n  b\\\n\\\nc\n2 d\n"), "$set 1\n1 \"a   bc\"\n2 \"d\"\n");
    EXPECT_EQ(compile("1 a\\\\\n2 b\n"), "$set 1\n1 \"a\\\\\"\n2 \"b\"\n");
    EXPECT_EQ(compile("1 at the end\\"), "$set 1\n1 \"at the end\"\n");
    EXPECT_EQ(compile("1 \\\n$set 2\n"), "$set 1\n1 \"$set 2\"\n");
}

TEST_F(ZkGencat, readsEscapes)
{
    EXPECT_EQ(compile("1 \\n\\t\\v\\b\\r\\f\\\\\n"), "$set 1\n1 \"\\n\\t\\v\\b\\r\\f\\\\\"\n");
    EXPECT_EQ(compile("1 \\101\\7x\\1011\\18\\033\n"), "$set 1\n1 \"A\\007xA1\\0018\\033\"\n");
    EXPECT_EQ(compile("1 \\q\\'\\x41\\9\n"), "$set 1\n1 \"q'x419\"\n");
    EXPECT_EQ(compile("1 \\303\\251\n"), "$set 1\n1 \"\xC3\xA9\"\n");
}

TEST_F(ZkGencat, readsQuotedTexts)
{
    EXPECT_EQ(compile("$quote \"\n1 \" blanks \"\n2 \"\"\n3 \"a\\\"b\"  \n4 plain\n"),
              "$set 1\n1 \" blanks \"\n2 \"\"\n3 \"a\\\"b\"\n4 \"plain\"\n");
    EXPECT_EQ(compile("$quote '\n1 'a\\\n b '\n$quote\n2 'c'\n"), "$set 1\n1 \"a b \"\n2 \"'c'\"\n");
    EXPECT_EQ(compile("1 \"a\"\n"), "$set 1\n1 \"\\\"a\\\"\"\n");
    EXPECT_EQ(compile("$quote \"\n1 say \"a\"\n"), "$set 1\n1 \"say \\\"a\\\"\"\n");
}

TEST_F(ZkGencat, readsLinesThatEndInCrLf)
{
    EXPECT_EQ(compile("$set 2\r\n1 a\\\r\nb\r\n\r\n2 c\r\n"), "$set 2\n1 \"ab\"\n2 \"c\"\n");
}

TEST_F(ZkGencat, tellsEveryMistakeWithItsLine)
{
    struct Row {
        char const* source;
        char const* mistakes;
    };
    Row const rows[] = {
        {"text\n", "a.msg:1: a line begins with a number or with \"$\"\n"},
        {" 1 text\n", "a.msg:1: a line begins with a number or with \"$\"\n"},
        {"$sett 1\n", "a.msg:1: there is no directive \"$sett\"\n"},
        {"$set\n", "a.msg:1: the number of a set is one from 1 to 2147483647\n"},
        {"$set 0\n", "a.msg:1: the number of a set is one from 1 to 2147483647\n"},
        {"$set 1x\n", "a.msg:1: the number of a set is one from 1 to 2147483647\n"},
        {"$set 2147483648\n", "a.msg:1: the number of a set is one from 1 to 2147483647\n"},
        {"$delset x\n", "a.msg:1: the number of a set is one from 1 to 2147483647\n"},
        {"0 text\n", "a.msg:1: the number of a message is one from 1 to 2147483647\n"},
        {"1text\n", "a.msg:1: the number of a message is one from 1 to 2147483647\n"},
        {"99999999999999999999 a\n", "a.msg:1: the number of a message is one from 1 to 2147483647\n"},
        {"1 a\n\n1 b\n", "a.msg:3: message 1 of set 1 stands in line 1 already\n"},
        {"1 a\n1\n", "a.msg:2: message 1 of set 1 stands in line 1 already\n"},
        {"1 a\\000b\n", "a.msg:1: a text cannot hold a NUL\n"},
        {"1 \\400\n", "a.msg:1: \"\\400\" is more than a byte\n"},
        {"1 \xFF\n", "a.msg:1: the text is not in UTF-8 (--from tells another code set)\n"},
        {"1 \xE2\x82\n", "a.msg:1: the text is not in UTF-8 (--from tells another code set)\n"},
        {"$quote \"\n1 \"a\n2 b\n", "a.msg:2: the closing quote is missing\n"},
        {"$quote \"\n1 \"a\" b\n", "a.msg:2: behind the closing quote stands more\n"},
        {"1 a\\\nb\nc\n", "a.msg:3: a line begins with a number or with \"$\"\n"},
        {"x\n1 \\\n\\400\ny\n",
         "a.msg:1: a line begins with a number or with \"$\"\n"
         "a.msg:2: \"\\400\" is more than a byte\n"
         "a.msg:4: a line begins with a number or with \"$\"\n"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(compile(row.source).substr(0, std::string(row.mistakes).size()), row.mistakes)
            << row.source;
}

TEST_F(ZkGencat, readsTheSourceFromItsInput)
{
    EXPECT_EQ(run({"a.cat", "-"}, "7 text\n").code, 0);
    EXPECT_EQ(listed("a.cat"), "$set 1\n7 \"text\"\n");
    EXPECT_EQ(run({"a.cat", "-"}, "bad\n").err, "-:1: a line begins with a number or with \"$\"\n");
}

TEST_F(ZkGencat, readsSourcesInOtherCodeSets)
{
    EXPECT_EQ(compile("1 \xE9\n", {"--new", "--from", "ISO-8859-1"}), "$set 1\n1 \"\xC3\xA9\"\n");
    EXPECT_EQ(compile("1 \x82\xA0\n", {"--new", "--from", "SHIFT_JIS"}), "$set 1\n1 \"\xE3\x81\x82\"\n");
    EXPECT_EQ(compile("1 \xC3\xA9\n", {"--new", "--from", "UTF-8"}), "$set 1\n1 \"\xC3\xA9\"\n");
    EXPECT_EQ(compile("1 \x82\x20\n", {"--new", "--from", "SHIFT_JIS"}),
              "zkgencat: 'a.msg' is not in the code set 'SHIFT_JIS'\n");
    EXPECT_EQ(compile("1 a\n", {"--new", "--from", "no such set"}),
              "zkgencat: there is no code set 'no such set'\n");
}

// -- Catalogs --------------------------------------------------------------------------

TEST_F(ZkGencat, writesTheFormatThatReadersTake)
{
    compile("7 text\n8 text two\n$set 4\n1 x\n");

    CatalogBytes bytes;
    bytes.set(1).message(7, "text").message(8, "text two");
    bytes.set(4).message(1, "x");
    EXPECT_EQ(folder.read("a.cat"), bytes.content());

    CCgCatalog* const catalog = ccg_openCatalog(folder.path("a.cat").c_str(), 0, nullptr);
    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 8, "", ccg_openCodeset("UTF8")), "text two");
    ccg_closeCatalog(catalog);
    ccg_purgeCatalogs();
}

TEST_F(ZkGencat, mergesIntoACatalogThatIsThere)
{
    compile("1 one\n2 two\n3 three\n$set 2\n1 x\n$set 3\n1 y\n");

    EXPECT_EQ(compile("1\n2 new\n4 four\n$delset 2\n$set 3\n1\n", {}),
              "$set 1\n2 \"new\"\n3 \"three\"\n4 \"four\"\n");
}

TEST_F(ZkGencat, mergesSourcesInTheirOrder)
{
    folder.write("a.msg", "1 a\n2 b\n");
    folder.write("b.msg", "2 c\n3 d\n");

    EXPECT_EQ(run({"a.cat", "a.msg", "b.msg"}).code, 0);

    EXPECT_EQ(listed("a.cat"), "$set 1\n1 \"a\"\n2 \"c\"\n3 \"d\"\n");
}

TEST_F(ZkGencat, forgetsWhatWasThereIfToldSo)
{
    compile("1 one\n");

    EXPECT_EQ(compile("2 two\n", {"--new"}), "$set 1\n2 \"two\"\n");
}

TEST_F(ZkGencat, mayLeaveNothing)
{
    EXPECT_EQ(compile("1 one\n"), "$set 1\n1 \"one\"\n");
    EXPECT_EQ(compile("1\n", {}), "");
    EXPECT_EQ(compile("1 again\n", {}), "$set 1\n1 \"again\"\n");
}

TEST_F(ZkGencat, takesWhatItListsForTheSameMessages)
{
    compile("$set 7\n1  \\n\\t\\\\\"\\001\\177\\\nx\n5 \xC3\xA9 %1$s\n$set 9\n2 \n");
    std::string const before = folder.read("a.cat");
    folder.write("b.msg", run({"--dump", "a.cat"}).out);

    EXPECT_EQ(run({"b.cat", "b.msg"}).code, 0);

    EXPECT_EQ(folder.read("b.cat"), before);
}

TEST_F(ZkGencat, leavesTheCatalogAloneWhenASourceHasMistakes)
{
    compile("1 one\n");
    std::string const before = folder.read("a.cat");

    EXPECT_THAT(compile("1 new\nbad\n", {}), HasSubstr("a.msg:2:"));

    EXPECT_EQ(folder.read("a.cat"), before);
}

TEST_F(ZkGencat, leavesNothingBesideTheCatalog)
{
    compile("1 one\n");
    folder.makeFolder("taken.cat");
    folder.write("taken.cat/file", "");

    EXPECT_EQ(run({"--new", "taken.cat", "a.msg"}).code, 3);

    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    EXPECT_THAT(names, testing::UnorderedElementsAre("a.cat", "a.msg", "taken.cat"));
}

TEST_F(ZkGencat, tellsWhichFileItCannotRead)
{
    compile("1 one\n");
    folder.makeFolder("sub");

    EXPECT_THAT(run({"b.cat", "missing.msg"}).err, StartsWith("zkgencat: cannot read 'missing.msg': "));
    EXPECT_EQ(run({"b.cat", "sub"}).err, "zkgencat: cannot read 'sub': it is a folder\n");
    EXPECT_THAT(run({"--dump", "missing.cat"}).err, StartsWith("zkgencat: cannot read 'missing.cat': "));
    EXPECT_EQ(run({"--dump", "sub"}).err, "zkgencat: 'sub' is no catalog\n");
    EXPECT_THAT(run({"missing/b.cat", "a.msg"}).err, StartsWith("zkgencat: cannot write "));
    EXPECT_THAT(run({"--dump", std::string(261, 'x')}).err, HasSubstr("has more than 260 bytes"));
    for (auto const& arguments : {std::vector<std::string>{"b.cat", "missing.msg"}, {"--dump", "sub"}})
        EXPECT_EQ(run(arguments).code, 3);
}

TEST_F(ZkGencat, refusesACatalogOfWhichItWouldLoseMessages)
{
    CatalogBytes bytes;
    bytes.set(1).message(7, "text");
    folder.write("a.cat", CatalogBytes::with(bytes.content(), CatalogBytes::firstTextAt, 99));

    EXPECT_EQ(compile("1 new\n", {}),
              "zkgencat: 'a.cat' is damaged: not all messages of set 1 can be read\n");
    EXPECT_EQ(compile("1 new\n", {"--new"}), "$set 1\n1 \"new\"\n");
}

TEST_F(ZkGencat, leavesOutWhatACatalogCallsInvalid)
{
    CatalogBytes bytes;
    bytes.set(1).message(7, "text").message(8, "invalid", true);
    bytes.set(2).message(1, "x").invalid = true;
    folder.write("a.cat", bytes.content());

    EXPECT_EQ(listed("a.cat"), "$set 1\n7 \"text\"\n");
}

// -- Comparison ------------------------------------------------------------------------

class ZkGencatCheck : public ZkGencat {
protected:
    // What is wrong with a translation of a text.
    std::string check(std::string const& original, std::string const& translation) const
    {
        folder.write("en.msg", "7 " + original + "\n");
        folder.write("ja.msg", "7 " + translation + "\n");
        EXPECT_EQ(run({"--new", "en.cat", "en.msg"}).code, 0);
        EXPECT_EQ(run({"--new", "ja.cat", "ja.msg"}).code, 0);
        auto const result = run({"--check", "en.cat", "ja.cat"});
        EXPECT_EQ(result.code, result.err.empty() ? 0 : 1);
        return result.err;
    }
};

TEST_F(ZkGencatCheck, acceptsTheSameValuesInAnyOrderAndForm)
{
    EXPECT_EQ(check("%s has %d units", "%2$d in %1$s"), "");
    EXPECT_EQ(check("%1$s %2$d %3$f", "%3$.2e %1$10s %2$05d %1$s"), "");
    EXPECT_EQ(check("%d 100%%", "%x"), "");
    EXPECT_EQ(check("%*d", "%2$*1$d"), "");
    EXPECT_EQ(check("no values", "keine"), "");
}

TEST_F(ZkGencatCheck, tellsValuesThatAreNotShown)
{
    EXPECT_EQ(check("%s has %d units", "%s"), "ja.cat: set 1, message 7: value 2 is not shown\n");
}

TEST_F(ZkGencatCheck, tellsValuesThatAreNotThere)
{
    EXPECT_EQ(check("%s", "%s %s"), "ja.cat: set 1, message 7: there is no value 2\n");
    EXPECT_EQ(check("%s", "%2$s"),
              "ja.cat: set 1, message 7: value 1 is not shown\n"
              "ja.cat: set 1, message 7: there is no value 2\n");
}

TEST_F(ZkGencatCheck, tellsValuesOfAnotherKind)
{
    EXPECT_EQ(check("%s %d", "%d %s"),
              "ja.cat: set 1, message 7: value 1 is an integer instead of a text\n"
              "ja.cat: set 1, message 7: value 2 is a text instead of an integer\n");
    EXPECT_EQ(check("%f", "%c"), "ja.cat: set 1, message 7: value 1 is a character instead of a number\n");
}

TEST_F(ZkGencatCheck, tellsDirectivesThatCannotBeRead)
{
    EXPECT_EQ(check("%s", "%y"),
              "ja.cat: set 1, message 7: the translation has a directive that cannot be read\n");
    EXPECT_EQ(check("50%", "50"),
              "ja.cat: set 1, message 7: the original has a directive that cannot be read\n");
    EXPECT_EQ(check("%1$d", "%1$d %1$s"),
              "ja.cat: set 1, message 7: the translation has a directive that cannot be read\n");
}

TEST_F(ZkGencatCheck, tellsMessagesWithoutCounterpart)
{
    folder.write("en.msg", "1 a\n2 b\n");
    folder.write("ja.msg", "1 c\n$set 2\n2 d\n");
    run({"en.cat", "en.msg"});
    run({"ja.cat", "ja.msg"});

    auto const result = run({"--check", "en.cat", "ja.cat", "en.cat"});

    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "ja.cat: set 2, message 2: has no counterpart\n");
}

}  // namespace
