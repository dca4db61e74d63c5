// endsAThread.h: skips a test that ends another thread from outside where what runs the test doesn't survive it.
//
//   TEST(Thread, terminatedWhileItWaitsHasTheCodeGiven)
//   {
//       ZK_SKIP_ENDS_A_THREAD();
//       ...
#pragma once

#include <gtest/gtest.h>

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
#    define ZK_SKIP_ENDS_A_THREAD()                                                                          \
        GTEST_SKIP() << "the sanitizers keep a thread's record until it ends by itself"
#elif defined(_WIN32)
#    define ZK_SKIP_ENDS_A_THREAD()                                                                          \
        GTEST_SKIP() << "Wine sometimes hangs after a thread was ended from outside"
#else
#    define ZK_SKIP_ENDS_A_THREAD() static_cast<void>(0)
#endif
