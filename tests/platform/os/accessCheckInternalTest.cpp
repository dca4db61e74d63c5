#include "platform/os/accessCheck.h"

#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

TEST(AccessCheckFailures, areAnotherModeAndNoPath)
{
    TemporaryFolder const folder;
    for (int const mode : {1, 3, 8, -1}) {
        errno = 0;
        EXPECT_EQ(_access(folder.path().c_str(), mode), -1) << mode;
        EXPECT_EQ(errno, EINVAL) << mode;
    }
    errno = 0;
    EXPECT_EQ(_access(nullptr, 0), -1);
    EXPECT_EQ(errno, EINVAL);
}

}  // namespace
