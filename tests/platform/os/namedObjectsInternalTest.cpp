// Files behind named objects: what planted or damaged ones do, and what a failing kernel does.
#include "platform/os/os.h"
#include "platform/os/posix/namedObjects.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ObjectNames.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

using zk::os::NamedMemory;
using zk::os::SystemCalls;
using zk::test::always;
using zk::test::BeforeCall;
using zk::test::ChildProcess;
using zk::test::FaultInjector;
using zk::test::OwnedHandle;

// Objects of these tests live in a folder of their own.
class NamedObjects : public testing::Test {
protected:
    NamedObjects()
    {
        if (char const* const before = std::getenv("XDG_RUNTIME_DIR"))
            before_ = before;
        setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    }

    ~NamedObjects() override
    {
        if (before_.empty())
            unsetenv("XDG_RUNTIME_DIR");
        else
            setenv("XDG_RUNTIME_DIR", before_.c_str(), 1);
    }

    std::string fileOf(std::string const& name) const { return folder.path("zentrika/" + name); }

    HANDLE createMutex(char const* name = "x") const { return CreateMutexA(nullptr, FALSE, name); }

    // Nothing is left behind by a call that failed.
    void expectEmpty() const
    {
        EXPECT_TRUE(!fs::exists(folder.path("zentrika")) || fs::is_empty(folder.path("zentrika")));
    }

    TemporaryFolder folder;

private:
    std::string before_;
};

// Keeps a file in use, as another process would.
class Lease {
public:
    explicit Lease(std::string const& file) : descriptor_(::open(file.c_str(), O_RDWR | O_CLOEXEC))
    {
        flock(descriptor_, LOCK_SH);
    }
    ~Lease() { ::close(descriptor_); }

private:
    int const descriptor_;
};

TEST_F(NamedObjects, liveInAFolderOfTheUsersOwn)
{
    OwnedHandle const mutex(createMutex("Global\\a b/c"));

    EXPECT_TRUE(fs::exists(fileOf("global.a%20b%2Fc")));
    EXPECT_EQ(fs::status(folder.path("zentrika")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(fileOf("global.a%20b%2Fc")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(NamedObjects, leaveNothingBehind)
{
    OwnedHandle mutex(createMutex("a"));
    OwnedHandle event(CreateEventA(nullptr, TRUE, TRUE, "b"));

    mutex.close();
    event.close();

    expectEmpty();
}

TEST_F(NamedObjects, aFolderOfAnotherUserOrOpenToOthersIsRefused)
{
    folder.makeFolder("zentrika");
    fs::permissions(folder.path("zentrika"), fs::perms::owner_all | fs::perms::group_exec);

    EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);
}

TEST_F(NamedObjects, aLinkInPlaceOfTheFolderIsRefused)
{
    folder.makeFolder("elsewhere");
    fs::permissions(folder.path("elsewhere"), fs::perms::owner_all);
    fs::create_directory_symlink(folder.path("elsewhere"), folder.path("zentrika"));

    EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);

    EXPECT_TRUE(fs::is_empty(folder.path("elsewhere")));
}

TEST_F(NamedObjects, aLinkInPlaceOfAFileIsRefused)
{
    OwnedHandle(createMutex("other")).close();
    folder.write("target", "precious");
    fs::create_symlink(folder.path("target"), fileOf("local.x"));

    EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);

    EXPECT_EQ(folder.read("target"), "precious");
}

TEST_F(NamedObjects, aFileOfSeveralNamesIsRefused)
{
    OwnedHandle(createMutex("other")).close();
    folder.write("target", std::string(8192, 'x'));
    fs::create_hard_link(folder.path("target"), fileOf("local.x"));

    EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);

    EXPECT_EQ(folder.read("target"), std::string(8192, 'x'));
}

TEST_F(NamedObjects, aPipeInPlaceOfAFileIsRefused)
{
    OwnedHandle(createMutex("other")).close();
    ASSERT_EQ(mkfifo(fileOf("local.x").c_str(), 0600), 0);

    EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);
}

TEST_F(NamedObjects, aFileThatNobodyUsesIsMadeAnew)
{
    OwnedHandle(createMutex("other")).close();
    for (std::size_t const size : {0u, 10u, 4096u, 9000u}) {
        folder.write("zentrika/local.x", std::string(size, '\xFF'));

        OwnedHandle const mutex(createMutex());

        EXPECT_EQ(GetLastError(), 0u);
        EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
        EXPECT_TRUE(ReleaseMutex(mutex));
    }
}

TEST_F(NamedObjects, aFileThatNobodyUsesIsNotOpened)
{
    OwnedHandle(createMutex("other")).close();
    folder.write("zentrika/local.x", std::string(4096, '\0'));

    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"), ERROR_FILE_NOT_FOUND);
}

TEST_F(NamedObjects, aFileInUseThatIsNoneOfOursIsRefused)
{
    OwnedHandle(createMutex("other")).close();
    for (std::string const& content :
         {std::string(), std::string(100, 'x'), std::string(4096, '\0'), std::string(5000, '\xFF')}) {
        folder.write("zentrika/local.x", content);
        Lease const lease(fileOf("local.x"));

        EXPECT_FAILS(createMutex(), ERROR_INVALID_DATA);
        EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"), ERROR_INVALID_DATA);

        EXPECT_EQ(folder.read("zentrika/local.x"), content);
    }
}

// Changes one field of a living object's file, as a hostile process might.
template <class Value>
void overwrite(std::string const& file, std::size_t offset, Value value)
{
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(std::streamoff(offset));
    stream.write(reinterpret_cast<char const*>(&value), sizeof value);
}

TEST_F(NamedObjects, aHeaderThatWasTamperedWithIsRefused)
{
    using zk::os::SharedHeader;
    struct {
        std::size_t offset;
        std::uint32_t value;
        DWORD error;
    } const rows[] = {
        {offsetof(SharedHeader, magic), 1, ERROR_INVALID_DATA},
        {offsetof(SharedHeader, layout), 99, ERROR_INVALID_DATA},
        {offsetof(SharedHeader, kind), 99, ERROR_INVALID_HANDLE},
        {offsetof(SharedHeader, nameLength), 0xFFFFFFFF, ERROR_INVALID_DATA},
        {offsetof(SharedHeader, bodySize) + 4, 0xFFFFFFFF, ERROR_INVALID_DATA},
    };
    for (auto const& row : rows) {
        OwnedHandle const mutex(createMutex());
        overwrite(fileOf("local.x"), row.offset, row.value);

        EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"), row.error);
    }
}

TEST_F(NamedObjects, aSemaphoresCountThatWasTamperedWithDoesNoHarm)
{
    OwnedHandle const semaphore(CreateSemaphoreA(nullptr, 0, 5, "x"));
    overwrite(fileOf("local.x"), offsetof(zk::os::SharedHeader, words), 0xFFFFFFFFu);
    LONG previous = -77;

    EXPECT_FAILS(ReleaseSemaphore(semaphore, 1, &previous), ERROR_TOO_MANY_POSTS);
    EXPECT_EQ(WaitForSingleObject(semaphore, 0), WAIT_OBJECT_0);

    EXPECT_EQ(previous, -77);
}

TEST_F(NamedObjects, theLinksOfAMutexAreOutOfOthersReach)
{
    OwnedHandle const mutex(createMutex());
    WaitForSingleObject(mutex, 0);
    // Everything behind the header that another process could write.
    auto const end = NamedMemory::pageSize;
    std::string const content = folder.read("zentrika/local.x");
    EXPECT_EQ(content.size(), end);

    // No address of this process stands in the shared page.
    for (std::size_t offset = 0; offset + 8 <= end; offset += 8) {
        std::uintptr_t word;
        std::memcpy(&word, content.data() + offset, 8);
        EXPECT_FALSE(word >= 0x500000000000 && word < 0x800000000000) << offset;
    }
    EXPECT_TRUE(ReleaseMutex(mutex));
}

TEST_F(NamedObjects, failuresOfTheKernelAreErrorsAndLeaveNothingBehind)
{
    {
        FaultInjector<&SystemCalls::open> const full({.error = EMFILE});
        EXPECT_FAILS(createMutex(), ERROR_TOO_MANY_OPEN_FILES);
    }
    {
        FaultInjector<&SystemCalls::open> const denied({.error = EACCES, .onCall = 2});
        EXPECT_FAILS(createMutex(), ERROR_ACCESS_DENIED);
    }
    {
        FaultInjector<&SystemCalls::open> const full({.error = EMFILE, .onCall = 3});
        EXPECT_FAILS(createMutex(), ERROR_TOO_MANY_OPEN_FILES);
    }
    {
        FaultInjector<&SystemCalls::posix_fallocate> const full({.error = ENOSPC});
        EXPECT_FAILS(createMutex(), ERROR_DISK_FULL);
    }
    for (int const call : {1, 2}) {
        FaultInjector<&SystemCalls::mmap> const full({.error = ENOMEM, .onCall = call});
        EXPECT_FAILS(createMutex(), ERROR_NOT_ENOUGH_MEMORY);
    }
    for (int const call : {1, 2}) {
        FaultInjector<&SystemCalls::fstat> const failing({.error = EIO, .onCall = call});
        EXPECT_FAILS(createMutex(), ERROR_IO_DEVICE);
    }
    for (int const call : {1, 2}) {
        FaultInjector<&SystemCalls::flock> const failing({.error = ENOLCK, .onCall = call});
        EXPECT_FAILS(createMutex(), ERROR_GEN_FAILURE);
    }
    {
        FaultInjector<&SystemCalls::rename> const failing({.error = EIO});
        EXPECT_FAILS(createMutex(), ERROR_IO_DEVICE);
    }
    expectEmpty();

    OwnedHandle const mutex(createMutex());
    EXPECT_EQ(GetLastError(), 0u);
}

TEST_F(NamedObjects, failuresWhileOpeningAreErrors)
{
    OwnedHandle const mutex(createMutex());
    auto const open = [] { return OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"); };
    {
        FaultInjector<&SystemCalls::open> const full({.error = EMFILE, .onCall = 2});
        EXPECT_FAILS(open(), ERROR_TOO_MANY_OPEN_FILES);
    }
    {
        FaultInjector<&SystemCalls::fstat> const failing({.error = EIO, .onCall = 2});
        EXPECT_FAILS(open(), ERROR_IO_DEVICE);
    }
    {
        FaultInjector<&SystemCalls::mmap> const full({.error = ENOMEM});
        EXPECT_FAILS(open(), ERROR_NOT_ENOUGH_MEMORY);
    }

    OwnedHandle const opened(open());
    EXPECT_NE(HANDLE(opened), nullptr);
}

TEST_F(NamedObjects, interruptedCallsAreMadeAgain)
{
    FaultInjector<&SystemCalls::open> const open({.error = EINTR, .times = 2});
    FaultInjector<&SystemCalls::flock> const flock({.error = EINTR, .times = 2});

    OwnedHandle mutex(createMutex());
    EXPECT_EQ(GetLastError(), 0u);
    mutex.close();

    expectEmpty();
}

TEST_F(NamedObjects, aFolderThatCannotBeMadeIsAnError)
{
    fs::remove_all(folder.path());

    EXPECT_FAILS(createMutex(), ERROR_FILE_NOT_FOUND);

    fs::create_directory(folder.path());
}

ZK_CHILD(diesWhileItCreates)
{
    // Killed at the moment that the parent asks for, with everything half done.
    BeforeCall<&SystemCalls::posix_fallocate> const beforeSize([&] {
        if (parent.argument() == "size")
            raise(SIGKILL);
    });
    BeforeCall<&SystemCalls::rename> const beforeRename([&] {
        if (parent.argument() == "rename")
            raise(SIGKILL);
    });
    CreateMutexA(nullptr, TRUE, "x");
    return 0;
}

TEST_F(NamedObjects, aCreatorKilledHalfWayHarmsNobody)
{
    for (char const* const moment : {"size", "rename"}) {
        ChildProcess child("diesWhileItCreates", moment);
        EXPECT_EQ(child.exitCode(), -1);

        EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"), ERROR_FILE_NOT_FOUND);
        OwnedHandle mutex(createMutex());
        EXPECT_EQ(GetLastError(), 0u) << moment;
        EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0) << moment;
        ReleaseMutex(mutex);
        mutex.close();
        expectEmpty();
    }
}

ZK_CHILD(diesWhileItCloses)
{
    OwnedHandle mutex(CreateMutexA(nullptr, FALSE, "x"));
    BeforeCall<&SystemCalls::unlink> const beforeUnlink([] { raise(SIGKILL); });
    mutex.close();
    return 0;
}

TEST_F(NamedObjects, aLastUserKilledWhileItClosesLeavesTheNameFree)
{
    ChildProcess child("diesWhileItCloses");
    EXPECT_EQ(child.exitCode(), -1);

    EXPECT_FAILS(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"), ERROR_FILE_NOT_FOUND);
}

ZK_CHILD(opensTheMutex)
{
    OwnedHandle const mutex(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"));
    parent.say(mutex ? "opened" : "not there");
    parent.awaits("look");
    parent.say(WaitForSingleObject(mutex, 0) == WAIT_TIMEOUT ? "held" : "free");
    parent.awaits("end");
    return 0;
}

TEST_F(NamedObjects, aMutexClosedByItsOwnerStaysHeldForOtherProcesses)
{
    OwnedHandle mutex(CreateMutexA(nullptr, TRUE, "x"));
    ChildProcess child("opensTheMutex");
    child.awaits("opened");

    mutex.close();
    child.say("look");
    child.awaits("held");

    OwnedHandle const again(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, "x"));
    EXPECT_TRUE(ReleaseMutex(again)) << "the owner finds it again";
    child.say("end");
    EXPECT_EQ(child.exitCode(), 0);
}

TEST_F(NamedObjects, openedInTwoThreadsAtOnceAreOne)
{
    for (int round = 0; round < 50; ++round) {
        OwnedHandle handles[2];
        DWORD errors[2];
        std::thread threads[2];
        for (int i = 0; i < 2; ++i)
            threads[i] = std::thread([&, i] {
                handles[i] = OwnedHandle(createMutex());
                errors[i] = GetLastError();
            });
        for (std::thread& thread : threads)
            thread.join();

        EXPECT_EQ(errors[0] + errors[1], DWORD(ERROR_ALREADY_EXISTS));
        EXPECT_EQ(WaitForSingleObject(handles[0], 0), WAIT_OBJECT_0);
        EXPECT_TRUE(ReleaseMutex(handles[1]));
    }
}

}  // namespace
