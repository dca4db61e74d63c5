#include "Foundtn/util/getEnv.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

#include "Foundtn/util/IAppProfileService.h"
#include "files/paths.h"
#include "platform/classlib/textTables.h"
#include "resources/hostTexts.h"

#include <gtest/gtest.h>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

constexpr char missing[] =
    "The setting 'ZkTest' is missing. Set 'ZkTest' in the profile or in the environment.";

CString currentFolder()
{
    char folder[4096];
    return CString(folder, static_cast<int>(GetCurrentDirectoryA(sizeof folder, folder)));
}

class GetEnv : public testing::Test {
protected:
    static void SetUpTestSuite() { zkRegisterHostTexts(); }

    ScopedEnvironment const environment{"ZkTest", nullptr};
    CString value = "old";
    CString error = "old";
};

// -- Text ---------------------------------------------------------------------------

TEST_F(GetEnv, takesTheProfileBeforeTheEnvironment)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "from the profile");
    ScopedEnvironment const set("ZkTest", "from the environment");

    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, &error), 1);

    EXPECT_STREQ(value, "from the profile");
    EXPECT_STREQ(error, "old");
}

TEST_F(GetEnv, asksTheProfileInTheSectionAndTheEnvironmentByNameAlone)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "from the profile");
    ScopedEnvironment const set("ZkTest", "from the environment");

    EXPECT_EQ(omGetEnvVar("Other", "ZkTest", value, &error), 1);

    EXPECT_STREQ(value, "from the environment");
}

TEST_F(GetEnv, fallsThroughAnEmptyValueOfTheProfile)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "");
    ScopedEnvironment const set("ZkTest", "from the environment");

    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, nullptr), 1);

    EXPECT_STREQ(value, "from the environment");
}

TEST_F(GetEnv, asksTheEnvironmentWithoutAProfile)
{
    ASSERT_EQ(IAppProfileInterface::Instance(), nullptr);
    ScopedEnvironment const set("ZkTest", "  from the environment\t");

    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, &error), 1);

    EXPECT_STREQ(value, "from the environment");
    EXPECT_STREQ(error, "old");
}

TEST_F(GetEnv, namesAMissingSettingTwiceInTheErrorText)
{
    MemoryProfile profile;

    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, &error), 0);

    EXPECT_STREQ(value, "");
    EXPECT_STREQ(error, missing);
    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, nullptr), 0);
}

TEST_F(GetEnv, countsAnEnvironmentValueOfBlanksAsAbsent)
{
    ScopedEnvironment const set("ZkTest", " \t ");

    EXPECT_EQ(omGetEnvVar("General", "ZkTest", value, &error), 0);

    EXPECT_STREQ(value, "");
    EXPECT_STREQ(error, missing);
}

TEST_F(GetEnv, acceptsTheNameAsItsOwnResult)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "value");
    CString name = "ZkTest";

    EXPECT_EQ(omGetEnvVar("General", name, name, nullptr), 1);

    EXPECT_STREQ(name, "value");
}

// -- Numbers ------------------------------------------------------------------------

TEST_F(GetEnv, givesNumbersOfTheProfileOrTheDefault)
{
    MemoryProfile profile;
    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 3);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 2.5);

    profile.set("General", "ZkTest", "7.25");
    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 7);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 7.25);
}

TEST_F(GetEnv, takesNumbersOfTheProfileBeforeTheEnvironment)
{
    MemoryProfile profile;
    ScopedEnvironment const set("ZkTest", "9.5");
    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 9);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 9.5);

    profile.set("General", "ZkTest", "0");
    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 0);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 0.0);

    profile.set("General", "ZkTest", "none");
    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 9) << "no number: the environment's";
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 9.5);
}

TEST_F(GetEnv, givesTheDefaultForAnEnvironmentValueThatIsNoNumber)
{
    ScopedEnvironment const set("ZkTest", "none");

    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 3);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 2.5);
}

TEST_F(GetEnv, seesNumbersOfTheEnvironmentWithoutAProfile)
{
    ScopedEnvironment const set("ZkTest", "9.5");

    EXPECT_EQ(omGetEnvVarInt("General", "ZkTest", 3), 9);
    EXPECT_EQ(omGetEnvVarDouble("General", "ZkTest", 2.5), 9.5);
}

// -- Booleans and colours ----------------------------------------------------------------

TEST_F(GetEnv, givesBooleansAndColoursOfTheProfileOrTheDefault)
{
    MemoryProfile profile;
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 5), 5);
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 5ul);

    profile.set("General", "ZkTest", "true");
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 0), 1);
    profile.set("General", "ZkTest", "FALSE");
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 5), 0);
    profile.set("General", "ZkTest", "1,2,3");
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 0x030201ul);
    profile.set("General", "ZkTest", "0,0,0");
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 0ul);
}

TEST_F(GetEnv, fallsThroughABooleanOrColourThatDoesNotConvert)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "maybe");
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 5), 5);
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 5ul);
    {
        ScopedEnvironment const set("ZkTest", "TRUE");
        EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 0), 1);
    }
    {
        ScopedEnvironment const set("ZkTest", "1,2,3");
        EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 0x030201ul);
    }
    {
        ScopedEnvironment const set("ZkTest", "1,2");
        EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 5), 5);
        EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 5ul);
    }
}

TEST_F(GetEnv, takesBooleansAndColoursOfTheProfileBeforeTheEnvironment)
{
    MemoryProfile profile;
    profile.set("General", "ZkTest", "FALSE");
    ScopedEnvironment const set("ZkTest", "TRUE");
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 5), 0);

    profile.set("General", "ZkTest", "1,1,1");
    ScopedEnvironment const color("ZkTest", "2,2,2");
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 0x010101ul);
}

TEST_F(GetEnv, givesTheDefaultForBooleansAndColoursWithoutAProfile)
{
    ScopedEnvironment const set("ZkTest", "TRUE");
    EXPECT_EQ(omGetEnvVarBool("General", "ZkTest", 0), 0);

    ScopedEnvironment const color("ZkTest", "1,2,3");
    EXPECT_EQ(omGetEnvVarColor("General", "ZkTest", 5), 5ul);
}

// -- Root folders ------------------------------------------------------------------------

TEST_F(GetEnv, findsEachFolderUnderItsKey)
{
    struct Row {
        int (*get)(CString&, CString*);
        char const* section;
        char const* key;
    };
    for (Row const& row :
         {Row{omGetRoot, "General", "OMROOT"}, Row{omGetApplicationRoot, "General", "APPLICATION_ROOT"},
          Row{omGetDocRoot, "General", "OMDOCROOT"}, Row{omGetHelpRoot, "General", "OMHELPROOT"},
          Row{omGetSiteDir, "General", "OMSITEDIR"}, Row{omGetJavaLocation, "JVM", "JavaLocation"}}) {
        MemoryProfile profile;
        profile.set(row.section, row.key, "/from/profile");
        ScopedEnvironment const set(row.key, "/from/environment");

        EXPECT_EQ(row.get(value, nullptr), 1) << row.key;
        EXPECT_STREQ(value, "/from/profile") << row.key;

        profile.set(row.section, row.key, "");
        EXPECT_EQ(row.get(value, nullptr), 1) << row.key;
        EXPECT_STREQ(value, "/from/environment") << row.key;
    }
}

TEST_F(GetEnv, saysWhichFolderIsMissing)
{
    struct Row {
        int (*get)(CString&, CString*);
        char const* key;
    };
    for (Row const& row : {Row{omGetRoot, "OMROOT"}, Row{omGetApplicationRoot, "APPLICATION_ROOT"},
                           Row{omGetSiteDir, "OMSITEDIR"}, Row{omGetJavaLocation, "JavaLocation"}}) {
        ScopedEnvironment const none(row.key, nullptr);
        CString expected;
        expected.Format(47322, row.key, row.key);

        EXPECT_EQ(row.get(value, &error), 0) << row.key;

        EXPECT_STREQ(value, "") << row.key;
        EXPECT_STREQ(error, expected) << row.key;
    }
}

TEST_F(GetEnv, looksForDocumentsInTheCurrentFolderAtLast)
{
    ScopedEnvironment const noDoc("OMDOCROOT", nullptr);
    ScopedEnvironment const noHelp("OMHELPROOT", nullptr);
    CString const doc = omConcatDirAndFile(currentFolder(), "Doc");

    EXPECT_EQ(omGetHelpRoot(value, &error), 1);
    EXPECT_STREQ(value, doc);
    EXPECT_EQ(error.Find("OMHELPROOT") >= 0, true) << "the text stays in spite of the 1";

    EXPECT_EQ(omGetDocRoot(value, &error), 1);
    EXPECT_STREQ(value, omConcatDirAndFile(doc, "pdf_docs"));
    EXPECT_EQ(error.Find("OMDOCROOT") >= 0, true);
}

TEST_F(GetEnv, findsNoDocumentationFromACurrentFolderThatIsGone)
{
    ScopedEnvironment const noDoc("OMDOCROOT", nullptr);
    ScopedEnvironment const noHelp("OMHELPROOT", nullptr);
    TemporaryFolder const folder;
    folder.makeFolder("gone");
    CString const before = currentFolder();
    SetCurrentDirectoryA(folder.path("gone").c_str());
    bool const isGone = RemoveDirectoryA(folder.path("gone").c_str()) != FALSE;
    if (isGone) {
        EXPECT_EQ(omGetHelpRoot(value, &error), 0);
        EXPECT_STREQ(value, "");
        EXPECT_EQ(error.Find("OMHELPROOT") >= 0, true);
        EXPECT_EQ(omGetDocRoot(value, &error), 0);
        EXPECT_STREQ(value, "");
        CString current("old");
        EXPECT_FALSE(IAppProfileService::GetCurrentDir(current));
        EXPECT_STREQ(current, "");
    }
    SetCurrentDirectoryA(before);
    if (!isGone)
        GTEST_SKIP() << "the system keeps the current folder";
}

TEST_F(GetEnv, findsTheFrameworkOfALanguageBelowTheRoot)
{
    struct Row {
        IToolMode::Lang lang;
        char const* folder;
    };
    ScopedEnvironment const root("OMROOT", "root");
    for (Row const& row : {Row{IToolMode::LangCpp, "LangCpp"}, Row{IToolMode::LangC, "LangC"},
                           Row{IToolMode::LangJava, "LangJava"}, Row{IToolMode::LangAda, "LangAda"}}) {
        EXPECT_EQ(omGetFrameworkRoot(value, row.lang, &error), 1) << row.folder;

        EXPECT_STREQ(value, omConcatDirAndFile("root", row.folder));
        EXPECT_STREQ(error, "old");
    }
}

TEST_F(GetEnv, hasNoFrameworkForOtherLanguages)
{
    ScopedEnvironment const root("OMROOT", "root");
    for (int const lang : {3, 5, 6, 7, -1}) {
        value = "old";
        error = "old";

        EXPECT_EQ(omGetFrameworkRoot(value, static_cast<IToolMode::Lang>(lang), &error), 0) << lang;

        EXPECT_STREQ(value, "root");
        EXPECT_STREQ(error, "There is no framework for this language.");
        EXPECT_EQ(omGetFrameworkRoot(value, static_cast<IToolMode::Lang>(lang), nullptr), 0);
    }
}

TEST_F(GetEnv, hasNoFrameworkWithoutARoot)
{
    ScopedEnvironment const none("OMROOT", nullptr);

    EXPECT_EQ(omGetFrameworkRoot(value, IToolMode::LangCpp, &error), 0);

    EXPECT_STREQ(value, "");
    EXPECT_EQ(error.Find("OMROOT") >= 0, true);
}

// -- The root in model-server mode -----------------------------------------------------------

TEST_IN_FRESH_PROCESS(ModelServerRoot, isTheSettingIfThatIsAFolder)
{
    TemporaryFolder const folder;
    MemoryProfile profile;
    profile.set("General", "OMROOT", folder.path().c_str());
    IToolMode::setIsInModelServerMode(true);
    CString value;
    CString error("old");

    EXPECT_EQ(omGetRoot(value, &error), 1);
    EXPECT_STREQ(value, folder.path().c_str());
    EXPECT_STREQ(error, "old");

    profile.set("General", "OMROOT", "elsewhere");
    EXPECT_EQ(omGetRoot(value, &error), 1);
    EXPECT_STREQ(value, folder.path().c_str()) << "searched once";

    IToolMode::setIsInModelServerMode(false);
    EXPECT_EQ(omGetRoot(value, &error), 1);
    EXPECT_STREQ(value, "elsewhere");
}

TEST_IN_FRESH_PROCESS(ModelServerRoot, isShareBesideTheExecutableIfTheSettingIsNoFolder)
{
    MemoryProfile profile;
    profile.set("General", "OMROOT", "no such folder");
    IToolMode::setIsInModelServerMode(true);
    CString value;
    CString error("old");

    EXPECT_EQ(omGetRoot(value, &error), 1);

    EXPECT_STREQ(value, getExcecutableFolder() + omPathSeparator() + "Share");
    EXPECT_STREQ(error, "old");
}

TEST_IN_FRESH_PROCESS(ModelServerRoot, isBelowTheFolderThatTheSearchFound)
{
    TemporaryFolder const folder;
    folder.write("file", "x");
    MemoryProfile profile;
    profile.set("General", "OMROOT", folder.path("file").c_str());
    IToolMode::setIsInModelServerMode(true);
    IAppProfileService(true).InitProfileName(nullptr, nullptr, nullptr);
    ASSERT_NE(getExcecutableFolder(), "");
    CString value;

    EXPECT_EQ(omGetRoot(value), 1);

    EXPECT_EQ(value, getExcecutableFolder() + omPathSeparator() + "Share");
}

TEST_IN_FRESH_PROCESS(ModelServerRoot, isTheFolderInTheEnvironment)
{
    TemporaryFolder const folder;
    ScopedEnvironment const root("OMROOT", folder.path().c_str());
    IToolMode::setIsInModelServerMode(true);
    CString value;

    EXPECT_EQ(omGetRoot(value), 1);

    EXPECT_STREQ(value, folder.path().c_str());
}

TEST_IN_FRESH_PROCESS(ModelServerRoot, isShareBesideTheExecutableWithoutASetting)
{
    zkRegisterHostTexts();
    ScopedEnvironment const none("OMROOT", nullptr);
    IToolMode::setIsInModelServerMode(true);
    CString value;
    CString error;

    EXPECT_EQ(omGetRoot(value, &error), 1);

    EXPECT_STREQ(value, getExcecutableFolder() + omPathSeparator() + "Share");
    EXPECT_EQ(error.Find("OMROOT") >= 0, true);

    CString second("old");
    omGetRoot(value, &second);
    EXPECT_STREQ(second, "old") << "searched once";
}

}  // namespace
