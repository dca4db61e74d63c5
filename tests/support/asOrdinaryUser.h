// asOrdinaryUser.h: runs a part of a test without the superuser's rights, so
// that permissions count whoever runs the tests. For POSIX systems.
//
//   folder.makeFolder("closed");
//   chmod(folder.path("closed").c_str(), 0755);
//   asOrdinaryUser([&] { EXPECT_FAILS(DeleteFileA(...), ERROR_ACCESS_DENIED); });
#pragma once

#include <gtest/gtest.h>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace zk::test {

/// Runs `body` in a process of its own; its failed expectations fail the test.
template <class Body>
void inChildProcess(Body body)
{
    std::fflush(nullptr);
    pid_t const child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        body();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "see the failures above";
}

/// The same; where the tests run as the superuser, `body` runs as "nobody".
template <class Body>
void asOrdinaryUser(Body body)
{
    inChildProcess([&] {
        constexpr uid_t nobody = 65534;
        bool const isOrdinary =
            geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
        ASSERT_TRUE(isOrdinary);
        body();
    });
}

}  // namespace zk::test
