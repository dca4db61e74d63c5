#include "platform/os/posix/standardHandles.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/lastError.h"

#include <fcntl.h>

#include <mutex>
#include <optional>

using namespace zk::os;

namespace {

constexpr DWORD standardCount = 3;

struct StandardHandles {
    std::mutex mutex;
    std::optional<HANDLE> values[standardCount];  // none: not asked for yet
};

// Never destroyed: static destructors write to standard output too.
StandardHandles& standardHandles() noexcept
{
    static StandardHandles& instance = *new StandardHandles;
    return instance;
}

// The numbers follow one another downwards from standard input on.
DWORD indexOf(DWORD which) noexcept
{
    return STD_INPUT_HANDLE - which;
}

HANDLE handleFor(int descriptor) noexcept
{
    PreserveLastError const kept;
    struct stat status;
    int const mode = fcntl(descriptor, F_GETFL);
    if (mode == -1 || systemCalls().fstat(descriptor, &status) == -1)
        return nullptr;
    unsigned access = FileObject::none;
    if ((mode & O_ACCMODE) != O_WRONLY)
        access |= FileObject::reads;
    if ((mode & O_ACCMODE) != O_RDONLY)
        access |= FileObject::writes;
    return openHandle(std::make_shared<FileObject>(FileObject::Borrowed{descriptor}, access, status.st_mode),
                      true);
}

}  // namespace

HANDLE WINAPI GetStdHandle(DWORD which) noexcept
{
    DWORD const index = indexOf(which);
    if (index >= standardCount) {
        SetLastError(ERROR_INVALID_HANDLE);
        return INVALID_HANDLE_VALUE;
    }
    StandardHandles& handles = standardHandles();
    std::lock_guard const guard(handles.mutex);
    std::optional<HANDLE>& handle = handles.values[index];
    if (!handle)
        handle = handleFor(int(index));
    return *handle;
}

BOOL WINAPI SetStdHandle(DWORD which, HANDLE handle) noexcept
{
    DWORD const index = indexOf(which);
    if (index >= standardCount)
        return report(ERROR_INVALID_HANDLE);
    StandardHandles& handles = standardHandles();
    std::lock_guard const guard(handles.mutex);
    handles.values[index] = handle;
    return TRUE;
}
