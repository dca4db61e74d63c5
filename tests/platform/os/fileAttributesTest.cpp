#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

class FileAttributes : public testing::Test {
protected:
    TemporaryFolder folder_;

    std::string path(std::string_view name) const { return folder_.path(name); }

    DWORD attributesOf(std::string const& name) const { return GetFileAttributesA(path(name).c_str()); }
    bool set(std::string const& name, DWORD attributes) const
    {
        return SetFileAttributesA(path(name).c_str(), attributes) != FALSE;
    }
};

constexpr DWORD readOnlyFile = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE;

ULONGLONG ticks(FILETIME const& time)
{
    return ULONGLONG(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

FILETIME fileTime(ULONGLONG ticks)
{
    return {DWORD(ticks), DWORD(ticks >> 32)};
}

constexpr ULONGLONG ticksPerSecond = 10'000'000;
constexpr ULONGLONG someTime = 126'000'000'000'000'000;  // in April 2000

}  // namespace

TEST_F(FileAttributes, tellFilesFromFolders)
{
    folder_.write("file", "abc");
    folder_.makeFolder("sub");

    EXPECT_EQ(attributesOf("file"), DWORD(FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(attributesOf("sub"), DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(attributesOf("sub/"), DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(attributesOf("sub/.."), DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(GetFileAttributesA("."), DWORD(FILE_ATTRIBUTE_DIRECTORY));
}

TEST_F(FileAttributes, ofWhatIsNotThereFail)
{
    folder_.write("file", "abc");

    EXPECT_FAILS(attributesOf("missing"), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(attributesOf("missing/"), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(attributesOf("none/missing"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(attributesOf("file/x"), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(GetFileAttributesA(""), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(GetFileAttributesA(nullptr), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(set("missing", FILE_ATTRIBUTE_NORMAL), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(set("none/missing", FILE_ATTRIBUTE_NORMAL), ERROR_PATH_NOT_FOUND);
    EXPECT_FAILS(set("file/", FILE_ATTRIBUTE_NORMAL), ERROR_INVALID_NAME);
    EXPECT_FAILS(SetFileAttributesA("", FILE_ATTRIBUTE_NORMAL), ERROR_PATH_NOT_FOUND);
}

TEST_F(FileAttributes, makeAFileReadOnlyAndWritableAgain)
{
    folder_.write("file", "abc");

    EXPECT_TRUE(set("file", FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(attributesOf("file"), readOnlyFile);

    DWORD const writable[] = {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_ARCHIVE, 0};
    for (DWORD const attributes : writable) {
        EXPECT_TRUE(set("file", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
        EXPECT_TRUE(set("file", attributes));
        EXPECT_EQ(attributesOf("file") & FILE_ATTRIBUTE_READONLY, 0u) << attributes;
    }
}

TEST_F(FileAttributes, ofAReadOnlyFileKeepItFromBeingDeleted)
{
    folder_.write("file", "abc");
    set("file", FILE_ATTRIBUTE_READONLY);

    EXPECT_FAILS(DeleteFileA(path("file").c_str()), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(CreateFileA(path("file").c_str(), GENERIC_READ, sharesAll, nullptr, OPEN_EXISTING,
                             FILE_FLAG_DELETE_ON_CLOSE, nullptr),
                 ERROR_ACCESS_DENIED);

    EXPECT_TRUE(folder_.exists("file"));
    set("file", FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(DeleteFileA(path("file").c_str()));
}

TEST_F(FileAttributes, comeWithSizeAndTimes)
{
    folder_.write("file", "0123456789");
    folder_.makeFolder("sub");
    WIN32_FILE_ATTRIBUTE_DATA data;
    std::memset(&data, 0xAB, sizeof data);

    ASSERT_TRUE(GetFileAttributesExA(path("file").c_str(), GetFileExInfoStandard, &data));

    EXPECT_EQ(data.dwFileAttributes, DWORD(FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(data.nFileSizeLow, 10u);
    EXPECT_EQ(data.nFileSizeHigh, 0u);
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    EXPECT_NEAR(double(ticks(data.ftLastWriteTime)), double(ticks(now)), 600.0 * ticksPerSecond);
    ASSERT_TRUE(GetFileAttributesExA(path("sub").c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(data.dwFileAttributes, DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(data.nFileSizeLow, 0u);
    EXPECT_FAILS(GetFileAttributesExA(path("missing").c_str(), GetFileExInfoStandard, &data),
                 ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(GetFileAttributesExA(path("file").c_str(), GET_FILEEX_INFO_LEVELS(1), &data),
                 ERROR_INVALID_PARAMETER);
}

TEST_F(FileAttributes, ofAnOpenFileSayWhichItIs)
{
    folder_.write("one", "abc");
    folder_.write("two", "abc");
    ScopedHandle const first = openFile(path("one"), 0);
    ScopedHandle const again = openFile(path("one"), GENERIC_READ);
    ScopedHandle const other = openFile(path("two"), GENERIC_READ);
    BY_HANDLE_FILE_INFORMATION mine, same, different;

    ASSERT_TRUE(GetFileInformationByHandle(first.get(), &mine));
    ASSERT_TRUE(GetFileInformationByHandle(again.get(), &same));
    ASSERT_TRUE(GetFileInformationByHandle(other.get(), &different));

    EXPECT_EQ(mine.dwFileAttributes, DWORD(FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(mine.nFileSizeLow, 3u);
    EXPECT_EQ(mine.nNumberOfLinks, 1u);
    auto const index = [](BY_HANDLE_FILE_INFORMATION const& information) {
        return ULONGLONG(information.nFileIndexHigh) << 32 | information.nFileIndexLow;
    };
    EXPECT_EQ(index(mine), index(same));
    EXPECT_EQ(mine.dwVolumeSerialNumber, same.dwVolumeSerialNumber);
    EXPECT_NE(index(mine), index(different));
    EXPECT_FAILS(GetFileInformationByHandle(INVALID_HANDLE_VALUE, &mine), ERROR_INVALID_HANDLE);
}

TEST_F(FileAttributes, holdTheTimesThatWereSet)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), GENERIC_WRITE);
    FILETIME const accessed = fileTime(someTime + 1 * ticksPerSecond);
    FILETIME const written = fileTime(someTime + 2 * ticksPerSecond + 1234567);

    EXPECT_TRUE(SetFileTime(file.get(), nullptr, &accessed, &written));

    FILETIME created, a, w;
    EXPECT_TRUE(GetFileTime(file.get(), &created, &a, &w));
    EXPECT_EQ(ticks(a), ticks(accessed));
    EXPECT_EQ(ticks(w), ticks(written));
    EXPECT_GT(ticks(created), 0u);
    EXPECT_TRUE(GetFileTime(file.get(), nullptr, nullptr, nullptr));
}

TEST_F(FileAttributes, keepATimeThatIsNotToBeSet)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), FILE_WRITE_ATTRIBUTES);
    FILETIME const set = fileTime(someTime);
    FILETIME const zero = fileTime(0);
    FILETIME const all = fileTime(UINT64_MAX);
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, &set, &set));

    EXPECT_TRUE(SetFileTime(file.get(), nullptr, nullptr, nullptr));
    EXPECT_TRUE(SetFileTime(file.get(), &zero, &zero, &zero));
    EXPECT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &all));

    FILETIME a, w;
    GetFileTime(file.get(), nullptr, &a, &w);
    EXPECT_EQ(ticks(a), someTime);
    EXPECT_EQ(ticks(w), someTime);
}

TEST_F(FileAttributes, holdEarlyTimesAndRefuseImpossibleOnes)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), GENERIC_WRITE);
    FILETIME const early = fileTime(72'057'594'037'927'936);  // in 1829
    FILETIME const impossible = fileTime(ULONGLONG(INT64_MAX) + 1);
    FILETIME written;

    EXPECT_FAILS(SetFileTime(file.get(), nullptr, nullptr, &impossible), ERROR_INVALID_PARAMETER);
    if (!SetFileTime(file.get(), nullptr, nullptr, &early))
        GTEST_FAIL() << GetLastError();
    GetFileTime(file.get(), nullptr, nullptr, &written);

    // A file system may keep times from 1901 on alone, and then keeps its earliest.
    EXPECT_LT(ticks(written), 95'000'000'000'000'000u);
}

TEST_F(FileAttributes, ofAFolderAreReachedThroughAHandleToo)
{
    folder_.makeFolder("sub");
    ScopedHandle const folder =
        openFile(path("sub"), FILE_WRITE_ATTRIBUTES, sharesAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(folder);
    FILETIME const set = fileTime(someTime);
    FILETIME written;

    EXPECT_TRUE(SetFileTime(folder.get(), nullptr, nullptr, &set));

    EXPECT_TRUE(GetFileTime(folder.get(), nullptr, nullptr, &written));
    EXPECT_EQ(ticks(written), someTime);
}
