#include "platform/os/os.h"

#include "tests/support/FaultInjector.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include <unistd.h>

using namespace zk::os;
using namespace zk::test;

namespace {

char const* hostName = "";

// The kernel answers with a name of the test's choice.
class HostName {
public:
    explicit HostName(char const* name) noexcept : original_(systemCalls().gethostname)
    {
        hostName = name;
        systemCalls().gethostname = [](char* target, std::size_t length) {
            std::strncpy(target, hostName, length);
            return 0;
        };
    }
    ~HostName() { systemCalls().gethostname = original_; }

private:
    decltype(SystemCalls::gethostname) original_;
};

std::string computerName()
{
    char name[64];
    DWORD size = sizeof name;
    EXPECT_TRUE(GetComputerNameA(name, &size));
    return {name, size};
}

}  // namespace

TEST(EnvironmentFailures, areReportedWhenMemoryRunsOut)
{
    FaultInjector<&SystemCalls::setenv> const full({.error = ENOMEM});

    EXPECT_FAILS(SetEnvironmentVariableA("ZK_TEST_FULL", "x"), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_FALSE(environmentVariable("ZK_TEST_FULL"));
}

TEST(EnvironmentFailures, areReportedWhenAVariableCannotBeRemoved)
{
    FaultInjector<&SystemCalls::unsetenv> const full({.error = ENOMEM});

    EXPECT_FAILS(SetEnvironmentVariableA("ZK_TEST_FULL", nullptr), ERROR_NOT_ENOUGH_MEMORY);
}

TEST(EnvironmentFailures, areReportedWhenTheHostHasNoName)
{
    FaultInjector<&SystemCalls::gethostname> const broken({.error = EPERM});
    char name[32];
    DWORD size = sizeof name;

    EXPECT_FAILS(GetComputerNameA(name, &size), ERROR_ACCESS_DENIED);
}

TEST(ComputerName, isTheHostsFirstPartInUpperCase)
{
    HostName const host("build-7.example.org");

    EXPECT_EQ(computerName(), "BUILD-7");
}

TEST(ComputerName, isCutAtFifteenBytes)
{
    HostName const host("a-very-long-host-name");

    EXPECT_EQ(computerName(), "A-VERY-LONG-HOS");
}

TEST(UserName, isTheNumberOfAUserWithoutAName)
{
    FaultInjector<&SystemCalls::getpwuid_r> const unknown({.error = ENOENT});
    char name[32];
    DWORD size = sizeof name;

    // The injector fails without an answer, as a system without the user does.
    EXPECT_TRUE(GetUserNameA(name, &size));

    EXPECT_EQ(name, std::to_string(geteuid()));
}

TEST(UserName, isAskedForAgainWithMoreRoom)
{
    FaultInjector<&SystemCalls::getpwuid_r> small({.error = ERANGE, .times = 3});
    char name[64];
    DWORD size = sizeof name;
    EXPECT_TRUE(GetUserNameA(name, &size));
    EXPECT_EQ(small.calls(), 4);
}

TEST(UserName, isAskedForAgainAfterASignal)
{
    FaultInjector<&SystemCalls::getpwuid_r> interrupted({.error = EINTR});
    char name[64];
    DWORD size = sizeof name;

    EXPECT_TRUE(GetUserNameA(name, &size));

    EXPECT_EQ(interrupted.calls(), 2);
}

TEST(EnvironmentCopies, holdWhatAChildWouldInherit)
{
    SetEnvironmentVariableA("ZK_TEST_COPY", "a=b");
    auto const variables = environmentSnapshot();
    SetEnvironmentVariableA("ZK_TEST_COPY", nullptr);

    EXPECT_EQ(std::count(variables.begin(), variables.end(), "ZK_TEST_COPY=a=b"), 1);
}

TEST(EnvironmentStrings, ofNoVariablesAreTwoNuls)
{
    char** const all = environ;
    environ = nullptr;
    char* const block = GetEnvironmentStringsA();
    environ = all;

    EXPECT_EQ(block[0], '\0');
    EXPECT_EQ(block[1], '\0');
    FreeEnvironmentStringsA(block);
}

TEST(EnvironmentStrings, areNotMadeOfNull)
{
    char target[4];

    EXPECT_FAILS(ExpandEnvironmentStringsA(nullptr, target, 4), ERROR_INVALID_PARAMETER);
}
