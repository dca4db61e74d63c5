// namedObjects.h: the memory that objects of one name share between processes.
//
//   NamedMemory::Request const request = {.name = "Global\\log", .kind = ObjectKind::mutex, .mayCreate = true};
//   std::unique_ptr<NamedMemory> memory;
//   bool existed;
//   DWORD const error = NamedMemory::open(request, memory, existed);
//
// Names
// -----
// Each name is a file in a folder of the user's own (mode 0700):
// $XDG_RUNTIME_DIR/zentrika, else /dev/shm/zk-<user number>. What a creator
// opens to everybody under "Global\" lives in /dev/shm/zk-everybody (mode 01777),
// where a look-up goes after the own folder. "Global\x" is the file "global.x";
// "Local\x" and a bare "x" are "local.x". Bytes other than letters, digits, "_",
// "-" and "." are written as %XX; names too long for a file end in a hash.
// All kinds of objects share the names.
//
// Life
// ----
// A name lives as long as a process uses it, as on the other target, whatever
// way its processes end. Each keeps a shared flock on the file: the lease. It
// vanishes with the process. Who opens a name takes the folder's lock (an
// exclusive flock on the folder), and then:
//
//   no file                          build one under a temporary name, take its
//                                    lease, rename it into place: a new object
//   a file, exclusive flock granted  nobody is left: as if there were no file
//   a file, exclusive flock refused  in use: check it, take the lease, map it
//
// Who closes a name takes the folder's lock too, and removes the file if the
// exclusive flock is granted. A process killed in between leaves a temporary
// file, which the next creator of that name removes, or a file without lease.
// Neither is ever opened as an object.
//
// Layout
// ------
//   page 0, shared     header | words of the object ...      ... first part of the mutex
//   page 1, private    second part of the mutex
//
// A robust mutex keeps its lock word and the links of its thread's list of held
// mutexes side by side. The links are addresses of one process, and another one
// must not be able to forge them; so the mutex lies across the border of the two
// pages: lock word and counts in the shared one, links in memory of the process's
// own. A body that follows (a file mapping) starts at the file's second page, and is
// mapped by its own object.
//
// Rules:
//  1. What is read from the shared page is checked, or is harmless whatever it is.
//  2. One object per file and process: a second open in a process gives the first one's object.
//  3. The folder's lock is held under a Shield, never while waiting for anything else.
#pragma once

#include "platform/os/posix/handles.h"
#include "platform/os/posix/types.h"

#include <pthread.h>
#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace zk::os {

enum class ObjectKind : std::uint32_t { mutex = 1, semaphore, event, mapping };

/// What stands at the start of the shared page.
struct SharedHeader {
    std::uint32_t magic;
    std::uint32_t layout;  ///< version of this structure
    ObjectKind kind;
    std::uint32_t nameLength;
    std::uint64_t bodySize;
    char name[280];  // with its "Global\" or "Local\"

    /// What events and semaphores are made of; see there.
    std::atomic<std::uint32_t> words[4];
};

struct ObjectName;

/// One process's view of a named file.
class NamedMemory {
public:
    struct Request {
        std::string_view name;
        ObjectKind kind;
        bool mayCreate = false;
        bool forEverybody = false;
        bool takesMutex = false;  ///< a new object's mutex is the calling thread's before others can open it
        std::uint64_t bodySize = 0;
        /// Fills in a new object's memory before others can see it; gives an error number.
        std::function<DWORD(NamedMemory&)> initialise = {};
    };

    /// Opens the name, or creates it where the request allows that. `existed`
    /// tells which. Gives an error number:
    /// ERROR_FILE_NOT_FOUND (there is none, and the request creates none),
    /// ERROR_INVALID_HANDLE (there is one of another kind),
    /// ERROR_PATH_NOT_FOUND (a backslash in the name proper),
    /// ERROR_FILENAME_EXCED_RANGE (more than 260 bytes),
    /// ERROR_ACCESS_DENIED (the folder or the file isn't what it must be),
    /// or that of the system call that failed.
    static DWORD open(Request const& request, std::unique_ptr<NamedMemory>& memory, bool& existed);

    /// Ends the lease, and the name if this was the last one.
    ~NamedMemory();
    NamedMemory(NamedMemory const&) = delete;
    NamedMemory& operator=(NamedMemory const&) = delete;

    /// Ends the lease ahead of the object, whose pages stay: for a mutex that a
    /// thread holds. True if this was the last user, and the name is gone.
    bool endLease() noexcept;

    SharedHeader& header() noexcept { return *static_cast<SharedHeader*>(pages_); }
    /// The mutex across the border of the two pages.
    pthread_mutex_t& mutex() noexcept;
    /// Gives the care for a mutex that the request took to the caller, and tells whether it did.
    bool handOverMutex() noexcept { return std::exchange(mutexIsTaken_, false); }

    /// The file itself; a body starts at `bodyOffset`.
    int descriptor() const noexcept { return file_; }
    std::uint64_t bodySize() const noexcept { return bodySize_; }
    std::pair<dev_t, ino_t> identity() const noexcept { return identity_; }

    static constexpr std::size_t pageSize = 4096;
    static constexpr off_t bodyOffset = pageSize;

private:
    NamedMemory() = default;
    DWORD create(std::string const& folder, ObjectName const& name, Request const& request);
    DWORD attach(std::string const& folder, ObjectName const& name, Request const& request);
    DWORD map() noexcept;

    int file_ = -1;
    void* pages_ = nullptr;
    std::uint64_t bodySize_ = 0;
    bool mutexIsTaken_ = false;
    std::pair<dev_t, ino_t> identity_{};
    std::string folder_;
    std::string path_;
};

/// Opens or creates a name as NamedMemory::open() does, and gives this process's
/// object for it: the one that it has already, or the one that `make` gives.
/// @throws std::bad_alloc
DWORD openNamedObject(NamedMemory::Request const& request,
                      std::shared_ptr<KernelObject> (*make)(std::unique_ptr<NamedMemory>),
                      std::shared_ptr<KernelObject>& object, bool& existed);

}  // namespace zk::os
