#include "Foundtn/util/hostNames.h"

#include "platform/os/hostName.h"

#include <gtest/gtest.h>

namespace {

class HostNames : public testing::Test {
    zk::os::SocketLibrary const started_;
};

TEST_F(HostNames, giveThisMachinesName)
{
    EXPECT_STREQ(zkGetLocalHostName(), zk::os::hostName().c_str());
    EXPECT_NE(zkGetLocalHostName(), CString());
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
