#include "process/multithreading.h"

#include "platform/os/os.h"

#include <gtest/gtest.h>

namespace {

TEST(ThreadName, mayBeSetWhetherADebuggerIsThereOrNot)
{
    SetLastError(12345);

    setThreadName(GetCurrentThreadId(), "loader");
    setThreadName(0xFFFFFFFF, "calling thread");
    setThreadName(0xFFFFFFFFul, CString('x', 1000));
    setThreadName(1, "no thread of this process");

    EXPECT_EQ(GetLastError(), 12345u);
}

}  // namespace
