#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <thread>

TEST(LastError, isKeptUntilTheNextOne)
{
    SetLastError(ERROR_ALREADY_EXISTS);

    EXPECT_EQ(GetLastError(), 183u);
    EXPECT_EQ(GetLastError(), 183u);
}

TEST(LastError, belongsToTheThread)
{
    SetLastError(5);
    DWORD seen = 99;

    std::thread([&] { seen = GetLastError(); }).join();

    EXPECT_EQ(seen, 0u);
}

TEST(NativeSeparator, isSwitchedForTheLifeOfTheHook)
{
    char const native = zk::os::nativeSeparator();
    {
        zk::os::ScopedNativeSeparator const switched('!');

        EXPECT_EQ(zk::os::nativeSeparator(), '!');
    }

    EXPECT_EQ(zk::os::nativeSeparator(), native);
}
