#include "files/paths.h"

#include "platform/os/os.h"
#include "tests/files/stepwisePaths.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zk::test::stepwiseCleanPath;
using zk::test::stepwiseCutMidDDot;

struct Row {
    char const* path;
    char separator;
    char const* expected;
};

class PathCleaning : public testing::Test {
    zk::os::ScopedNativeSeparator const backslash_{'\\'};
};

CString cut(char const* path, char separator)
{
    CString result(path);
    omCutMidDDot(result, separator);
    return result;
}

CString resolve(char const* path, char separator)
{
    CString result(path);
    omCleanPath(result, separator, true, true, false);
    return result;
}

TEST_F(PathCleaning, cutsParentComponents)
{
    Row const rows[] = {
        {"a\\b\\..\\c", '\\', "a\\c"},
        {"a\\b\\..", '\\', "a"},
        {"a\\..\\..\\b", '\\', "..\\b"},
        {"..\\..\\x", '\\', "..\\..\\x"},
        {"C:\\..\\x", '\\', "x"},
        {"\\a\\..\\b", '\\', "\\b"},
        {"\\\\srv\\..\\x", '\\', "\\\\x"},
        {"\\..\\x", '\\', "\\..\\x"},
        {"a\\b\\..foo", '\\', "afoo"},
        {"a/b/../c", '\\', "a\\c"},
        {"a\\b\\..\\c", '/', "a/c"},
        {"/a/../b", '/', "b"},  // the native separator is another: nothing is put back
        {"a\\b/../c", '!', "a\\b/../c"},
        {"a\\b\\..\\c", '!', "a\\c"},
        {"a\\b", '/', "a/b"},
        {"", '\\', ""},
        {"..", '\\', ".."},
    };
    for (Row const& row : rows)
        EXPECT_STREQ(cut(row.path, row.separator), row.expected) << row.path << " with " << row.separator;
}

TEST_F(PathCleaning, putsALeadingSlashBackWhereItIsNative)
{
    zk::os::ScopedNativeSeparator const slash('/');

    EXPECT_STREQ(cut("/a/../b", '/'), "/b");
    EXPECT_STREQ(cut("/a/../b", '!'), "/b");
}

TEST_F(PathCleaning, leavesUrlsAloneIfTheyAreWrittenInLowerCase)
{
    EXPECT_STREQ(cut("http://x/../y", '\\'), "http://x/../y");
    EXPECT_STREQ(cut("https://x/../y", '\\'), "https://x/../y");
    EXPECT_STREQ(cut("HTTP://x/../y", '\\'), "HTTP:\\\\y");
    EXPECT_STREQ(cut(" http://x/../y", '/'), " http://y");
    EXPECT_STREQ(cut("http:/x/../y", '/'), "http:/y");
}

TEST_F(PathCleaning, resolvesDots)
{
    Row const rows[] = {
        {"a/b/..", '/', "a/"},
        {"a/b/../c", '/', "a/c"},
        {"../../x", '/', "../../x"},
        {"C:\\..\\x", '\\', "x"},
        {"\\..\\x", '\\', "\\..\\x"},
        {"a/b/..foo/c", '/', "a/oo/c"},
        {"./././a", '/', "a"},
        {"a/./././b", '/', "a/b"},
        {"a/.", '/', "a"},
        {"a/./.", '/', "a"},
        {".", '/', "."},
        {"a/..", '/', ""},
        {"/a/..", '/', "/"},
        {"a/b/../../c", '/', "c"},
        {"/..a/../../b", '/', "/../b"},
        {"a//b", '/', "a/b"},
        {"//srv//x", '/', "//srv/x"},
        {"////srv", '/', "//srv"},
        {"\\\\srv\\\\x", '\\', "\\\\srv\\x"},
        {"a\\.\\b", '/', "a/b"},
        {"", '/', ""},
    };
    for (Row const& row : rows)
        EXPECT_STREQ(resolve(row.path, row.separator), row.expected) << row.path << " with " << row.separator;
}

TEST_F(PathCleaning, changesSeparatorsFirst)
{
    CString toSlash("a\\b/c");
    CString toBackslash("a\\b/c");
    CString toOther("a\\b/c");

    omCleanPath(toSlash, '/', true, false, false);
    omCleanPath(toBackslash, '\\', true, false, false);
    omCleanPath(toOther, '!', true, false, false);

    EXPECT_STREQ(toSlash, "a/b/c");
    EXPECT_STREQ(toBackslash, "a\\b\\c");
    EXPECT_STREQ(toOther, "a\\b!c");
}

TEST_F(PathCleaning, collapsesSeparatorsALeadingPairIncluded)
{
    CString slashes("//a///b");
    CString backslashes("\\\\a\\\\\\b");
    CString other("\\\\a//b");

    omCleanPath(slashes, '/', true, false, true);
    omCleanPath(backslashes, '\\', true, true, true);
    omCleanPath(other, '!', true, false, true);

    EXPECT_STREQ(slashes, "/a/b");
    EXPECT_STREQ(backslashes, "\\a\\b");
    EXPECT_STREQ(other, "\\a!!b");
}

TEST_F(PathCleaning, keepsDoubledSeparatorsUnlessAskedOtherwise)
{
    CString path("a//b/./c");

    omCleanPath(path, '/', true, false, false);

    EXPECT_STREQ(path, "a//b/./c");
}

TEST_F(PathCleaning, lowersTheCaseUnlessItIsKept)
{
    CString lowered("C:\\Dir\\\xC4");
    CString kept("C:\\Dir");

    omCleanPath(lowered, '\\', false, false, false);
    omCleanPath(kept, '\\', true, false, false);

    EXPECT_STREQ(lowered, "c:\\dir\\\xC4");
    EXPECT_STREQ(kept, "C:\\Dir");
}

// Cleaning once is not always enough: a removal may leave a "." behind.
TEST_F(PathCleaning, mayFindMoreToDoInItsOwnResult)
{
    CString path("a/..b/./c");

    omCleanPath(path, '/', true, true, false);
    EXPECT_STREQ(path, "/c");

    CString again("x/..y./z");
    omCleanPath(again, '/', true, true, false);
    EXPECT_STREQ(again, "./z");
    omCleanPath(again, '/', true, true, false);
    EXPECT_STREQ(again, "z");
}

// Every path of up to ten characters from the alphabet of what matters.
TEST_F(PathCleaning, agreesWithTheStepwiseWayOnAllShortPaths)
{
    std::string const alphabet = "a./";
    for (int length = 1; length <= 10; ++length) {
        std::string path(std::size_t(length), alphabet[0]);
        std::vector<int> digits(std::size_t(length), 0);
        for (;;) {
            for (std::size_t i = 0; i < path.size(); ++i)
                path[i] = alphabet[std::size_t(digits[i])];

            CString cutWithSlash(path.c_str()), cutWithBackslash(path.c_str()), cleaned(path.c_str());
            omCutMidDDot(cutWithSlash, '/');
            omCutMidDDot(cutWithBackslash, '\\');
            omCleanPath(cleaned, '/', true, true, false);
            ASSERT_EQ(cutWithSlash.GetString(), stepwiseCutMidDDot(path, '/', '\\')) << path;
            ASSERT_EQ(cutWithBackslash.GetString(), stepwiseCutMidDDot(path, '\\', '\\')) << path;
            ASSERT_EQ(cleaned.GetString(), stepwiseCleanPath(path, '/', true, true, false)) << path;

            std::size_t place = 0;
            while (place < digits.size() && ++digits[place] == int(alphabet.size()))
                digits[place++] = 0;
            if (place == digits.size())
                break;
        }
    }
}

// Longer ones by chance, with every option and separator.
TEST_F(PathCleaning, agreesWithTheStepwiseWayOnRandomPaths)
{
    unsigned state = 12345;
    auto const random = [&](unsigned below) {
        state = state * 1664525u + 1013904223u;
        return (state >> 16) % below;
    };
    char const separators[] = {'/', '\\', '!'};
    for (int round = 0; round < 100000; ++round) {
        std::string path;
        for (unsigned length = random(40); length > 0; --length)
            path += "aB..//\\\\!:"[random(10)];
        char const separator = separators[random(3)];
        bool const keepCase = random(2), resolveDots = random(2), collapse = random(2);
        char const native = random(2) ? '/' : '\\';
        zk::os::ScopedNativeSeparator const switched(native);

        CString cutPath(path.c_str()), cleaned(path.c_str());
        omCutMidDDot(cutPath, separator);
        omCleanPath(cleaned, separator, keepCase, resolveDots, collapse);

        ASSERT_EQ(cutPath.GetString(), stepwiseCutMidDDot(path, separator, native))
            << path << " with " << separator;
        ASSERT_EQ(cleaned.GetString(), stepwiseCleanPath(path, separator, keepCase, resolveDots, collapse))
            << path << " with " << separator;
    }
}

TEST_F(PathCleaning, takesPathsOfAMegabyte)
{
    std::string deep;
    for (int i = 0; i < 200000; ++i)
        deep += "a/";
    for (int i = 0; i < 199999; ++i)
        deep += "../";
    CString cutPath(deep.c_str()), cleaned(deep.c_str()), separators('/', 1000000), dots('.', 1000000);

    omCutMidDDot(cutPath, '/');
    omCleanPath(cleaned, '/', true, true, false);
    omCleanPath(separators, '/', true, true, false);
    omCutMidDDot(dots, '/');

    EXPECT_STREQ(cutPath, "a/");
    EXPECT_STREQ(cleaned, "a/");
    EXPECT_STREQ(separators, "//");
    EXPECT_EQ(dots.GetLength(), 1000000);
}

}  // namespace
