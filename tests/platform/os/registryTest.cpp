#include "tests/support/MachineRegistry.h"
#include "tests/support/expectFails.h"

#include <string>

namespace {

constexpr DWORD access64 = KEY_QUERY_VALUE | KEY_WOW64_64KEY;

// A key with one value, open.
class Registry : public testing::Test {
protected:
    void SetUp() override
    {
        registry_.setText("UserDirectory", "c:\\zk\\");
        ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, registry_.key().c_str(), 0, access64, &key_), 0);
    }
    void TearDown() override { RegCloseKey(key_); }

    LSTATUS query(char const* name, DWORD room)
    {
        size_ = room;
        std::fill_n(buffer_, sizeof buffer_, BYTE('~'));
        return RegQueryValueExA(key_, name, nullptr, &type_, buffer_, &size_);
    }

    MachineRegistry registry_{"SOFTWARE\\ZkRegistryTest\\8.4"};
    HKEY key_ = nullptr;
    BYTE buffer_[32];
    DWORD size_ = 0;
    DWORD type_ = 99;
};

TEST_F(Registry, givesATextWithItsNul)
{
    EXPECT_EQ(query("UserDirectory", 7), 0);

    EXPECT_EQ(std::string(buffer_, buffer_ + 8), std::string("c:\\zk\\\0~", 8));
    EXPECT_EQ(size_, 7u);
    EXPECT_EQ(type_, DWORD(REG_SZ));
}

TEST_F(Registry, findsValuesWithoutCase)
{
    EXPECT_EQ(query("userdirectory", 32), 0);
    EXPECT_EQ(size_, 7u);
}

TEST_F(Registry, tellsTheSizeThatIsNeeded)
{
    EXPECT_EQ(query("UserDirectory", 6), LSTATUS(ERROR_MORE_DATA));
    EXPECT_EQ(size_, 7u);
    EXPECT_EQ(buffer_[0], '~');

    size_ = 0;
    EXPECT_EQ(RegQueryValueExA(key_, "UserDirectory", nullptr, nullptr, nullptr, &size_), 0);
    EXPECT_EQ(size_, 7u);
    EXPECT_EQ(RegQueryValueExA(key_, "UserDirectory", nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(RegQueryValueExA(key_, "UserDirectory", nullptr, nullptr, buffer_, nullptr),
              LSTATUS(ERROR_INVALID_PARAMETER));
}

TEST_F(Registry, hasNoOtherValue)
{
    EXPECT_EQ(query("Nope", 7), LSTATUS(ERROR_FILE_NOT_FOUND));
}

TEST_F(Registry, hasNoOtherKey)
{
    HKEY key = nullptr;

    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\ZkRegistryTest\\9", 0, access64, &key),
              LSTATUS(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(key, nullptr);
}

TEST_F(Registry, leavesTheLastErrorAlone)
{
    SetLastError(zk::test::poisonedError);
    query("UserDirectory", 7);
    query("Nope", 7);

    EXPECT_EQ(GetLastError(), zk::test::poisonedError);
}

TEST_F(Registry, closesAKeyOnce)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, registry_.key().c_str(), 0, access64, &key), 0);

    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegCloseKey(key), LSTATUS(ERROR_INVALID_HANDLE));
    EXPECT_EQ(RegCloseKey(nullptr), LSTATUS(ERROR_INVALID_HANDLE));
    EXPECT_EQ(RegQueryValueExA(key, "UserDirectory", nullptr, nullptr, nullptr, nullptr),
              LSTATUS(ERROR_INVALID_HANDLE));
}

TEST_F(Registry, neverClosesTheMachinesRoot)
{
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), 0);
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), 0);
}

}  // namespace
