#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <signal.h>

using namespace zk::os;
using namespace zk::test;

TEST(PipeFailures, areReported)
{
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    std::ptrdiff_t const before = openDescriptors();
    {
        FaultInjector<&SystemCalls::pipe2> const broken({.error = EMFILE});
        EXPECT_FAILS(CreatePipe(&reader, &writer, nullptr, 0), ERROR_TOO_MANY_OPEN_FILES);
    }
    {
        FaultInjector<&SystemCalls::pipe2> const broken({.error = ENFILE});
        EXPECT_FAILS(CreatePipe(&reader, &writer, nullptr, 0), ERROR_TOO_MANY_OPEN_FILES);
    }
    char descriptor[64] = {};
    SECURITY_ATTRIBUTES security = {sizeof security, descriptor, FALSE};
    EXPECT_FAILS(CreatePipe(&reader, &writer, &security, 0), ERROR_INVALID_PARAMETER);

    EXPECT_EQ(reader, nullptr);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(PipeFailures, leaveASignalThatWaitsForTheProcess)
{
    inChildProcess([] {
        sigset_t pipeSignal;
        sigemptyset(&pipeSignal);
        sigaddset(&pipeSignal, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
        raise(SIGPIPE);  // somebody else's
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        ASSERT_TRUE(CreatePipe(&reader, &writer, nullptr, 0));
        CloseHandle(reader);
        DWORD count = 99;

        EXPECT_FAILS(WriteFile(writer, "x", 1, &count, nullptr), ERROR_NO_DATA);

        sigset_t pending;
        sigpending(&pending);
        EXPECT_EQ(sigismember(&pending, SIGPIPE), 1);
    });
}
