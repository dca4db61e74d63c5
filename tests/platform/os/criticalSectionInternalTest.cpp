// What only the section supplied here promises.
#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

namespace {

TEST(SuppliedCriticalSection, ofZeroBytesIsReadyForUse)
{
    CRITICAL_SECTION section;
    std::memset(static_cast<void*>(&section), 0, sizeof section);

    EnterCriticalSection(&section);
    std::thread([&] { EXPECT_FALSE(TryEnterCriticalSection(&section)); }).join();
    LeaveCriticalSection(&section);

    EXPECT_TRUE(TryEnterCriticalSection(&section));
}

TEST(SuppliedCriticalSection, isNotLeftByAThreadOutside)
{
    CRITICAL_SECTION section;
    EnterCriticalSection(&section);

    std::thread([&] { LeaveCriticalSection(&section); }).join();

    std::thread([&] { EXPECT_FALSE(TryEnterCriticalSection(&section)); }).join();
    LeaveCriticalSection(&section);
    LeaveCriticalSection(&section);
    EXPECT_TRUE(TryEnterCriticalSection(&section));
}

}  // namespace
