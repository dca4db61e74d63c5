#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/asOrdinaryUser.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

using namespace zk::test;

TEST(StandardFiles, areNullWhereTheProcessHasNone)
{
    inChildProcess([] {
        close(STDIN_FILENO);
        SetLastError(poisonedError);

        EXPECT_EQ(GetStdHandle(STD_INPUT_HANDLE), nullptr);

        EXPECT_EQ(GetLastError(), poisonedError);
    });
}

TEST(StandardFiles, thatCannotBeLookedAtAreAskedForAgain)
{
    inChildProcess([] {
        {
            FaultInjector<&SystemCalls::fstat> const broken({.error = EIO});
            EXPECT_FAILS(GetStdHandle(STD_OUTPUT_HANDLE), ERROR_IO_DEVICE);
        }
        EXPECT_NE(GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)), FILE_TYPE_UNKNOWN);
    });
}

TEST(StandardFiles, stayOpenWhenTheHandleIsClosed)
{
    inChildProcess([] {
        HANDLE const output = GetStdHandle(STD_OUTPUT_HANDLE);

        EXPECT_TRUE(CloseHandle(output));

        EXPECT_NE(fcntl(STDOUT_FILENO, F_GETFD), -1);
    });
}

TEST(StandardFiles, areReadAndWrittenAsTheyWereOpened)
{
    inChildProcess([] {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        dup2(ends[0], STDIN_FILENO);
        dup2(ends[1], STDERR_FILENO);
        HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
        HANDLE const error = GetStdHandle(STD_ERROR_HANDLE);
        char buffer[4];
        DWORD count = 99;

        EXPECT_EQ(GetFileType(input), FILE_TYPE_PIPE);
        EXPECT_TRUE(writeText(error, "abc"));
        EXPECT_TRUE(ReadFile(input, buffer, 4, &count, nullptr));
        EXPECT_EQ(std::string(buffer, count), "abc");
        EXPECT_FAILS(WriteFile(input, "x", 1, &count, nullptr), ERROR_ACCESS_DENIED);
        EXPECT_FAILS(ReadFile(error, buffer, 1, &count, nullptr), ERROR_ACCESS_DENIED);
        DWORD flags = 0;
        EXPECT_TRUE(GetHandleInformation(input, &flags));
        EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    });
}
