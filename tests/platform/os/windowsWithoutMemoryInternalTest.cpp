// Calls that may not fail for want of memory, or that tell so by an error number.
#include "platform/os/os.h"
#include "platform/os/posix/threadQueue.h"
#include "platform/os/posix/windowTable.h"
#include "tests/support/OutOfMemory.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <thread>

namespace {

using zk::test::OutOfMemory;

HWND child(HWND parent)
{
    // Its parent's thread, which waits, is told nothing.
    return CreateWindowExA(WS_EX_NOPARENTNOTIFY, "STATIC", "", parent ? WS_CHILD : WS_POPUP, 0, 0, 1, 1,
                           parent, nullptr, nullptr, nullptr);
}

TEST(SeamWithoutMemory, theUsersLocaleIsKnown)
{
    LCID const before = GetUserDefaultLCID();
    OutOfMemory const outOfMemory;

    EXPECT_EQ(GetUserDefaultLCID(), before);
    EXPECT_EQ(GetThreadLocale(), before);
    EXPECT_TRUE(SetThreadLocale(LOCALE_USER_DEFAULT));
    EXPECT_EQ(SetThreadUILanguage(0), LANGID(before));
    EXPECT_FALSE(OutOfMemory::hasFailed());
}

TEST(SeamWithoutMemory, theWindowsOfAnEndedThreadGo)
{
    HWND ofOther = nullptr;
    HWND own = nullptr;
    HANDLE const made = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE const go = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    bool failed = true;
    std::thread other([&] {
        ofOther = child(nullptr);
        SetEvent(made);
        WaitForSingleObject(go, INFINITE);
        OutOfMemory const outOfMemory;
        zk::os::removeWindowsOf(*zk::os::ownQueueIfAny());
        failed = OutOfMemory::hasFailed();
    });
    WaitForSingleObject(made, INFINITE);
    own = child(ofOther);
    SetEvent(go);
    other.join();

    EXPECT_FALSE(failed);
    EXPECT_FALSE(IsWindow(ofOther));
    EXPECT_TRUE(IsWindow(own)) << "it became a top-level window";
    EXPECT_TRUE(DestroyWindow(own));
    CloseHandle(made);
    CloseHandle(go);
}

TEST(SeamWithoutMemory, aQueueEnds)
{
    std::thread([] {
        auto const queue = std::make_shared<zk::os::ThreadQueue>(GetCurrentThreadId());
        auto const message = std::make_shared<zk::os::SentMessage>();
        message->sender = queue;
        queue->send(message);
        queue->post({});

        OutOfMemory const outOfMemory;
        queue->close();

        EXPECT_FALSE(OutOfMemory::hasFailed());
        EXPECT_TRUE(message->isDone);
    }).join();
}

TEST(SeamWithoutMemory, aThreadGetsNoQueue)
{
    std::thread([] {
        std::optional<OutOfMemory> outOfMemory(std::in_place);
        EXPECT_EQ(GetFocus(), nullptr);
        SetLastError(0);
        PostQuitMessage(1);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_NOT_ENOUGH_MEMORY));
        EXPECT_FAILS(PostMessageA(nullptr, WM_USER, 0, 0), ERROR_NOT_ENOUGH_MEMORY);
        outOfMemory.reset();

        MSG message;
        EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    }).join();
}

TEST(SeamWithoutMemory, mutexesAndThreadsFailWithAnErrorNumber)
{
    std::optional<OutOfMemory> outOfMemory(std::in_place);
    EXPECT_FAILS(CreateMutexA(nullptr, FALSE, nullptr), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FAILS(CreateThread(
                     nullptr, 0, [](LPVOID) -> DWORD { return 0; }, nullptr, 0, nullptr),
                 ERROR_NOT_ENOUGH_MEMORY);
    outOfMemory.reset();
}

}  // namespace
