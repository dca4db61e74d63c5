#include "tests/tools/zkprofileFixture.h"

#include "platform/os/os.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <set>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using zk::test::Output;
using zk::test::ProgramResult;
using zk::test::ScopedEnvironment;

namespace {

// -- The program -----------------------------------------------------------------------

TEST_F(ZkProfile, doesAllThatItCanAsAProgram)
{
    folder.write("Zentrika.ini", "; top\n[S]\nk=v\n");

    EXPECT_EQ(start({"set", "S", "new", "a \"b\" \\"}).code, 0);
    EXPECT_EQ(start({"get", "S", "new"}).out, "a \"b\" \\\n");
    EXPECT_EQ(start({"delete", "S", "k"}).code, 0);
    EXPECT_EQ(start({"list", "S"}).out, "new=a \"b\" \\\n");
    EXPECT_EQ(start({"origin", "S", "new"}).out, "profile " + folder.path("Zentrika.ini") + ":3\n");
    EXPECT_THAT(start({"--help"}).out, HasSubstr("Usage: zkprofile [OPTIONS] COMMAND"));
}

TEST_F(ZkProfile, endsWithAnExitCodeOfItsOwnForEachKindOfFailure)
{
    folder.write("Zentrika.ini", "[S]\nk=v\n");

    EXPECT_EQ(start({"get", "S", "ZK_TEST_NONE"}).code, 1);
    EXPECT_EQ(start({"nonsense"}).err, "zkprofile: unknown command 'nonsense'\nTry 'zkprofile --help'.\n");
    EXPECT_EQ(start({"nonsense"}).code, 2);
    EXPECT_EQ(start({"set", "S", "k", "a\nb"}).err, "zkprofile: a value cannot hold a line break\n");
    EXPECT_EQ(start({"set", "S", "k", "a\nb"}).code, 2);
    EXPECT_EQ(start({"--file", "none.ini", "list"}).code, 3);
    EXPECT_EQ(start({"--file", "none.ini", "list"}).err,
              "zkprofile: there is no file '" + folder.path("none.ini") + "'\n");
}

TEST_F(ZkProfile, tellsThatItsOutputCannotBeWritten)
{
    folder.write("Zentrika.ini", "[S]\nk=v\n");
    for (Output const output : {Output::closed, Output::unwritable})
        for (std::vector<std::string> const& arguments :
             std::vector<std::vector<std::string>>{{"get", "S", "k"}, {"--help"}}) {
            ProgramResult const result = start(arguments, output);
            EXPECT_EQ(result.code, 3) << testing::PrintToString(arguments);
            EXPECT_EQ(result.err, "zkprofile: cannot write the output\n");
        }
}

TEST_F(ZkProfile, needsNoOutputWhereItPrintsNothing)
{
    EXPECT_EQ(start({"--file", "p.ini", "set", "S", "k", "v"}, Output::closed).code, 0);

    EXPECT_EQ(onFile({"get", "S", "k"}).out, "v\n");
}

// -- The command line ------------------------------------------------------------------

TEST_F(ZkProfile, printsItsUsageAndItsVersion)
{
    ProgramResult const help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_THAT(help.out, HasSubstr("Usage: zkprofile [OPTIONS] COMMAND"));
    EXPECT_EQ(help.err, "");
    for (char const* const command : {"get", "set", "delete", "list", "origin"})
        EXPECT_THAT(run({command, "--help"}).out, HasSubstr(std::string("Usage: zkprofile ") + command));

    EXPECT_THAT(run({"--version"}).out, StartsWith("zkprofile 8.4"));
}

TEST_F(ZkProfile, hasAManPageThatTellsOfAllThatItsHelpDoes)
{
    char const* const sources = std::getenv("ZK_SOURCE_DIR");
    std::ifstream file(std::filesystem::path(sources ? sources : ZKPROFILE_SOURCES) / "tools" /
                       "zkprofile.1");
    std::string page(std::istreambuf_iterator<char>(file), {});
    page.erase(std::remove(page.begin(), page.end(), '\\'), page.end());
    std::set<std::string> words;
    for (std::vector<std::string> const& arguments : std::vector<std::vector<std::string>>{
             {"--help"}, {"get", "--help"}, {"set", "--help"}, {"list", "--help"}, {"origin", "--help"}}) {
        // The first word of a line that is indented by two is an option, a command or a name of a word.
        std::istringstream help(run(arguments).out);
        for (std::string line; std::getline(help, line);)
            if (line.starts_with("  ") && line.size() > 2 && line[2] != ' ')
                words.insert(line.substr(2, line.find(' ', 2) - 2));
    }

    EXPECT_EQ(words.size(), 12u) << testing::PrintToString(words);
    for (std::string const& word : words)
        EXPECT_THAT(page, HasSubstr(word));
}

TEST_F(ZkProfile, refusesWrongArguments)
{
    folder.write("Zentrika.ini", "[S]\nk=v\n");
    std::vector<std::string> const rows[] = {
        {},
        {"nonsense"},
        {"--nonsense", "list"},
        {"get"},
        {"get", "S"},
        {"get", "S", "k", "x"},
        {"get", "S", "k", "get"},
        {"get", "", "k"},
        {"get", "S", ""},
        {"set", "S", "k"},
        {"set", "S", "k", "v", "w"},
        {"set", "S", " \t", "v"},
        {"delete"},
        {"delete", "S", ""},
        {"delete", "", "k"},
        {"delete", "S", "k", "x"},
        {"list", "S", "k"},
        {"list", ""},
        {"origin", "S"},
        {"origin", "S", "k", "x"},
        {"--file"},
        {"--file", "", "list"},
        {"--file=", "list"},
        {"set", "--profile-only", "S", "k", "v"},
        {"/help"},
    };
    for (std::vector<std::string> const& arguments : rows) {
        ProgramResult const result = run(arguments);

        EXPECT_EQ(result.code, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(result.err, StartsWith("zkprofile: "));
        EXPECT_THAT(result.err, EndsWith("\nTry 'zkprofile --help'.\n"));
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(folder.read("Zentrika.ini"), "[S]\nk=v\n");
}

TEST_F(ZkProfile, namesTheWordThatItDoesNotKnow)
{
    EXPECT_THAT(run({"list", "a", "b"}).err, HasSubstr("b"));
}

TEST_F(ZkProfile, takesTheFileBehindTheCommandToo)
{
    folder.write("p.ini", "[S]\nk=v\n");

    EXPECT_EQ(run({"get", "--file", "p.ini", "S", "k"}).out, "v\n");
    EXPECT_EQ(run({"get", "--file=p.ini", "S", "k"}).out, "v\n");
}

TEST_F(ZkProfile, takesTheNamesOfCommandsAsWordsBehindOne)
{
    EXPECT_EQ(onFile({"set", "get", "list", "set"}).code, 0);

    EXPECT_EQ(onFile({"get", "get", "list"}).out, "set\n");
    EXPECT_EQ(onFile({"list", "get"}).out, "list=set\n");
}

TEST_F(ZkProfile, takesASectionThatBeginsWithAHyphenBehindTwo)
{
    EXPECT_EQ(onFile({"set", "--", "-S", "-k", "--"}).code, 0);

    EXPECT_EQ(onFile({"get", "--", "-S", "-k"}).out, "--\n");
}

// -- get -------------------------------------------------------------------------------

TEST_F(ZkProfile, getsAValueFromTheProfileFirst)
{
    folder.write("p.ini", "; top\n[S]\nk = \" v w \" \n");
    ScopedEnvironment const variable("k", "of the environment");

    ProgramResult const result = onFile({"get", "s", "K"});

    EXPECT_EQ(result.out, "v w\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.code, 0);
}

TEST_F(ZkProfile, getsAValueFromTheEnvironmentSecond)
{
    folder.write("p.ini", "[S]\nZK_TEST_SETTING=\n");
    ScopedEnvironment const variable("ZK_TEST_SETTING", "here");

    EXPECT_EQ(onFile({"get", "S", "ZK_TEST_SETTING"}).out, "here\n");

    ProgramResult const result = onFile({"get", "--profile-only", "S", "ZK_TEST_SETTING"});
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.code, 1);
}

TEST_F(ZkProfile, saysNothingWhereNothingIsSet)
{
    folder.write("p.ini", "[S]\nempty=\nnoValue\n");

    for (char const* const key : {"ZK_TEST_NONE", "empty", "noValue"}) {
        ProgramResult const result = onFile({"get", "--profile-only", "S", key});
        EXPECT_EQ(result.code, 1) << key;
        EXPECT_EQ(result.out + result.err, "");
    }
    EXPECT_EQ(onFile({"get", "X", "ZK_TEST_NONE"}).code, 1);
}

// -- set -------------------------------------------------------------------------------

TEST_F(ZkProfile, setsAValueAndLeavesTheRestAlone)
{
    folder.write("p.ini", "; top\r\n\r\n[S]\r\nDepth = 7\r\nother=1\r\n");

    ProgramResult const result = onFile({"set", "S", "depth", "27"});

    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(onFile({"get", "S", "Depth"}).out, "27\n");
    EXPECT_EQ(onFile({"get", "S", "other"}).out, "1\n");
    EXPECT_THAT(folder.read("p.ini"), StartsWith("; top\r\n"));
}

TEST_F(ZkProfile, makesTheFileThatIsNamed)
{
    EXPECT_EQ(onFile({"set", "S", "k", "v"}).code, 0);

    EXPECT_EQ(onFile({"get", "S", "k"}).out, "v\n");
    EXPECT_EQ(onFile({"list"}).out, "S\n");
}

TEST_F(ZkProfile, getsBackEachValueThatItSets)
{
    for (char const* const value :
         {"a b",   "a  \t b",   "-x",           "--",         "-1",       "--help",       "++",     "{}",
          "[a,b]", "%%",        "%TEMP%",       "$HOME",      "\"q\"",    "'q'",          "\"\"",   "\"",
          "''",    "a\"b",      "a'b",          "\"a' b\" c", "a=b",      "; no comment", "# none", "[S]",
          "/x",    "C:\\a b\\", "\\\\srv\\x\\", "\\\"",       "a\\\\\"b", "set",          "=",      "a;b",
          "*?",    "~",         "&|<>^!"}) {
        ProgramResult const result = onFile({"set", "S", "k", value});
        EXPECT_EQ(result.code, 0) << value << ": " << result.err;
        EXPECT_EQ(onFile({"get", "--profile-only", "S", "k"}).out, std::string(value) + "\n");
    }
}

TEST_F(ZkProfile, setsAnEmptyValueWhichCountsAsAbsent)
{
    folder.write("p.ini", "[S]\nk=v\n");

    EXPECT_EQ(onFile({"set", "S", "k", ""}).code, 0);

    EXPECT_EQ(onFile({"get", "--profile-only", "S", "k"}).code, 1);
    EXPECT_EQ(onFile({"list", "S"}).out, "k=\n");
}

TEST_F(ZkProfile, refusesWhatReadersWouldNotSeeAsItIs)
{
    folder.write("p.ini", "[S]\nk=v\n");
    struct {
        char const* section;
        char const* key;
        char const* value;
        char const* reason;
    } const rows[] = {
        {"S", "k", "a\nb", "a value cannot hold a line break"},
        {"S", "k", "a\r[T]\rx=1", "a value cannot hold a line break"},
        {"S", "k", "\n", "a value cannot hold a line break"},
        {"S", "k", " v", "a value cannot begin or end with a blank: its readers would not see that"},
        {"S", "k", "v\t", "a value cannot begin or end with a blank: its readers would not see that"},
        {"S", "k", "\" v\" ", "a value cannot begin or end with a blank: its readers would not see that"},
        {"S", "k", " ", "a value cannot begin or end with a blank: its readers would not see that"},
        {"S\nT", "k", "v", "a section's name cannot hold a line break"},
        {"S", "k\nj", "v", "a setting's name cannot hold a line break"},
        {"S", "a=b", "v", "a setting's name cannot hold '='"},
        {"S", ";k", "v", "a setting's name cannot begin with ';' or '['"},
        {"S", "[k]", "v", "a setting's name cannot begin with ';' or '['"},
    };
    for (auto const& row : rows) {
        ProgramResult const result = onFile({"set", row.section, row.key, row.value});
        EXPECT_EQ(result.code, 2) << testing::PrintToString(row.value);
        EXPECT_EQ(result.err, std::string("zkprofile: ") + row.reason + "\n");
    }
    EXPECT_EQ(folder.read("p.ini"), "[S]\nk=v\n");
}

// -- delete ----------------------------------------------------------------------------

TEST_F(ZkProfile, deletesASettingWithAllItsLines)
{
    folder.write("p.ini", "[S]\nk=1\nj=2\nK=3\n");

    EXPECT_EQ(onFile({"delete", "s", "k"}).code, 0);

    EXPECT_EQ(onFile({"list", "S"}).out, "j=2\n");
    EXPECT_EQ(onFile({"delete", "S", "k"}).code, 1);
    EXPECT_EQ(onFile({"delete", "X", "k"}).code, 1);
}

TEST_F(ZkProfile, deletesASectionWhereverItStands)
{
    folder.write("p.ini", "[S]\nk=1\n[T]\nj=2\n[s]\nk=3\n");

    EXPECT_EQ(onFile({"delete", "S"}).code, 0);

    EXPECT_EQ(onFile({"list"}).out, "T\n");
    EXPECT_EQ(onFile({"get", "T", "j"}).out, "2\n");
    EXPECT_EQ(onFile({"delete", "S"}).code, 1);
}

// -- list ------------------------------------------------------------------------------

TEST_F(ZkProfile, listsSectionsAndSettingsOnceEach)
{
    folder.write("p.ini", "[S]\na=1\n; c\nb = \"x y\" \nA=2\nnoValue\n\n[T]\n[s]\nz=1\n");

    EXPECT_EQ(onFile({"list"}).out, "S\nT\n");
    EXPECT_EQ(onFile({"list", "S"}).out, "a=1\nb=x y\n");
    EXPECT_EQ(onFile({"list", "T"}).out, "");
    EXPECT_EQ(onFile({"list", "T"}).code, 0);
    EXPECT_EQ(onFile({"list", "X"}).code, 1);
}

TEST_F(ZkProfile, listsWhatABigFileHolds)
{
    std::string content;
    std::string sections;
    for (int i = 0; i < 500; ++i) {
        content += "[section" + std::to_string(i) + "]\nk=v\n";
        sections += "section" + std::to_string(i) + "\n";
    }
    std::string settings;
    for (int i = 0; i < 500; ++i)
        settings += "a setting of its own " + std::to_string(i) + "=" + std::string(1000, 'x') + "\n";
    folder.write("p.ini", content + "[last]\n" + settings);

    EXPECT_EQ(onFile({"list"}).out, sections + "last\n");
    EXPECT_TRUE(onFile({"list", "last"}).out == settings);
    EXPECT_EQ(onFile({"origin", "last", "a setting of its own 499"}).out,
              "profile " + folder.path("p.ini") + ":1501\n");
}

// -- origin ----------------------------------------------------------------------------

TEST_F(ZkProfile, tellsWhereAValueComesFrom)
{
    folder.write("p.ini", "; top\n\n[S]\nk=v\nZK_TEST_SETTING=\n");
    ScopedEnvironment const variable("ZK_TEST_SETTING", "here");

    EXPECT_EQ(onFile({"origin", "S", "k"}).out, "profile " + folder.path("p.ini") + ":4\n");
    EXPECT_EQ(onFile({"origin", "S", "ZK_TEST_SETTING"}).out, "environment ZK_TEST_SETTING\n");
    ProgramResult const absent = onFile({"origin", "S", "ZK_TEST_NONE"});
    EXPECT_EQ(absent.out + absent.err, "");
    EXPECT_EQ(absent.code, 1);
}

TEST_F(ZkProfile, tellsWhichFileTheProfileIs)
{
    folder.write("Zentrika.ini", "");

    ProgramResult const result = run({"origin"});

    EXPECT_EQ(result.out, folder.path("Zentrika.ini") + "\n");
    EXPECT_EQ(result.code, 0);
}

TEST_F(ZkProfile, tellsTheFileOfAProfileThatIsNotThereYet)
{
    ProgramResult const result = start({"origin"});

    EXPECT_THAT(result.out, EndsWith("Zentrika.ini\n"));
    EXPECT_EQ(result.code, 1);
}

// -- Files -----------------------------------------------------------------------------

TEST_F(ZkProfile, findsTheProfileAsTheApplicationDoes)
{
    folder.makeFolder("Application Data");
    folder.makeFolder("Application Data/Zentrika");
    folder.write("Application Data/Zentrika/Zentrika.8.4.ini", "[S]\nk=of the user\n");
    ScopedEnvironment const user("USERPROFILE", folder.path().c_str());

    EXPECT_EQ(start({"get", "S", "k"}).out, "of the user\n");
    folder.write("Zentrika.ini", "[S]\nk=of the folder\n");
    EXPECT_EQ(start({"get", "S", "k"}).out, "of the folder\n");
    EXPECT_EQ(start({"set", "S", "k", "changed"}).code, 0);
    EXPECT_THAT(folder.read("Zentrika.ini"), HasSubstr("k=changed"));
}

TEST_F(ZkProfile, namesTheFileThatIsMissing)
{
    for (std::vector<std::string> const& arguments : std::vector<std::vector<std::string>>{
             {"get", "S", "k"}, {"delete", "S"}, {"list"}, {"origin", "S", "k"}, {"origin"}}) {
        ProgramResult const result = onFile(arguments);
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.err, "zkprofile: there is no file '" + folder.path("p.ini") + "'\n");
        EXPECT_EQ(result.out, "");
    }
    EXPECT_FALSE(folder.exists("p.ini"));
}

TEST_F(ZkProfile, namesTheFileThatItCannotRead)
{
    ProgramResult const result = run({"--file", folder.path(), "list"});

    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.err, StartsWith("zkprofile: cannot read '" + folder.path() + "': "));
}

TEST_F(ZkProfile, namesTheFileThatItCannotWrite)
{
    folder.write("p.ini", "[S]\nk=v\n");
    ASSERT_TRUE(SetFileAttributesA(folder.path("p.ini").c_str(), FILE_ATTRIBUTE_READONLY));

    for (std::vector<std::string> const& arguments : std::vector<std::vector<std::string>>{
             {"set", "S", "k", "w"}, {"delete", "S", "k"}, {"delete", "S"}}) {
        ProgramResult const result = onFile(arguments);
        EXPECT_EQ(result.code, 3);
        EXPECT_THAT(result.err, StartsWith("zkprofile: cannot write '" + folder.path("p.ini") + "': "));
    }
    EXPECT_EQ(onFile({"get", "S", "k"}).out, "v\n");
    SetFileAttributesA(folder.path("p.ini").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder.read("p.ini"), "[S]\nk=v\n");
}

TEST_F(ZkProfile, namesTheFolderThatIsMissing)
{
    std::string const file =
        folder.path("none") + folder.path().substr(folder.path().find_last_of("/\\"), 1) + "p.ini";

    ProgramResult const result = run({"--file", file, "set", "S", "k", "v"});

    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.err, StartsWith("zkprofile: cannot write '" + file + "': "));
}

TEST_F(ZkProfile, takesANameWithBlanksAndQuotes)
{
    for (char const* const name : {"a b.ini", "-iniFile=x.ini", "'q'.ini"}) {
        EXPECT_EQ(run({"--file", name, "set", "S", "k", "v"}).code, 0) << name;
        EXPECT_EQ(run({"--file", name, "get", "S", "k"}).out, "v\n");
        EXPECT_TRUE(folder.exists(name));
    }
}

}  // namespace
