// What holds for every handle; events stand in for all objects.
#include "platform/os/os.h"
#include "tests/support/OwnedHandle.h"
#include "tests/support/expectFails.h"

#include <cstdint>
#include <set>
#include <thread>

namespace {

using zk::test::OwnedHandle;

HANDLE newEvent(bool inheritable = false)
{
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, nullptr, inheritable};
    return CreateEventA(&attributes, TRUE, FALSE, nullptr);
}

TEST(Handles, areClosedOnce)
{
    HANDLE const handle = newEvent();

    EXPECT_SUCCEEDS(CloseHandle(handle));
    EXPECT_FAILS(CloseHandle(handle), ERROR_INVALID_HANDLE);
}

TEST(Handles, differFromEachOtherAndFromNoHandle)
{
    std::set<HANDLE> seen = {nullptr, INVALID_HANDLE_VALUE};

    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(seen.insert(newEvent()).second);

    seen.erase(nullptr);
    seen.erase(INVALID_HANDLE_VALUE);
    for (HANDLE const handle : seen)
        CloseHandle(handle);
}

TEST(Handles, haveTheirTwoLowBitsClear)
{
    OwnedHandle const handle(newEvent());

    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(HANDLE(handle)) & 3, 0u);
}

TEST(Handles, valuesThatStandForTheCallerNeedNoClosing)
{
    EXPECT_SUCCEEDS(CloseHandle(GetCurrentProcess()));
    EXPECT_SUCCEEDS(CloseHandle(GetCurrentThread()));
}

TEST(Handles, noObjectStandsBehindAnUnknownValue)
{
    for (HANDLE const unknown : {HANDLE(nullptr), reinterpret_cast<HANDLE>(std::uintptr_t(0x123450))}) {
        EXPECT_FAILS(CloseHandle(unknown), ERROR_INVALID_HANDLE);
        EXPECT_FAILS(WaitForSingleObject(unknown, 0), ERROR_INVALID_HANDLE);
        EXPECT_FAILS(SetEvent(unknown), ERROR_INVALID_HANDLE);
        EXPECT_FAILS(ReleaseMutex(unknown), ERROR_INVALID_HANDLE);
        EXPECT_FAILS(ReleaseSemaphore(unknown, 1, nullptr), ERROR_INVALID_HANDLE);
        EXPECT_FAILS(ResumeThread(unknown), ERROR_INVALID_HANDLE);
    }
}

TEST(Handles, ofAnotherKindAreRefused)
{
    OwnedHandle const event(newEvent());
    OwnedHandle const mutex(CreateMutexA(nullptr, FALSE, nullptr));

    EXPECT_FAILS(ReleaseMutex(event), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(SetEvent(mutex), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(ResetEvent(mutex), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(ReleaseSemaphore(mutex, 1, nullptr), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(ResumeThread(mutex), ERROR_INVALID_HANDLE);
    DWORD code;
    EXPECT_FAILS(GetExitCodeThread(event, &code), ERROR_INVALID_HANDLE);
}

TEST(Handles, tellWhetherTheyAreInherited)
{
    OwnedHandle const inherited(newEvent(true));
    OwnedHandle const kept(newEvent(false));
    DWORD flags = 99;

    EXPECT_TRUE(GetHandleInformation(inherited, &flags));
    EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    EXPECT_TRUE(GetHandleInformation(kept, &flags));
    EXPECT_EQ(flags, 0u);
}

TEST(Handles, changeTheirInheritance)
{
    OwnedHandle const handle(newEvent());
    DWORD flags = 99;

    EXPECT_TRUE(SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT));
    EXPECT_TRUE(GetHandleInformation(handle, &flags));
    EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    EXPECT_TRUE(SetHandleInformation(handle, 0, 0));
    EXPECT_TRUE(GetHandleInformation(handle, &flags));
    EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    EXPECT_TRUE(SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0));
    EXPECT_TRUE(GetHandleInformation(handle, &flags));
    EXPECT_EQ(flags, 0u);
}

TEST(Handles, informationOfAClosedOneIsAnError)
{
    HANDLE const handle = newEvent();
    CloseHandle(handle);
    DWORD flags;

    EXPECT_FAILS(GetHandleInformation(handle, &flags), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0), ERROR_INVALID_HANDLE);
}

TEST(Handles, aDuplicateReachesTheSameObject)
{
    OwnedHandle first(newEvent());
    HANDLE copy = nullptr;

    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), first, GetCurrentProcess(), &copy, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    OwnedHandle const second(copy);
    SetEvent(first);
    first.close();

    EXPECT_NE(copy, nullptr);
    EXPECT_EQ(WaitForSingleObject(second, 0), WAIT_OBJECT_0);
}

TEST(Handles, aDuplicateMayCloseItsSource)
{
    HANDLE const source = newEvent();
    HANDLE copy = nullptr;

    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), source, GetCurrentProcess(), &copy, 0, TRUE,
                                DUPLICATE_SAME_ACCESS | DUPLICATE_CLOSE_SOURCE));
    OwnedHandle const owned(copy);

    DWORD flags = 0;
    EXPECT_TRUE(GetHandleInformation(copy, &flags));
    EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    EXPECT_EQ(WaitForSingleObject(copy, 0), WAIT_TIMEOUT);
}

TEST(Handles, aDuplicateOfNothingIsAnError)
{
    HANDLE copy = nullptr;

    EXPECT_FAILS(DuplicateHandle(GetCurrentProcess(), nullptr, GetCurrentProcess(), &copy, 0, FALSE,
                                 DUPLICATE_SAME_ACCESS),
                 ERROR_INVALID_HANDLE);
}

TEST(Handles, aDuplicateOfTheCallingThreadStandsForItInOtherThreads)
{
    HANDLE copy = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &copy, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    OwnedHandle const own(copy);
    DWORD seen = 0;

    std::thread([&] { seen = GetThreadId(own); }).join();

    EXPECT_EQ(seen, GetCurrentThreadId());
    EXPECT_EQ(WaitForSingleObject(own, 0), WAIT_TIMEOUT);
}

TEST(Handles, closingOneLeavesAWaitOnItsObjectAlone)
{
    OwnedHandle event(newEvent());
    HANDLE copy = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), event, GetCurrentProcess(), &copy, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    OwnedHandle const setter(copy);
    OwnedHandle const reached(newEvent());
    DWORD result = 99;
    std::thread waiter([&] {
        SetEvent(reached);
        result = WaitForSingleObject(setter, INFINITE);
    });
    WaitForSingleObject(reached, INFINITE);

    event.close();
    SetEvent(setter);
    waiter.join();

    EXPECT_EQ(result, WAIT_OBJECT_0);
}

}  // namespace
