#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/sharing.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/stat.h>

#include <filesystem>
#include <utility>
#include <vector>

using namespace zk::os;
using namespace zk::test;

namespace {

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

class FileFailures : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::ptrdiff_t const before_ = openDescriptors();

    FileFailures() { folder_.write("file", "0123456789"); }

    std::string path(std::string_view name = "file") const { return folder_.path(name); }

    void expectOpenFails(DWORD access, DWORD disposition, DWORD error, std::string_view name = "file") const
    {
        EXPECT_FAILS(CreateFileA(path(name).c_str(), access, sharesAll, nullptr, disposition, 0, nullptr),
                     error);
        EXPECT_EQ(openDescriptors(), before_) << "a descriptor was left open";
    }
};

class FileNames : public FileFailures { };
class FileLinks : public FileFailures { };
class FileRights : public FileFailures { };

int descriptorOf(ScopedHandle const& file)
{
    return objectOf(file.get())->descriptor();
}

}  // namespace

TEST_F(FileFailures, ofOpeningAreReported)
{
    struct Row {
        int error;
        DWORD expected;
    };
    Row const rows[] = {
        {EMFILE, ERROR_TOO_MANY_OPEN_FILES}, {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
        {EACCES, ERROR_ACCESS_DENIED},       {EROFS, ERROR_WRITE_PROTECT},
        {ENOSPC, ERROR_DISK_FULL},           {EIO, ERROR_IO_DEVICE},
        {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    };
    for (Row const& row : rows) {
        FaultInjector<&SystemCalls::open> const broken({.error = row.error, .times = always});
        for (DWORD disposition = CREATE_NEW; disposition <= TRUNCATE_EXISTING; ++disposition)
            expectOpenFails(readWrite, disposition, row.expected);
    }
    EXPECT_EQ(folder_.read("file"), "0123456789");
}

TEST_F(FileFailures, behindTheOpeningLeaveNoDescriptor)
{
    {
        FaultInjector<&SystemCalls::fstat> const broken({.error = EIO});
        expectOpenFails(GENERIC_READ, OPEN_EXISTING, ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::ftruncate> const broken({.error = EIO});
        expectOpenFails(GENERIC_WRITE, CREATE_ALWAYS, ERROR_IO_DEVICE);
    }
    EXPECT_EQ(folder_.read("file"), "0123456789");
}

TEST_F(FileFailures, behindACreationLeaveNoFile)
{
    DWORD const dispositions[] = {CREATE_NEW, CREATE_ALWAYS, OPEN_ALWAYS};
    for (DWORD const disposition : dispositions) {
        FaultInjector<&SystemCalls::fstat> const broken({.error = EIO});
        expectOpenFails(GENERIC_READ, disposition, ERROR_IO_DEVICE, "new");
        EXPECT_FALSE(folder_.exists("new"));
    }
}

TEST_F(FileFailures, behindACreationLeaveAFileThatSomebodyElseHasOpenedMeanwhile)
{
    ScopedHandle other;
    bool isFirst = true;
    BeforeCall<&SystemCalls::flock> const race([&] {
        if (std::exchange(isFirst, false))
            other = openFile(path("new"), readWrite, 0);
    });

    EXPECT_FAILS(CreateFileA(path("new").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr),
                 ERROR_SHARING_VIOLATION);

    EXPECT_TRUE(other);
    EXPECT_TRUE(folder_.exists("new"));
}

TEST_F(FileFailures, toEmptyAFileLeaveItsModeAlone)
{
    {
        FaultInjector<&SystemCalls::ftruncate> const broken({.error = EIO});
        EXPECT_FAILS(CreateFileA(path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_READONLY, nullptr),
                     ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::fchmod> const broken({.error = EPERM});
        EXPECT_FAILS(CreateFileA(path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_READONLY, nullptr),
                     ERROR_ACCESS_DENIED);
    }

    EXPECT_EQ(folder_.read("file"), "0123456789");
    EXPECT_EQ(GetFileAttributesA(path().c_str()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(FileFailures, ofAFullTableOfHandlesTouchNoFile)
{
    inChildProcess([this] {
        auto const object = std::make_shared<FileObject>(FileObject::none);
        while (openHandle(object, false)) { }
        ASSERT_EQ(GetLastError(), ERROR_TOO_MANY_OPEN_FILES);
        HANDLE ends[2] = {};

        expectOpenFails(GENERIC_WRITE, CREATE_NEW, ERROR_TOO_MANY_OPEN_FILES, "new");
        expectOpenFails(GENERIC_WRITE, CREATE_ALWAYS, ERROR_TOO_MANY_OPEN_FILES);
        EXPECT_FAILS(CreatePipe(&ends[0], &ends[1], nullptr, 0), ERROR_TOO_MANY_OPEN_FILES);
        EXPECT_FAILS(GetStdHandle(STD_ERROR_HANDLE), ERROR_TOO_MANY_OPEN_FILES);
        WIN32_FIND_DATAA entry;
        EXPECT_FAILS(FindFirstFileA(path("*").c_str(), &entry), ERROR_TOO_MANY_OPEN_FILES);

        EXPECT_EQ(openDescriptors(), before_);
    });

    EXPECT_FALSE(folder_.exists("new"));
    EXPECT_EQ(folder_.read("file"), "0123456789");
}

TEST_F(FileFailures, toDoWithoutTheKernelsBuffersGoUnnoticed)
{
    for (int call = 1; call <= 2; ++call) {
        FaultInjector<&SystemCalls::statusFlags> const unable({.error = EINVAL, .onCall = call});
        ScopedHandle const file =
            openFile(path("new"), GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_FLAG_NO_BUFFERING);

        EXPECT_TRUE(writeText(file.get(), "abc")) << "as in any other file";
        EXPECT_EQ(unable.calls(), call);
    }
}

TEST_F(FileFailures, bySignalsGoUnnoticed)
{
    FaultInjector<&SystemCalls::open> const opens({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::ftruncate> const cuts({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::write> const writes({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::read> const reads({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::fsync> const flushes({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::flock> const locks({.error = EINTR, .times = 2});

    ScopedHandle const file = openFile(path(), readWrite, sharesAll, TRUNCATE_EXISTING);

    EXPECT_TRUE(writeText(file.get(), "abc"));
    EXPECT_TRUE(FlushFileBuffers(file.get()));
    EXPECT_TRUE(SetEndOfFile(file.get()));
    SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
    EXPECT_EQ(readAll(file.get()), "abc");
    EXPECT_EQ(opens.calls(), 3);
    EXPECT_EQ(flushes.calls(), 3);
}

TEST_F(FileFailures, byShortTransfersGoUnnoticed)
{
    ShortTransfers<&SystemCalls::write> const writes(1);
    ShortTransfers<&SystemCalls::read> const reads(3);
    ScopedHandle const file = openFile(path(), readWrite);
    char buffer[20];
    DWORD count = 99;

    EXPECT_TRUE(writeText(file.get(), "abcdef"));
    SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
    EXPECT_TRUE(ReadFile(file.get(), buffer, sizeof buffer, &count, nullptr));

    EXPECT_EQ(std::string(buffer, count), "abcdef6789");
}

TEST_F(FileFailures, whenTheDiskIsFullSayWhatWasWritten)
{
    ShortTransfers<&SystemCalls::write> const drops(4);
    FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 2});
    ScopedHandle const file = openFile(path(), GENERIC_WRITE);
    DWORD count = 99;

    EXPECT_FAILS(WriteFile(file.get(), "abcdef", 6, &count, nullptr), ERROR_DISK_FULL);

    EXPECT_EQ(count, 4u);
    EXPECT_EQ(folder_.read("file"), "abcd456789");
}

TEST_F(FileFailures, ofARealFullDiskAreReported)
{
    ScopedHandle const full = openFile("/dev/full", GENERIC_WRITE);
    DWORD count = 99;

    EXPECT_FAILS(WriteFile(full.get(), "x", 1, &count, nullptr), ERROR_DISK_FULL);

    EXPECT_EQ(count, 0u);
    EXPECT_EQ(GetFileType(full.get()), FILE_TYPE_CHAR);
}

TEST_F(FileFailures, ofAnOpenFileAreReported)
{
    ScopedHandle const file = openFile(path(), readWrite);
    HANDLE const handle = file.get();
    char buffer[4];
    DWORD count = 99;
    LARGE_INTEGER size;
    {
        FaultInjector<&SystemCalls::read> const broken({.error = EIO});
        EXPECT_FAILS(ReadFile(handle, buffer, 4, &count, nullptr), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::write> const broken({.error = EFBIG});
        EXPECT_FAILS(WriteFile(handle, buffer, 4, &count, nullptr), ERROR_DISK_FULL);
    }
    {
        FaultInjector<&SystemCalls::ftruncate> const broken({.error = ENOSPC});
        EXPECT_FAILS(SetEndOfFile(handle), ERROR_DISK_FULL);
    }
    {
        FaultInjector<&SystemCalls::fsync> const broken({.error = EIO});
        EXPECT_FAILS(FlushFileBuffers(handle), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::fstat> const broken({.error = EIO});
        EXPECT_FAILS(GetFileSizeEx(handle, &size), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::lseek> const broken({.error = EIO});
        EXPECT_FAILS(SetFilePointer(handle, 0, nullptr, FILE_BEGIN), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::lockRange> const broken({.error = ENOLCK});
        EXPECT_FAILS(LockFile(handle, 0, 0, 1, 0), ERROR_GEN_FAILURE);
    }
    EXPECT_EQ(folder_.read("file"), "0123456789");
}

TEST_F(FileFailures, areNotWhatANonBlockingDescriptorSays)
{
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    ASSERT_TRUE(CreatePipe(&reader, &writer, nullptr, 0));
    ScopedHandle const first(reader);
    ScopedHandle const second(writer);
    FaultInjector<&SystemCalls::write> const busy({.error = EAGAIN, .times = 2});
    FaultInjector<&SystemCalls::read> const empty({.error = EAGAIN, .times = 2});
    FaultInjector<&SystemCalls::poll> const waits({.error = EINTR});

    EXPECT_TRUE(writeText(writer, "abc"));

    char buffer[10];
    DWORD count = 99;
    EXPECT_TRUE(ReadFile(reader, buffer, sizeof buffer, &count, nullptr));
    EXPECT_EQ(std::string(buffer, count), "abc");
    EXPECT_EQ(waits.calls(), 5);
}

TEST_F(FileFailures, areWhatRefusedArgumentsGive)
{
    struct Row {
        DWORD access;
        DWORD sharing;
        DWORD disposition;
        DWORD flags;
    };
    constexpr DWORD overlapped = 0x40000000, posixSemantics = 0x01000000, deleteAccess = 0x00010000;
    Row const rows[] = {
        {GENERIC_READ, 8, OPEN_ALWAYS, 0},
        {GENERIC_READ | deleteAccess, 0, OPEN_ALWAYS, 0},
        {GENERIC_READ, 0, OPEN_ALWAYS, overlapped},
        {GENERIC_READ, 0, OPEN_ALWAYS, posixSemantics},
        {GENERIC_READ, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN},
        {GENERIC_READ, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_SYSTEM},
        {GENERIC_READ, 0, TRUNCATE_EXISTING, 0},
    };
    for (Row const& row : rows)
        EXPECT_FAILS(CreateFileA(path("new").c_str(), row.access, row.sharing, nullptr, row.disposition,
                                 row.flags, nullptr),
                     ERROR_INVALID_PARAMETER);
    char descriptor[64] = {};
    SECURITY_ATTRIBUTES security = {sizeof security, descriptor, FALSE};
    EXPECT_FAILS(CreateFileA(path("new").c_str(), GENERIC_WRITE, 0, &security, CREATE_NEW, 0, nullptr),
                 ERROR_INVALID_PARAMETER);
    ScopedHandle const file = openFile(path(), readWrite);
    EXPECT_FAILS(CreateFileA(path("new").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, file.get()),
                 ERROR_INVALID_PARAMETER);
    auto* const asynchronous = reinterpret_cast<LPOVERLAPPED>(descriptor);
    DWORD count = 99;
    EXPECT_FAILS(ReadFile(file.get(), descriptor, 1, &count, asynchronous), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(WriteFile(file.get(), descriptor, 1, &count, asynchronous), ERROR_INVALID_PARAMETER);

    EXPECT_FALSE(folder_.exists("new"));
    EXPECT_EQ(folder_.read("file"), "0123456789");
}

TEST_F(FileFailures, areImpossibleRangesOfALock)
{
    ScopedHandle const file = openFile(path(), readWrite);
    ScopedHandle const reader = openFile(path(), GENERIC_READ);

    EXPECT_FAILS(LockFile(file.get(), 0, 0, 0, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(LockFile(file.get(), 1, 0, 0xFFFFFFFF, 0xFFFFFFFF), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(LockFile(file.get(), 0, 0xFFFFFFFF, 1, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(UnlockFile(file.get(), 0, 0, 1, 0), ERROR_NOT_LOCKED);
    EXPECT_FAILS(LockFile(reader.get(), 0, 0, 1, 0), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(LockFile(file.get(), 0, 0, 0xFFFFFFFF, 0xFFFFFFFF)) << "all that a file can hold";
    EXPECT_TRUE(openFile(path(), readWrite)) << "a lock of content is no matter of sharing";
}

TEST_F(FileFailures, ofAPositionThatNeeds64BitsLeaveItAlone)
{
    ScopedHandle const file = openFile(path(), GENERIC_READ);
    LARGE_INTEGER position;
    position.QuadPart = 0xFFFFFFFFLL;
    ASSERT_TRUE(SetFilePointerEx(file.get(), position, nullptr, FILE_BEGIN));

    EXPECT_FAILS(SetFilePointer(file.get(), 1, nullptr, FILE_CURRENT), ERROR_INVALID_PARAMETER);

    position.QuadPart = 0;
    EXPECT_TRUE(SetFilePointerEx(file.get(), position, &position, FILE_CURRENT));
    EXPECT_EQ(position.QuadPart, 0xFFFFFFFFLL);
}

TEST_F(FileFailures, ofAFileThatComesAndGoesEndInOneOrTheOther)
{
    int calls = 0;
    BeforeCall<&SystemCalls::open> const others([&] {
        if (++calls == 2)
            std::filesystem::remove(
                path());  // there when it was to be created, gone when it was to be opened
    });

    ScopedHandle const file = openFile(path(), GENERIC_WRITE, 0, OPEN_ALWAYS);

    EXPECT_TRUE(file);
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS) << "it was created";
    EXPECT_EQ(folder_.read("file"), "");
}

TEST_F(FileFailures, ofAFileThatComesAndGoesForEverEnd)
{
    int calls = 0;
    BeforeCall<&SystemCalls::open> const others([&] {
        if (++calls % 2 == 0)
            std::filesystem::remove(path());
        else
            folder_.write("file", "");
    });

    expectOpenFails(GENERIC_READ, OPEN_ALWAYS, ERROR_ACCESS_DENIED);
}

TEST_F(FileFailures, ofOtherProgramsGetNoDescriptor)
{
    ScopedHandle const file = openFile(path(), readWrite);
    ScopedHandle const folder =
        openFile(folder_.path(), GENERIC_READ, sharesAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);

    EXPECT_NE(fcntl(descriptorOf(file), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_NE(fcntl(descriptorOf(folder), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(FileNames, areBytes)
{
    std::string const names[] = {"\xFF\xFE\x80 latin", "a\\b",         "star*?",
                                 "tab\tand\nline",     "\xC3\xA4.txt", std::string(255, 'n')};
    for (std::string const& name : names) {
        EXPECT_TRUE(writeText(openFile(path(name), GENERIC_WRITE, 0, CREATE_NEW).get(), "abc")) << name;

        EXPECT_EQ(folder_.read(name), "abc") << name;
        EXPECT_EQ(GetFileAttributesA(path(name).c_str()), FILE_ATTRIBUTE_ARCHIVE) << name;
        EXPECT_TRUE(DeleteFileA(path(name).c_str())) << name;
    }
}

TEST_F(FileNames, haveALimit)
{
    std::string const tooLong(256, 'n');

    expectOpenFails(GENERIC_WRITE, CREATE_NEW, ERROR_FILENAME_EXCED_RANGE, tooLong);
    EXPECT_FAILS(GetFileAttributesA(path(tooLong).c_str()), ERROR_FILENAME_EXCED_RANGE);
}

TEST_F(FileLinks, leadToTheFile)
{
    std::filesystem::create_symlink("file", path("link"));

    EXPECT_EQ(readAll(openFile(path("link"), GENERIC_READ).get()), "0123456789");
    expectOpenFails(GENERIC_WRITE, CREATE_NEW, ERROR_FILE_EXISTS, "link");
    EXPECT_TRUE(openFile(path("link"), GENERIC_WRITE, 0, CREATE_ALWAYS));

    EXPECT_EQ(folder_.read("file"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
}

TEST_F(FileLinks, thatLeadNowhereGetAFileWhereOneIsCreated)
{
    std::filesystem::create_symlink("late", path("link"));

    expectOpenFails(GENERIC_READ, OPEN_EXISTING, ERROR_FILE_NOT_FOUND, "link");
    expectOpenFails(GENERIC_WRITE, CREATE_NEW, ERROR_FILE_EXISTS, "link");
    EXPECT_TRUE(openFile(path("link"), GENERIC_WRITE, 0, OPEN_ALWAYS));

    EXPECT_TRUE(folder_.exists("late"));
}

TEST_F(FileLinks, thatLeadNowhereAreFollowedFromFolderToFolder)
{
    folder_.makeFolder("a");
    folder_.makeFolder("b");
    std::filesystem::create_symlink("a/second", path("first"));
    std::filesystem::create_symlink("../b/third", path("a/second"));
    std::filesystem::create_symlink(path("late"), path("b/third"));
    std::filesystem::create_symlink("missing/late", path("lost"));

    EXPECT_TRUE(openFile(path("first"), GENERIC_WRITE, 0, CREATE_ALWAYS));
    expectOpenFails(GENERIC_WRITE, CREATE_ALWAYS, ERROR_PATH_NOT_FOUND, "lost");

    EXPECT_TRUE(folder_.exists("late"));
}

TEST_F(FileLinks, whoseFileComesMeanwhileAreEmptiedAsAnyOther)
{
    std::filesystem::create_symlink("late", path("link"));
    int calls = 0;
    BeforeCall<&SystemCalls::open> const others([&] {
        if (++calls == 3)
            folder_.write("late", "of somebody else");
    });

    ScopedHandle const file = openFile(path("link"), GENERIC_WRITE, 0, CREATE_ALWAYS);

    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(folder_.read("late"), "");
}

TEST_F(FileLinks, thatLeadToThemselvesLeadNowhere)
{
    std::filesystem::create_symlink("link", path("link"));

    expectOpenFails(GENERIC_READ, OPEN_EXISTING, ERROR_CANT_RESOLVE_FILENAME, "link");
    expectOpenFails(GENERIC_READ, OPEN_ALWAYS, ERROR_CANT_RESOLVE_FILENAME, "link");
}

TEST_F(FileRights, ofAReadOnlyFileHoldForTheSuperuserToo)
{
    ASSERT_TRUE(SetFileAttributesA(path().c_str(), FILE_ATTRIBUTE_READONLY));

    expectOpenFails(GENERIC_WRITE, OPEN_EXISTING, ERROR_ACCESS_DENIED);
    expectOpenFails(FILE_APPEND_DATA, OPEN_EXISTING, ERROR_ACCESS_DENIED);
    expectOpenFails(GENERIC_WRITE, CREATE_ALWAYS, ERROR_ACCESS_DENIED);
    expectOpenFails(GENERIC_READ, CREATE_ALWAYS, ERROR_ACCESS_DENIED);
    EXPECT_EQ(readAll(openFile(path(), GENERIC_READ).get()), "0123456789");
}

TEST_F(FileRights, becomeReadOnlyWithTheContentThatGoes)
{
    EXPECT_TRUE(openFile(path(), GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_READONLY));

    EXPECT_EQ(GetFileAttributesA(path().c_str()), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(FileRights, ofOthersAreRespected)
{
    chmod(folder_.path().c_str(), 0755);
    chmod(path().c_str(), 0600);
    folder_.write("drop", "abc");
    chmod(path("drop").c_str(), 0222);

    asOrdinaryUser([&] {
        bool const isMine = access(path().c_str(), R_OK) == 0;  // the tests don't run as the superuser
        if (!isMine) {
            EXPECT_FAILS(
                CreateFileA(path().c_str(), GENERIC_READ, sharesAll, nullptr, OPEN_EXISTING, 0, nullptr),
                ERROR_ACCESS_DENIED);
            EXPECT_FAILS(CreateFileA(path("new").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr),
                         ERROR_ACCESS_DENIED);
            EXPECT_TRUE(openFile(path(), 0)) << "to look at its attributes takes no right to its content";
        }
        ScopedHandle const drop = openFile(path("drop"), GENERIC_WRITE);
        EXPECT_TRUE(writeText(drop.get(), "x")) << "what may only be written is opened so";
    });

    EXPECT_EQ(folder_.read("drop"), "xbc");
}

TEST(SpecialFiles, areRecognised)
{
    TemporaryFolder const folder;
    std::string const fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    Descriptor reader(open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    ScopedHandle const writer = openFile(fifo, GENERIC_WRITE);
    DWORD count = 99;

    EXPECT_EQ(GetFileType(writer.get()), FILE_TYPE_PIPE);
    EXPECT_TRUE(writeText(writer.get(), "abc"));
    reader.reset();
    EXPECT_FAILS(WriteFile(writer.get(), "x", 1, &count, nullptr), ERROR_NO_DATA);

    ScopedHandle const null = openFile("/dev/null", readWrite);
    EXPECT_EQ(GetFileType(null.get()), FILE_TYPE_CHAR);
    EXPECT_EQ(GetFileAttributesA("/dev/null"), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(readAll(null.get()), "");
}

TEST(FilesThatGoWithTheirHandle, areFoundWhereverTheyAre)
{
    TemporaryFolder const folder;
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    ScopedHandle file = openFile("file", readWrite, sharesAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    std::filesystem::current_path(before);
    std::filesystem::rename(folder.path("file"), folder.path("moved"));
    folder.write("file", "another one");

    file.close();

    EXPECT_FALSE(folder.exists("moved"));
    EXPECT_EQ(folder.read("file"), "another one");
}

TEST(FilesThatGoWithTheirHandle, mayBeGoneAlready)
{
    TemporaryFolder const folder;
    ScopedHandle file =
        openFile(folder.path("file"), readWrite, sharesAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    std::filesystem::remove(folder.path("file"));
    folder.write("file (deleted)", "a name like the kernel's for what is gone");

    file.close();

    EXPECT_TRUE(folder.exists("file (deleted)"));
}

TEST(FilesThatGoWithTheirHandle, stayWhereTheyCannotBeRemoved)
{
    TemporaryFolder const folder;
    auto const expectStays = [&](char const* name) {
        ScopedHandle file =
            openFile(folder.path(name), readWrite, sharesAll, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
        EXPECT_TRUE(CloseHandle(file.get())) << "the handle is gone all the same";
        EXPECT_TRUE(folder.exists(name));
    };
    {
        FaultInjector<&SystemCalls::unlink> const stuck({.error = EACCES});
        expectStays("stuck");
    }
    {
        FaultInjector<&SystemCalls::readlink> const nameless({.error = ENOENT});
        expectStays("nameless");
    }
}
