#include "logging/util/CxFilePath.h"

#include "platform/os/nativeSeparator.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using zk::os::ScopedNativeSeparator;

constexpr CCgResult success;
constexpr CCgResult invalid{'p', 22};
constexpr CCgResult fileInTheWay{'p', 20};

CxFilePath pathOf(std::string const& text)
{
    CxFilePath path;
    EXPECT_EQ(CxFilePathMake(path, text.c_str()), success);
    return path;
}

std::string parentOf(std::string const& text)
{
    CxFilePath parent;
    return CxFilePathParent(pathOf(text), parent) ? std::string(parent.view()) : "(none)";
}

}  // namespace

TEST(CxFilePath, knowsItsLengthAndItsLastSlash)
{
    CxFilePath const path = pathOf("logs/today");

    EXPECT_STREQ(path.path, "logs/today");
    EXPECT_EQ(path.length, 10);
    EXPECT_EQ(path.lastSlash, 4);
    EXPECT_EQ(pathOf("logs").lastSlash, -1);
}

TEST(CxFilePath, turnsEachBackslashWhereItSeparates)
{
    ScopedNativeSeparator const backslash('\\');

    CxFilePath const path = pathOf("C:\\logs\\today");

    EXPECT_STREQ(path.path, "C:/logs/today");
    EXPECT_EQ(path.lastSlash, 7);
}

TEST(CxFilePath, keepsABackslashWhereTheSlashSeparates)
{
    ScopedNativeSeparator const slash('/');

    EXPECT_STREQ(pathOf("logs\\today").path, "logs\\today");
}

TEST(CxFilePath, holds260Bytes)
{
    CxFilePath path;

    EXPECT_EQ(CxFilePathMake(path, std::string(260, 'p').c_str()), success);
    EXPECT_EQ(path.length, 260);
    EXPECT_EQ(CxFilePathMake(path, std::string(261, 'p').c_str()), invalid);
    EXPECT_EQ(path.length, 0);
    EXPECT_EQ(CxFilePathMake(path, nullptr), invalid);
}

TEST(CxFilePath, hasAsParentWhatStandsBeforeTheLastSlash)
{
    EXPECT_EQ(parentOf("a/b/c"), "a/b");
    EXPECT_EQ(parentOf("a/b/"), "a");
    EXPECT_EQ(parentOf("a//b"), "a");
    EXPECT_EQ(parentOf("/a"), "/");
    EXPECT_EQ(parentOf("a"), "(none)");
    EXPECT_EQ(parentOf("/"), "(none)");
    EXPECT_EQ(parentOf(""), "(none)");
}

TEST(CxFilePath, hasTheRootOfADriveAsItsLastParent)
{
    ScopedNativeSeparator const backslash('\\');

    EXPECT_EQ(parentOf("C:\\a"), "C:/");
    EXPECT_EQ(parentOf("C:\\"), "(none)");
}

TEST(CxFilePath, canBecomeItsOwnParent)
{
    CxFilePath path = pathOf("a/b/c");

    EXPECT_TRUE(CxFilePathParent(path, path));

    EXPECT_STREQ(path.path, "a/b");
    EXPECT_EQ(path.length, 3);
    EXPECT_EQ(path.lastSlash, 1);
}

TEST(CxFilePath, tellsAFolderFromAFile)
{
    TemporaryFolder const folder;
    folder.write("file", "");

    EXPECT_EQ(CxFilePathIsDirectory(pathOf(folder.path())), success);
    EXPECT_EQ(CxFilePathIsDirectory(pathOf(folder.path("file"))), fileInTheWay);
    EXPECT_EQ(CxFilePathIsDirectory(pathOf(folder.path("missing"))), (CCgResult{'p', 2}));
}

TEST(CxFilePath, makesAFolderWithItsParents)
{
    TemporaryFolder const folder;
    CxFilePath const path = pathOf(folder.path("a") + "/b/c");

    EXPECT_EQ(CxFilePathMakeDirectories(path), success);

    EXPECT_TRUE(std::filesystem::is_directory(folder.path("a/b/c")));
    EXPECT_EQ(CxFilePathMakeDirectories(path), success) << "it is there already";
}

TEST(CxFilePath, makesNoFolderWhereAFileIs)
{
    TemporaryFolder const folder;
    folder.write("file", "content");

    EXPECT_EQ(CxFilePathMakeDirectories(pathOf(folder.path("file"))), fileInTheWay);
    EXPECT_EQ(CxFilePathMakeDirectories(pathOf(folder.path("file") + "/sub")), fileInTheWay);
    EXPECT_EQ(folder.read("file"), "content");
}

TEST(CxFilePath, makesNothingWithoutAName)
{
    EXPECT_EQ(CxFilePathMakeDirectories(CxFilePath()), invalid);
}
