#include "platform/os/posix/pipes.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"

#include <fcntl.h>

#include <algorithm>

using namespace zk::os;

namespace {

DWORD createPipe(HANDLE& readEnd, HANDLE& writeEnd, bool inheritable, DWORD size)
{
    HandlePlace readPlace;
    HandlePlace writePlace;
    if (readPlace.error() || writePlace.error())
        return readPlace.error() ? readPlace.error() : writePlace.error();
    int ends[2];
    if (systemCalls().pipe2(ends, O_CLOEXEC) == -1)
        return errorFromErrno(errno);
    Descriptor reader(ends[0]);
    Descriptor writer(ends[1]);
    if (size != 0)
        fcntl(writer.get(), F_SETPIPE_SZ, int(std::min<DWORD>(size, INT32_MAX)));
    auto read = std::make_shared<FileObject>(std::move(reader), FileObject::reads, S_IFIFO);
    auto write = std::make_shared<FileObject>(std::move(writer), FileObject::writes, S_IFIFO);
    readEnd = readPlace.open(std::move(read), inheritable);
    writeEnd = writePlace.open(std::move(write), inheritable);
    return ERROR_SUCCESS;
}

}  // namespace

BOOL WINAPI CreatePipe(PHANDLE readEnd, PHANDLE writeEnd, LPSECURITY_ATTRIBUTES security, DWORD size) noexcept
{
    if (security && security->lpSecurityDescriptor)
        return report(ERROR_INVALID_PARAMETER);
    bool const inheritable = security && security->bInheritHandle;
    return report(guarded([&] { return createPipe(*readEnd, *writeEnd, inheritable, size); }));
}
