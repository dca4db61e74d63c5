#include "platform/os/os.h"

#include "tests/support/FaultInjector.h"
#include "tests/support/MachineRegistry.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <limits>

using namespace zk::test;

namespace {

constexpr DWORD writing = 0x0002;  // KEY_SET_VALUE
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

// A registry in a folder of the test's own.
class RegistryFolder : public testing::Test {
protected:
    RegistryFolder() { SetEnvironmentVariableA("ZK_REGISTRY_DIR", folder_.path().c_str()); }
    ~RegistryFolder() override { SetEnvironmentVariableA("ZK_REGISTRY_DIR", nullptr); }

    void addKey(std::string const& key, std::string const& text)
    {
        folder_.makeFolder(key);
        if (!text.empty())
            folder_.write(key + "/values.ini", "Text=" + text + "\n");
    }
    // The text, or the number of the error.
    static std::string textOf(std::string const& name, HKEY root = HKEY_LOCAL_MACHINE)
    {
        HKEY key = nullptr;
        if (LSTATUS const error = RegOpenKeyExA(root, name.c_str(), 0, access64, &key))
            return std::to_string(error);
        char buffer[32] = {};
        DWORD size = sizeof buffer;
        LSTATUS const error =
            RegQueryValueExA(key, "Text", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size);
        RegCloseKey(key);
        return error ? "value " + std::to_string(error) : buffer;
    }

    TemporaryFolder const folder_;
};

TEST_F(RegistryFolder, holdsTheMachinesKeysAlsoDirectly)
{
    addKey("SOFTWARE/Zk/1.0", "direct");
    EXPECT_EQ(textOf("SOFTWARE\\Zk\\1.0"), "direct");

    addKey("HKEY_LOCAL_MACHINE/SOFTWARE/Zk/1.0", "named");
    EXPECT_EQ(textOf("SOFTWARE\\Zk\\1.0"), "named") << "the named root comes first";
}

TEST_F(RegistryFolder, hasAKeyWhereItsFirstFolderIs)
{
    addKey("SOFTWARE/Zk", "direct");
    addKey("HKEY_LOCAL_MACHINE/SOFTWARE/Zk", "");

    EXPECT_EQ(textOf("SOFTWARE\\Zk"), "value 2") << "a key without values";
}

TEST_F(RegistryFolder, isNotLeftByAKeysName)
{
    addKey("SOFTWARE/Zk", "v");
    for (char const* const name : {"..", "SOFTWARE\\..\\SOFTWARE\\Zk", "SOFTWARE/Zk", "\\SOFTWARE\\Zk",
                                   "SOFTWARE\\\\Zk", "SOFTWARE\\.\\Zk"})
        EXPECT_EQ(textOf(name), "2") << name;
    EXPECT_EQ(textOf("SOFTWARE\\Zk"), "v");
}

TEST_F(RegistryFolder, isReadOnlyAndHasOneRoot)
{
    addKey("SOFTWARE/Zk", "v");
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0, writing, &key), LSTATUS(ERROR_ACCESS_DENIED));
    EXPECT_EQ(textOf("SOFTWARE", reinterpret_cast<HKEY>(std::uintptr_t(0x80000001))), "6");

    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0, access64, &key), 0);
    EXPECT_EQ(textOf("Zk", key), "v") << "below a key that is open";
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
