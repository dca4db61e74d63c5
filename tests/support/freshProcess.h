// freshProcess.h: a test of what a process has once, run in a process of its own.
//
//   TEST_IN_FRESH_PROCESS(ToolMode, hasNoLanguageAtFirst)
//   {
//       EXPECT_FALSE(IToolMode::isLangCpp());
//   }
#pragma once

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

/// Like TEST; the body runs in a process that has run no other test. What it prints goes to this one's output.
#define TEST_IN_FRESH_PROCESS(suite, name)                                                                   \
    static void suite##_##name##_body();                                                                     \
    ZK_CHILD(suite##_##name)                                                                                 \
    {                                                                                                        \
        suite##_##name##_body();                                                                             \
        return testing::Test::HasFailure() ? 1 : 0;                                                          \
    }                                                                                                        \
    TEST(suite, name)                                                                                        \
    {                                                                                                        \
        EXPECT_EQ(zk::test::ChildProcess(#suite "_" #name).exitCode(), 0) << "see the failures above";       \
    }                                                                                                        \
    static void suite##_##name##_body()
