#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <vector>

namespace {

using Names = std::vector<std::string>;

class FindFiles : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::filesystem::path const before_ = std::filesystem::current_path();

    ~FindFiles() override { std::filesystem::current_path(before_); }

    std::string path(std::string_view name) const { return folder_.path(name); }

    void makeFiles(Names const& names) const
    {
        for (std::string const& name : names)
            folder_.write(name, "abc");
    }
};

HANDLE findFirst(std::string const& pattern, WIN32_FIND_DATAA& entry)
{
    std::memset(&entry, '#', sizeof entry);
    return FindFirstFileA(pattern.c_str(), &entry);
}

// All names that match; a failure gives its error number alone.
Names find(std::string const& pattern)
{
    WIN32_FIND_DATAA entry;
    SetLastError(zk::test::poisonedError);
    HANDLE const search = findFirst(pattern, entry);
    if (search == INVALID_HANDLE_VALUE)
        return {std::to_string(GetLastError())};
    Names names;
    do
        names.push_back(entry.cFileName);
    while (FindNextFileA(search, &entry));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NO_MORE_FILES));
    EXPECT_FAILS(FindNextFileA(search, &entry), ERROR_NO_MORE_FILES);
    EXPECT_TRUE(FindClose(search));
    return names;
}

std::string error(DWORD number)
{
    return std::to_string(number);
}

}  // namespace

TEST_F(FindFiles, givesWhatMatches)
{
    makeFiles({".dot", "a", "ab.txt", "abc.txt", "b.c.txt", "Ba", "longer.named", "noext"});
    folder_.makeFolder("sub");
    folder_.makeFolder("Empty");
    Names const all = {".",  "..",    ".dot",         "a",     "ab.txt", "abc.txt", "b.c.txt",
                       "Ba", "Empty", "longer.named", "noext", "sub"};
    struct Row {
        char const* pattern;
        Names names;
    };
    Row const rows[] = {
        {"*", all},
        {"*.*", all},
        {"**", all},
        {"*.*.*", all},
        {"*.txt", {"ab.txt", "abc.txt", "b.c.txt"}},
        {"a?.txt", {"ab.txt"}},
        {"a??.txt", {"abc.txt"}},
        {"?", {".", "a"}},
        {"???", {"sub"}},
        {"a?", {error(ERROR_FILE_NOT_FOUND)}},
        {"????.txt", {error(ERROR_FILE_NOT_FOUND)}},
        {"*b*.txt", {"ab.txt", "abc.txt", "b.c.txt"}},
        {"?b*", {"ab.txt", "abc.txt"}},
        {"*.t?t", {"ab.txt", "abc.txt", "b.c.txt"}},
        {"*.tx", {error(ERROR_FILE_NOT_FOUND)}},
        {"ab*.*", {"ab.txt", "abc.txt"}},
        {"ab.*", {"ab.txt"}},
        {"noext.*", {"noext"}},
        {"a.*", {"a"}},
        {"a*c", {error(ERROR_FILE_NOT_FOUND)}},
        {"*.*t", {".dot", "ab.txt", "abc.txt", "b.c.txt"}},
        {"sub", {"sub"}},
        {"a", {"a"}},
        {"sub/*", {".", ".."}},
        {"sub/*.*", {".", ".."}},
        {"sub/x*", {error(ERROR_FILE_NOT_FOUND)}},
        {"sub/", {error(ERROR_FILE_NOT_FOUND)}},
        {"none/", {error(ERROR_FILE_NOT_FOUND)}},
        {"missing", {error(ERROR_FILE_NOT_FOUND)}},
        {"none/*", {error(ERROR_PATH_NOT_FOUND)}},
        {"none/x", {error(ERROR_PATH_NOT_FOUND)}},
        {"none/sub/x", {error(ERROR_PATH_NOT_FOUND)}},
        {"sub/.", {"sub"}},
    };
    for (Row const& row : rows)
        EXPECT_EQ(find(path(row.pattern)), row.names) << row.pattern;
}

TEST_F(FindFiles, looksFromTheCurrentDirectory)
{
    makeFiles({"one", "two"});
    folder_.makeFolder("sub");
    std::filesystem::current_path(folder_.path());

    EXPECT_EQ(find("o*"), Names({"one"}));
    EXPECT_EQ(find("./t*"), Names({"two"}));
    EXPECT_EQ(find("one"), Names({"one"}));
    EXPECT_EQ(find("."), Names({std::filesystem::path(folder_.path()).filename().string()}));
    EXPECT_EQ(find("sub/.."), find("."));
    EXPECT_EQ(find(""), Names({error(ERROR_PATH_NOT_FOUND)}));
}

TEST_F(FindFiles, findsNothingBehindTheRootItself)
{
    EXPECT_EQ(find("/"), Names({error(ERROR_FILE_NOT_FOUND)}));
}

TEST_F(FindFiles, goesOnWhenTheCurrentDirectoryHasChanged)
{
    makeFiles({"one", "two"});
    folder_.makeFolder("sub");
    std::filesystem::current_path(folder_.path());
    WIN32_FIND_DATAA entry;
    HANDLE const search = findFirst("*", entry);
    Names names = {entry.cFileName};

    std::filesystem::current_path("sub");
    while (FindNextFileA(search, &entry))
        names.push_back(entry.cFileName);

    EXPECT_EQ(names, Names({".", "..", "one", "sub", "two"}));
    FindClose(search);
}

TEST_F(FindFiles, givesAttributesSizesAndTimes)
{
    folder_.write("file", "0123456789");
    folder_.makeFolder("sub");
    FILETIME const written = {0, 0x01C00000};
    SetFileTime(openFile(path("file"), GENERIC_WRITE).get(), nullptr, nullptr, &written);
    char const* const patterns[] = {"file", "f*"};
    for (char const* const pattern : patterns) {
        WIN32_FIND_DATAA entry;

        HANDLE const search = findFirst(path(pattern), entry);

        EXPECT_EQ(entry.dwFileAttributes, DWORD(FILE_ATTRIBUTE_ARCHIVE));
        EXPECT_EQ(entry.nFileSizeLow, 10u);
        EXPECT_EQ(entry.nFileSizeHigh, 0u);
        EXPECT_EQ(CompareFileTime(&entry.ftLastWriteTime, &written), 0);
        EXPECT_STREQ(entry.cFileName, "file");
        EXPECT_STREQ(entry.cAlternateFileName, "");
        FindClose(search);
    }
    WIN32_FIND_DATAA entry;
    FindClose(findFirst(path("sub"), entry));
    EXPECT_EQ(entry.dwFileAttributes, DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(entry.nFileSizeLow, 0u);
}

TEST_F(FindFiles, sortsByUpperCase)
{
    makeFiles({"b", "A", "c", "B_", "_", "a1", "0"});

    EXPECT_EQ(find(path("*")), Names({".", "..", "0", "A", "a1", "b", "B_", "c", "_"}));
}

TEST_F(FindFiles, finishesWhileFilesAreDeletedAndCreated)
{
    makeFiles({"a", "b", "c"});
    WIN32_FIND_DATAA entry;
    HANDLE const search = findFirst(path("?*"), entry);
    Names names;
    do {
        names.push_back(entry.cFileName);
        if (names.back()[0] != '.')
            DeleteFileA(path(names.back()).c_str());
    } while (FindNextFileA(search, &entry));
    FindClose(search);

    EXPECT_THAT(names, testing::IsSupersetOf({"a", "b", "c"}));
    EXPECT_FALSE(folder_.exists("c"));
}

TEST_F(FindFiles, takesOnlyHandlesOfSearches)
{
    EXPECT_FAILS(FindClose(INVALID_HANDLE_VALUE), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(FindClose(nullptr), ERROR_INVALID_HANDLE);
    WIN32_FIND_DATAA entry;
    EXPECT_FAILS(FindNextFileA(INVALID_HANDLE_VALUE, &entry), ERROR_INVALID_HANDLE);
}

TEST_F(FindFiles, findsNamesAsLongAsTheyMayBe)
{
    std::string const longest(200, 'n');
    std::filesystem::current_path(folder_.path());
    WIN32_FIND_DATAA entry;
    HANDLE const file = CreateFileA(longest.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);

    HANDLE const search = findFirst("n*", entry);

    EXPECT_EQ(entry.cFileName, longest);
    FindClose(search);
}
