#include "platform/os/posix/pipes.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/lastError.h"

#include <fcntl.h>

#include <algorithm>

using namespace zk::os;

BOOL WINAPI CreatePipe(PHANDLE readEnd, PHANDLE writeEnd, LPSECURITY_ATTRIBUTES security, DWORD size) noexcept
{
    if (security && security->lpSecurityDescriptor)
        return report(ERROR_INVALID_PARAMETER);
    int ends[2];
    if (systemCalls().pipe2(ends, O_CLOEXEC) == -1)
        return report(errorFromErrno(errno));
    Descriptor reader(ends[0]);
    Descriptor writer(ends[1]);
    if (size != 0)
        fcntl(writer.get(), F_SETPIPE_SZ, int(std::min<DWORD>(size, INT32_MAX)));
    bool const inherit = security && security->bInheritHandle;
    HANDLE const first =
        openHandle(std::make_shared<FileObject>(std::move(reader), FileObject::reads, S_IFIFO), inherit);
    if (!first)
        return FALSE;
    HANDLE const second =
        openHandle(std::make_shared<FileObject>(std::move(writer), FileObject::writes, S_IFIFO), inherit);
    if (!second) {
        PreserveLastError const kept;
        CloseHandle(first);
        return FALSE;
    }
    *readEnd = first;
    *writeEnd = second;
    return TRUE;
}
