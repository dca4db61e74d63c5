// Runs the tests of a program in an order of chance, so that none relies on another.
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    GTEST_FLAG_SET(shuffle, true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
