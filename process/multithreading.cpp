#include "process/multithreading.h"

#include "platform/os/threadName.h"

bool zk::isCoreMultithreaded = false;

void enableCoreForMultithreading(bool isEnabled)
{
    zk::isCoreMultithreaded = isEnabled;
}

bool isCoreEnabledForMultithreading()
{
    return zk::isCoreMultithreaded;
}

void setThreadName(unsigned long threadId, CString const& name)
{
    zk::os::nameThread(static_cast<DWORD>(threadId), name);
}
