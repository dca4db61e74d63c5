#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

class Environment : public testing::Test {
protected:
    void TearDown() override
    {
        for (char const* const name : {"ZK_TEST_A", "ZK_TEST_EMPTY", "ZK_TEST_NEW"})
            SetEnvironmentVariableA(name, nullptr);
    }

    static constexpr char poison = '\x5A';
    std::string buffer_ = std::string(32, poison);
};

using EnvironmentStrings = Environment;

}  // namespace

TEST_F(Environment, givesTheValueAndItsLength)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");

    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_A", buffer_.data(), 4), 3u);

    EXPECT_STREQ(buffer_.c_str(), "abc");
    EXPECT_EQ(buffer_[4], poison);
}

TEST_F(Environment, asksForRoomWithTheNulWhenTheBufferIsTooSmall)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");

    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_A", buffer_.data(), 3), 4u);
    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_A", buffer_.data(), 0), 4u);
    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_A", nullptr, 0), 4u);

    EXPECT_EQ(buffer_[0], poison);
}

TEST_F(Environment, lacksAVariableThatWasNeverSet)
{
    EXPECT_FAILS(GetEnvironmentVariableA("ZK_TEST_NEW", buffer_.data(), 32), ERROR_ENVVAR_NOT_FOUND);
    EXPECT_FAILS(GetEnvironmentVariableA("", buffer_.data(), 32), ERROR_ENVVAR_NOT_FOUND);
    EXPECT_FAILS(GetEnvironmentVariableA(nullptr, buffer_.data(), 32), ERROR_ENVVAR_NOT_FOUND);

    EXPECT_EQ(buffer_[0], poison);
}

TEST_F(Environment, keepsAnEmptyValueApartFromNone)
{
    EXPECT_TRUE(SetEnvironmentVariableA("ZK_TEST_EMPTY", ""));
    SetLastError(zk::test::poisonedError);

    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_EMPTY", buffer_.data(), 1), 0u);

    EXPECT_EQ(GetLastError(), zk::test::poisonedError);
    EXPECT_EQ(buffer_[0], '\0');
    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_EMPTY", nullptr, 0), 1u);
}

TEST_F(Environment, replacesAValue)
{
    EXPECT_SUCCEEDS(SetEnvironmentVariableA("ZK_TEST_A", "first"));
    EXPECT_SUCCEEDS(SetEnvironmentVariableA("ZK_TEST_A", "second=2"));

    EXPECT_EQ(GetEnvironmentVariableA("ZK_TEST_A", buffer_.data(), 32), 8u);
    EXPECT_STREQ(buffer_.c_str(), "second=2");
}

TEST_F(Environment, removesAVariable)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");

    EXPECT_SUCCEEDS(SetEnvironmentVariableA("ZK_TEST_A", nullptr));
    EXPECT_FAILS(GetEnvironmentVariableA("ZK_TEST_A", buffer_.data(), 32), ERROR_ENVVAR_NOT_FOUND);
    EXPECT_SUCCEEDS(SetEnvironmentVariableA("ZK_TEST_A", nullptr));
}

TEST_F(Environment, refusesImpossibleNames)
{
    EXPECT_FAILS(SetEnvironmentVariableA("", "x"), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(SetEnvironmentVariableA("ZK_TEST=A", "x"), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(SetEnvironmentVariableA(nullptr, "x"), ERROR_ENVVAR_NOT_FOUND);
}

TEST_F(Environment, isReadAndWrittenByManyThreads)
{
    SetEnvironmentVariableA("ZK_TEST_A", "aaaa");
    std::vector<std::thread> threads;
    for (char const* const value : {"bbbbbbbb", "cc"}) {
        threads.emplace_back([value] {
            for (int i = 0; i < 500; ++i)
                SetEnvironmentVariableA("ZK_TEST_A", value);
        });
    }
    threads.emplace_back([] {
        for (int i = 0; i < 500; ++i) {
            char value[16] = {};
            GetEnvironmentVariableA("ZK_TEST_A", value, sizeof value);
            std::string const seen = value;

            EXPECT_TRUE(seen == "aaaa" || seen == "bbbbbbbb" || seen == "cc") << seen;
        }
    });
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(EnvironmentStrings, haveTheirVariablesReplaced)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");
    SetEnvironmentVariableA("ZK_TEST_EMPTY", "");
    struct Row {
        char const* text;
        char const* expected;
    };
    constexpr Row rows[] = {
        {"", ""},
        {"plain", "plain"},
        {"a%ZK_TEST_A%b", "aabcb"},
        {"%ZK_TEST_A%%ZK_TEST_A%", "abcabc"},
        {"%ZK_TEST_EMPTY%", ""},
        {"%ZK_TEST_NEW%", "%ZK_TEST_NEW%"},
        {"100%", "100%"},
        {"%%", "%%"},
        {"%ZK_TEST_A", "%ZK_TEST_A"},
        {"%ZK_TEST_A%ZK_TEST_A%", "abcZK_TEST_A%"},
    };
    for (Row const& row : rows) {
        char target[64];

        EXPECT_EQ(ExpandEnvironmentStringsA(row.text, target, sizeof target), std::strlen(row.expected) + 1)
            << row.text;

        EXPECT_STREQ(target, row.expected) << row.text;
    }
}

TEST_F(EnvironmentStrings, askForRoomWhenTheBufferIsTooSmall)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");

    EXPECT_EQ(ExpandEnvironmentStringsA("a%ZK_TEST_A%b", buffer_.data(), 6), 6u);
    EXPECT_STREQ(buffer_.c_str(), "aabcb");

    SetLastError(zk::test::poisonedError);
    EXPECT_EQ(ExpandEnvironmentStringsA("a%ZK_TEST_A%b", buffer_.data(), 5), 6u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_STREQ(buffer_.c_str(), "aabc");

    EXPECT_EQ(ExpandEnvironmentStringsA("a%ZK_TEST_A%b", nullptr, 0), 6u);
}

TEST_F(EnvironmentStrings, listAllVariables)
{
    SetEnvironmentVariableA("ZK_TEST_A", "abc");
    char* const block = GetEnvironmentStringsA();
    ASSERT_NE(block, nullptr);
    int found = 0;

    for (char const* variable = block; *variable; variable += std::strlen(variable) + 1)
        found += std::strcmp(variable, "ZK_TEST_A=abc") == 0;

    EXPECT_EQ(found, 1);
    EXPECT_TRUE(FreeEnvironmentStringsA(block));
}

TEST_F(Environment, knowsTheComputersName)
{
    DWORD size = 32;
    EXPECT_SUCCEEDS(GetComputerNameA(buffer_.data(), &size));
    EXPECT_EQ(size, std::strlen(buffer_.c_str()));
    EXPECT_GT(size, 0u);
    EXPECT_LE(size, DWORD(MAX_COMPUTERNAME_LENGTH));
    DWORD const length = size;

    EXPECT_FAILS(GetComputerNameA(buffer_.data(), &size), ERROR_BUFFER_OVERFLOW);
    EXPECT_EQ(size, length + 1);
    EXPECT_SUCCEEDS(GetComputerNameA(buffer_.data(), &size));
    EXPECT_EQ(size, length);
}

TEST_F(Environment, knowsTheUsersName)
{
    std::string name(257, poison);
    DWORD size = 257;
    EXPECT_SUCCEEDS(GetUserNameA(name.data(), &size));
    EXPECT_EQ(size, std::strlen(name.c_str()) + 1);
    EXPECT_GT(size, 1u);
    DWORD const needed = size;

    --size;
    EXPECT_FAILS(GetUserNameA(name.data(), &size), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(size, needed);
    EXPECT_SUCCEEDS(GetUserNameA(name.data(), &size));
    size = 0;
    EXPECT_FAILS(GetUserNameA(nullptr, &size), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(size, needed);
}
