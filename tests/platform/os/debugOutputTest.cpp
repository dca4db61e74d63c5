#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <string>

TEST(DebugOutput, takesAnyText)
{
    OutputDebugStringA("");
    OutputDebugStringA(nullptr);
    OutputDebugStringA(std::string(100000, 'x').c_str());
}

TEST(DebugOutput, knowsThatNobodyTracesTheTests)
{
    EXPECT_FALSE(IsDebuggerPresent());
}
