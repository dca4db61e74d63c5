#include "logging/util/CxMutex.h"

#include <cstdio>

namespace {

constexpr DWORD longestWait = 10000;

CCgResult made(CxMutex& mutex, char const* name) noexcept
{
    mutex.handle = CreateMutexA(nullptr, FALSE, name);
    return mutex.handle ? CCgResult() : zk::logging::lastSystemError();
}

CCgResult locked(CxMutex const& mutex, std::uint32_t milliseconds, bool& wasAbandoned) noexcept
{
    wasAbandoned = false;
    if (!mutex.handle)
        return zk::logging::invalidArguments;
    DWORD const result = WaitForSingleObject(mutex.handle, milliseconds);
    wasAbandoned = result == WAIT_ABANDONED;
    if (result == WAIT_TIMEOUT)
        SetLastError(ERROR_SEM_TIMEOUT);  // a wait that ran out sets none
    return result == WAIT_OBJECT_0 || wasAbandoned ? CCgResult() : zk::logging::lastSystemError();
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

CCgResult CxMutexLockNamed(CxMutex const& mutex, bool& wasAbandoned) noexcept
{
    return locked(mutex, longestWait, wasAbandoned);
}

CCgResult CxMutexLockFor(CxMutex const& mutex, std::uint32_t milliseconds) noexcept
{
    bool wasAbandoned;
    return locked(mutex, milliseconds, wasAbandoned);
}
