#include "logging/util/CxMutex.h"

#include <cstdio>

namespace {

constexpr DWORD longestWait = 10000;

CCgResult made(CxMutex& mutex, char const* name) noexcept
{
    mutex.handle = CreateMutexA(nullptr, FALSE, name);
    return mutex.handle ? CCgResult() : zk::logging::lastSystemError();
}

}  // namespace

CCgResult CxMutexCreate(CxMutex& mutex) noexcept
{
    return made(mutex, nullptr);
}

CCgResult CxMutexLock(CxMutex const& mutex) noexcept
{
    return CxMutexLockFor(mutex, INFINITE);
}

CCgResult CxMutexUnlock(CxMutex const& mutex) noexcept
{
    if (!mutex.handle)
        return zk::logging::invalidArguments;
    return ReleaseMutex(mutex.handle) ? CCgResult() : zk::logging::lastSystemError();
}

CCgResult CxMutexClose(CxMutex& mutex) noexcept
{
    if (!mutex.handle)
        return zk::logging::invalidArguments;
    HANDLE const handle = mutex.handle;
    mutex.handle = nullptr;
    return CloseHandle(handle) ? CCgResult() : zk::logging::lastSystemError();
}

CCgResult CxMutexCreateNamed(CxMutex& mutex, std::int32_t key) noexcept
{
    char name[40];
    std::snprintf(name, sizeof name, "Global\\CX_SEM_KEY_%x", static_cast<unsigned int>(key));
    return made(mutex, name);
}

CCgResult CxMutexLockNamed(CxMutex const& mutex) noexcept
{
    return CxMutexLockFor(mutex, longestWait);
}

CCgResult CxMutexLockFor(CxMutex const& mutex, std::uint32_t milliseconds) noexcept
{
    if (!mutex.handle)
        return zk::logging::invalidArguments;
    switch (WaitForSingleObject(mutex.handle, milliseconds)) {
    case WAIT_OBJECT_0:
    case WAIT_ABANDONED: return {};
    default: return zk::logging::lastSystemError();
    }
}
