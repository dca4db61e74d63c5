#include "platform/os/posix/waits.h"

#include "platform/os/posix/handles.h"

using namespace zk::os;

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) noexcept
{
    std::shared_ptr<KernelObject> object;
    {
        HandlePin const pin(handle);
        if (!pin)
            return WAIT_FAILED;
        DWORD const result = pin->wait(0);
        if (result != WAIT_TIMEOUT || milliseconds == 0)
            return result;
        object = pin.share();
    }
    return object->wait(milliseconds);
}

DWORD WaitForSingleObjectEx(HANDLE handle, DWORD milliseconds, BOOL alertable) noexcept
{
    if (alertable) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return WAIT_FAILED;
    }
    return WaitForSingleObject(handle, milliseconds);
}
