#include "platform/os/posix/profileCache.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"

#include <algorithm>
#include <mutex>

namespace zk::os {
namespace {

// What tells a file from another, and from itself after a change.
struct Stamp {
    explicit Stamp(struct stat const& status) noexcept
        : device(status.st_dev), inode(status.st_ino), size(status.st_size),
          written(nanoseconds(status.st_mtim)), changed(nanoseconds(status.st_ctim))
    {
    }

    static std::int64_t nanoseconds(timespec const& time) noexcept
    {
        return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
    }

    bool operator==(Stamp const&) const = default;

    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t written;
    std::int64_t changed;
};

struct KnownProfile {
    std::string path;
    Stamp stamp;
    std::shared_ptr<ProfileText const> text;
};

// Never destroyed: static destructors read settings too.
struct Cache {
    static constexpr std::size_t room = 16;

    std::mutex mutex;
    std::vector<KnownProfile> known;
    std::size_t next = 0;  // the one to give way

    static Cache& instance() noexcept
    {
        static NeverDestroyed<Cache> cache;
        return cache.object;
    }

    std::vector<KnownProfile>::iterator find(std::string_view path) noexcept
    {
        return std::find_if(known.begin(), known.end(), [&](auto const& item) { return item.path == path; });
    }

    std::shared_ptr<ProfileText const> get(std::string_view path, Stamp const& stamp)
    {
        ShieldedLock const lock(mutex);
        auto const found = find(path);
        return found != known.end() && found->stamp == stamp ? found->text : nullptr;
    }

    void put(char const* path, Stamp const& stamp, std::shared_ptr<ProfileText const> text)
    {
        KnownProfile profile{path, stamp, std::move(text)};
        ShieldedLock const lock(mutex);
        if (auto const found = find(path); found != known.end())
            *found = std::move(profile);
        else if (known.size() < room)
            known.push_back(std::move(profile));
        else
            known[next++ % room] = std::move(profile);
    }

    void remove(std::string_view path)
    {
        ShieldedLock const lock(mutex);
        if (auto const found = find(path); found != known.end())
            known.erase(found);
    }

    void empty() noexcept
    {
        ShieldedLock const lock(mutex);
        std::vector<KnownProfile>().swap(known);
    }
};

AtModuleEnd<[] { Cache::instance().empty(); }> const emptiedCache;

// Whether a change after `now` must show in the times of the file.
bool isSettled(Stamp const& stamp, std::int64_t now) noexcept
{
    constexpr std::int64_t step = 20'000'000;  // more than the clock's steps, which are 1 to 10 ms
    return std::max(stamp.written, stamp.changed) + step < now;
}

DWORD load(char const* path, std::shared_ptr<ProfileText const>& profile)
{
    // Without O_NONBLOCK a pipe in the file's place would hold the caller.
    Descriptor const file(uninterrupted(
        [&] { return systemCalls().open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0); }));
    if (!file)
        return errorOfPath(path, errno);
    timespec now;
    struct stat status;
    if (systemCalls().clock_gettime(CLOCK_REALTIME_COARSE, &now) == -1 ||
        systemCalls().fstat(file.get(), &status) == -1)
        return errorFromErrno(errno);
    if (!S_ISREG(status.st_mode))
        return ERROR_ACCESS_DENIED;
    std::string bytes;
    if (DWORD const error = readWhole(file.get(), status.st_size, bytes))
        return error;
    profile = std::make_shared<ProfileText const>(std::move(bytes));
    Stamp const stamp(status);
    if (isSettled(stamp, Stamp::nanoseconds(now)))
        Cache::instance().put(path, stamp, profile);
    return ERROR_SUCCESS;
}

}  // namespace

DWORD readProfile(char const* path, std::shared_ptr<ProfileText const>& profile)
{
    struct stat status;
    if (systemCalls().stat(path, &status) == -1) {
        int const error = errno;
        Cache::instance().remove(path);
        return errorOfPath(path, error);
    }
    profile = Cache::instance().get(path, Stamp(status));
    return profile ? ERROR_SUCCESS : load(path, profile);
}

DWORD readWhole(int descriptor, off_t size, std::string& bytes)
{
    constexpr std::size_t least = 4096;
    if (size > off_t(mostBytesOfProfile))
        return ERROR_NOT_ENOUGH_MEMORY;
    bytes.reserve(std::size_t(size) + 1);
    std::size_t length = bytes.size();
    for (;;) {
        if (length == bytes.size())
            bytes.resize(std::max(bytes.capacity(), length + least));
        ssize_t const count = uninterrupted(
            [&] { return systemCalls().read(descriptor, bytes.data() + length, bytes.size() - length); });
        if (count == -1)
            return errorFromErrno(errno);
        length += std::size_t(count);
        if (length > mostBytesOfProfile)
            return ERROR_NOT_ENOUGH_MEMORY;
        if (count == 0)
            break;
    }
    bytes.resize(length);
    return ERROR_SUCCESS;
}

}  // namespace zk::os
