#include "platform/os/posix/namedObjects.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/threadRecord.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

namespace zk::os {

struct ObjectName {
    bool isGlobal = false;
    std::string full;  // with the prefix that a bare name stands for
    std::string file;
};

namespace {

constexpr std::uint32_t magicNumber = 0x4F4E4B5A;  // "ZKNO"
constexpr std::uint32_t layoutVersion = 1;
constexpr std::size_t longestName = 260;
constexpr std::size_t longestFileName = 200;

constexpr std::size_t privateMutexPart = sizeof(pthread_mutex_t) - offsetof(pthread_mutex_t, __data.__list);
static_assert(offsetof(pthread_mutex_t, __data.__list) == 24, "the links are the last thing in a mutex");
static_assert(privateMutexPart == sizeof(__pthread_internal_list));
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

DWORD lastSystemError() noexcept
{
    return errorFromErrno(errno);
}

std::uint64_t hashOf(std::string_view text) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (unsigned char const byte : text)
        hash = (hash ^ byte) * 0x100000001B3;
    return hash;
}

DWORD parseName(std::string_view name, ObjectName& result)
{
    constexpr std::string_view global = "Global\\", local = "Local\\";
    if (name.size() > longestName)
        return ERROR_FILENAME_EXCED_RANGE;
    std::string_view rest = name;
    result.isGlobal = rest.substr(0, global.size()) == global;
    if (result.isGlobal)
        rest.remove_prefix(global.size());
    else if (rest.substr(0, local.size()) == local)
        rest.remove_prefix(local.size());
    if (rest.find('\\') != std::string_view::npos)
        return ERROR_PATH_NOT_FOUND;

    result.full = std::string(result.isGlobal ? global : local) + std::string(rest);

    constexpr char digits[] = "0123456789ABCDEF";
    result.file = result.isGlobal ? "global." : "local.";
    for (unsigned char const byte : rest) {
        bool const isPlain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
            (byte >= '0' && byte <= '9') || byte == '_' || byte == '-' || byte == '.';
        if (isPlain)
            result.file += char(byte);
        else
            result.file += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    if (result.file.size() > longestFileName) {
        result.file.resize(longestFileName);
        result.file += '~';
        for (std::uint64_t hash = hashOf(rest), i = 0; i < 16; ++i, hash >>= 4)
            result.file += digits[hash & 15];
    }
    return ERROR_SUCCESS;
}

std::string folderOfUser()
{
    char const* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime && runtime[0] == '/')
        return std::string(runtime) + "/zentrika";
    return "/dev/shm/zk-" + std::to_string(geteuid());
}

std::string const folderOfEverybody = "/dev/shm/zk-everybody";

// The folder, made if need be, checked, and locked as long as `lock` lives.
DWORD lockFolder(std::string const& folder, bool forEverybody, bool mayMake, Descriptor& lock)
{
    mode_t const mode = forEverybody ? 01777 : 0700;
    if (mayMake && systemCalls().mkdir(folder.c_str(), mode) == 0)
        systemCalls().chmod(folder.c_str(), mode);  // whatever the process's mask leaves out
    Descriptor opened(uninterrupted([&] {
        return systemCalls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
    }));
    if (!opened)
        return errno == ENOTDIR || errno == ELOOP ? ERROR_ACCESS_DENIED : lastSystemError();
    struct stat status;
    if (systemCalls().fstat(opened.get(), &status) != 0)
        return lastSystemError();
    bool const isOurs = forEverybody ? (status.st_mode & 07777) == mode
                                     : status.st_uid == geteuid() && (status.st_mode & 077) == 0;
    if (!isOurs)
        return ERROR_ACCESS_DENIED;
    if (uninterrupted([&] { return systemCalls().flock(opened.get(), LOCK_EX); }) != 0)
        return lastSystemError();
    lock = std::move(opened);
    return ERROR_SUCCESS;
}

bool isLastUser(int file) noexcept
{
    return uninterrupted([&] { return systemCalls().flock(file, LOCK_EX | LOCK_NB); }) == 0;
}

// The objects of this process, by file.
struct Registry {
    std::mutex mutex;
    std::map<std::pair<dev_t, ino_t>, std::weak_ptr<KernelObject>> objects;

    void dropExpired() noexcept
    {
        std::erase_if(objects, [](auto const& entry) { return entry.second.expired(); });
    }
};

Registry& registry()
{
    static NeverDestroyed<Registry> instance;  // objects are closed by static destructors too
    return instance.object;
}

AtModuleEnd<[] {
    ShieldedLock const lock(registry().mutex);
    registry().dropExpired();
}> const emptiedRegistry;

}  // namespace

pthread_mutex_t& NamedMemory::mutex() noexcept
{
    char* const border = static_cast<char*>(pages_) + pageSize;
    return *reinterpret_cast<pthread_mutex_t*>(border + privateMutexPart - sizeof(pthread_mutex_t));
}

DWORD NamedMemory::open(Request const& request, std::unique_ptr<NamedMemory>& memory, bool& existed)
{
    ObjectName name;
    if (DWORD const error = parseName(request.name, name))
        return error;

    Shield const shield;
    std::unique_ptr<NamedMemory> candidate(new NamedMemory);
    bool const inPublic = request.forEverybody && name.isGlobal;
    std::string const folder = folderOfUser();
    Descriptor folderLock, publicLock;
    existed = true;

    DWORD error = lockFolder(folder, false, true, folderLock);
    if (error == ERROR_SUCCESS)
        error = candidate->attach(folder, name, request);
    if (error == ERROR_FILE_NOT_FOUND && name.isGlobal) {
        error = lockFolder(folderOfEverybody, true, inPublic && request.mayCreate, publicLock);
        if (error == ERROR_SUCCESS)
            error = candidate->attach(folderOfEverybody, name, request);
    }
    if (error == ERROR_FILE_NOT_FOUND && request.mayCreate) {
        existed = false;
        error = candidate->create(inPublic ? folderOfEverybody : folder, name, request);
    }
    if (error == ERROR_SUCCESS)
        memory = std::move(candidate);
    else
        candidate->path_.clear();
    // A failed candidate gives its parts back after the folders' locks.
    return error;
}

DWORD NamedMemory::create(std::string const& folder, ObjectName const& name, Request const& request)
{
    bool const isPublic = folder == folderOfEverybody;
    std::string const temporary = folder + "/new." + std::to_string(geteuid()) + '.' + name.file;
    std::string const path = folder + '/' + name.file;
    systemCalls().unlink(temporary.c_str());  // left by a creator that was killed
    file_ = uninterrupted([&] {
        return systemCalls().open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                  0600);
    });
    if (file_ == -1)
        return lastSystemError();
    auto const build = [&]() -> DWORD {
        if (isPublic && systemCalls().fchmod(file_, 0666) != 0)
            return lastSystemError();
        // Every byte is reserved now: a full disk is an error here, not a signal at the first write.
        if (int const error = systemCalls().posix_fallocate(file_, 0, off_t(pageSize + request.bodySize)))
            return errorFromErrno(error);
        bodySize_ = request.bodySize;
        if (DWORD const error = map())
            return error;
        auto& target = *new (pages_) SharedHeader{};
        target.magic = magicNumber;
        target.layout = layoutVersion;
        target.kind = request.kind;
        target.bodySize = request.bodySize;
        static_assert(sizeof target.name >= longestName + sizeof "Global\\");
        target.nameLength = std::uint32_t(name.full.size());
        std::memcpy(target.name, name.full.data(), name.full.size());
        if (request.initialise)
            if (DWORD const error = request.initialise(*this))
                return error;
        if (uninterrupted([&] { return systemCalls().flock(file_, LOCK_SH); }) != 0)
            return lastSystemError();
        if (systemCalls().rename(temporary.c_str(), path.c_str()) != 0)
            return lastSystemError();
        return ERROR_SUCCESS;
    };
    DWORD const error = build();
    if (error != ERROR_SUCCESS) {
        systemCalls().unlink(temporary.c_str());
        return error;
    }
    folder_ = folder;
    path_ = path;
    if (request.takesMutex)
        mutexIsTaken_ = pthread_mutex_trylock(&mutex()) == 0;  // nobody else knows it yet
    return ERROR_SUCCESS;
}

// Call with the folder's lock held. ERROR_FILE_NOT_FOUND: nobody uses the name.
DWORD NamedMemory::attach(std::string const& folder, ObjectName const& name, Request const& request)
{
    std::string const path = folder + '/' + name.file;
    Descriptor opened(uninterrupted(
        [&] { return systemCalls().open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0); }));
    if (!opened)
        return errno == ENOENT ? ERROR_FILE_NOT_FOUND
            : errno == ELOOP   ? ERROR_ACCESS_DENIED
                               : lastSystemError();
    struct stat status;
    if (systemCalls().fstat(opened.get(), &status) != 0)
        return lastSystemError();
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1)
        return ERROR_ACCESS_DENIED;
    if (isLastUser(opened.get())) {
        systemCalls().unlink(path.c_str());
        return ERROR_FILE_NOT_FOUND;
    }
    if (uninterrupted([&] { return systemCalls().flock(opened.get(), LOCK_SH); }) != 0)
        return lastSystemError();
    if (status.st_size < off_t(pageSize))
        return ERROR_INVALID_DATA;
    file_ = opened.release();
    if (DWORD const error = map())
        return error;
    SharedHeader const& found = header();
    if (found.magic != magicNumber || found.layout != layoutVersion)
        return ERROR_INVALID_DATA;
    if (std::string_view(found.name, std::min<std::size_t>(found.nameLength, sizeof found.name)) != name.full)
        return ERROR_INVALID_DATA;
    if (found.kind != request.kind)
        return ERROR_INVALID_HANDLE;
    bodySize_ = found.bodySize;
    if (bodySize_ > std::uint64_t(status.st_size) - pageSize)
        return ERROR_INVALID_DATA;
    folder_ = folder;
    path_ = path;
    return ERROR_SUCCESS;
}

DWORD NamedMemory::map() noexcept
{
    struct stat status;
    if (systemCalls().fstat(file_, &status) != 0)
        return lastSystemError();
    identity_ = {status.st_dev, status.st_ino};
    void* const pages =
        systemCalls().mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        return lastSystemError();
    pages_ = pages;
    if (systemCalls().mmap(pages, pageSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file_, 0) ==
        MAP_FAILED)
        return lastSystemError();
    return ERROR_SUCCESS;
}

NamedMemory::~NamedMemory()
{
    Shield const shield;
    if (mutexIsTaken_)
        pthread_mutex_unlock(&mutex());
    if (pages_)
        munmap(pages_, 2 * pageSize);
    endLease();
}

bool NamedMemory::endLease() noexcept
{
    if (file_ == -1)
        return false;
    PreserveLastError const preserve;
    Shield const shield;
    Descriptor folderLock;  // given back after the file: the next one to look sees its end
    Descriptor const file(std::exchange(file_, -1));
    if (path_.empty() ||
        lockFolder(folder_, folder_ == folderOfEverybody, false, folderLock) != ERROR_SUCCESS ||
        !isLastUser(file.get()))
        return false;
    struct stat status;
    if (systemCalls().lstat(path_.c_str(), &status) == 0 &&
        identity_ == std::pair(status.st_dev, status.st_ino))
        systemCalls().unlink(path_.c_str());
    return true;
}

DWORD openNamedObject(NamedMemory::Request const& request,
                      std::shared_ptr<KernelObject> (*make)(std::unique_ptr<NamedMemory>),
                      std::shared_ptr<KernelObject>& object, bool& existed)
{
    Shield const shield;
    std::lock_guard const lock(registry().mutex);  // taken before the folder's lock
    std::unique_ptr<NamedMemory> memory;
    if (DWORD const error = NamedMemory::open(request, memory, existed))
        return error;
    auto& objects = registry().objects;
    registry().dropExpired();
    auto& entry = objects[memory->identity()];
    object = entry.lock();
    if (!object) {
        object = make(std::move(memory));
        entry = object;
    }
    return ERROR_SUCCESS;
}

}  // namespace zk::os
