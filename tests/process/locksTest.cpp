#include "process/ZktCriticalSection.h"
#include "process/ZktMutex.h"
#include "process/ZktSemaphore.h"

#include "tests/support/freshProcess.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

constexpr unsigned long timedOut = 258;
constexpr unsigned long failed = 0xFFFFFFFF;

// The switch in a position for the length of a test.
class LocksSwitchedOn : public testing::Test {
protected:
    LocksSwitchedOn() { enableCoreForMultithreading(true); }
    ~LocksSwitchedOn() override { enableCoreForMultithreading(false); }
};

class LocksSwitchedOff : public testing::Test {
protected:
    LocksSwitchedOff() { enableCoreForMultithreading(false); }
};

// What a call gives in another thread.
template <class Call>
auto elsewhere(Call call)
{
    decltype(call()) result{};
    std::thread([&] { result = call(); }).join();
    return result;
}

std::string uniqueName(char const* kind)
{
    return std::string("ZkLocksTest") + kind + std::to_string(GetCurrentProcessId());
}

TEST_IN_FRESH_PROCESS(CoreSwitch, isOffAtFirst)
{
    EXPECT_FALSE(isCoreEnabledForMultithreading());
}

TEST_F(LocksSwitchedOff, tellTheSwitch)
{
    EXPECT_FALSE(isCoreEnabledForMultithreading());
    enableCoreForMultithreading(true);
    EXPECT_TRUE(isCoreEnabledForMultithreading());
    enableCoreForMultithreading(false);
    EXPECT_FALSE(isCoreEnabledForMultithreading());
}

// -- Critical section -------------------------------------------------------------------

TEST_F(LocksSwitchedOn, keepOthersOutOfASection)
{
    constexpr int threadCount = 4;
    constexpr int rounds = 20000;
    ZktCriticalSection const section;
    int counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                section.EnterCriticalSection();
                ++counter;
                section.LeaveCriticalSection();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(counter, threadCount * rounds);
}

TEST_F(LocksSwitchedOn, letAThreadEnterItsSectionAgain)
{
    ZktCriticalSection const section;

    section.EnterCriticalSection();
    section.EnterCriticalSection();
    section.LeaveCriticalSection();
    section.LeaveCriticalSection();

    std::thread([&] {
        section.EnterCriticalSection();
        section.LeaveCriticalSection();
    }).join();
}

TEST_F(LocksSwitchedOn, makeAFreeSectionOfACopy)
{
    ZktCriticalSection const source;
    ZktCriticalSection const copy(source);
    source.EnterCriticalSection();

    std::thread([&] {
        copy.EnterCriticalSection();
        copy.LeaveCriticalSection();
    }).join();

    source.LeaveCriticalSection();
}

TEST_F(LocksSwitchedOff, doNothingInASection)
{
    ZktCriticalSection const section;

    section.EnterCriticalSection();

    std::thread([&] { section.EnterCriticalSection(); }).join();
    section.LeaveCriticalSection();
    section.LeaveCriticalSection();
}

TEST_F(LocksSwitchedOn, neverTryASection)
{
    ZktCriticalSection const section;
    EXPECT_EQ(section.TryEnterCriticalSection(), 0);
    std::thread([&] {
        section.EnterCriticalSection();  // the try took nothing
        section.LeaveCriticalSection();
    }).join();

    section.EnterCriticalSection();
    EXPECT_EQ(section.TryEnterCriticalSection(), 0);
    section.LeaveCriticalSection();
    EXPECT_EQ(elsewhere([&] { return section.TryEnterCriticalSection(); }), 0);

    enableCoreForMultithreading(false);
    EXPECT_EQ(section.TryEnterCriticalSection(), 0);
}

// -- Mutex ----------------------------------------------------------------------------------

TEST_F(LocksSwitchedOn, takeAMutexFromAllOthers)
{
    ZktMutex mutex;
    EXPECT_EQ(mutex.Wait(0), 0u);

    EXPECT_EQ(elsewhere([&] { return mutex.Wait(0); }), timedOut);
    EXPECT_EQ(elsewhere([&] { return mutex.Release(); }), 0) << "not its own";
    EXPECT_EQ(mutex.Release(), 1);
    EXPECT_EQ(mutex.Release(), 0) << "given back already";
    EXPECT_EQ(elsewhere([&] { return mutex.Wait(0) == 0 && mutex.Release() == 1; }), true);
}

TEST_F(LocksSwitchedOn, makeAMutexThatIsOwnedOrNot)
{
    ZktMutex owned(1);
    ZktMutex free(0);

    EXPECT_EQ(elsewhere([&] { return owned.Wait(0); }), timedOut);
    EXPECT_EQ(elsewhere([&] { return free.Wait(0) + static_cast<unsigned long>(!free.Release()); }), 0u);
    EXPECT_EQ(owned.Release(), 1);
}

TEST_F(LocksSwitchedOn, shareAMutexByName)
{
    std::string const name = uniqueName("Mutex");
    ZktMutex first(nullptr, 1, name.c_str());
    ZktMutex second(nullptr, 0, name.c_str());

    EXPECT_EQ(elsewhere([&] { return second.Wait(0); }), timedOut);
    EXPECT_EQ(second.Release(), 1) << "of the thread that owns it by the first";
}

TEST_F(LocksSwitchedOn, tellAMutexWhoseOwnerEnded)
{
    ZktMutex mutex;
    elsewhere([&] { return mutex.Wait(0); });

    EXPECT_EQ(mutex.Wait(1000), 0x80u);
    EXPECT_EQ(mutex.Release(), 1);
}

TEST_F(LocksSwitchedOff, makeTheMutexButDoNotWaitForIt)
{
    ZktMutex mutex(1);

    EXPECT_EQ(elsewhere([&] { return mutex.Wait(INFINITE); }), 0u);
    EXPECT_EQ(mutex.Release(), 0);

    enableCoreForMultithreading(true);
    EXPECT_EQ(elsewhere([&] { return mutex.Wait(0); }), timedOut) << "owned since it was made";
    EXPECT_EQ(mutex.Release(), 1);
    enableCoreForMultithreading(false);
}

TEST_F(LocksSwitchedOn, closeTheMutexAtItsEnd)
{
    std::string const name = uniqueName("Closed");
    {
        ZktMutex const mutex(nullptr, 0, name.c_str());
        HANDLE const open = OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str());
        EXPECT_NE(open, nullptr);
        CloseHandle(open);
    }
    EXPECT_EQ(OpenMutexA(MUTEX_ALL_ACCESS, FALSE, name.c_str()), nullptr);
}

TEST_F(LocksSwitchedOn, shareTheHandleOfAMutexWithACopy)
{
    ZktMutex* const source = new ZktMutex(1);
    ZktMutex copy(*source);

    EXPECT_EQ(elsewhere([&] { return copy.Wait(0); }), timedOut);
    EXPECT_EQ(copy.Release(), 1);
    delete source;
    EXPECT_EQ(copy.Wait(0), failed) << "the source has closed the handle";
}

// -- Semaphore ------------------------------------------------------------------------------

TEST_F(LocksSwitchedOn, countTheUnitsOfASemaphore)
{
    ZktSemaphore semaphore(nullptr, 1, 2, nullptr);

    EXPECT_EQ(semaphore.Wait(0), 0u);
    EXPECT_EQ(semaphore.Wait(0), timedOut);
    EXPECT_EQ(semaphore.Signal(), timedOut);

    EXPECT_EQ(semaphore.Release(), 1);
    EXPECT_EQ(semaphore.Release(), 1);
    EXPECT_EQ(semaphore.Release(), 0) << "all are there";

    EXPECT_EQ(semaphore.Signal(), 0u) << "takes one";
    EXPECT_EQ(semaphore.Signal(), 0u);
    EXPECT_EQ(semaphore.Signal(), timedOut);
}

TEST_F(LocksSwitchedOn, fillASemaphoreByDefault)
{
    ZktSemaphore semaphore;

    EXPECT_EQ(semaphore.Release(), 0) << "as many as there may be";
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(semaphore.Wait(0), 0u);
    EXPECT_EQ(semaphore.Release(), 1);
}

TEST_F(LocksSwitchedOn, shareASemaphoreByName)
{
    std::string const name = uniqueName("Semaphore");
    ZktSemaphore first(nullptr, 1, 1, name.c_str());
    ZktSemaphore second(nullptr, 0, 5, name.c_str());

    EXPECT_EQ(second.Wait(0), 0u);
    EXPECT_EQ(first.Wait(0), timedOut);
}

TEST_F(LocksSwitchedOff, doNothingWithASemaphore)
{
    ZktSemaphore semaphore(nullptr, 0, 1, nullptr);

    EXPECT_EQ(semaphore.Wait(INFINITE), 0u);
    EXPECT_EQ(semaphore.Signal(), 0u);
    EXPECT_EQ(semaphore.Release(), 0);

    enableCoreForMultithreading(true);
    EXPECT_EQ(semaphore.Wait(0), timedOut) << "nothing was given back";
    enableCoreForMultithreading(false);
}

TEST_F(LocksSwitchedOn, failOnASemaphoreThatCouldNotBeMade)
{
    ZktSemaphore semaphore(nullptr, 2, 1, nullptr);

    EXPECT_EQ(semaphore.Wait(0), failed);
    EXPECT_EQ(semaphore.Signal(), failed);
    EXPECT_EQ(semaphore.Release(), 0);
}

TEST(Locks, haveVirtualDestructors)
{
    static_assert(std::has_virtual_destructor_v<ZktCriticalSection>);
    static_assert(std::has_virtual_destructor_v<ZktMutex>);
    static_assert(std::has_virtual_destructor_v<ZktSemaphore>);
}

}  // namespace
