// createFile.cpp: CreateFileA, declared in files.h.
//
// A file is emptied only after it was claimed (sharing.h), so that nobody
// loses what an other opener protects. For the same reason "exists already" is
// not asked beforehand: the exclusive creation says it, also where a link
// leads to a file that is to be created.
//
// All that a call needs besides the file, its handle and its memory, it has
// before it touches the file; and a file that it has created goes again if the
// call fails after all. So a failure leaves things as they were.

#include "platform/os/posix/fileObject.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/files.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/sharing.h"

#include <fcntl.h>

#include <climits>
#include <string>

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
    return flags;
}

// Opens for reading too where only writing is asked for, as a claim needs it;
// a file that may only be written, and a pipe, are opened for writing alone.
Descriptor openFor(Request const& request, char const* path, int flags, mode_t mode) noexcept
{
    auto const open = [&](int way) {
        return Descriptor(uninterrupted([&] { return systemCalls().open(path, way | flags, mode); }));
    };
    bool const isData = (request.access & GENERIC_READ) || request.writes() || request.empties() ||
        request.has(FILE_FLAG_DELETE_ON_CLOSE) || (flags & O_CREAT);
    if (!isData)
        return open(O_PATH);
    if (!request.writes() && !request.empties())
        return open(O_RDONLY);
    Descriptor file = open(O_RDWR);
    if (!file && errno == EISDIR && request.has(FILE_FLAG_BACKUP_SEMANTICS) && !request.empties())
        return open(O_RDONLY);  // to write to a folder is to change its times
    if (request.access & GENERIC_READ)
        return file;
    struct stat status;
    bool const isPipe = file && systemCalls().fstat(file.get(), &status) == 0 && S_ISFIFO(status.st_mode);
    if (isPipe || (!file && errno == EACCES))
        return open(O_WRONLY);
    return file;
}

// A separator at the end means a folder, which is never created here. Gives 0 if it is there to be opened.
DWORD errorOfFolderPath(Request const& request) noexcept
{
    FileStatus status;
    if (DWORD const error = statusOf(request.path, status))
        return error == ERROR_FILE_NOT_FOUND && request.creates() ? ERROR_INVALID_NAME : error;
    bool const mayBeFolder = request.has(FILE_FLAG_BACKUP_SEMANTICS);
    if (request.disposition == CREATE_NEW || (mayBeFolder && request.empties()))
        return ERROR_FILE_EXISTS;
    return mayBeFolder ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// Where a link says that it leads, as seen from the current directory; the path itself if it is no link.
std::string behindLink(char const* path)
{
    char target[PATH_MAX];
    ssize_t const length = systemCalls().readlink(path, target, sizeof target);
    if (length <= 0)
        return path;
    std::string_view const said(target, std::size_t(length));
    if (said.front() == '/')
        return std::string(said);
    return std::string(folderOf(path)).append("/").append(said);
}

DWORD createOrOpen(Request const& request, Descriptor& file, bool& existed)
{
    int const flags = openFlags(request);
    mode_t const mode = request.has(FILE_ATTRIBUTE_READONLY) ? 0444 : 0666;
    std::string path = request.path;
    constexpr int attempts = 100;  // files that come and go between two calls must not hold us for ever
    for (int attempt = 0; attempt < attempts; ++attempt) {
        existed = false;
        if (request.creates()) {
            file = openFor(request, path.c_str(), flags | O_CREAT | O_EXCL, mode);
            if (file)
                return ERROR_SUCCESS;
            if (errno != EEXIST || request.disposition == CREATE_NEW)
                return errorOfPath(path.c_str(), errno);
        }
        file = openFor(request, path.c_str(), flags, 0);
        existed = bool(file);
        if (existed)
            return ERROR_SUCCESS;
        if (errno == EISDIR && request.has(FILE_FLAG_BACKUP_SEMANTICS))
            return ERROR_FILE_EXISTS;  // a folder cannot be emptied
        if (errno != ENOENT || !request.creates())
            return errorOfPath(path.c_str(), errno);
        // It vanished meanwhile, or it is a link that leads nowhere yet: the file is to come where that leads.
        path = behindLink(path.c_str());
    }
    return ERROR_ACCESS_DENIED;
}

DWORD emptyFile(int file, Request const& request, mode_t mode) noexcept
{
    bool const becomesReadOnly = request.has(FILE_ATTRIBUTE_READONLY);
    if (becomesReadOnly && systemCalls().fchmod(file, mode & 0555) == -1)
        return errorFromErrno(errno);
    if (uninterrupted([&] { return systemCalls().ftruncate(file, 0); }) == 0)
        return ERROR_SUCCESS;
    DWORD const error = errorFromErrno(errno);
    if (becomesReadOnly)
        systemCalls().fchmod(file, mode & 07777);
    return error;
}

// Hints; nothing is lost if they are not taken.
void passHints(int file, Request const& request) noexcept
{
    if (request.has(FILE_FLAG_SEQUENTIAL_SCAN))
        posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    if (request.has(FILE_FLAG_RANDOM_ACCESS))
        posix_fadvise(file, 0, 0, POSIX_FADV_RANDOM);
    // Not when opening: a file system that cannot do it would say so with the file created.
    if (request.has(FILE_FLAG_NO_BUFFERING)) {
        int const flags = systemCalls().statusFlags(file, F_GETFL, 0);
        if (flags != -1)
            systemCalls().statusFlags(file, F_SETFL, flags | O_DIRECT);
    }
}

DWORD prepare(Request const& request, FileObject& file, bool existed) noexcept
{
    int const descriptor = file.descriptor();
    struct stat status;
    if (systemCalls().fstat(descriptor, &status) == -1)
        return errorFromErrno(errno);
    file.setType(status.st_mode);
    if (S_ISDIR(status.st_mode))
        return request.has(FILE_FLAG_BACKUP_SEMANTICS) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    if (!S_ISREG(status.st_mode))
        return ERROR_SUCCESS;

    bool const changes = request.writes() || request.empties() || request.has(FILE_FLAG_DELETE_ON_CLOSE);
    if (existed && (status.st_mode & S_IWUSR) == 0 && changes)
        return ERROR_ACCESS_DENIED;  // the superuser too
    if (DWORD const error = claim(descriptor, sharingOf(request)))
        return error;
    if (existed && request.empties())
        if (DWORD const error = emptyFile(descriptor, request, status.st_mode))
            return error;
    passHints(descriptor, request);
    return ERROR_SUCCESS;
}

// The error number that CreateFileA() sets: with a handle 0 or ERROR_ALREADY_EXISTS.
DWORD createFile(Request const& request, bool inheritable, HANDLE& handle)
{
    if (DWORD const error = check(request))
        return error;
    Request opening = request;
    if (endsInSeparator(request.path)) {
        if (DWORD const error = errorOfFolderPath(request))
            return error;
        opening.disposition = OPEN_EXISTING;
    }
    HandlePlace place;
    if (place.error())
        return place.error();
    auto const file = std::make_shared<FileObject>(objectAccess(request.access));

    Descriptor descriptor;
    bool existed = false;
    if (DWORD const error = createOrOpen(opening, descriptor, existed))
        return error;
    file->attach(std::move(descriptor));
    if (DWORD const error = prepare(request, *file, existed)) {
        // Somebody who came between the creation and the claim has the file now.
        if (!existed && error != ERROR_SHARING_VIOLATION)
            file->setOnClose(FileObject::OnClose::remove);
        return error;
    }
    if (request.has(FILE_FLAG_DELETE_ON_CLOSE))
        file->setOnClose(FileObject::OnClose::remove);
    handle = place.open(file, inheritable);
    bool const mayMeet = request.disposition == CREATE_ALWAYS || request.disposition == OPEN_ALWAYS;
    return existed && mayMeet ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS;
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD attributesAndFlags, HANDLE templateFile) noexcept
{
    Request const request = {name, access, sharing, disposition, attributesAndFlags};
    bool const isRefused = templateFile || (security && security->lpSecurityDescriptor);
    HANDLE handle = INVALID_HANDLE_VALUE;
    DWORD const error = isRefused
        ? ERROR_INVALID_PARAMETER
        : guarded([&] { return createFile(request, security && security->bInheritHandle, handle); });
    SetLastError(error);
    return handle;
}
