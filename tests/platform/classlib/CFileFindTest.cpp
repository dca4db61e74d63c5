#include "platform/classlib/CFileFind.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

class FileFindTest : public testing::Test {
protected:
    CString path(char const* entry) const { return CString(folder.path(entry).c_str()); }

    // All entries; "." and ".." are dots, a folder ends in a slash.
    std::multiset<std::string> find(char const* pattern)
    {
        CFileFind finder;
        std::multiset<std::string> names;
        BOOL more = finder.FindFile(path(pattern));
        while (more) {
            more = finder.FindNextFile();
            std::string name = finder.GetFileName().GetString();
            EXPECT_EQ(finder.IsDots() != FALSE, name == "." || name == "..");
            names.insert(finder.IsDirectory() ? name + "/" : name);
        }
        return names;
    }

    TemporaryFolder folder;
};

using FileFind = FileFindTest;
using Names = std::multiset<std::string>;

}  // namespace

TEST_F(FileFind, goesThroughAllThatMatches)
{
    folder.write("a.cpp", "");
    folder.write("b.cpp", "");
    folder.write("c.h", "");
    folder.makeFolder("d.cpp");

    EXPECT_EQ(find("*.cpp"), (Names{"a.cpp", "b.cpp", "d.cpp/"}));
    EXPECT_EQ(find("?.h"), Names{"c.h"});
    EXPECT_EQ(find("c.h"), Names{"c.h"});
    EXPECT_EQ(find("*"), (Names{"./", "../", "a.cpp", "b.cpp", "c.h", "d.cpp/"}));
    EXPECT_EQ(find("*.*"), (Names{"./", "../", "a.cpp", "b.cpp", "c.h", "d.cpp/"}));
}

TEST_F(FileFind, tellsWithTheLastEntryThatThereIsNoMore)
{
    folder.write("a.x", "");
    folder.write("b.x", "");
    CFileFind finder;

    ASSERT_TRUE(finder.FindFile(path("*.x")));
    EXPECT_TRUE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindNextFile());
    CString const last = finder.GetFileName();

    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_EQ(finder.GetFileName(), last);
}

TEST_F(FileFind, failsWhenNothingMatches)
{
    CFileFind finder;

    EXPECT_FAILS(finder.FindFile(path("*.x")), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(finder.FindFile(path("none/*")), ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(finder.FindNextFile());
}

TEST_F(FileFind, tellsNothingBeforeTheFirstEntry)
{
    folder.write("a.x", "abc");
    CFileFind finder;
    CTime time(77);
    FILETIME fileTime;

    ASSERT_TRUE(finder.FindFile(path("*.x")));

    EXPECT_TRUE(finder.GetFileName().IsEmpty());
    EXPECT_TRUE(finder.GetFileTitle().IsEmpty());
    EXPECT_EQ(finder.GetLength(), 0u);
    EXPECT_FALSE(finder.IsDirectory());
    EXPECT_FALSE(finder.IsDots());
    EXPECT_FALSE(finder.MatchesMask(0xFFFFFFFF));
    EXPECT_FALSE(finder.GetLastWriteTime(time));
    EXPECT_FALSE(finder.GetLastWriteTime(&fileTime));
    EXPECT_EQ(time, CTime(77));
}

TEST_F(FileFind, tellsTheNamesOfAnEntry)
{
    folder.makeFolder("sub");
    folder.write("sub/model.tar.gz", "abc");
    CFileFind finder;

    ASSERT_TRUE(finder.FindFile(path("sub/*.gz")));
    finder.FindNextFile();

    EXPECT_EQ(finder.GetFileName(), "model.tar.gz");
    EXPECT_EQ(finder.GetFileTitle(), "model.tar");
    EXPECT_EQ(finder.GetRoot(), path("sub"));
    EXPECT_EQ(finder.GetFilePath(), path("sub/model.tar.gz"));
    EXPECT_EQ(finder.GetFileURL(), "file://" + path("sub/model.tar.gz"));
    EXPECT_EQ(finder.GetLength(), 3u);
}

TEST_F(FileFind, makesARelativePatternFull)
{
    folder.write("a.x", "");
    char before[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryA(sizeof before, before), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
    CFileFind finder;

    BOOL const found = finder.FindFile("*.x");
    finder.FindNextFile();
    SetCurrentDirectoryA(before);

    EXPECT_TRUE(found);
    EXPECT_EQ(finder.GetFilePath().Right(4), CString(zk::os::nativeSeparator()) + "a.x");
    EXPECT_GT(finder.GetFilePath().GetLength(), 4);
}

TEST_F(FileFind, findsEverythingInTheCurrentFolderWithoutAPattern)
{
    folder.write("a.x", "");
    char before[MAX_PATH];
    ASSERT_NE(GetCurrentDirectoryA(sizeof before, before), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
    CFileFind finder;
    Names names;

    for (BOOL more = finder.FindFile(); more;) {
        more = finder.FindNextFile();
        names.insert(finder.GetFileName().GetString());
    }
    SetCurrentDirectoryA(before);

    EXPECT_EQ(names, (Names{".", "..", "a.x"}));
}

TEST_F(FileFind, tellsTheAttributesOfAnEntry)
{
    folder.write("a.x", "");
    ASSERT_TRUE(SetFileAttributesA(path("a.x"), FILE_ATTRIBUTE_READONLY));
    CFileFind finder;

    ASSERT_TRUE(finder.FindFile(path("a.x")));
    finder.FindNextFile();

    EXPECT_TRUE(finder.IsReadOnly());
    EXPECT_TRUE(finder.MatchesMask(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_FALSE(finder.MatchesMask(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_FALSE(finder.IsDirectory());
    EXPECT_FALSE(finder.IsSystem());
    EXPECT_FALSE(finder.IsTemporary());
    EXPECT_FALSE(finder.IsCompressed());
    EXPECT_FALSE(finder.IsHidden());
    EXPECT_FALSE(finder.IsNormal());
    SetFileAttributesA(path("a.x"), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileFind, tellsTheTimesOfAnEntry)
{
    folder.write("a.x", "");
    HANDLE const handle = CreateFileA(path("a.x"), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    FILETIME const written = {0xD53E8000, 0x019DB1DE + 0x00200000};
    FILETIME const read = {0xD53E8000, 0x019DB1DE + 0x00210000};
    ASSERT_TRUE(SetFileTime(handle, nullptr, &read, &written));
    CloseHandle(handle);
    CFileFind finder;
    CTime time;
    FILETIME fileTime;

    ASSERT_TRUE(finder.FindFile(path("a.x")));
    finder.FindNextFile();

    EXPECT_TRUE(finder.GetLastWriteTime(time));
    EXPECT_EQ(time, CTime(written));
    EXPECT_TRUE(finder.GetLastWriteTime(&fileTime));
    EXPECT_EQ(fileTime.dwHighDateTime, written.dwHighDateTime);
    EXPECT_TRUE(finder.GetLastAccessTime(time));
    EXPECT_EQ(time, CTime(read));
    EXPECT_TRUE(finder.GetLastAccessTime(&fileTime));
    EXPECT_FALSE(finder.GetLastWriteTime(nullptr));
}

TEST_F(FileFind, startsAnew)
{
    folder.write("a.x", "");
    folder.write("a.y", "");
    CFileFind finder;
    finder.FindFile(path("*.x"));
    finder.FindNextFile();

    ASSERT_TRUE(finder.FindFile(path("*.y")));
    EXPECT_TRUE(finder.GetFileName().IsEmpty());
    finder.FindNextFile();
    EXPECT_EQ(finder.GetFileName(), "a.y");
    finder.Close();

    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_TRUE(finder.GetRoot().IsEmpty());
}
