#include "platform/os/os.h"

#include "tests/support/FaultInjector.h"

#include <gtest/gtest.h>

#include <string>

#include <unistd.h>

using namespace zk::os;
using namespace zk::test;

namespace {

std::string sunk;

void sink(char const* text) noexcept
{
    sunk += text;
    SetLastError(77);
}

// Standard error is a pipe for the life of the object.
class CapturedError {
public:
    CapturedError() : saved_(dup(STDERR_FILENO))
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
        reader_ = ends[0];
    }
    ~CapturedError() { close(reader_); }

    std::string text()
    {
        dup2(saved_, STDERR_FILENO);
        close(saved_);
        char buffer[256];
        ssize_t const length = read(reader_, buffer, sizeof buffer);
        return {buffer, static_cast<std::size_t>(length > 0 ? length : 0)};
    }

private:
    int saved_;
    int reader_;
};

}  // namespace

TEST(DebugOutput, goesToTheSinkThatWasSet)
{
    sunk.clear();
    DebugSink const previous = setDebugSink(sink);
    SetLastError(5);

    OutputDebugStringA("one\n");
    OutputDebugStringA(nullptr);

    EXPECT_EQ(GetLastError(), 5u);
    EXPECT_EQ(setDebugSink(previous), &sink);
    EXPECT_EQ(sunk, "one\n");
}

TEST(DebugOutput, goesToStandardErrorIfTheEnvironmentWantsIt)
{
    SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", "1");
    ShortTransfers<&SystemCalls::write> const drops(2);
    CapturedError captured;

    OutputDebugStringA("text\n");

    EXPECT_EQ(captured.text(), "text\n");
    SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", nullptr);
}

TEST(DebugOutput, goesNowhereElse)
{
    FaultInjector<&SystemCalls::write> const writes({.onCall = always});

    for (char const* const value : {static_cast<char const*>(nullptr), ""}) {
        SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", value);
        OutputDebugStringA("text\n");
    }

    EXPECT_EQ(writes.calls(), 0);
    SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", nullptr);
}

TEST(DebugOutput, isLostWhenItCannotBeWritten)
{
    SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", "1");
    FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .times = always});

    OutputDebugStringA("text\n");

    EXPECT_EQ(full.calls(), 1);
    SetEnvironmentVariableA("ZK_DEBUG_OUTPUT", nullptr);
}

TEST(DebugOutput, takesAnUnknownStateForNoDebugger)
{
    {
        FaultInjector<&SystemCalls::open> const broken({.error = EACCES});
        EXPECT_FALSE(IsDebuggerPresent());
    }
    FaultInjector<&SystemCalls::read> const broken({.error = EIO});
    EXPECT_FALSE(IsDebuggerPresent());
}
