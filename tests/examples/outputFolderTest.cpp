#include "examples/modelgen/outputFolder.h"
#include "examples/modelgen/textFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace modelgen;
using testing::HasSubstr;

namespace {

std::ptrdiff_t entriesIn(std::string const& folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

}  // namespace

TEST(OutputFolder, makesTheFoldersOfAFile)
{
    TemporaryFolder folder;
    OutputFolder output(folder.path("new/deep").c_str());

    output.put("a/b/C.h", "text\n");

    EXPECT_EQ(folder.read("new/deep/a/b/C.h"), "text\n");
    EXPECT_EQ(output.written(), 1);
    EXPECT_EQ(entriesIn(folder.path("new/deep/a/b")), 1);
}

TEST(OutputFolder, leavesAFileAloneThatHasItsContent)
{
    TemporaryFolder folder;
    folder.write("same.h", "same");
    folder.write("other.h", "old");
    OutputFolder output(folder.path().c_str());

    output.put("same.h", "same");
    output.put("other.h", "new");

    EXPECT_EQ(output.unchanged(), 1);
    EXPECT_EQ(output.written(), 1);
    EXPECT_EQ(folder.read("other.h"), "new");
    EXPECT_EQ(entriesIn(folder.path()), 2);
}

TEST(OutputFolder, saysWhichFileItCannotWriteAndLeavesNothingBehind)
{
    TemporaryFolder folder;
    folder.makeFolder("taken.h");
    folder.write("taken.h/inside", "x");
    OutputFolder output(folder.path().c_str());

    try {
        output.put("taken.h", "text");
        FAIL() << "a folder was replaced";
    } catch (OutputFailure const& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("cannot write "));
        EXPECT_THAT(failure.what(), HasSubstr("taken.h: "));
    }
    EXPECT_TRUE(folder.exists("taken.h/inside"));
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(OutputFolder, doesNotReplaceAReadOnlyFile)
{
    TemporaryFolder folder;
    folder.write("kept.h", "old");
    SetFileAttributesA(folder.path("kept.h").c_str(), FILE_ATTRIBUTE_READONLY);
    OutputFolder output(folder.path().c_str());

    EXPECT_THROW(output.put("kept.h", "new"), OutputFailure);

    EXPECT_EQ(folder.read("kept.h"), "old");
    EXPECT_EQ(entriesIn(folder.path()), 1);
    SetFileAttributesA(folder.path("kept.h").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(OutputFolder, takesFoldersWithEitherKindOfSlash)
{
    TemporaryFolder folder;
    OutputFolder output((folder.path("new") + "\\deep/").c_str());

    output.put("a/C.h", "text");

    EXPECT_EQ(folder.read("new/deep/a/C.h"), "text");
}

TEST(OutputFolder, saysWhatStandsInTheWayOfAFolder)
{
    TemporaryFolder folder;
    folder.write("a", "a file");
    OutputFolder output(folder.path().c_str());

    EXPECT_THROW(output.put("a/B.h", "text"), OutputFailure);
    EXPECT_EQ(folder.read("a"), "a file");
}

TEST(OutputFolder, doesNotFollowALinkOutOfItself)
{
    TemporaryFolder folder;
    folder.makeFolder("out");
    folder.makeFolder("elsewhere");
    std::error_code error;
    std::filesystem::create_directory_symlink(folder.path("elsewhere"), folder.path("out/p"), error);
    if (error)
        GTEST_SKIP() << "links cannot be made here: " << error.message();
    OutputFolder output(folder.path("out").c_str());

    EXPECT_THROW(output.put("p/A.h", "text"), OutputFailure);
    EXPECT_EQ(entriesIn(folder.path("elsewhere")), 0);
}

TEST(OutputFolder, replacesALinkRatherThanWhatItLeadsTo)
{
    TemporaryFolder folder;
    folder.makeFolder("out");
    folder.write("precious", "kept");
    std::error_code error;
    std::filesystem::create_symlink(folder.path("precious"), folder.path("out/A.h"), error);
    if (error)
        GTEST_SKIP() << "links cannot be made here: " << error.message();
    OutputFolder output(folder.path("out").c_str());

    output.put("A.h", "text");

    EXPECT_EQ(folder.read("precious"), "kept");
    EXPECT_EQ(folder.read("out/A.h"), "text");
}

TEST(TextFile, readsEveryByte)
{
    TemporaryFolder folder;
    std::string content("a\0b\r\n\x1A\xFF", 7);
    content += std::string(200000, 'x');
    folder.write("f", content);
    CString read, reason;

    EXPECT_TRUE(readFile(folder.path("f").c_str(), read, reason));
    EXPECT_EQ(read.view(), content);
}

TEST(TextFile, saysWhyItCannotRead)
{
    TemporaryFolder folder;
    CString read, missing, isFolder;

    EXPECT_FALSE(readFile(folder.path("missing").c_str(), read, missing));
    EXPECT_FALSE(readFile(folder.path().c_str(), read, isFolder));
    EXPECT_EQ(missing, reasonFor(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(isFolder, "it is a folder");
}
