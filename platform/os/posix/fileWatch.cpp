#include "platform/os/fileWatch.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/threadRecord.h"

#include <pthread.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include <stdlib.h>

namespace zk::os {
namespace {

// One inotify descriptor for all watches of the process: users have few of them. Whatever it tells, all
// watches count as touched: that happens seldom, and costs each of them one look at the file system.
struct Service {
    std::mutex mutex;
    std::uint64_t number = 1;  // of this process: a forked child has the next one
    int events = -1;
    std::uint64_t eventCount = 1;
    std::map<int, int> users;  // of the kernel's watches: several paths share folders

    bool begin() noexcept
    {
        if (events == -1)
            events = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        return events != -1;
    }

    // Reads what the kernel has to tell, if anything.
    void look() noexcept
    {
        alignas(inotify_event) char buffer[4096];
        while (systemCalls().read(events, buffer, sizeof buffer) > 0)
            ++eventCount;
    }
};

Service& service() noexcept
{
    static NeverDestroyed<Service> instance;  // files are closed by static destructors too
    return instance.object;
}

// The child has the parent's descriptor: what it reads there would be lost to the parent.
void beginAnewInChild() noexcept
{
    Service& own = service();
    if (own.events != -1)
        close(own.events);
    own.events = -1;
    own.users.clear();
    ++own.number;
    own.mutex.unlock();
}

[[maybe_unused]] int const forkHandlers =
    pthread_atfork([] { service().mutex.lock(); }, [] { service().mutex.unlock(); }, beginAnewInChild);

class Locked {
public:
    Locked() noexcept : lock_(service().mutex) { }

private:
    Shield const shield_;
    std::lock_guard<std::mutex> const lock_;
};

// Watches an entry itself: of a link, the link.
bool watch(Service& own, std::string const& path, std::vector<int>& watches)
{
    constexpr std::uint32_t itsName = IN_MOVE_SELF | IN_DELETE_SELF | IN_ATTRIB | IN_DONT_FOLLOW;
    watches.reserve(watches.size() + 1);
    int const watch = inotify_add_watch(own.events, path.c_str(), itsName);
    if (watch == -1)
        return false;
    watches.push_back(watch);
    ++own.users[watch];
    return true;
}

// Watches all entries on the way to a file, the root left out.
bool watchWay(Service& own, std::string const& path, std::vector<int>& watches)
{
    for (std::size_t end = path.find_first_not_of('/'); end != std::string::npos;
         end = path.find_first_not_of('/', end)) {
        end = path.find('/', end);
        if (!watch(own, path.substr(0, end), watches))
            return false;
        if (end == std::string::npos)
            break;
    }
    return true;
}

void release(Service& own, std::vector<int>& watches) noexcept
{
    for (int const watch : watches) {
        auto const found = own.users.find(watch);
        if (found == own.users.end() || --found->second > 0)
            continue;
        own.users.erase(found);
        inotify_rm_watch(own.events, watch);
    }
    watches.clear();
}

}  // namespace

void FileWatch::start(char const* path) noexcept
{
    stop();
    if (!path || path[0] != '/')
        return;
    int const error = errno;
    Locked const locked;
    Service& own = service();
    try {
        path_ = path;
        struct Free {
            void operator()(char* text) const { free(text); }
        };
        std::unique_ptr<char, Free> const resolved(systemCalls().realpath(path, nullptr));
        std::string const behindLinks = resolved ? resolved.get() : "";
        bool const isWatched = !behindLinks.empty() && own.begin() && watchWay(own, path_, watches_) &&
            watchWay(own, behindLinks, watches_);
        if (isWatched) {
            own.look();
            service_ = own.number;
            seen_ = own.eventCount;
        } else {
            release(own, watches_);
        }
    } catch (std::bad_alloc const&) {
        release(own, watches_);
    }
    errno = error;
}

void FileWatch::stop() noexcept
{
    if (service_ == 0)
        return;
    Locked const locked;
    Service& own = service();
    if (service_ == own.number)
        release(own, watches_);
    watches_.clear();
    service_ = 0;
}

bool FileWatch::mayHaveChanged() noexcept
{
    if (service_ == 0)
        return true;
    {
        Locked const locked;
        Service& own = service();
        if (service_ == own.number) {
            int const error = errno;
            own.look();
            errno = error;
            if (seen_ == own.eventCount)
                return false;
            seen_ = own.eventCount;
            return true;
        }
    }
    std::string const path = std::move(path_);
    start(path.c_str());
    return true;
}

}  // namespace zk::os
