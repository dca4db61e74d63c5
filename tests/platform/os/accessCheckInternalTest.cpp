#include "platform/os/accessCheck.h"

#include "platform/os/posix/systemCalls.h"
#include "tests/support/FaultInjector.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/asOrdinaryUser.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

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

TEST(AccessCheckFailures, haveOneNumberForWhatCannotBeReachedAndOneForWhatMayNotBeDone)
{
    struct {
        int given;
        int expected;
    } const rows[] = {{ENOENT, ENOENT},       {ENOTDIR, ENOENT}, {ELOOP, ENOENT},
                      {ENAMETOOLONG, ENOENT}, {EACCES, EACCES},  {EROFS, EACCES}};
    for (auto const& row : rows) {
        zk::test::FaultInjector<&zk::os::SystemCalls::faccessat> const fault({.error = row.given});
        EXPECT_EQ(_access("any", 2), -1);
        EXPECT_EQ(errno, row.expected) << row.given;
    }
}

// What a user's right to an entry gives: 0, or errno.
int refusal(std::string const& path, int mode)
{
    return _access(path.c_str(), mode) == 0 ? 0 : errno;
}

TEST(AccessCheck, countsWhatTheUserMayDo)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make files of another user";
    TemporaryFolder const folder;
    chmod(folder.path().c_str(), 0755);
    folder.write("secret", "x");
    folder.write("fixed", "x");
    folder.makeFolder("folder");
    chmod(folder.path("secret").c_str(), 0602);
    chmod(folder.path("fixed").c_str(), 0644);
    chmod(folder.path("folder").c_str(), 0755);

    zk::test::asOrdinaryUser([&] {
        EXPECT_EQ(refusal(folder.path("secret"), 0), 0);
        EXPECT_EQ(refusal(folder.path("secret"), 2), 0);
        EXPECT_EQ(refusal(folder.path("secret"), 4), EACCES);
        EXPECT_EQ(refusal(folder.path("secret"), 6), EACCES);
        EXPECT_EQ(refusal(folder.path("fixed"), 4), 0);
        EXPECT_EQ(refusal(folder.path("fixed"), 2), EACCES);
        EXPECT_EQ(refusal(folder.path("folder"), 4), 0);
        EXPECT_EQ(refusal(folder.path("folder"), 2), EACCES);
    });
    zk::test::inChildProcess([&] {
        ASSERT_EQ(seteuid(65534), 0);
        EXPECT_EQ(refusal(folder.path("fixed"), 2), EACCES) << "the effective user counts";
    });
}

}  // namespace
