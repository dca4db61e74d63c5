#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <vector>

using namespace zk::os;
using namespace zk::test;

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class SearchFailures : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::ptrdiff_t const descriptors_ = openDescriptors();

    std::string path(std::string_view name) const { return folder_.path(name); }

    void expectFindFails(std::string_view pattern, DWORD error) const
    {
        WIN32_FIND_DATAA entry;
        EXPECT_FAILS(FindFirstFileA(path(pattern).c_str(), &entry), error);
        EXPECT_EQ(openDescriptors(), descriptors_);
    }

    Names find(std::string_view pattern) const
    {
        Names names;
        WIN32_FIND_DATAA entry;
        HANDLE const search = FindFirstFileA(path(pattern).c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE)
            return names;
        do
            names.push_back(entry.cFileName);
        while (FindNextFileA(search, &entry));
        EXPECT_TRUE(FindClose(search));
        return names;
    }
};

class SearchSnapshot : public SearchFailures { };
class SearchNames : public SearchFailures { };
class SearchLinks : public SearchFailures { };

}  // namespace

TEST_F(SearchFailures, areReported)
{
    folder_.write("file", "abc");
    {
        FaultInjector<&SystemCalls::open> const broken({.error = EMFILE});
        expectFindFails("*", ERROR_TOO_MANY_OPEN_FILES);
    }
    {
        FaultInjector<&SystemCalls::getdents64> const broken({.error = EIO});
        expectFindFails("*", ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::statx> const broken({.error = EIO});
        expectFindFails("*", ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::statx> const broken({.error = EIO});
        expectFindFails("file", ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::realpath> const broken({.error = ENOMEM});
        WIN32_FIND_DATAA entry;
        EXPECT_FAILS(FindFirstFileA(".", &entry), ERROR_NOT_ENOUGH_MEMORY);
    }
    folder_.write("plain", "");
    expectFindFails("plain/*", ERROR_PATH_NOT_FOUND);
    expectFindFails("plain/x", ERROR_PATH_NOT_FOUND);
}

TEST_F(SearchFailures, bySignalsGoUnnoticed)
{
    folder_.write("file", "abc");
    FaultInjector<&SystemCalls::open> const opens({.error = EINTR});
    FaultInjector<&SystemCalls::getdents64> const reads({.error = EINTR, .times = 2});

    EXPECT_EQ(find("f*"), Names({"file"}));
}

TEST_F(SearchFailures, inAClosedFolderAreReported)
{
    chmod(folder_.path().c_str(), 0755);
    folder_.makeFolder("closed");
    chmod(path("closed").c_str(), 0000);

    asOrdinaryUser([&] {
        WIN32_FIND_DATAA entry;
        EXPECT_FAILS(FindFirstFileA(path("closed/*").c_str(), &entry), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(FindFirstFileA(path("closed/x").c_str(), &entry), ERROR_ACCESS_DENIED);
    });
    chmod(path("closed").c_str(), 0700);
}

TEST_F(SearchFailures, areWhatHandlesOfOtherThingsGive)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    WIN32_FIND_DATAA entry;

    EXPECT_FAILS(FindNextFileA(file.get(), &entry), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(FindClose(file.get()), ERROR_INVALID_HANDLE);

    EXPECT_EQ(readAll(file.get()), "abc") << "the file is still open";
}

TEST_F(SearchSnapshot, passesOverWhatIsGone)
{
    for (char const* const name : {"a", "b", "c", "d"})
        folder_.write(name, "abc");
    WIN32_FIND_DATAA entry;
    HANDLE const search = FindFirstFileA(path("?").c_str(), &entry);  // gives "."
    fs::remove(path("a"));
    fs::remove(path("c"));
    folder_.write("e", "came later");
    Names names;

    while (FindNextFileA(search, &entry))
        names.push_back(entry.cFileName);

    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
    EXPECT_EQ(names, Names({"b", "d"}));
    FindClose(search);
}

TEST_F(SearchSnapshot, findsNothingWhereAllIsGone)
{
    folder_.write("only", "abc");
    BeforeCall<&SystemCalls::statx> const others([this] { fs::remove(path("only")); });

    expectFindFails("on*", ERROR_FILE_NOT_FOUND);
}

TEST_F(SearchSnapshot, holdsAllNamesOfALargeFolder)
{
    constexpr int count = 3000;
    for (int number = 0; number < count; ++number)
        folder_.write("file-with-a-longer-name-" + std::to_string(number), "");
    ShortTransfers<&SystemCalls::getdents64> const pieces(1000);

    EXPECT_EQ(find("*").size(), std::size_t(count + 2));
}

TEST_F(SearchSnapshot, keepsNoDescriptorForASingleEntry)
{
    folder_.write("file", "abc");
    WIN32_FIND_DATAA entry;

    HANDLE const search = FindFirstFileA(path("file").c_str(), &entry);

    EXPECT_EQ(openDescriptors(), descriptors_);
    FindClose(search);
}

TEST_F(SearchNames, areBytes)
{
    Names const names = {"\xFF\xFE\x80", "a\\b", std::string(255, 'n')};
    for (std::string const& name : names)
        folder_.write(name, "abc");

    EXPECT_EQ(find("\xFF*"), Names({names[0]}));
    EXPECT_EQ(find("?\\?"), Names({names[1]}));
    EXPECT_EQ(find("nn*"), Names({names[2]}));
    EXPECT_EQ(find(names[2]), Names({names[2]}));
}

TEST_F(SearchNames, matchWithCase)
{
    folder_.write("a.txt", "");
    folder_.write("A.TXT", "");
    folder_.write("A.txt", "");

    EXPECT_EQ(find("*.txt"), Names({"A.txt", "a.txt"}));
    EXPECT_EQ(find("A*"), Names({"A.TXT", "A.txt"}));
    EXPECT_EQ(find("*t*"), Names({"A.txt", "a.txt"}));
}

TEST_F(SearchLinks, showWhatTheyLeadTo)
{
    folder_.write("file", "abc");
    folder_.makeFolder("folder");
    fs::create_symlink("file", path("link-to-file"));
    fs::create_symlink("folder", path("link-to-folder"));
    fs::create_symlink("nowhere", path("link-to-nothing"));
    struct Row {
        char const* name;
        DWORD attributes;
        DWORD size;
    };
    Row const rows[] = {
        {"link-to-file", FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT, 3},
        {"link-to-folder", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT, 0},
        {"link-to-nothing", FILE_ATTRIBUTE_REPARSE_POINT, 0},
    };
    for (Row const& row : rows) {
        std::string const patterns[] = {row.name, std::string(row.name) + "*"};
        for (std::string const& pattern : patterns) {
            WIN32_FIND_DATAA entry;
            FindClose(FindFirstFileA(path(pattern).c_str(), &entry));

            EXPECT_STREQ(entry.cFileName, row.name);
            EXPECT_EQ(entry.dwFileAttributes, row.attributes) << pattern;
            EXPECT_EQ(entry.nFileSizeLow, row.size) << pattern;
            EXPECT_EQ(entry.dwReserved0, IO_REPARSE_TAG_SYMLINK) << pattern;
        }
        EXPECT_EQ(GetFileAttributesA(path(row.name).c_str()), row.attributes);
    }
}

TEST_F(SearchLinks, leadToTheFolderWhoseNameIsGiven)
{
    folder_.makeFolder("there");
    folder_.makeFolder("there/inner");
    fs::create_directory_symlink("there/inner", path("link"));
    struct Row {
        char const* path;
        char const* name;
    };
    Row const rows[] = {{"link/.", "inner"}, {"link/..", "there"}, {"there/inner/..", "there"}};
    for (Row const& row : rows) {
        WIN32_FIND_DATAA entry;
        EXPECT_TRUE(FindClose(FindFirstFileA(path(row.path).c_str(), &entry)));

        EXPECT_STREQ(entry.cFileName, row.name) << row.path;
    }
}

TEST(FilePatterns, match)
{
    struct Row {
        char const* name;
        char const* pattern;
        bool matches;
    };
    Row const rows[] = {
        {"", "", true},           {"", "*", true},         {"", "?", false},
        {"", ".*", true},         {"a", "", false},        {"a", "*", true},
        {"a", "a.*", true},       {"a", "a.*.*", true},    {"a.", "a.*", true},
        {"a", "a.", false},       {"a.b", "a.*.*", true},  {"abc", "a*c", true},
        {"abc", "a*b", false},    {"abcbc", "a*bc", true}, {"aXbXc", "*X?X*", true},
        {"aXbX", "*X?X?", false}, {"XbXc", "*X?X?", true}, {"a", "***", true},
        {"a", "*?*", true},       {"ab", "?", false},      {"a*", "a*", true},
        {"A", "a", false},        {"aab", "*ab", true},    {"a.txt.bak", "*.txt", false},
    };
    for (Row const& row : rows)
        EXPECT_EQ(matchesFilePattern(row.name, row.pattern), row.matches)
            << row.name << " against " << row.pattern;
}

TEST(FilePatterns, areMatchedInTimeHoweverManyStarsTheyHave)
{
    std::string const name(255, 'a');
    std::string pattern;
    for (int repeat = 0; repeat < 1000; ++repeat)
        pattern += "*a";

    EXPECT_FALSE(matchesFilePattern(name, pattern));
    EXPECT_FALSE(matchesFilePattern(name, pattern.substr(0, 200) + "b"));
    EXPECT_TRUE(matchesFilePattern(name, pattern.substr(0, 400)));
}
