#include "platform/os/os.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/expectFails.h"
#include "tests/support/openDescriptors.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

using namespace zk::os;
using namespace zk::test;

namespace {

struct Child {
    explicit Child(std::string command, char const* application = nullptr)
    {
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        isStarted = CreateProcessA(application, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &started);
        error = isStarted ? ERROR_SUCCESS : GetLastError();
    }
    ~Child()
    {
        if (isStarted) {
            CloseHandle(started.hThread);
            CloseHandle(started.hProcess);
        }
    }

    DWORD codeAtEnd() const
    {
        DWORD code = 0;
        EXPECT_EQ(WaitForSingleObject(started.hProcess, INFINITE), WAIT_OBJECT_0);
        EXPECT_TRUE(GetExitCodeProcess(started.hProcess, &code));
        return code;
    }

    PROCESS_INFORMATION started = {};
    BOOL isStarted = FALSE;
    DWORD error = 0;
};

BOOL createWith(DWORD flags, LPSECURITY_ATTRIBUTES security, BOOL inherit, LPVOID environment,
                LPCSTR directory, DWORD startupFlags)
{
    char command[] = "/bin/true";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = startupFlags;
    PROCESS_INFORMATION started;
    return CreateProcessA(nullptr, command, security, nullptr, inherit, flags, environment, directory,
                          &startup, &started);
}

}  // namespace

TEST(ChildProcesses, thatASignalEndsHaveTheSignalsNumber)
{
    Child const child("/bin/sh -c \"kill -9 $$\"");

    EXPECT_EQ(child.codeAtEnd(), 128u + SIGKILL);
}

TEST(ChildProcesses, areFoundInTheFoldersOfPath)
{
    TemporaryFolder const folder;
    folder.write("zk-test-tool", "#!/bin/sh\nexit 7\n");
    chmod(folder.path("zk-test-tool").c_str(), 0755);
    ScopedEnvironment const path("PATH", ("/nowhere::" + folder.path()).c_str());

    EXPECT_EQ(Child("zk-test-tool").codeAtEnd(), 7u);
}

TEST(ChildProcesses, areNotFoundInTheCurrentFolder)
{
    TemporaryFolder const folder;
    folder.write("zk-test-tool", "#!/bin/sh\nexit 7\n");
    chmod(folder.path("zk-test-tool").c_str(), 0755);
    int const before = open(".", O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(chdir(folder.path().c_str()), 0);

    EXPECT_EQ(Child("zk-test-tool").error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Child("./zk-test-tool").codeAtEnd(), 7u);

    ASSERT_EQ(fchdir(before), 0);
    close(before);
}

TEST(ChildProcesses, haveTheEnvironmentOfNow)
{
    ScopedEnvironment const variable("ZK_PROCESS_TEST", "9");

    EXPECT_EQ(Child("/bin/sh -c \"exit $ZK_PROCESS_TEST\"").codeAtEnd(), 9u);
}

TEST(ChildProcesses, haveNoFileButTheStandardOnes)
{
    int const leaky = open("/dev/null", O_RDONLY);
    std::string const test = "test -e /proc/self/fd/" + std::to_string(leaky) + " && exit 1; exit 0";

    EXPECT_EQ(Child("/bin/sh -c \"" + test + "\"").codeAtEnd(), 0u);
    close(leaky);
}

TEST(ChildProcesses, thatAreNoProgramsTellSo)
{
    TemporaryFolder const folder;
    folder.write("text", "no program");
    EXPECT_EQ(Child(folder.path("text")).error, ERROR_ACCESS_DENIED);
    EXPECT_EQ(Child(folder.path()).error, ERROR_ACCESS_DENIED);
    chmod(folder.path("text").c_str(), 0755);

    EXPECT_EQ(Child(folder.path("text")).error, ERROR_BAD_EXE_FORMAT);
}

TEST(ChildProcesses, areReapedWithTheirLastHandle)
{
    pid_t id;
    {
        Child const child("/bin/true");
        child.codeAtEnd();
        id = pid_t(child.started.dwProcessId);
        EXPECT_EQ(kill(id, 0), 0) << "its number is kept for the questions to come";
    }

    EXPECT_EQ(kill(id, 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST(ChildProcesses, closedWhileTheyRanAreReapedAtTheNextStart)
{
    auto const before = openDescriptors();
    pid_t id;
    {
        Child const child("/bin/sleep 1000");
        id = pid_t(child.started.dwProcessId);
    }
    kill(id, SIGKILL);
    siginfo_t info;
    ASSERT_EQ(waitid(P_PID, id_t(id), &info, WEXITED | WNOWAIT), 0);

    Child("/bin/true").codeAtEnd();

    EXPECT_EQ(kill(id, 0), -1);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ChildProcesses, whoseEndTheSystemDoesNotKeepHaveTheUnknownCode)
{
    auto* const before = signal(SIGCHLD, SIG_IGN);

    EXPECT_EQ(Child("/bin/true").codeAtEnd(), 0xFFFFFFFFu);

    signal(SIGCHLD, before);
}

TEST(ChildProcesses, areNotStartedWithoutRoom)
{
    auto const before = openDescriptors();
    {
        FaultInjector<&SystemCalls::posix_spawn> const full({.error = EAGAIN});
        EXPECT_EQ(Child("/bin/true").error, ERROR_NOT_ENOUGH_MEMORY);
    }
    {
        FaultInjector<&SystemCalls::pidfd_open> const full({.error = EMFILE});
        EXPECT_EQ(Child("/bin/true").error, ERROR_TOO_MANY_OPEN_FILES);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG), -1) << "a child was left behind";
}

TEST(ChildProcesses, refuseWhatIsNotSupplied)
{
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    char environment[] = "A=B\0";

    EXPECT_FAILS(createWith(0x10, nullptr, FALSE, nullptr, nullptr, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(createWith(0, &inherit, FALSE, nullptr, nullptr, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(createWith(0, nullptr, TRUE, nullptr, nullptr, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(createWith(0, nullptr, FALSE, environment, nullptr, 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(createWith(0, nullptr, FALSE, nullptr, "/", 0), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(createWith(0, nullptr, FALSE, nullptr, nullptr, 0x100), ERROR_INVALID_PARAMETER);
    STARTUPINFOA startup = {};
    PROCESS_INFORMATION started;
    EXPECT_FAILS(
        CreateProcessA(nullptr, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started),
        ERROR_INVALID_PARAMETER);
}
