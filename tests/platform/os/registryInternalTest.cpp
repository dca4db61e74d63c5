#include "platform/os/os.h"

#include "tests/support/FaultInjector.h"
#include "tests/support/MachineRegistry.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <limits>

using namespace zk::test;

namespace {

constexpr DWORD access64 = KEY_QUERY_VALUE | KEY_WOW64_64KEY;

class RegistryFailures : public testing::Test {
protected:
    void SetUp() override { registry_.setText("UserDirectory", "/zk"); }

    LSTATUS open(HKEY& key) const
    {
        return RegOpenKeyExA(HKEY_LOCAL_MACHINE, registry_.key().c_str(), 0, access64, &key);
    }

    MachineRegistry registry_{"SOFTWARE\\ZkRegistryFailures\\8.4"};
};

TEST_F(RegistryFailures, makeAKeyMissingWhoseFolderCannotBeLookedAt)
{
    FaultInjector<&SystemCalls::stat> const refused({.error = EACCES, .times = always});
    HKEY key = nullptr;

    EXPECT_EQ(open(key), LSTATUS(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(key, nullptr);
}

TEST_F(RegistryFailures, ofAValuesFileAreToldToTheCaller)
{
    HKEY key = nullptr;
    ASSERT_EQ(open(key), 0);
    BYTE buffer[32];
    DWORD size = sizeof buffer;

    {
        FaultInjector<&SystemCalls::open> const full({.error = EMFILE, .times = always});
        EXPECT_NE(RegQueryValueExA(key, "UserDirectory", nullptr, nullptr, buffer, &size), 0);
    }
    size = sizeof buffer;
    EXPECT_EQ(RegQueryValueExA(key, "UserDirectory", nullptr, nullptr, buffer, &size), 0);
    RegCloseKey(key);
}

class HugeFiles : public Interceptor<&SystemCalls::fstat, HugeFiles> {
public:
    template <class Result, class Call>
    Result intercept(Call call, int descriptor, struct stat* status)
    {
        Result const result = call(descriptor, status);
        status->st_size = std::numeric_limits<off_t>::max();
        return result;
    }
};

TEST_F(RegistryFailures, makeAValueMissingWhoseFileIsTooLarge)
{
    HKEY key = nullptr;
    ASSERT_EQ(open(key), 0);
    HugeFiles const huge;

    EXPECT_EQ(RegQueryValueExA(key, "UserDirectory", nullptr, nullptr, nullptr, nullptr),
              LSTATUS(ERROR_FILE_NOT_FOUND));
    RegCloseKey(key);
}

TEST_F(RegistryFailures, leaveTheLastErrorAlone)
{
    SetLastError(4711);
    FaultInjector<&SystemCalls::stat> const refused({.error = EACCES, .times = always});
    HKEY key = nullptr;
    open(key);

    EXPECT_EQ(GetLastError(), 4711u);
}

}  // namespace
