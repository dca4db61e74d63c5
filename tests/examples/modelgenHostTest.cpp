// How the program starts and ends, and what it takes from the profile.
#include "examples/modelgen/host.h"
#include "examples/modelgen/run.h"
#include "examples/modelgen/settings.h"

#include "Foundtn/util/IToolMode.h"
#include "Foundtn/util/getEnv.h"
#include "Foundtn/util/profileOrigin.h"
#include "files/paths.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

using modelgen::Settings;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using zk::test::MemoryProfile;
using zk::test::ProgramResult;
using zk::test::ScopedEnvironment;

namespace {

// -- Start and end ---------------------------------------------------------------------

TEST_IN_FRESH_PROCESS(ModelgenHost, hasProfileAndModesBeforeASettingIsRead)
{
    TemporaryFolder const folder;
    folder.write("a b.ini", "[General]\nToldErrors=7\n");
    CString const file(folder.path("a b.ini"));
    EXPECT_EQ(IAppProfileInterface::Instance(), nullptr);
    EXPECT_FALSE(IToolMode::isLangCpp());
    {
        modelgen::Host const host(file);

        EXPECT_EQ(omGetEnvVarInt("General", "ToldErrors", 20), 7);
        EXPECT_EQ(zk::profileFile(), file);
        EXPECT_TRUE(IToolMode::isLangCpp());
        EXPECT_FALSE(IToolMode::isInModelServerMode());
        ASSERT_NE(AfxGetApp(), nullptr);
        EXPECT_STREQ(AfxGetApp()->m_pszAppName, "modelgen");
        EXPECT_EQ(CString(AfxGetApp()->m_pszProfileName), file);
    }
    EXPECT_EQ(IAppProfileInterface::Instance(), nullptr);
    EXPECT_EQ(AfxGetApp(), nullptr);
    EXPECT_EQ(omGetEnvVarInt("General", "ToldErrors", 20), 20);
}

TEST_IN_FRESH_PROCESS(ModelgenHost, findsTheProfileInTheCurrentFolder)
{
    TemporaryFolder const folder;
    folder.write("modelgen.ini", "");
    folder.write("IniFileNameLog.txt", "");
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    {
        modelgen::Host const host("");

        EXPECT_EQ(zk::profileFile(), CString(folder.path("modelgen.ini")));
    }
    std::filesystem::current_path(before);
    EXPECT_THAT(folder.read("IniFileNameLog.txt"), EndsWith(": " + folder.path("modelgen.ini") + "\n"));
}

TEST_IN_FRESH_PROCESS(ModelgenHost, runsWithoutAnyProfile)
{
    modelgen::Host const host("");
    Settings const settings = modelgen::readSettings();

    EXPECT_EQ(settings.folder, ".");
    EXPECT_EQ(settings.toldErrors, 20);
    EXPECT_FALSE(settings.warningsAreErrors);
    EXPECT_EQ(settings.mistake, "");
}

// -- Settings --------------------------------------------------------------------------

TEST(ModelgenSettings, comeFromTheProfile)
{
    MemoryProfile profile;
    profile.set("General", "ToldErrors", "3");
    profile.set("CodeGen", "OutputFolder", "made here");
    profile.set("CodeGen", "WarningsAreErrors", "TRUE");

    Settings const settings = modelgen::readSettings();

    EXPECT_EQ(settings.toldErrors, 3);
    EXPECT_EQ(settings.folder, "made here");
    EXPECT_TRUE(settings.warningsAreErrors);
}

TEST(ModelgenSettings, comeFromTheEnvironmentOtherwise)
{
    MemoryProfile const profile;
    ScopedEnvironment const errors("ToldErrors", "4");
    ScopedEnvironment const folder("OutputFolder", "made there");

    EXPECT_EQ(modelgen::readSettings().toldErrors, 4);
    EXPECT_EQ(modelgen::readSettings().folder, "made there");
}

TEST(ModelgenSettings, nameAFolderByAnotherSetting)
{
    MemoryProfile profile;
    profile.set("General", "ZK_TEST_MODELGEN_ROOT", "root");
    profile.set("CodeGen", "OutputFolder", "$ZK_TEST_MODELGEN_ROOT/out");

    EXPECT_EQ(modelgen::readSettings().folder, CString("root") + omPathSeparator() + "out");
    EXPECT_EQ(modelgen::readSettings().mistake, "");
}

TEST(ModelgenSettings, sayWhichSettingTheFolderLacks)
{
    MemoryProfile profile;
    for (char const* const path : {"$ZK_TEST_NONE/out", "out/$ZK_TEST_NONE", "out\\$ZK_TEST_NONE"}) {
        profile.set("CodeGen", "OutputFolder", path);
        EXPECT_EQ(modelgen::readSettings().mistake,
                  CString("the setting OutputFolder is ") + path + ", and ZK_TEST_NONE is not set");
    }
    profile.set("CodeGen", "OutputFolder", "a$b/c");
    EXPECT_EQ(modelgen::readSettings().mistake, "");
    EXPECT_EQ(modelgen::readSettings().folder, "a$b/c");
}

// -- What they do ----------------------------------------------------------------------

struct Result {
    int code;
    std::string out;
    std::string err;
};

Result run(std::vector<char const*> const& arguments)
{
    modelgen::Options options;
    modelgen::readOptions(int(arguments.size()), arguments.data(), options);
    std::ostringstream out, err;
    int const code = modelgen::run(options, out, err);
    return {code, out.str(), err.str()};
}

class ModelgenWithProfile : public testing::Test {
protected:
    ModelgenWithProfile()
    {
        folder.write("a.puml", "@startuml\nclass A\nclass A {\n  x : Unknown\n}\n@enduml\n");
    }

    TemporaryFolder const folder;
    std::string const diagram = folder.path("a.puml");
    MemoryProfile profile;
};

TEST_F(ModelgenWithProfile, writesToTheFolderThatIsSet)
{
    profile.set("CodeGen", "OutputFolder", folder.path("set").c_str());

    EXPECT_EQ(run({diagram.c_str()}).code, 0);
    EXPECT_TRUE(folder.exists("set/A.h"));
}

TEST_F(ModelgenWithProfile, writesToTheFolderOfTheCommandLineFirst)
{
    profile.set("CodeGen", "OutputFolder", folder.path("set").c_str());

    EXPECT_EQ(run({"--out", folder.path("named").c_str(), diagram.c_str()}).code, 0);
    EXPECT_FALSE(folder.exists("set"));
    EXPECT_TRUE(folder.exists("named/A.h"));
}

TEST_F(ModelgenWithProfile, writesNothingIfASettingIsWrong)
{
    profile.set("CodeGen", "OutputFolder", "$ZK_TEST_NONE/x");

    Result const result = run({diagram.c_str()});

    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err,
              "modelgen: the setting OutputFolder is $ZK_TEST_NONE/x, and ZK_TEST_NONE is not set\n");
    EXPECT_EQ(result.out, "");
}

TEST_F(ModelgenWithProfile, writesNothingIfWarningsAreErrors)
{
    profile.set("CodeGen", "WarningsAreErrors", "TRUE");

    Result const result = run({"--out", folder.path("out").c_str(), diagram.c_str()});

    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, HasSubstr(": warning: "));
    EXPECT_THAT(result.err,
                EndsWith("\nmodelgen: nothing is written: by the setting WarningsAreErrors a "
                         "warning is an error\n"));
    EXPECT_FALSE(folder.exists("out"));
}

TEST_F(ModelgenWithProfile, tellsAsManyErrorsAsAreSet)
{
    folder.write("bad.puml", "@startuml\nclass\nclass\nclass\nclass\n@enduml\n");
    profile.set("General", "ToldErrors", "1");

    std::string const told = run({folder.path("bad.puml").c_str()}).err;

    EXPECT_THAT(told, StartsWith(folder.path("bad.puml") + ":2: "));
    EXPECT_THAT(told, EndsWith("\nand 3 more errors\n"));
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 2);
}

// -- The program -----------------------------------------------------------------------

std::string program()
{
    std::filesystem::path path(MODELGEN_PROGRAM);
    if (char const* const build = std::getenv("ZK_BINARY_DIR"))
        path = std::filesystem::path(build) / "bin" / path.filename();
    return path.make_preferred().string();
}

TEST_F(ModelgenWithProfile, readsTheProfileThatTheCommandLineNames)
{
    folder.write("my own.ini", "[CodeGen]\nOutputFolder=" + folder.path("of the file") + "\n");

    ProgramResult const result =
        zk::test::runProgram(program(), {"-iniFile=" + folder.path("my own.ini"), diagram});

    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_TRUE(folder.exists("of the file/A.h"));
}

TEST_F(ModelgenWithProfile, endsWithOneIfThatProfileIsMissing)
{
    ProgramResult const result =
        zk::test::runProgram(program(), {"-iniFile=" + folder.path("none.ini"), diagram});

    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.err, StartsWith("modelgen: cannot read " + folder.path("none.ini") + ": "));
}

TEST_F(ModelgenWithProfile, endsWithTwoIfASettingIsWrong)
{
    folder.write("p.ini", "[CodeGen]\nOutputFolder=$ZK_TEST_NONE\n");

    ProgramResult const result =
        zk::test::runProgram(program(), {diagram, "-iniFile=" + folder.path("p.ini")});

    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, HasSubstr("ZK_TEST_NONE is not set"));
}

}  // namespace
