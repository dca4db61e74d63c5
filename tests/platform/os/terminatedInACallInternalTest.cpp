// Threads that are ended in the middle of a call leave the process's own locks free.
#include "platform/os/os.h"

#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/endsAThread.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using zk::os::SystemCalls;
using zk::test::BeforeCall;

std::atomic<bool> hasBegun;
std::atomic<bool> mayGoOn;

DWORD WINAPI setsAVariable(void*)
{
    SetEnvironmentVariableA("ZkTerminated", "value");
    return 0;
}

TEST(ThreadEndedInACall, leavesTheEnvironmentsLockFree)
{
    ZK_SKIP_ENDS_A_THREAD();
    hasBegun = false;
    mayGoOn = false;
    HANDLE thread = nullptr;
    {
        BeforeCall<&SystemCalls::setenv> const halt([] {
            hasBegun = true;
            while (!mayGoOn)
                Sleep(1);
        });
        thread = CreateThread(nullptr, 0, setsAVariable, nullptr, 0, nullptr);
        while (!hasBegun)
            Sleep(1);

        TerminateThread(thread, 7);
        mayGoOn = true;
        EXPECT_EQ(WaitForSingleObject(thread, 10000), DWORD{WAIT_OBJECT_0});
    }

    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeThread(thread, &code));
    EXPECT_EQ(code, 7u);
    EXPECT_EQ(GetEnvironmentVariableA("ZkTerminated", nullptr, 0), 6u) << "the call came to its end";
    SetEnvironmentVariableA("ZkTerminated", nullptr);
    CloseHandle(thread);
}

DWORD WINAPI readsAProfile(void* file)
{
    char value[8];
    GetPrivateProfileStringA("S", "k", "", value, sizeof value, static_cast<char const*>(file));
    return 0;
}

TEST(ThreadEndedInACall, leavesNoProfileOpen)
{
    ZK_SKIP_ENDS_A_THREAD();
    TemporaryFolder const folder;
    folder.write("p.ini", "[S]\nk=v\n");
    std::string file = folder.path("p.ini");
    std::ptrdiff_t const before = openDescriptors();
    hasBegun = false;
    mayGoOn = false;
    {
        BeforeCall<&SystemCalls::read> const halt([] {
            hasBegun = true;
            while (!mayGoOn)
                Sleep(1);
        });
        HANDLE const thread = CreateThread(nullptr, 0, readsAProfile, file.data(), 0, nullptr);
        while (!hasBegun)
            Sleep(1);

        TerminateThread(thread, 7);
        mayGoOn = true;
        EXPECT_EQ(WaitForSingleObject(thread, 10000), DWORD{WAIT_OBJECT_0});
        CloseHandle(thread);
    }

    EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
