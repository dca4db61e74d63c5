#include "platform/os/commandLine.h"
#include "platform/os/os.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScopedHandle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A command line for this program that runs the code of a ZK_CHILD, without pipes to its parent.
std::string commandOfChild(std::string const& name, std::string const& argument)
{
    char self[1024];
    GetModuleFileNameA(nullptr, self, sizeof self);
    return zk::os::joinCommandLine({self, "--zk-child=" + name, "-1", "-1", argument});
}

BOOL start(char const* application, std::string command, PROCESS_INFORMATION& started)
{
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    return CreateProcessA(application, command.empty() ? nullptr : command.data(), nullptr, nullptr, FALSE, 0,
                          nullptr, nullptr, &startup, &started);
}

class Process {
public:
    explicit Process(std::string const& command) { isStarted_ = start(nullptr, command, started_); }
    ~Process()
    {
        CloseHandle(started_.hThread);
        CloseHandle(started_.hProcess);
    }

    bool isStarted() const { return isStarted_; }
    HANDLE handle() const { return started_.hProcess; }
    HANDLE thread() const { return started_.hThread; }
    DWORD id() const { return started_.dwProcessId; }

    DWORD code() const
    {
        DWORD code = 77777;
        EXPECT_TRUE(GetExitCodeProcess(handle(), &code));
        return code;
    }
    DWORD codeAtEnd() const
    {
        EXPECT_EQ(WaitForSingleObject(handle(), INFINITE), WAIT_OBJECT_0);
        return code();
    }

private:
    PROCESS_INFORMATION started_ = {};
    BOOL isStarted_;
};

}  // namespace

ZK_CHILD(endsWithCode)
{
    return std::stoi(parent.argument());
}

ZK_CHILD(waitsForEvent)
{
    HANDLE const event = OpenEventA(EVENT_ALL_ACCESS, FALSE, parent.argument().c_str());
    return event && WaitForSingleObject(event, INFINITE) == WAIT_OBJECT_0 ? 5 : 6;
}

ZK_CHILD(hasArgument)
{
    return parent.argument() == "a \"b\" c\\" ? 0 : 1;
}

TEST(Processes, endWithACodeOfTheirOwn)
{
    for (int const code : {0, 1, 42, 255}) {
        Process const child(commandOfChild("endsWithCode", std::to_string(code)));

        ASSERT_TRUE(child.isStarted());

        EXPECT_EQ(child.codeAtEnd(), DWORD(code));
        EXPECT_EQ(child.codeAtEnd(), DWORD(code)) << "asked again";
    }
}

TEST(Processes, runUntilTheyEnd)
{
    std::string const name = "zk-process-" + std::to_string(GetCurrentProcessId());
    ScopedHandle const event(CreateEventA(nullptr, TRUE, FALSE, name.c_str()));
    Process const child(commandOfChild("waitsForEvent", name));
    ASSERT_TRUE(child.isStarted());

    EXPECT_EQ(child.code(), STILL_ACTIVE);
    EXPECT_EQ(WaitForSingleObject(child.handle(), 0), DWORD(WAIT_TIMEOUT));
    EXPECT_EQ(WaitForSingleObject(child.handle(), 20), DWORD(WAIT_TIMEOUT));
    SetEvent(event.get());

    EXPECT_EQ(child.codeAtEnd(), 5u);
    EXPECT_EQ(WaitForSingleObject(child.thread(), INFINITE), WAIT_OBJECT_0);
}

TEST(Processes, getTheArgumentsOfTheCommandLine)
{
    Process const child(commandOfChild("hasArgument", "a \"b\" c\\"));

    ASSERT_TRUE(child.isStarted());

    EXPECT_EQ(child.codeAtEnd(), 0u);
}

TEST(Processes, haveANumberOfTheirOwn)
{
    Process const child(commandOfChild("endsWithCode", "0"));

    EXPECT_NE(child.id(), 0u);
    EXPECT_NE(child.id(), GetCurrentProcessId());
    child.codeAtEnd();
}

TEST(Processes, mayBeClosedWhileTheyRun)
{
    std::string const name = "zk-process-" + std::to_string(GetCurrentProcessId());
    ScopedHandle const event(CreateEventA(nullptr, TRUE, FALSE, name.c_str()));
    {
        Process const child(commandOfChild("waitsForEvent", name));
        ASSERT_TRUE(child.isStarted());
    }
    SetEvent(event.get());

    EXPECT_EQ(Process(commandOfChild("endsWithCode", "3")).codeAtEnd(), 3u);
}

TEST(Processes, thatCannotBeStartedTellWhy)
{
    TemporaryFolder const folder;
    PROCESS_INFORMATION started;

    EXPECT_FAILS(start(folder.path("missing").c_str(), "missing", started), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(start(nullptr, "zk-no-such-program", started), ERROR_FILE_NOT_FOUND);
    EXPECT_FAILS(start(folder.path("missing/program").c_str(), "x", started), ERROR_PATH_NOT_FOUND);
}

TEST(Processes, theCurrentOneRuns)
{
    DWORD code = 0;

    EXPECT_TRUE(GetExitCodeProcess(GetCurrentProcess(), &code));

    EXPECT_EQ(code, STILL_ACTIVE);
}

TEST(Processes, onlyHaveAnExitCode)
{
    ScopedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    DWORD code;

    EXPECT_FAILS(GetExitCodeProcess(event.get(), &code), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetExitCodeProcess(nullptr, &code), ERROR_INVALID_HANDLE);
}
