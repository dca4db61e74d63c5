#include "platform/os/hostName.h"

#include <gtest/gtest.h>

namespace {

TEST(HostName, isKnownOnceTheSocketLibraryRuns)
{
    zk::os::SocketLibrary const sockets;

    ASSERT_TRUE(sockets.started());
    EXPECT_FALSE(zk::os::hostName().empty());
}

TEST(HostName, officialNameOfThisMachineIsKnownToTheNameServices)
{
    zk::os::SocketLibrary const sockets;

    EXPECT_FALSE(zk::os::officialHostName("localhost").empty());
}

TEST(HostName, machineThatNobodyKnowsHasNoOfficialName)
{
    zk::os::SocketLibrary const sockets;

    EXPECT_EQ(zk::os::officialHostName("no such machine.invalid"), "");
}

}  // namespace
