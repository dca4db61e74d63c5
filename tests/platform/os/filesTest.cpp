#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace {

class Files : public testing::Test {
protected:
    TemporaryFolder folder_;

    std::string path(std::string_view name) const { return folder_.path(name); }

    // Opens, closes, and gives the last error that the opening left.
    DWORD errorOf(std::string const& name, DWORD access, DWORD disposition,
                  DWORD flags = FILE_ATTRIBUTE_NORMAL)
    {
        SetLastError(zk::test::poisonedError);
        ScopedHandle const file = openFile(name, access, 0, disposition, flags);
        DWORD const error = GetLastError();
        opened_ = bool(file);
        return error;
    }

    bool opened_ = false;
};

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

}  // namespace

TEST_F(Files, areOpenedAndCreatedByDisposition)
{
    struct Row {
        DWORD disposition;
        bool exists;
        bool opens;
        DWORD error;
        char const* content;
    };
    Row const rows[] = {
        {CREATE_NEW, false, true, ERROR_SUCCESS, ""},
        {CREATE_NEW, true, false, ERROR_FILE_EXISTS, "old"},
        {CREATE_ALWAYS, false, true, ERROR_SUCCESS, ""},
        {CREATE_ALWAYS, true, true, ERROR_ALREADY_EXISTS, ""},
        {OPEN_EXISTING, false, false, ERROR_FILE_NOT_FOUND, nullptr},
        {OPEN_EXISTING, true, true, ERROR_SUCCESS, "old"},
        {OPEN_ALWAYS, false, true, ERROR_SUCCESS, ""},
        {OPEN_ALWAYS, true, true, ERROR_ALREADY_EXISTS, "old"},
        {TRUNCATE_EXISTING, false, false, ERROR_FILE_NOT_FOUND, nullptr},
        {TRUNCATE_EXISTING, true, true, ERROR_SUCCESS, ""},
    };
    for (Row const& row : rows) {
        std::string const name = "file-" + std::to_string(&row - rows);
        if (row.exists)
            folder_.write(name, "old");

        DWORD const error = errorOf(path(name), GENERIC_WRITE, row.disposition);

        EXPECT_EQ(opened_, row.opens) << name;
        EXPECT_EQ(error, row.error) << name;
        EXPECT_EQ(folder_.exists(name), row.content != nullptr) << name;
        if (row.content) {
            EXPECT_EQ(folder_.read(name), row.content) << name;
        }
    }
}

TEST_F(Files, thatCannotBeOpenedSayWhy)
{
    folder_.write("file", "abc");
    folder_.makeFolder("sub");
    struct Row {
        std::string name;
        DWORD access;
        DWORD disposition;
        DWORD error;
    };
    Row const rows[] = {
        {"", GENERIC_READ, OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {"", GENERIC_READ, 0, ERROR_PATH_NOT_FOUND},
        {path("file"), GENERIC_READ, 0, ERROR_INVALID_PARAMETER},
        {path("file"), GENERIC_READ, TRUNCATE_EXISTING + 1, ERROR_INVALID_PARAMETER},
        {path("missing"), GENERIC_READ, OPEN_EXISTING, ERROR_FILE_NOT_FOUND},
        {path("none/missing"), GENERIC_READ, OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {path("none/missing"), GENERIC_WRITE, CREATE_NEW, ERROR_PATH_NOT_FOUND},
        {path("file/x"), GENERIC_READ, OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {path("file/x"), GENERIC_WRITE, CREATE_ALWAYS, ERROR_PATH_NOT_FOUND},
        {path("file") + "/", GENERIC_READ, OPEN_EXISTING, ERROR_INVALID_NAME},
        {path("missing") + "/", GENERIC_READ, OPEN_EXISTING, ERROR_FILE_NOT_FOUND},
        {path("missing") + "/", GENERIC_WRITE, CREATE_NEW, ERROR_INVALID_NAME},
        {path("sub"), GENERIC_READ, OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {path("sub"), 0, OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {path("sub"), GENERIC_WRITE, CREATE_NEW, ERROR_FILE_EXISTS},
        {path("sub"), GENERIC_WRITE, CREATE_ALWAYS, ERROR_ACCESS_DENIED},
        {path("sub"), GENERIC_WRITE, OPEN_ALWAYS, ERROR_ACCESS_DENIED},
        {path("sub") + "/", GENERIC_READ, OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {path("sub") + "/", GENERIC_WRITE, CREATE_NEW, ERROR_FILE_EXISTS},
        {".", GENERIC_READ, OPEN_EXISTING, ERROR_ACCESS_DENIED},
        {path(std::string(5000, 'n')), GENERIC_READ, OPEN_EXISTING, ERROR_FILENAME_EXCED_RANGE},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(errorOf(row.name, row.access, row.disposition), row.error)
            << row.name.substr(0, 300) << ", disposition " << row.disposition;
        EXPECT_FALSE(opened_) << row.name.substr(0, 300);
    }
    EXPECT_FAILS(CreateFileA(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
                 ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(folder_.exists("missing"));
}

TEST_F(Files, keepTheirContentWhenOpenedToWriteUntilTheyAreEmptied)
{
    folder_.write("file", "0123456789");
    ScopedHandle const file = openFile(path("file"), readWrite);

    EXPECT_TRUE(writeText(file.get(), "abc"));

    EXPECT_EQ(folder_.read("file"), "abc3456789");
}

TEST_F(Files, areReadUpToTheirEnd)
{
    folder_.write("file", "0123456789");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    char buffer[20];
    std::memset(buffer, '#', sizeof buffer);
    DWORD count = 99;

    EXPECT_TRUE(ReadFile(file.get(), buffer, 4, &count, nullptr));

    EXPECT_EQ(count, 4u);
    EXPECT_EQ(std::string(buffer, 5), "0123#");
    EXPECT_TRUE(ReadFile(file.get(), buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(count, 6u);
    EXPECT_EQ(std::string(buffer, 7), "456789#");
    EXPECT_TRUE(ReadFile(file.get(), buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(ReadFile(file.get(), buffer, 0, &count, nullptr));
}

TEST_F(Files, areReadAndWrittenOnlyAsTheyWereOpened)
{
    folder_.write("file", "abc");
    char buffer[4];
    DWORD count = 99;

    ScopedHandle const reader = openFile(path("file"), GENERIC_READ);
    EXPECT_FAILS(WriteFile(reader.get(), "x", 1, &count, nullptr), ERROR_ACCESS_DENIED);
    EXPECT_EQ(count, 0u);
    EXPECT_FAILS(FlushFileBuffers(reader.get()), ERROR_ACCESS_DENIED);

    ScopedHandle const writer = openFile(path("file"), GENERIC_WRITE);
    EXPECT_FAILS(ReadFile(writer.get(), buffer, 1, &count, nullptr), ERROR_ACCESS_DENIED);
    EXPECT_EQ(count, 0u);

    ScopedHandle const neither = openFile(path("file"), 0);
    EXPECT_FAILS(ReadFile(neither.get(), buffer, 1, &count, nullptr), ERROR_ACCESS_DENIED);
    EXPECT_FAILS(WriteFile(neither.get(), "x", 1, &count, nullptr), ERROR_ACCESS_DENIED);
    EXPECT_EQ(GetFileSize(neither.get(), nullptr), 3u);
}

TEST_F(Files, reportABufferThatIsNotThere)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    DWORD count = 99;

    EXPECT_FAILS(ReadFile(file.get(), nullptr, 3, &count, nullptr), ERROR_NOACCESS);
    EXPECT_EQ(count, 0u);
}

TEST_F(Files, openedForAppendingAreWrittenAtTheirEndWhereverThePositionIs)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), FILE_APPEND_DATA);

    EXPECT_TRUE(writeText(file.get(), "de"));
    SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
    EXPECT_TRUE(writeText(file.get(), "fg"));

    EXPECT_EQ(SetFilePointer(file.get(), 0, nullptr, FILE_CURRENT), 7u);
    EXPECT_EQ(folder_.read("file"), "abcdefg");
}

TEST_F(Files, areMeasured)
{
    folder_.write("file", std::string(70000, 'x'));
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    DWORD high = 99;
    LARGE_INTEGER size;

    EXPECT_EQ(GetFileSize(file.get(), &high), 70000u);
    EXPECT_EQ(high, 0u);
    EXPECT_TRUE(GetFileSizeEx(file.get(), &size));
    EXPECT_EQ(size.QuadPart, 70000);
    EXPECT_EQ(GetFileType(file.get()), DWORD(FILE_TYPE_DISK));
}

TEST_F(Files, growBeyond32Bits)
{
    ScopedHandle const file = openFile(path("file"), readWrite, 0, CREATE_NEW);
    LARGE_INTEGER position;
    position.QuadPart = 0x1FFFFFFFFLL;  // sparse: nothing is written
    ASSERT_TRUE(SetFilePointerEx(file.get(), position, nullptr, FILE_BEGIN));
    ASSERT_TRUE(SetEndOfFile(file.get()));
    DWORD high = 99;

    SetLastError(zk::test::poisonedError);
    EXPECT_EQ(GetFileSize(file.get(), &high), 0xFFFFFFFFu);

    EXPECT_EQ(GetLastError(), DWORD(ERROR_SUCCESS)) << "the low half looks like a failure, and is none";
    EXPECT_EQ(high, 1u);
    LONG distanceHigh = 0;
    SetLastError(zk::test::poisonedError);
    EXPECT_EQ(SetFilePointer(file.get(), -1, &distanceHigh, FILE_BEGIN), 0xFFFFFFFFu);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_SUCCESS));
    EXPECT_EQ(distanceHigh, 0);
    distanceHigh = 1;
    EXPECT_EQ(SetFilePointer(file.get(), 5, &distanceHigh, FILE_BEGIN), 5u);
    EXPECT_EQ(distanceHigh, 1);
}

TEST_F(Files, moveTheirPosition)
{
    folder_.write("file", "0123456789");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    HANDLE const handle = file.get();

    EXPECT_EQ(SetFilePointer(handle, 4, nullptr, FILE_BEGIN), 4u);
    EXPECT_EQ(SetFilePointer(handle, 3, nullptr, FILE_CURRENT), 7u);
    EXPECT_EQ(SetFilePointer(handle, -2, nullptr, FILE_END), 8u);
    EXPECT_EQ(readAll(handle), "89");
    EXPECT_EQ(SetFilePointer(handle, 100, nullptr, FILE_END), 110u) << "behind the end is allowed";
    LONG high = -1;
    EXPECT_EQ(SetFilePointer(handle, -1, &high, FILE_END), 9u) << "both halves are one signed number";
    EXPECT_EQ(high, 0);
    EXPECT_FAILS(SetFilePointer(handle, -1, nullptr, FILE_BEGIN), ERROR_NEGATIVE_SEEK);
    EXPECT_FAILS(SetFilePointer(handle, -10, nullptr, FILE_CURRENT), ERROR_NEGATIVE_SEEK);
    EXPECT_FAILS(SetFilePointer(handle, 0, nullptr, 3), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(SetFilePointer(handle, 0, nullptr, FILE_CURRENT), 9u) << "a failure leaves the position alone";
}

TEST_F(Files, moveTheirPositionBy64Bits)
{
    folder_.write("file", "0123456789");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);
    LARGE_INTEGER distance, position;
    distance.QuadPart = 3;

    EXPECT_TRUE(SetFilePointerEx(file.get(), distance, &position, FILE_BEGIN));

    EXPECT_EQ(position.QuadPart, 3);
    EXPECT_TRUE(SetFilePointerEx(file.get(), distance, nullptr, FILE_CURRENT));
    distance.QuadPart = -7;
    position.QuadPart = 77;
    EXPECT_FAILS(SetFilePointerEx(file.get(), distance, &position, FILE_CURRENT), ERROR_NEGATIVE_SEEK);
    EXPECT_FAILS(SetFilePointerEx(file.get(), distance, &position, 9), ERROR_INVALID_PARAMETER);
    distance.QuadPart = INT64_MAX;
    EXPECT_FAILS(SetFilePointerEx(file.get(), distance, &position, FILE_BEGIN), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(position.QuadPart, 77);
}

TEST_F(Files, areCutAndLengthenedAtTheirPosition)
{
    folder_.write("file", "0123456789");
    ScopedHandle const file = openFile(path("file"), GENERIC_WRITE);

    SetFilePointer(file.get(), 4, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    EXPECT_EQ(folder_.read("file"), "0123");

    SetFilePointer(file.get(), 6, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file.get()));
    EXPECT_EQ(folder_.read("file"), std::string("0123\0\0", 6));

    EXPECT_TRUE(FlushFileBuffers(file.get()));
}

TEST_F(Files, areNotCutByAReader)
{
    folder_.write("file", "abc");
    ScopedHandle const file = openFile(path("file"), GENERIC_READ);

    EXPECT_FALSE(SetEndOfFile(file.get()));

    EXPECT_EQ(folder_.read("file"), "abc");
}

TEST_F(Files, thatAreClosedHaveNoHandle)
{
    folder_.write("file", "abc");
    HANDLE const stale = openFile(path("file"), readWrite).get();  // closed again at once
    DWORD count = 99;
    LARGE_INTEGER size;
    FILETIME time;
    char buffer[4];

    EXPECT_FAILS(ReadFile(stale, buffer, 1, &count, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(WriteFile(stale, buffer, 1, &count, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(SetFilePointer(stale, 0, nullptr, FILE_BEGIN), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(SetEndOfFile(stale), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileSize(stale, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileSizeEx(stale, &size), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(FlushFileBuffers(stale), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileType(stale), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileTime(stale, &time, nullptr, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(CloseHandle(stale), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetFileType(INVALID_HANDLE_VALUE), ERROR_INVALID_HANDLE);
}

TEST_F(Files, canBeCreatedReadOnlyAndFilledAllTheSame)
{
    {
        ScopedHandle const file =
            openFile(path("file"), GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_READONLY);

        EXPECT_TRUE(writeText(file.get(), "abc"));
    }

    EXPECT_EQ(folder_.read("file"), "abc");
    EXPECT_EQ(GetFileAttributesA(path("file").c_str()),
              DWORD(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
    SetFileAttributesA(path("file").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Files, areOpenedWithHints)
{
    DWORD const hints[] = {FILE_ATTRIBUTE_TEMPORARY, FILE_FLAG_WRITE_THROUGH, FILE_FLAG_SEQUENTIAL_SCAN,
                           FILE_FLAG_RANDOM_ACCESS, FILE_ATTRIBUTE_ARCHIVE};
    for (DWORD const hint : hints) {
        ScopedHandle const file = openFile(path("file"), GENERIC_WRITE, 0, CREATE_ALWAYS, hint);

        EXPECT_TRUE(writeText(file.get(), "abc")) << std::hex << hint;
    }
}

TEST_F(Files, areReadAndWrittenWithoutTheSystemsBuffers)
{
    constexpr std::size_t sector = 4096;  // whole ones, and at an address that is a multiple
    struct alignas(sector) Sector {
        char bytes[sector];
    };
    auto const written = std::make_unique<Sector>();
    auto const found = std::make_unique<Sector>();
    std::memset(written->bytes, 'x', sector);
    ScopedHandle const file = openFile(path("file"), readWrite, 0, CREATE_NEW, FILE_FLAG_NO_BUFFERING);
    DWORD count = 0;

    EXPECT_TRUE(WriteFile(file.get(), written->bytes, sector, &count, nullptr));
    EXPECT_EQ(count, sector);
    EXPECT_EQ(SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN), 0u);
    EXPECT_TRUE(ReadFile(file.get(), found->bytes, sector, &count, nullptr));

    EXPECT_EQ(count, sector);
    EXPECT_EQ(std::memcmp(found->bytes, written->bytes, sector), 0);
}

TEST_F(Files, mayBeFoldersWhoseTimesAreSet)
{
    folder_.makeFolder("sub");
    FILETIME const written = {0, 0x01C00000};
    FILETIME found = {};
    char buffer[4];
    DWORD count = 99;
    ScopedHandle const folder =
        openFile(path("sub"), readWrite, sharesAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(folder);

    EXPECT_SUCCEEDS(SetFileTime(folder.get(), nullptr, nullptr, &written));
    EXPECT_SUCCEEDS(GetFileTime(folder.get(), nullptr, nullptr, &found));

    EXPECT_EQ(CompareFileTime(&found, &written), 0);
    EXPECT_FAILS(ReadFile(folder.get(), buffer, 4, &count, nullptr), ERROR_INVALID_FUNCTION);
    EXPECT_FAILS(WriteFile(folder.get(), "abcd", 4, &count, nullptr), ERROR_INVALID_HANDLE);
    ScopedHandle const reader =
        openFile(path("sub"), GENERIC_READ, sharesAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    EXPECT_FAILS(FlushFileBuffers(reader.get()), ERROR_ACCESS_DENIED);
}

TEST_F(Files, mayBeFoldersThatAreThereButNeverNewOnes)
{
    folder_.makeFolder("sub");
    struct Row {
        char const* name;
        DWORD disposition;
        DWORD error;
        bool isOpened;
    };
    Row const rows[] = {
        {"sub", CREATE_NEW, ERROR_FILE_EXISTS, false},   {"sub", CREATE_ALWAYS, ERROR_FILE_EXISTS, false},
        {"sub", OPEN_EXISTING, ERROR_SUCCESS, true},     {"sub", OPEN_ALWAYS, ERROR_ALREADY_EXISTS, true},
        {"sub/", CREATE_NEW, ERROR_FILE_EXISTS, false},  {"sub/", CREATE_ALWAYS, ERROR_FILE_EXISTS, false},
        {"sub/", OPEN_EXISTING, ERROR_SUCCESS, true},    {"sub/", OPEN_ALWAYS, ERROR_ALREADY_EXISTS, true},
        {"new/", CREATE_NEW, ERROR_INVALID_NAME, false}, {"new/", OPEN_ALWAYS, ERROR_INVALID_NAME, false}};
    for (Row const& row : rows) {
        SetLastError(zk::test::poisonedError);

        ScopedHandle const folder =
            openFile(path(row.name), GENERIC_READ, sharesAll, row.disposition, FILE_FLAG_BACKUP_SEMANTICS);

        DWORD const error = GetLastError();
        EXPECT_EQ(bool(folder), row.isOpened) << row.name << " " << row.disposition;
        EXPECT_EQ(error, row.error) << row.name << " " << row.disposition;
    }
}

TEST_F(Files, thatAreToGoWithTheirHandleMayBeEmptyFolders)
{
    folder_.makeFolder("sub");
    ScopedHandle folder = openFile(path("sub"), GENERIC_READ, sharesAll, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_DELETE_ON_CLOSE);
    ASSERT_TRUE(folder);

    folder.close();

    EXPECT_FALSE(folder_.exists("sub"));
}

TEST_F(Files, canGoWithTheirLastHandle)
{
    ScopedHandle file = openFile(path("file"), readWrite, sharesAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    HANDLE copy = nullptr;
    HANDLE const thisProcess = INVALID_HANDLE_VALUE;  // the same value stands for both
    ASSERT_TRUE(
        DuplicateHandle(thisProcess, file.get(), thisProcess, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS));
    ScopedHandle second(copy);

    file.close();
    EXPECT_TRUE(folder_.exists("file"));
    second.close();

    EXPECT_FALSE(folder_.exists("file"));
}

TEST_F(Files, haveTheirRangesLocked)
{
    folder_.write("file", "0123456789");
    ScopedHandle const mine = openFile(path("file"), readWrite);
    ScopedHandle const other = openFile(path("file"), readWrite);

    EXPECT_TRUE(LockFile(mine.get(), 0, 0, 10, 0));

    EXPECT_FAILS(LockFile(mine.get(), 5, 0, 10, 0), ERROR_LOCK_VIOLATION);
    EXPECT_FAILS(LockFile(other.get(), 9, 0, 1, 0), ERROR_LOCK_VIOLATION);
    EXPECT_TRUE(LockFile(other.get(), 10, 0, 1, 0));
    EXPECT_FALSE(UnlockFile(mine.get(), 0, 0, 5, 0)) << "a part is not what was locked";
    EXPECT_TRUE(UnlockFile(mine.get(), 0, 0, 10, 0));
    EXPECT_FALSE(UnlockFile(mine.get(), 0, 0, 10, 0));
    EXPECT_TRUE(LockFile(other.get(), 0, 0, 1, 0));
    EXPECT_TRUE(LockFile(mine.get(), 0, 1, 0, 1)) << "behind the end of the file";
}

TEST_F(Files, loseTheirLocksWithTheHandle)
{
    folder_.write("file", "0123456789");
    ScopedHandle mine = openFile(path("file"), readWrite);
    ScopedHandle const other = openFile(path("file"), readWrite);
    ASSERT_TRUE(LockFile(mine.get(), 0, 0, 10, 0));

    mine.close();

    EXPECT_TRUE(LockFile(other.get(), 0, 0, 10, 0));
}
