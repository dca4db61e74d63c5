#include "logging/util/CxMutex.h"
#include "logging/util/CxSystem.h"
#include "logging/util/CxThread.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

TEST(CxMutex, threadThatHoldsItLocksItAgain)
{
    CxMutex mutex;
    ASSERT_TRUE(CxMutexCreate(mutex).ok());

    EXPECT_TRUE(CxMutexLock(mutex).ok());
    EXPECT_TRUE(CxMutexLock(mutex).ok());

    EXPECT_TRUE(CxMutexUnlock(mutex).ok());
    EXPECT_TRUE(CxMutexUnlock(mutex).ok());
    EXPECT_TRUE(CxMutexClose(mutex).ok());
}

TEST(CxMutex, holdsOffOtherThreads)
{
    CxMutex mutex;
    CxMutexCreate(mutex);
    CxMutexLock(mutex);

    CCgResult other;
    std::thread([&] { other = CxMutexLockFor(mutex, 0); }).join();

    EXPECT_EQ(other.status, 'w');
    CxMutexUnlock(mutex);
    CxMutexClose(mutex);
}

TEST(CxMutex, unlockByAThreadThatDoesNotHoldItFails)
{
    CxMutex mutex;
    CxMutexCreate(mutex);

    EXPECT_EQ(CxMutexUnlock(mutex), (CCgResult{'w', ERROR_NOT_OWNER}));

    CxMutexClose(mutex);
}

TEST(CxMutex, ofAThreadThatEndedGoesToTheNext)
{
    CxMutex mutex;
    CxMutexCreate(mutex);
    CxThread thread;
    CxThreadStart(
        thread, [](void* held) { CxMutexLock(*static_cast<CxMutex*>(held)); }, &mutex);
    CxThreadWait(thread);

    EXPECT_TRUE(CxMutexLock(mutex).ok());

    CxMutexUnlock(mutex);
    CxMutexClose(mutex);
}

TEST(CxMutex, tellsTheNextThatItsOwnerEnded)
{
    CxMutex mutex;
    CxMutexCreate(mutex);
    bool wasAbandoned = true;
    EXPECT_TRUE(CxMutexLockNamed(mutex, wasAbandoned).ok());
    EXPECT_FALSE(wasAbandoned);
    CxMutexUnlock(mutex);
    std::thread([&] { CxMutexLock(mutex); }).join();

    EXPECT_TRUE(CxMutexLockNamed(mutex, wasAbandoned).ok());

    EXPECT_TRUE(wasAbandoned);
    CxMutexUnlock(mutex);
    CxMutexClose(mutex);
}

TEST(CxMutex, thatIsNotHadInTimeTellsSo)
{
    CxMutex mutex;
    CxMutexCreate(mutex);
    CxMutexLock(mutex);

    CCgResult other;
    std::thread([&] {
        SetLastError(ERROR_SUCCESS);
        other = CxMutexLockFor(mutex, 1);
    }).join();

    EXPECT_EQ(other, (CCgResult{'w', ERROR_SEM_TIMEOUT}));
    CxMutexUnlock(mutex);
    CxMutexClose(mutex);
}

TEST(CxMutex, thatWasNotMadeIsAnInvalidArgument)
{
    CxMutex none;
    CCgResult const invalid{'p', 22};

    EXPECT_EQ(CxMutexLock(none), invalid);
    EXPECT_EQ(CxMutexUnlock(none), invalid);
    EXPECT_EQ(CxMutexClose(none), invalid);
}

TEST(CxMutex, isSharedByItsKeyInHexadecimal)
{
    // A key of this test program's own process, so that runs side by side stay apart.
    auto const key = static_cast<std::int32_t>(0x40000000 | (CxProcessId() & 0xFFFFFF));
    CxMutex mutex;
    ASSERT_TRUE(CxMutexCreateNamed(mutex, key).ok());

    char name[40];
    std::snprintf(name, sizeof name, "Global\\CX_SEM_KEY_%x", static_cast<unsigned>(key));
    HANDLE const same = OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name);

    EXPECT_NE(same, nullptr);
    EXPECT_TRUE(CxMutexLockNamed(mutex).ok());
    EXPECT_TRUE(CxMutexUnlock(mutex).ok());
    CloseHandle(same);
    CxMutexClose(mutex);
}

}  // namespace
