// Runs the tests of a program in an order of chance, so that none relies on
// another; or, started by one of its own tests, a child's part of that test.
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    int exitCode;
    if (zk::test::runAsChild(argc, argv, exitCode))
        return exitCode;
    GTEST_FLAG_SET(shuffle, true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
