// createFile.cpp: CreateFileA, declared in files.h.
//
// A file is emptied only after it was claimed (sharing.h), so that nobody
// loses what an other opener protects. For the same reason "exists already" is
// not asked beforehand: the exclusive creation says it.

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/files.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/sharing.h"

#include <fcntl.h>

namespace zk::os {
namespace {

constexpr DWORD knownAccess =
    GENERIC_READ | GENERIC_WRITE | FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;
constexpr DWORD knownSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD knownAttributes =
    FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_ARCHIVE;
constexpr DWORD knownFlags = FILE_FLAG_WRITE_THROUGH | FILE_FLAG_NO_BUFFERING | FILE_FLAG_RANDOM_ACCESS |
    FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_BACKUP_SEMANTICS;

struct Request {
    char const* path;
    DWORD access;
    DWORD sharing;
    DWORD disposition;
    DWORD flags;

    bool has(DWORD flag) const noexcept { return (flags & flag) != 0; }
    bool writes() const noexcept { return (access & (GENERIC_WRITE | FILE_APPEND_DATA)) != 0; }
    bool empties() const noexcept { return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING; }
    bool creates() const noexcept { return disposition != OPEN_EXISTING && disposition != TRUNCATE_EXISTING; }
};

struct Opened {
    Descriptor file;
    mode_t mode = 0;
    bool existed = false;
};

DWORD check(Request const& request) noexcept
{
    if (isEmpty(request.path))
        return ERROR_PATH_NOT_FOUND;
    bool const isKnown = request.disposition >= CREATE_NEW && request.disposition <= TRUNCATE_EXISTING &&
        (request.access & ~knownAccess) == 0 && (request.sharing & ~knownSharing) == 0 &&
        (request.flags & ~(knownAttributes | knownFlags)) == 0;
    bool const mayEmpty = request.disposition != TRUNCATE_EXISTING || (request.access & GENERIC_WRITE) != 0;
    return isKnown && mayEmpty ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
}

unsigned objectAccess(DWORD access) noexcept
{
    unsigned result = FileObject::none;
    if (access & GENERIC_READ)
        result |= FileObject::reads;
    if (access & GENERIC_WRITE)
        result |= FileObject::writes | FileObject::changesAttributes;
    if (access & FILE_APPEND_DATA)
        result |= FileObject::appends;
    if (access & FILE_WRITE_ATTRIBUTES)
        result |= FileObject::changesAttributes;
    return result;
}

Sharing sharingOf(Request const& request) noexcept
{
    Sharing sharing;
    if (request.access & GENERIC_READ)
        sharing.access |= Sharing::read;
    if (request.writes())
        sharing.access |= Sharing::write;
    if (request.has(FILE_FLAG_DELETE_ON_CLOSE))
        sharing.access |= Sharing::remove;
    static_assert(unsigned(Sharing::read) == FILE_SHARE_READ &&
                  unsigned(Sharing::write) == FILE_SHARE_WRITE &&
                  unsigned(Sharing::remove) == FILE_SHARE_DELETE);
    sharing.denied = Sharing::all & ~request.sharing;
    return sharing;
}

int openFlags(Request const& request) noexcept
{
    int flags = O_CLOEXEC | O_NOCTTY;
    if ((request.access & GENERIC_WRITE) == 0 && (request.access & FILE_APPEND_DATA))
        flags |= O_APPEND;
    if (request.has(FILE_FLAG_WRITE_THROUGH))
        flags |= O_DSYNC;
    if (request.has(FILE_FLAG_NO_BUFFERING))
        flags |= O_DIRECT;
    return flags;
}

// Opens for reading too where only writing is asked for, as a claim needs it;
// a file that may only be written, and a pipe, are opened for writing alone.
Descriptor openFor(Request const& request, int flags, mode_t mode) noexcept
{
    auto const open = [&](int way) {
        return Descriptor(uninterrupted([&] { return systemCalls().open(request.path, way | flags, mode); }));
    };
    bool const isData = (request.access & GENERIC_READ) || request.writes() || request.empties() ||
        request.has(FILE_FLAG_DELETE_ON_CLOSE) || (flags & O_CREAT);
    if (!isData)
        return open(O_PATH);
    if (!request.writes() && !request.empties())
        return open(O_RDONLY);
    Descriptor file = open(O_RDWR);
    if (request.access & GENERIC_READ)
        return file;
    struct stat status;
    bool const isPipe = file && systemCalls().fstat(file.get(), &status) == 0 && S_ISFIFO(status.st_mode);
    if (isPipe || (!file && errno == EACCES))
        return open(O_WRONLY);
    return file;
}

// A separator at the end means a folder, which is never created here.
DWORD errorOfFolderPath(Request const& request) noexcept
{
    FileStatus status;
    if (DWORD const error = statusOf(request.path, status))
        return error == ERROR_FILE_NOT_FOUND && request.creates() ? ERROR_INVALID_NAME : error;
    return request.disposition == CREATE_NEW ? ERROR_FILE_EXISTS : ERROR_ACCESS_DENIED;
}

DWORD createOrOpen(Request const& request, Opened& opened) noexcept
{
    int const flags = openFlags(request);
    mode_t const mode = request.has(FILE_ATTRIBUTE_READONLY) ? 0444 : 0666;
    constexpr int attempts = 100;  // files that come and go between two calls must not hold us for ever
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (request.creates()) {
            opened.file = openFor(request, flags | O_CREAT | O_EXCL, mode);
            if (opened.file)
                return ERROR_SUCCESS;
            if (errno != EEXIST || request.disposition == CREATE_NEW)
                return errorOfPath(request.path, errno);
        }
        opened.file = openFor(request, flags, 0);
        opened.existed = bool(opened.file);
        if (opened.existed)
            return ERROR_SUCCESS;
        if (errno != ENOENT || !request.creates())
            return errorOfPath(request.path, errno);
        // It vanished meanwhile, or it is a link that leads nowhere yet.
        FileStatus entry;
        if (statusOfEntry(request.path, entry) == ERROR_SUCCESS && entry.isLink) {
            opened.file = openFor(request, flags | O_CREAT, mode);
            return opened.file ? ERROR_SUCCESS : errorOfPath(request.path, errno);
        }
    }
    return ERROR_ACCESS_DENIED;
}

DWORD prepare(Request const& request, Opened& opened) noexcept
{
    int const file = opened.file.get();
    if (S_ISDIR(opened.mode))
        return request.has(FILE_FLAG_BACKUP_SEMANTICS) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    if (!S_ISREG(opened.mode))
        return ERROR_SUCCESS;

    bool const changes = request.writes() || request.empties() || request.has(FILE_FLAG_DELETE_ON_CLOSE);
    if (opened.existed && (opened.mode & S_IWUSR) == 0 && changes)
        return ERROR_ACCESS_DENIED;  // the superuser too
    if (DWORD const error = claim(file, sharingOf(request)))
        return error;
    if (opened.existed && request.empties()) {
        if (uninterrupted([&] { return systemCalls().ftruncate(file, 0); }) == -1)
            return errorFromErrno(errno);
        if (request.has(FILE_ATTRIBUTE_READONLY) && systemCalls().fchmod(file, opened.mode & 0555) == -1)
            return errorFromErrno(errno);
    }
    // A hint; nothing is lost if it isn't taken.
    if (request.has(FILE_FLAG_SEQUENTIAL_SCAN))
        posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    if (request.has(FILE_FLAG_RANDOM_ACCESS))
        posix_fadvise(file, 0, 0, POSIX_FADV_RANDOM);
    return ERROR_SUCCESS;
}

DWORD openFile(Request const& request, Opened& opened) noexcept
{
    if (DWORD const error = check(request))
        return error;
    if (endsInSeparator(request.path) && !(request.has(FILE_FLAG_BACKUP_SEMANTICS) && !request.creates()))
        return errorOfFolderPath(request);
    if (DWORD const error = createOrOpen(request, opened))
        return error;
    struct stat status;
    if (systemCalls().fstat(opened.file.get(), &status) == -1)
        return errorFromErrno(errno);
    opened.mode = status.st_mode;
    return prepare(request, opened);
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD attributesAndFlags, HANDLE templateFile) noexcept
{
    Request const request = {name, access, sharing, disposition, attributesAndFlags};
    Opened opened;
    bool const isRefused = templateFile || (security && security->lpSecurityDescriptor);
    if (DWORD const error = isRefused ? ERROR_INVALID_PARAMETER : openFile(request, opened)) {
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    auto const onClose =
        request.has(FILE_FLAG_DELETE_ON_CLOSE) ? FileObject::OnClose::remove : FileObject::OnClose::keep;
    HANDLE const handle = openHandle(
        std::make_shared<FileObject>(std::move(opened.file), objectAccess(access), opened.mode, onClose),
        security && security->bInheritHandle);
    if (!handle)
        return INVALID_HANDLE_VALUE;
    bool const met = opened.existed && (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS);
    SetLastError(met ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
}
