#include "examples/modelgen/run.h"
#include "examples/modelgen/textFile.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Result {
    int code;
    std::string out;
    std::string err;
};

Result runInside(std::vector<std::string> const& arguments)
{
    std::vector<char const*> pointers;
    for (std::string const& argument : arguments)
        pointers.push_back(argument.c_str());
    modelgen::Options options;
    modelgen::readOptions(int(pointers.size()), pointers.data(), options);
    std::ostringstream out, err;
    int const code = modelgen::run(options, out, err);
    return {code, out.str(), err.str()};
}

// Starts the program itself.
zk::test::ProgramResult start(std::vector<std::string> const& arguments)
{
    std::filesystem::path program(MODELGEN_PROGRAM);
    if (char const* const build = std::getenv("ZK_BINARY_DIR"))
        program = std::filesystem::path(build) / "bin" / program.filename();
    return zk::test::runProgram(program.make_preferred().string(), arguments);
}

std::string missingFile()
{
    return modelgen::reasonFor(ERROR_FILE_NOT_FOUND).GetString();
}

std::string model(char const* name)
{
    std::filesystem::path folder(MODELGEN_MODELS);
    if (char const* const source = std::getenv("ZK_SOURCE_DIR"))
        folder = std::filesystem::path(source) / "examples" / "models";
    return (folder / name).make_preferred().string();
}

std::size_t countFiles(std::string const& folder)
{
    std::size_t count = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder))
        count += entry.is_regular_file() ? 1 : 0;
    return count;
}

}  // namespace

TEST(ModelgenOptions, printsItsUsageAndItsVersion)
{
    EXPECT_THAT(runInside({"--help"}).out, StartsWith("usage: modelgen [--out DIR]"));
    EXPECT_THAT(runInside({"--version"}).out, StartsWith("modelgen 8.4"));
    EXPECT_EQ(runInside({"--help"}).code, 0);
    EXPECT_EQ(runInside({"--version"}).err, "");
}

TEST(ModelgenOptions, refusesWrongArguments)
{
    for (std::vector<std::string> const& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"--nonsense", "a.puml"},
                                               {"--out"},
                                               {"a.puml", "--out"},
                                               {"--out=", "a.puml"},
                                               {"--out", "", "a.puml"},
                                               {"-x"},
                                               {"-iniFile=", "a.puml"}}) {
        Result const result = runInside(arguments);

        EXPECT_EQ(result.code, 2);
        EXPECT_THAT(result.err, StartsWith("modelgen: "));
        EXPECT_THAT(result.err, HasSubstr("\nusage: modelgen "));
        EXPECT_EQ(result.out, "");
    }
}

TEST(ModelgenOptions, takesWhatFollowsTwoDashesAsFiles)
{
    EXPECT_EQ(runInside({"--", "--help"}).err, "modelgen: cannot read --help: " + missingFile() + "\n");
}

TEST(ModelgenRun, generatesEverySampleWithoutAWarning)
{
    struct {
        char const* name;
        char const* classes;
    } const rows[] = {
        {"library.puml", "19 classes"}, {"railway.puml", "26 classes"}, {"warehouse.puml", "78 classes"}};
    for (auto const& row : rows) {
        TemporaryFolder folder;

        Result const result = runInside({"--out", folder.path("out"), model(row.name)});

        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, StartsWith(row.classes));
        EXPECT_GT(countFiles(folder.path("out")), 30u);
    }
}

TEST(ModelgenRun, changesNothingWhenRunTwice)
{
    TemporaryFolder folder;
    runInside({"--out", folder.path("out"), model("library.puml")});

    Result const second = runInside({"--out=" + folder.path("out"), model("library.puml")});

    EXPECT_THAT(second.out, HasSubstr(": 0 files written to "));
    EXPECT_THAT(second.out, HasSubstr(", 36 unchanged"));
}

TEST(ModelgenRun, addsUpSeveralFiles)
{
    TemporaryFolder folder;
    folder.write("a.puml", "@startuml\nclass A\nA --> B\n@enduml\n");
    folder.write("b.puml", "@startuml\nclass B\n@enduml\n");

    Result const result =
        runInside({folder.path("a.puml"), "--out", folder.path("out"), folder.path("b.puml")});

    EXPECT_EQ(result.err, "");
    EXPECT_EQ(countFiles(folder.path("out")), 4u);
}

TEST(ModelgenRun, touchesNothingIfOneOfTheFilesIsBad)
{
    TemporaryFolder folder;
    folder.write("good.puml", "@startuml\nclass A\n@enduml\n");
    folder.write("bad.puml", "@startuml\nclass\n@enduml\n");

    Result const result =
        runInside({"--out", folder.path("out"), folder.path("good.puml"), folder.path("bad.puml")});

    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, folder.path("bad.puml") + ":2: the declaration lacks a name\n");
    EXPECT_EQ(result.out, "");
    EXPECT_FALSE(folder.exists("out"));
}

TEST(ModelgenRun, touchesNothingIfAFileCannotBeRead)
{
    TemporaryFolder folder;
    folder.write("good.puml", "@startuml\nclass A\n@enduml\n");

    Result const result =
        runInside({"--out", folder.path("out"), folder.path("good.puml"), folder.path("missing")});

    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "modelgen: cannot read " + folder.path("missing") + ": " + missingFile() + "\n");
    EXPECT_FALSE(folder.exists("out"));
}

TEST(ModelgenRun, namesTheFileThatItCannotWrite)
{
    TemporaryFolder folder;
    folder.write("a.puml", "@startuml\nclass A\n@enduml\n");
    folder.write("out", "a file where the folder should be");

    Result const result = runInside({"--out", folder.path("out"), folder.path("a.puml")});

    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, StartsWith("modelgen: cannot write " + folder.path("out") + ": "));
    EXPECT_EQ(folder.read("out"), "a file where the folder should be");
}

TEST(ModelgenProgram, generatesFilesAndSaysHowMany)
{
    TemporaryFolder folder;

    zk::test::ProgramResult const result = start({"--out", folder.path("out"), model("railway.puml")});

    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("26 classes in 4 packages: 47 files written to "));
    EXPECT_EQ(countFiles(folder.path("out")), 47u);
}

TEST(ModelgenProgram, endsWithTwoAtBadInputAndNamesTheLine)
{
    TemporaryFolder folder;
    folder.write("bad.puml", "@startuml\nclass A {\n@enduml\n");

    zk::test::ProgramResult const result = start({"--out", folder.path("out"), folder.path("bad.puml")});

    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, HasSubstr("bad.puml:2: '{' is not closed"));
    EXPECT_FALSE(folder.exists("out"));
}

TEST(ModelgenProgram, endsWithOneIfAFileCannotBeRead)
{
    TemporaryFolder folder;

    EXPECT_EQ(start({"--out", folder.path("out"), folder.path("missing.puml")}).code, 1);
}

TEST(ModelgenProgram, endsWithTwoAtWrongArguments)
{
    TemporaryFolder folder;

    zk::test::ProgramResult const result = start({"--nonsense"});

    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, HasSubstr("usage: modelgen"));
}
