#include "logging/util/CxSystem.h"
#include "logging/util/CxThread.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

namespace {

TEST(CxSystem, tellsTheCurrentDirectory)
{
    std::string directory;

    ASSERT_TRUE(CxCurrentDirectory(directory).ok());

    EXPECT_TRUE(std::filesystem::equivalent(directory, std::filesystem::current_path()));
}

TEST(CxSystem, readsBackAVariableOfTheEnvironment)
{
    std::string const value(1000, 'v');

    ASSERT_TRUE(CxSetEnvironment("ZK_LOGGING_TEST", value.c_str()).ok());

    EXPECT_EQ(CxGetEnvironment("ZK_LOGGING_TEST"), value);
    CxSetEnvironment("ZK_LOGGING_TEST", nullptr);
}

TEST(CxSystem, variableThatDoesNotExistIsNone)
{
    EXPECT_EQ(CxGetEnvironment("ZK_LOGGING_NO_SUCH_VARIABLE"), std::nullopt);
}

TEST(CxSystem, timeIsThatOfTheClockInMilliseconds)
{
    auto const clock = [] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::system_clock::now().time_since_epoch())
            .count();
    };
    auto const before = clock();

    std::int64_t const time = CxTimeInMilliseconds();

    EXPECT_GE(time, before);
    EXPECT_LE(time, clock());
}

TEST(CxSystem, knowsTheNameOfTheHost)
{
    std::string name;

    ASSERT_TRUE(CxHostName(name).ok());

    EXPECT_FALSE(name.empty());
}

TEST(CxThread, runsAFunctionAndIsWaitedFor)
{
    struct Seen {
        std::uint32_t id = 0;
    } seen;
    CxThread thread;

    ASSERT_TRUE(CxThreadStart(
                    thread, [](void* to) { static_cast<Seen*>(to)->id = CxCurrentThreadId(); }, &seen)
                    .ok());
    ASSERT_TRUE(CxThreadWait(thread).ok());

    EXPECT_NE(seen.id, 0u);
    EXPECT_NE(seen.id, CxCurrentThreadId());
    EXPECT_EQ(thread.handle, nullptr);
}

TEST(CxThread, withoutAFunctionIsAnInvalidArgument)
{
    CxThread thread;

    EXPECT_EQ(CxThreadStart(thread, nullptr, nullptr), (CCgResult{'p', 22}));
    EXPECT_EQ(CxThreadWait(thread), (CCgResult{'p', 22}));
}

TEST(CxThread, sleepsAtLeastAsLongAsAsked)
{
    auto const start = std::chrono::steady_clock::now();

    CxThreadSleep(30);

    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(29));
}

}  // namespace
