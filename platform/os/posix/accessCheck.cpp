#include "platform/os/posix/accessCheck.h"

#include "platform/os/posix/fileAttributes.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr int writeMode = 2;
constexpr int readMode = 4;

bool isReadOnlyFile(char const* path) noexcept
{
    DWORD const lastError = GetLastError();
    DWORD const attributes = GetFileAttributesA(path);
    SetLastError(lastError);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0 &&
        (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The caller knows only ENOENT for what cannot be reached and EACCES for what may not be done.
int failure(int error) noexcept
{
    bool const isUnreachable = error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
    errno = isUnreachable ? ENOENT : error == EROFS ? EACCES : error;
    return -1;
}

}  // namespace

int _access(char const* path, int mode) noexcept
{
    using namespace zk::os;

    if (!path || (mode & ~(readMode | writeMode)) != 0) {
        return failure(EINVAL);
    }
    int const wanted = ((mode & readMode) != 0 ? R_OK : 0) | ((mode & writeMode) != 0 ? W_OK : 0);
    auto const ask = [&] {
        return systemCalls().faccessat(AT_FDCWD, path, wanted == 0 ? F_OK : wanted, AT_EACCESS);
    };
    if (uninterrupted(ask) != 0)
        return failure(errno);
    if ((mode & writeMode) != 0 && isReadOnlyFile(path))
        return failure(EACCES);
    return 0;
}
