// Texts for standard error while nobody reads it any more.
#include "platform/os/os.h"

#include "tests/support/asOrdinaryUser.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>

namespace {

using zk::test::inChildProcess;

// Standard error becomes a pipe whose reader is gone.
void closeReaderOfErrorOutput()
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(dup2(ends[1], STDERR_FILENO), STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
}

TEST(ClosedErrorOutput, doesNotEndAProcessThatShowsAMessage)
{
    inChildProcess([] {
        closeReaderOfErrorOutput();
        EXPECT_EQ(MessageBoxA(nullptr, "text", "caption", MB_YESNO), IDYES);
    });
}

TEST(ClosedErrorOutput, doesNotEndAProcessThatWritesForADebugger)
{
    inChildProcess([] {
        SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", "1");
        closeReaderOfErrorOutput();
        OutputDebugStringA("text");
    });
}

}  // namespace
