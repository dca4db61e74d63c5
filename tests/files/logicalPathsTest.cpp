#include "files/logicalPaths.h"

#include "tests/support/MemoryProfile.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

#include "Foundtn/util/getEnv.h"
#include "files/paths.h"
#include "platform/os/os.h"
#include "text/stringListConversions.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using zk::test::MemoryProfile;
using zk::test::ScopedEnvironment;

// Rows are told with the backslash as the native separator, on both targets.
// Each name is used by one test alone: the first value stands for the process.
class LogicalPaths : public testing::Test {
    zk::os::ScopedNativeSeparator const backslash_{'\\'};

protected:
    CString result = "old";
};

TEST_F(LogicalPaths, replaceAComponentByTheSetting)
{
    ScopedEnvironment const set("ZkRoot1", "C:\\zentrika");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot1\\Share\\etc", result));
    EXPECT_STREQ(result, "C:\\zentrika\\Share\\etc");

    EXPECT_TRUE(expandLogicalPath("a/$ZkRoot1", result));
    EXPECT_STREQ(result, "a\\C:\\zentrika");
}

TEST_F(LogicalPaths, askTheProfileFirstInGeneral)
{
    MemoryProfile profile;
    profile.set("General", "ZkRoot2", "from profile");
    ScopedEnvironment const set("ZkRoot2", "from environment");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot2\\x", result));

    EXPECT_STREQ(result, "from profile\\x");
}

TEST_F(LogicalPaths, keepTheirRootBeforeAValue)
{
    ScopedEnvironment const set("ZkRoot12", "C:\\zentrika");

    EXPECT_TRUE(expandLogicalPath("\\$ZkRoot12\\x", result));
    EXPECT_STREQ(result, "\\C:\\zentrika\\x");
    EXPECT_TRUE(expandLogicalPath("\\\\$ZkRoot12", result));
    EXPECT_STREQ(result, "\\\\C:\\zentrika");
}

TEST_F(LogicalPaths, haveNoRootBehindABlank)
{
    EXPECT_FALSE(expandLogicalPath(" \\a", result));
    EXPECT_STREQ(result, "a");
}

TEST_F(LogicalPaths, keepBlanksWithinTheMarkOfAName)
{
    ScopedEnvironment const set("ZkRoot13", "known");

    EXPECT_FALSE(expandLogicalPath("$ ZkRoot13", result));
    EXPECT_STREQ(result, " ZkRoot13");
}

TEST_F(LogicalPaths, endInASeparatorBeforeAnUnknownName)
{
    ScopedEnvironment const set("ZkRoot14", "known");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot14\\$NOSUCH", result));
    EXPECT_STREQ(result, "known\\");
}

TEST_F(LogicalPaths, giveTheBareNameIfTheFirstIsUnknown)
{
    EXPECT_FALSE(expandLogicalPath("$NOSUCH\\x", result));
    EXPECT_STREQ(result, "NOSUCH");

    EXPECT_FALSE(expandLogicalPath("\\\\a\\$NOSUCH\\$NOSUCH2", result));
    EXPECT_STREQ(result, "NOSUCH");
}

TEST_F(LogicalPaths, leaveAnEmptyComponentForAnUnknownNameBehindAKnownOne)
{
    ScopedEnvironment const set("ZkRoot3", "known");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot3\\$NOSUCH\\x", result));

    EXPECT_STREQ(result, "known\\\\x");
}

TEST_F(LogicalPaths, normalizeAPathWithoutLogicalNames)
{
    struct Row {
        char const* path;
        char const* result;
    };
    for (Row const& row :
         {Row{"a\\b", "a\\b"}, Row{"a/b//c\\", "a\\b\\c"}, Row{" a \\ b\t", "a\\b"}, Row{"\\a", "\\a"},
          Row{"\\\\a", "\\\\a"}, Row{"\\\\\\a", "\\\\a"}, Row{"/a/b", "a\\b"}, Row{"\\/a", "\\a"},
          Row{"\\", "\\"}, Row{"\\\\", "\\\\"}, Row{"", ""}, Row{" ", ""},
          Row{"a$ZkRoot4\\b$", "a$ZkRoot4\\b$"}, Row{"..\\a", "..\\a"}}) {
        EXPECT_FALSE(expandLogicalPath(row.path, result)) << row.path;
        EXPECT_STREQ(result, row.result) << row.path;
    }
}

TEST_F(LogicalPaths, keepSlashesAsTheRootWhereTheyAreNative)
{
    zk::os::ScopedNativeSeparator const slash('/');

    EXPECT_FALSE(expandLogicalPath("//a\\b/", result));
    EXPECT_STREQ(result, "//a/b");
    EXPECT_FALSE(expandLogicalPath("/a", result));
    EXPECT_STREQ(result, "/a");
    EXPECT_FALSE(expandLogicalPath("\\a\\b", result));
    EXPECT_STREQ(result, "a/b");
}

TEST_F(LogicalPaths, takeADollarAloneAsANameThatIsUnknown)
{
    EXPECT_FALSE(expandLogicalPath("$", result));
    EXPECT_STREQ(result, "");
}

TEST_F(LogicalPaths, keepTheFirstValueOfANameForTheProcess)
{
    {
        ScopedEnvironment const set("ZkRoot5", "first");
        EXPECT_TRUE(expandLogicalPath("$ZkRoot5", result));
    }
    ScopedEnvironment const set("ZkRoot5", "second");
    EXPECT_TRUE(expandLogicalPath("$ZkRoot5", result));
    EXPECT_STREQ(result, "first");

    expandLogicalPath("$zkroot5", result);
    EXPECT_STRNE(result, "first") << "names match with case";
}

TEST_F(LogicalPaths, askAgainForANameThatFailed)
{
    EXPECT_FALSE(expandLogicalPath("$ZkRoot6", result));
    ScopedEnvironment const set("ZkRoot6", "now");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot6", result));

    EXPECT_STREQ(result, "now");
}

// The same by steps: a list of components, replaced one by one, and joined.
bool expandStepwise(CString const& path, CString& result)
{
    CString const separator(omPathSeparator());
    CString const root = path.Left(2) == separator + separator ? path.Left(2)
        : path.Left(1) == separator                            ? separator
                                                               : CString();
    std::unique_ptr<CStringList> const components(omConvertStringToStringList(path, "\\/", 0, 0));
    bool hasResolved = false;
    for (POSITION position = components->GetHeadPosition(); position;) {
        CString& component = components->GetNext(position);
        if (component[0] != '$')
            continue;
        CString const name = component.Mid(1);
        if (omGetEnvVar("General", name, component)) {
            hasResolved = true;
        } else if (!hasResolved) {
            result = name;
            return false;
        }
    }
    result = root + omConvertStringListToString(components.get(), omPathSeparator());
    return hasResolved;
}

TEST_F(LogicalPaths, expandAsIfStepByStep)
{
    ScopedEnvironment const first("ZkStep1", "C:\\one");
    ScopedEnvironment const second("ZkStep2", " two\\ ");
    std::string_view const pieces[] = {
        "\\", "/", " ", "$ZkStep1", "$ZkStep2", "$ZkNone", "$", "a", "\t", "..", std::string_view("b\0c", 3)};
    std::mt19937 random(5);
    for (int round = 0; round < 20'000; ++round) {
        CString path;
        for (unsigned count = random() % 10; count > 0; --count)
            path += CString(pieces[random() % std::size(pieces)]);
        CString expected;
        bool const hasResolved = expandStepwise(path, expected);

        EXPECT_EQ(expandLogicalPath(path, result), hasResolved) << path;
        EXPECT_EQ(result, expected) << path;
    }
}

TEST_F(LogicalPaths, mayBeExpandedIntoTheirOwnText)
{
    ScopedEnvironment const set("ZkInPlace", "root");
    CString path("$ZkInPlace/a");

    EXPECT_TRUE(expandLogicalPath(path, path));
    EXPECT_STREQ(path, "root\\a");

    path = "$NOSUCH/a";
    EXPECT_FALSE(expandLogicalPath(path, path));
    EXPECT_STREQ(path, "NOSUCH");
}

TEST_F(LogicalPaths, doNotExpandWhatANameResolvedTo)
{
    ScopedEnvironment const outer("ZkRoot7", "$ZkRoot8\\x");
    ScopedEnvironment const inner("ZkRoot8", "deep");

    EXPECT_TRUE(expandLogicalPath("$ZkRoot7\\y", result));

    EXPECT_STREQ(result, "$ZkRoot8\\x\\y");
}

TEST_F(LogicalPaths, becomeFullPathsInPlace)
{
    ScopedEnvironment const set("ZkRoot10", "C:/zentrika/bin");
    CString path("$ZkRoot10\\..\\Share");
    EXPECT_TRUE(translateToFullPath(path));
    EXPECT_STREQ(path, "C:\\zentrika\\Share");

    path = "a/b\\..\\c/";
    EXPECT_FALSE(translateToFullPath(path));
    EXPECT_STREQ(path, "a\\c");
}

TEST_F(LogicalPaths, becomeTheBareNameIfUnknown)
{
    CString path("$NOSUCH\\x");

    EXPECT_FALSE(translateToFullPath(path));

    EXPECT_STREQ(path, "NOSUCH");
}

TEST_F(LogicalPaths, stayAsTheyAreIfNothingIsLeft)
{
    for (char const* const text : {"", " "}) {
        CString path(text);

        EXPECT_FALSE(translateToFullPath(path));

        EXPECT_STREQ(path, text);
    }
    CString path("//");
    EXPECT_FALSE(translateToFullPath(path));
    EXPECT_STREQ(path, "\\\\");
}

TEST_F(LogicalPaths, areEqualOnceTranslated)
{
    ScopedEnvironment const set("ZkRoot11", "A\\b");

    EXPECT_TRUE(arePathsEqual("A\\b\\", "a\\ b"));
    EXPECT_TRUE(arePathsEqual("$ZkRoot11", "a/B"));
    EXPECT_TRUE(arePathsEqual("a\\x\\..\\b", "a\\b"));
    EXPECT_FALSE(arePathsEqual("a\\b", "a\\c"));
    EXPECT_FALSE(arePathsEqual("\\a", "a"));
    EXPECT_TRUE(arePathsEqual("", ""));
    EXPECT_TRUE(arePathsEqual("$NOSUCH\\a", "nosuch")) << "an unknown name is its bare text";
}

TEST_F(LogicalPaths, areComparedAsTextWithoutTheCurrentFolder)
{
    EXPECT_FALSE(arePathsEqual(".\\a", "a"));
}

TEST(LogicalPathsOfManyComponents, areExpandedInLinearTime)
{
    constexpr int count = 100000;
    CString path;
    for (int i = 0; i < count; ++i)
        path += "component/";
    CString result;

    EXPECT_FALSE(expandLogicalPath(path, result));

    EXPECT_EQ(result.GetLength(), count * 10 - 1);
}

// -- The folder for temporary files ----------------------------------------------------------

TEST(TemporaryDirectory, isTheSystemsWithoutASeparatorAtItsEnd)
{
    char expected[4096];
    GetTempPathA(sizeof expected, expected);
    CString withoutEnd(expected);
    withoutEnd.TrimRight(zk::os::nativeSeparator());

    EXPECT_STREQ(omGetTempDir(), withoutEnd);
    EXPECT_NE(omGetTempDir().Right(1), CString(zk::os::nativeSeparator()));
}

TEST(TemporaryDirectory, isTheSystemsBeforeTheProfiles)
{
    MemoryProfile profile;
    profile.set("General", "TEMP_DIR", "/other");

    EXPECT_STRNE(omGetTempDir(), "/other");

    EXPECT_EQ(profile.reads, 0);
}

// The system names no folder where its variable's value counts from a current directory that is gone.
class TemporaryDirectoryWithoutTheSystems : public testing::Test {
protected:
    void SetUp() override
    {
        GetCurrentDirectoryA(sizeof before_, before_);
        folder_.makeFolder("gone");
        SetCurrentDirectoryA(folder_.path("gone").c_str());
        char path[4096];
        if (!RemoveDirectoryA(folder_.path("gone").c_str()) || GetTempPathA(sizeof path, path) != 0)
            GTEST_SKIP() << "the system always names a folder";
    }
    void TearDown() override { SetCurrentDirectoryA(before_); }

private:
    TemporaryFolder const folder_;
    ScopedEnvironment const variable_{"TMPDIR", "relative"};
    char before_[4096] = {};
};

TEST_F(TemporaryDirectoryWithoutTheSystems, isTheProfiles)
{
    MemoryProfile profile;
    profile.set("General", "TEMP_DIR", "/t//");

    EXPECT_STREQ(omGetTempDir(), "/t");

    EXPECT_EQ(profile.text("General", "TEMP_DIR"), "/t//") << "not written";
}

TEST_F(TemporaryDirectoryWithoutTheSystems, isADefaultThatIsWrittenToTheProfile)
{
    MemoryProfile profile;

    EXPECT_STREQ(omGetTempDir(), "/tmp");

    EXPECT_EQ(profile.text("General", "TEMP_DIR"), "/tmp");
}

TEST_F(TemporaryDirectoryWithoutTheSystems, isTheDefaultWithoutAProfile)
{
    EXPECT_STREQ(omGetTempDir(), "/tmp");
}

}  // namespace
