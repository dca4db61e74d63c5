#include "platform/os/threadName.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace {

std::string nameOfThisThread()
{
    char name[16] = {};
    pthread_getname_np(pthread_self(), name, sizeof name);
    return name;
}

TEST(ThreadNames, areThoseThatTheKernelKeeps)
{
    std::thread([] {
        zk::os::nameThread(GetCurrentThreadId(), "loader");
        EXPECT_EQ(nameOfThisThread(), "loader");

        zk::os::nameThread(0xFFFFFFFF, "a name of more than 15 bytes");
        EXPECT_EQ(nameOfThisThread(), "a name of more ");
    }).join();
}

TEST(ThreadNames, canBeGivenToAnotherThread)
{
    DWORD const self = GetCurrentThreadId();
    std::string const before = nameOfThisThread();

    std::thread([self] { zk::os::nameThread(self, "named by others"); }).join();

    EXPECT_EQ(nameOfThisThread(), "named by others");
    zk::os::nameThread(self, before.c_str());
}

TEST(ThreadNames, arePassedOverForAThreadThatIsNotThere)
{
    std::string const before = nameOfThisThread();

    zk::os::nameThread(1, "init");

    EXPECT_EQ(nameOfThisThread(), before);
}

}  // namespace
