#include "platform/os/threadName.h"

#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace zk::os {

void nameThread(DWORD threadId, char const* name) noexcept
{
    constexpr DWORD callingThread = 0xFFFFFFFF;
    constexpr std::size_t longestName = 15;
    char path[64];
    DWORD const id = threadId == callingThread ? GetCurrentThreadId() : threadId;
    std::snprintf(path, sizeof path, "/proc/self/task/%u/comm", static_cast<unsigned>(id));
    int const before = errno;
    int const file = uninterrupted([&] { return systemCalls().open(path, O_WRONLY | O_CLOEXEC, 0); });
    if (file != -1) {
        // The kernel takes the whole name in one call, or nothing.
        std::size_t const length = strnlen(name, longestName);
        uninterrupted([&] { return systemCalls().write(file, name, length); });
        systemCalls().close(file);
    }
    errno = before;
}

}  // namespace zk::os
