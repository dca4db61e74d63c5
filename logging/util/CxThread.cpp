#include "logging/util/CxThread.h"

#include <memory>
#include <new>

namespace {

struct Start {
    void (*entry)(void*);
    void* argument;
};

DWORD WINAPI run(void* start)
{
    std::unique_ptr<Start> const own(static_cast<Start*>(start));
    own->entry(own->argument);
    return 0;
}

}  // namespace

CCgResult CxThreadStart(CxThread& thread, void (*entry)(void*), void* argument)
{
    if (!entry)
        return zk::logging::invalidArguments;
    auto start = std::make_unique<Start>(Start{entry, argument});
    thread.handle = CreateThread(nullptr, 0, run, start.get(), 0, nullptr);
    if (!thread.handle)
        return zk::logging::lastSystemError();
    start.release();
    return {};
}

CCgResult CxThreadWait(CxThread& thread) noexcept
{
    if (!thread.handle)
        return zk::logging::invalidArguments;
    if (WaitForSingleObject(thread.handle, INFINITE) != WAIT_OBJECT_0)
        return zk::logging::lastSystemError();
    CloseHandle(thread.handle);
    thread.handle = nullptr;
    return {};
}

void CxThreadSleep(std::uint32_t milliseconds) noexcept
{
    Sleep(milliseconds);
}

std::uint32_t CxCurrentThreadId() noexcept
{
    return GetCurrentThreadId();
}
