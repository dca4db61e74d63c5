#include "logging/util/CxProcess.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr CCgResult success;
constexpr CCgResult invalid{'p', 22};

std::string self()
{
    char path[1024];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return '"' + std::string(path) + '"';
}

}  // namespace

ZK_CHILD(cxProcessChild)
{
    return parent.argument() == "two words" ? 12 : 1;
}

TEST(CxProcess, isStartedWithItsArgumentsAndWaitedFor)
{
    CxProcess process;
    std::int32_t exitCode = 0;

    ASSERT_EQ(CxProcessStart(process, self(), {"--zk-child=cxProcessChild", "-1", "-1", "\"two words\""}),
              success);
    EXPECT_EQ(CxProcessWait(process, exitCode), success);

    EXPECT_EQ(exitCode, 12);
    EXPECT_EQ(CxProcessClose(process), success);
    EXPECT_EQ(process.handle, nullptr);
}

TEST(CxProcess, thatIsNoProgramIsASystemError)
{
    CxProcess process;

    EXPECT_EQ(CxProcessStart(process, "zk-no-such-program", {}), (CCgResult{'w', 2}));
    EXPECT_EQ(process.handle, nullptr);
}

TEST(CxProcess, thatIsNoneIsAnInvalidArgument)
{
    CxProcess process;
    std::int32_t exitCode = 0;

    EXPECT_EQ(CxProcessWait(process, exitCode), invalid);
    EXPECT_EQ(CxProcessClose(process), invalid);
}
