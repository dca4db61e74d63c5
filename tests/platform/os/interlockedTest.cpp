#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(Interlocked, incrementAndDecrementGiveTheNewValue)
{
    LONG volatile number = 41;
    LONG64 volatile wide = 0x7FFFFFFF;

    EXPECT_EQ(InterlockedIncrement(&number), 42);
    EXPECT_EQ(InterlockedDecrement(&number), 41);
    EXPECT_EQ(InterlockedIncrement64(&wide), 0x80000000LL);
    EXPECT_EQ(InterlockedDecrement64(&wide), 0x7FFFFFFFLL);
}

TEST(Interlocked, theOthersGiveTheOldValue)
{
    LONG volatile number = 1;
    LONG64 volatile wide = 1;

    EXPECT_EQ(InterlockedExchange(&number, 5), 1);
    EXPECT_EQ(InterlockedExchangeAdd(&number, -7), 5);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(InterlockedExchange64(&wide, 5LL << 40), 1);
    EXPECT_EQ(InterlockedExchangeAdd64(&wide, 1), 5LL << 40);
    EXPECT_EQ(wide, (5LL << 40) + 1);
}

TEST(Interlocked, wrapsAroundAtTheEnds)
{
    LONG volatile number = 0x7FFFFFFF;

    EXPECT_EQ(InterlockedIncrement(&number), -0x7FFFFFFF - 1);
}

TEST(Interlocked, exchangesOnlyWhatItCompares)
{
    LONG volatile number = 3;
    LONG64 volatile wide = 3;

    EXPECT_EQ(InterlockedCompareExchange(&number, 9, 4), 3);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(InterlockedCompareExchange(&number, 9, 3), 3);
    EXPECT_EQ(number, 9);
    EXPECT_EQ(InterlockedCompareExchange64(&wide, 9, 4), 3);
    EXPECT_EQ(wide, 3);
    EXPECT_EQ(InterlockedCompareExchange64(&wide, 1LL << 50, 3), 3);
    EXPECT_EQ(wide, 1LL << 50);
}

TEST(Interlocked, exchangesPointers)
{
    int first, second;
    PVOID volatile pointer = &first;

    EXPECT_EQ(InterlockedExchangePointer(&pointer, &second), &first);
    EXPECT_EQ(InterlockedCompareExchangePointer(&pointer, nullptr, &first), &second);
    EXPECT_EQ(pointer, &second);
    EXPECT_EQ(InterlockedCompareExchangePointer(&pointer, nullptr, &second), &second);
    EXPECT_EQ(pointer, nullptr);
}

TEST(Interlocked, losesNoChangeOfManyThreads)
{
    LONG volatile number = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 1000; ++round) {
                InterlockedIncrement(&number);
                InterlockedExchangeAdd(&number, 2);
                for (LONG seen = number; InterlockedCompareExchange(&number, seen - 1, seen) != seen;)
                    seen = number;
            }
        });
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(number, 8000);
}

}  // namespace
