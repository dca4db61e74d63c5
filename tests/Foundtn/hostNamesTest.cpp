#include "platform/os/socketNames.h"

#include "Foundtn/util/hostNames.h"

#include "tests/support/socketLibrary.h"

#include <gtest/gtest.h>

namespace {

class HostNames : public testing::Test {
    zk::test::SocketLibrary const started_;
};

TEST_F(HostNames, giveThisMachinesName)
{
    char expected[256];
    ASSERT_EQ(gethostname(expected, sizeof expected), 0);

    EXPECT_STREQ(zkGetLocalHostName(), expected);
}

TEST_F(HostNames, giveAnAddressWithDots)
{
    EXPECT_STREQ(zkConvertHostnameToIP("127.0.0.1"), "127.0.0.1");
    EXPECT_STREQ(zkConvertHostnameToIP("localhost"), "127.0.0.1");
}

TEST_F(HostNames, takeThisMachineForAnEmptyName)
{
    EXPECT_STREQ(zkConvertHostnameToIP(""), zkConvertHostnameToIP(zkGetLocalHostName()));
}

TEST_F(HostNames, giveNothingForANameThatNobodyHas)
{
    EXPECT_STREQ(zkConvertHostnameToIP("no such host.invalid"), "");
}

}  // namespace
