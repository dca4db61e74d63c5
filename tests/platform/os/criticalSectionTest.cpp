#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

class CriticalSection : public testing::Test {
protected:
    CriticalSection() { InitializeCriticalSection(&section); }
    ~CriticalSection() override { DeleteCriticalSection(&section); }

    bool canBeEnteredElsewhere()
    {
        BOOL entered = FALSE;
        std::thread([&] {
            entered = TryEnterCriticalSection(&section);
            if (entered)
                LeaveCriticalSection(&section);
        }).join();
        return entered != FALSE;
    }

    CRITICAL_SECTION section;
};

TEST_F(CriticalSection, holdsOneThread)
{
    EXPECT_TRUE(canBeEnteredElsewhere());

    EnterCriticalSection(&section);
    EXPECT_FALSE(canBeEnteredElsewhere());

    LeaveCriticalSection(&section);
    EXPECT_TRUE(canBeEnteredElsewhere());
}

TEST_F(CriticalSection, isLeftAsOftenAsEntered)
{
    EnterCriticalSection(&section);
    EnterCriticalSection(&section);
    EXPECT_TRUE(TryEnterCriticalSection(&section));

    LeaveCriticalSection(&section);
    LeaveCriticalSection(&section);
    EXPECT_FALSE(canBeEnteredElsewhere());
    LeaveCriticalSection(&section);
    EXPECT_TRUE(canBeEnteredElsewhere());
}

TEST_F(CriticalSection, tryingEntersAFreeOne)
{
    EXPECT_TRUE(TryEnterCriticalSection(&section));

    EXPECT_FALSE(canBeEnteredElsewhere());
    LeaveCriticalSection(&section);
}

TEST_F(CriticalSection, guardsWhatItIsForAgainstManyThreads)
{
    CRITICAL_SECTION spinning;
    EXPECT_TRUE(InitializeCriticalSectionAndSpinCount(&spinning, 100));
    for (CRITICAL_SECTION* const lock : {&section, &spinning}) {
        int value = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&, lock] {
                for (int round = 0; round < 2000; ++round) {
                    EnterCriticalSection(lock);
                    ++value;
                    LeaveCriticalSection(lock);
                }
            });
        for (std::thread& thread : threads)
            thread.join();

        EXPECT_EQ(value, 8000);
    }
    DeleteCriticalSection(&spinning);
}

TEST_F(CriticalSection, wakesAWaiterThatSleeps)
{
    EnterCriticalSection(&section);
    HANDLE const reached = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    bool entered = false;  // guarded by the section
    std::thread waiter([&] {
        SetEvent(reached);
        EnterCriticalSection(&section);
        entered = true;
        LeaveCriticalSection(&section);
    });
    WaitForSingleObject(reached, INFINITE);
    EXPECT_FALSE(entered);

    LeaveCriticalSection(&section);
    waiter.join();

    EXPECT_TRUE(entered);
    CloseHandle(reached);
}

}  // namespace
