#include "platform/os/posix/standardHandles.h"

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/shieldedLock.h"

#include <fcntl.h>

#include <mutex>
#include <optional>
#include <type_traits>

using namespace zk::os;

namespace {

constexpr DWORD standardCount = 3;

struct StandardHandles {
    std::mutex mutex;
    std::optional<HANDLE> values[standardCount];  // none: not asked for yet
};

// Has no destructor to run: static destructors write to standard output too.
constinit StandardHandles standardHandles;
static_assert(std::is_trivially_destructible_v<StandardHandles>);

// The numbers follow one another downwards from standard input on.
DWORD indexOf(DWORD which) noexcept
{
    return STD_INPUT_HANDLE - which;
}

// Makes the handle; null where the process has no such descriptor.
DWORD makeHandle(int descriptor, HANDLE& handle)
{
    handle = nullptr;
    struct stat status;
    int const mode = systemCalls().statusFlags(descriptor, F_GETFL, 0);
    if (mode == -1 || systemCalls().fstat(descriptor, &status) == -1)
        return errno == EBADF ? ERROR_SUCCESS : errorFromErrno(errno);
    unsigned access = FileObject::none;
    if ((mode & O_ACCMODE) != O_WRONLY)
        access |= FileObject::reads;
    if ((mode & O_ACCMODE) != O_RDONLY)
        access |= FileObject::writes;
    HandlePlace place;
    if (!place.error())
        handle = place.open(
            std::make_shared<FileObject>(FileObject::Borrowed{descriptor}, access, status.st_mode), true);
    return place.error();
}

}  // namespace

HANDLE WINAPI GetStdHandle(DWORD which) noexcept
{
    DWORD const index = indexOf(which);
    if (index >= standardCount) {
        SetLastError(ERROR_INVALID_HANDLE);
        return INVALID_HANDLE_VALUE;
    }
    ShieldedLock const guard(standardHandles.mutex);
    std::optional<HANDLE>& handle = standardHandles.values[index];
    HANDLE made = nullptr;
    if (!handle && !report(guarded([&] { return makeHandle(int(index), made); })))
        return INVALID_HANDLE_VALUE;  // the next call tries again
    if (!handle)
        handle = made;
    return *handle;
}

BOOL WINAPI SetStdHandle(DWORD which, HANDLE handle) noexcept
{
    DWORD const index = indexOf(which);
    if (index >= standardCount)
        return report(ERROR_INVALID_HANDLE);
    ShieldedLock const guard(standardHandles.mutex);
    standardHandles.values[index] = handle;
    return TRUE;
}
