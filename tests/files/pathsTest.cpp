#include "files/paths.h"

#include "platform/os/os.h"
#include "tests/files/stepwisePaths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// All rows are told with the backslash as the native separator, on both targets.
class PathAlgebra : public testing::Test {
    zk::os::ScopedNativeSeparator const backslash_{'\\'};
};

TEST_F(PathAlgebra, tellsTheNativeSeparator)
{
    EXPECT_EQ(omPathSeparator(), '\\');

    zk::os::ScopedNativeSeparator const slash('/');
    EXPECT_EQ(omPathSeparator(), '/');
}

TEST_F(PathAlgebra, keepsBackslashesWhereTheyAreNative)
{
    CString path("\\Share/x");

    replaceBackSlashIfUnix(path);

    EXPECT_STREQ(path, "\\Share/x");
}

TEST_F(PathAlgebra, replacesBackslashesWhereSlashesAreNative)
{
    zk::os::ScopedNativeSeparator const slash('/');
    CString path("\\Share\\\\x/y");

    replaceBackSlashIfUnix(path);

    EXPECT_STREQ(path, "/Share//x/y");
}

TEST_F(PathAlgebra, normalizesBothSlashesToTheNativeOneAndKeepsDoubles)
{
    CString path("a/b\\c//d");
    normalizeBackSlashes(path);
    EXPECT_STREQ(path, "a\\b\\c\\\\d");

    zk::os::ScopedNativeSeparator const slash('/');
    normalizeBackSlashes(path);
    EXPECT_STREQ(path, "a/b/c//d");
}

TEST_F(PathAlgebra, concatenatesWithTheNativeSeparator)
{
    EXPECT_STREQ(omConcatDirAndFile("a", "b"), "a\\b");
    EXPECT_STREQ(omConcatDirAndFile("", "b"), "b");
    EXPECT_STREQ(omConcatDirAndFile("a", ""), "a");
    EXPECT_STREQ(omConcatDirAndFile("", ""), "");

    zk::os::ScopedNativeSeparator const slash('/');
    EXPECT_STREQ(omConcatDirAndFile("a", "b"), "a/b");
}

TEST_F(PathAlgebra, doesNotLookAtASeparatorAtTheEndOfTheDirectory)
{
    EXPECT_STREQ(omConcatDirAndFile("a\\", "b"), "a\\\\b");
}

TEST_F(PathAlgebra, knowsAbsolutePaths)
{
    for (char const* path : {"\\x", "\\", "C:\\x", "C:", "http://x", ":x", ":", "my_dir:x", "abc1:"})
        EXPECT_TRUE(omIsAbsolutePath(path)) << path;
    for (char const* path : {"", "x", "/x", "my-dir:x", "a b:c", "a\\b:c"})
        EXPECT_FALSE(omIsAbsolutePath(path)) << path;
}

TEST_F(PathAlgebra, takesALeadingSlashForAbsoluteWhereItIsNative)
{
    zk::os::ScopedNativeSeparator const slash('/');

    EXPECT_TRUE(omIsAbsolutePath("/x"));
    EXPECT_FALSE(omIsAbsolutePath("\\x"));
}

TEST_F(PathAlgebra, takesANameBeforeAColonForAbsoluteWhereThePageHasItsLetters)
{
    for (unsigned code = 128; code < 256; ++code)
        EXPECT_EQ(omIsAbsolutePath("a" + CString(char(code), 1) + ":x"), _ismbcalnum(code) != 0) << code;
}

struct Parsed {
    char const* path;
    char const* dir;
    char const* file;
    char const* extension;
};

TEST_F(PathAlgebra, splitsAtTheLastSeparatorOfEitherKind)
{
    Parsed const rows[] = {
        {"", "", "", ""},
        {"f", "", "f", ""},
        {"\\x", "", "x", ""},
        {"C:\\x", "C:", "x", ""},
        {"a\\", "a", "", ""},
        {"a/b\\c", "a/b", "c", ""},
        {"a\\b/c", "a\\b", "c", ""},
        {"a\\\\b", "a\\", "b", ""},
    };
    for (Parsed const& row : rows) {
        CString dir("old"), file("old");

        omParseToDirAndFileName(row.path, dir, file);

        EXPECT_STREQ(dir, row.dir) << row.path;
        EXPECT_STREQ(file, row.file) << row.path;
    }
}

TEST_F(PathAlgebra, splitsOffTheExtensionWithoutItsDotAndKeepsItInTheFile)
{
    Parsed const rows[] = {
        {"d\\f.cpp", "d", "f.cpp", "cpp"},
        {"d\\f", "d", "f", ""},
        {"d.e\\f", "d.e", "f", ""},
        {"f.tar.gz", "", "f.tar.gz", "gz"},
        {"d\\f.", "d", "f.", ""},
        {"d\\.f", "d", ".f", "f"},
        {"d\\f.cpp@@\\main\\3", "d", "f.cpp@@\\main\\3", "cpp"},
        {"d/f.cpp@@/main/3", "d", "f.cpp@@/main/3", "cpp"},
        {"d\\f@@\\main\\a.b", "d", "f@@\\main\\a.b", ""},
        // The first of two marks counts; what stands before one with backslashes is taken apart again.
        {"f@@\\main\\1@@\\main\\2", "", "f@@\\main\\1@@\\main\\2", ""},
        {"a/f.x@@/main/d.y@@\\main\\2", "a", "f.x@@/main/d.y@@\\main\\2", "x"},
        {"f@@\\main", "f@@", "main", ""},
    };
    for (Parsed const& row : rows) {
        CString dir("old"), file("old"), extension("old");

        ParseToDirFileNameAndExtension(row.path, dir, file, extension);

        EXPECT_STREQ(dir, row.dir) << row.path;
        EXPECT_STREQ(file, row.file) << row.path;
        EXPECT_STREQ(extension, row.extension) << row.path;
    }
}

TEST_F(PathAlgebra, leavesTheResultsOfAnEmptyPathAsTheyWere)
{
    CString dir("d"), file("f"), extension("e");

    ParseToDirFileNameAndExtension("", dir, file, extension);

    EXPECT_STREQ(dir, "d");
    EXPECT_STREQ(file, "f");
    EXPECT_STREQ(extension, "e");
}

TEST_F(PathAlgebra, addsAVersionWithNothingBeforeItToTheFileAsItWas)
{
    CString dir("d"), file("f"), extension("e");

    ParseToDirFileNameAndExtension("@@\\main\\1", dir, file, extension);

    EXPECT_STREQ(dir, "d");
    EXPECT_STREQ(file, "f@@\\main\\1");
    EXPECT_STREQ(extension, "e");
}

TEST_F(PathAlgebra, takesResultsThatAreTheArgumentItself)
{
    CString path("d\\f.cpp"), file, extension;

    ParseToDirFileNameAndExtension(path, path, file, extension);

    EXPECT_STREQ(path, "d");
    EXPECT_STREQ(file, "f.cpp");
    EXPECT_STREQ(extension, "cpp");
}

TEST_F(PathAlgebra, givesTheExtensionOfTheWholeTextWithItsDot)
{
    EXPECT_STREQ(omGetFileExtension("d\\f.cpp"), ".cpp");
    EXPECT_STREQ(omGetFileExtension("a.b\\c"), ".b\\c");
    EXPECT_STREQ(omGetFileExtension("f."), ".");
    EXPECT_STREQ(omGetFileExtension("f"), "");
    EXPECT_STREQ(omGetFileExtension(""), "");
}

struct Relative {
    char const* target;
    char const* base;
    char separator;
    char const* result;
};

TEST_F(PathAlgebra, findsTheWayFromABaseToATarget)
{
    Relative const rows[] = {
        {"C:\\x\\y\\f.txt", "c:\\x\\z", '\\', "..\\y\\f.txt"},
        {"C:\\x\\y\\f.txt", "D:\\q", '\\', "C:\\x\\y\\f.txt"},
        {"C:\\X\\F.txt", "c:\\a\\b", '\\', "..\\..\\X\\F.txt"},
        {"C:\\X\\Y", "c:\\x\\y", '\\', ""},
        {"C:\\x", "C:\\x\\y\\z", '\\', "..\\.."},
        {"C:\\x\\y\\z", "C:\\x", '\\', "y\\z"},
        {"C:\\xy", "C:\\x", '\\', "..\\xy"},
        {"C:\\x", "C:\\xy", '\\', "..\\x"},
        {"/a/b", "/a/c", '/', "../b"},
        {"/a/b", "/a/c", '\\', "/a/b"},                // no slash counts where the separator is another
        {"C:\\a/b", "C:\\a\\b", '\\', "..\\..\\a/b"},  // mixed slashes do not match
        {"a", "b", '\\', "a"},
        {"", "", '\\', ""},
        {"a\\", "a", '\\', ""},
    };
    for (Relative const& row : rows) {
        CString result;

        omGetRelativePath(row.target, row.base, result, row.separator);

        EXPECT_STREQ(result, row.result) << row.target << " from " << row.base;
    }
}

TEST_F(PathAlgebra, appendsTheWayButAssignsATargetWithoutOne)
{
    CString appended("old");
    CString assigned("old");

    omGetRelativePath("C:\\a\\b", "C:\\a\\c", appended, '\\');
    omGetRelativePath("D:\\a", "C:\\a", assigned, '\\');

    EXPECT_STREQ(appended, "old..\\b");
    EXPECT_STREQ(assigned, "D:\\a");
}

// All paths of up to five characters.
std::vector<std::string> shortPaths(std::string const& alphabet)
{
    std::vector<std::string> paths = {""};
    for (std::size_t i = 0; i < paths.size() && paths[i].size() < 5; ++i)
        for (char const character : alphabet)
            paths.push_back(paths[i] + character);
    return paths;
}

TEST_F(PathAlgebra, findsTheWayBetweenAnyTwoShortPaths)
{
    std::vector<std::string> const paths = shortPaths("aA/");
    for (std::string const& target : paths) {
        for (std::string const& base : paths) {
            CString way("r/");

            omGetRelativePath(target.c_str(), base.c_str(), way, '/');

            ASSERT_EQ(way.view(), zk::test::stepwiseRelativePath(target, base, "r/", '/'))
                << target << " from " << base;
        }
    }
}

TEST_F(PathAlgebra, takesAnyShortPathApartWithoutALoss)
{
    for (std::string const& path : shortPaths("a./\\")) {
        for (char const* const version : {"", "@@\\main\\3.x", "@@/main/3.x", "@@/main/1@@\\main\\2"}) {
            std::string const whole = path + version;
            CString dir, file, extension;

            ParseToDirFileNameAndExtension(whole.c_str(), dir, file, extension);

            zk::test::PathParts const parts = zk::test::stepwiseParts(whole);
            ASSERT_EQ(dir.view(), parts.dir) << whole;
            ASSERT_EQ(file.view(), parts.file) << whole;
            ASSERT_EQ(extension.view(), parts.extension) << whole;
            std::size_t const separator = dir.view().size() + (file.view().size() < whole.size());
            ASSERT_EQ(std::string(dir.view()) +
                          whole.substr(dir.view().size(), separator - dir.view().size()) +
                          std::string(file.view()),
                      whole);
        }
    }
}

TEST_F(PathAlgebra, trimsAllSeparatorsOffTheWay)
{
    CString way, whole("old\\\\");

    omGetRelativePath("C:\\x\\y\\\\\\", "C:\\x\\z", way, '\\');
    omGetRelativePath("C:\\x", "C:\\x", whole, '\\');

    EXPECT_STREQ(way, "..\\y");
    EXPECT_STREQ(whole, "old");  // those of what the result held, too
}

}  // namespace
