#include "platform/os/posix/mutex.h"

#include "platform/os/posix/namedObjects.h"
#include "platform/os/posix/robustMutex.h"
#include "platform/os/posix/sync.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/waits.h"

#include <mutex>
#include <new>
#include <vector>

// A mutex is a robust one of the system plus what only this process knows:
// which of its threads is inside, and how often. Threads are told apart by a
// number that is never used twice, so that a dead owner's number means nobody.
//
// Closing the last handle of a mutex that a thread holds leaves that thread
// with an entry in the kernel's list of what it holds, and the memory must
// stay where the list points. Such a body is parked:
//  - without a name, until its owner has ended (its owner's own close releases it instead);
//  - with a name that others use, for good: its owner holds it as before, seen by
//    them, and finds it again when it opens the name anew.

namespace zk::os {
namespace {

struct MutexBody {
    pthread_mutex_t* native = nullptr;
    std::atomic<std::uint64_t> holder{0};  // a thread's serial number
    DWORD depth = 0;                       // of the holder alone
    pthread_mutex_t own;                   // used without a name
    std::unique_ptr<NamedMemory> memory;   // used with a name
    std::unique_ptr<NamedMemory> lease;    // of a parked body that is in use again
    bool isSeenByOthers = false;           // parked, while other processes use the name

    MutexBody() = default;
    ~MutexBody()
    {
        if (holder.load(std::memory_order_relaxed) != 0)
            unlock();  // of a creator who failed half-way
        if (native == &own)
            pthread_mutex_destroy(&own);
    }

    void taken(std::uint64_t thread) noexcept
    {
        holder.store(thread, std::memory_order_relaxed);
        depth = 1;
    }

    void unlock() noexcept
    {
        holder.store(0, std::memory_order_relaxed);
        pthread_mutex_unlock(native);
    }
};

// Keeps bodies that are closed while a thread holds them.
class Parking {
public:
    void park(std::unique_ptr<MutexBody> body) noexcept
    {
        Shield const shield;
        std::lock_guard const lock(mutex_);
        std::erase_if(bodies_, [](auto const& parked) { return isFree(*parked); });
        try {
            bodies_.push_back(std::move(body));
        } catch (std::bad_alloc const&) {
            static_cast<void>(body.release());  // lost, and safe
        }
    }

    // The parked body of a file, or null.
    std::unique_ptr<MutexBody> take(NamedMemory const& file) noexcept
    {
        Shield const shield;
        std::lock_guard const lock(mutex_);
        for (auto parked = bodies_.begin(); parked != bodies_.end(); ++parked)
            if ((*parked)->isSeenByOthers && (*parked)->memory->identity() == file.identity()) {
                std::unique_ptr<MutexBody> body = std::move(*parked);
                bodies_.erase(parked);
                return body;
            }
        return nullptr;
    }

private:
    // One that others see is never looked at: that would take the next waiter's WAIT_ABANDONED away.
    static bool isFree(MutexBody& body) noexcept
    {
        if (body.isSeenByOthers || tryLockRobust(*body.native) == WAIT_TIMEOUT)
            return false;
        body.unlock();
        return true;
    }

    std::mutex mutex_;
    std::vector<std::unique_ptr<MutexBody>> bodies_;
};

Parking& parking() noexcept
{
    static Parking& instance = *new Parking;
    return instance;
}

class Mutex final : public KernelObject {
public:
    explicit Mutex(std::unique_ptr<MutexBody> body) noexcept : body_(std::move(body)) { }

    ~Mutex() override
    {
        std::uint64_t const holder = body_->holder.load(std::memory_order_relaxed);
        if (holder == 0)
            return;
        ThreadRecord const* const record = threadRecord();
        bool const isOwn = record && holder == record->serial;
        NamedMemory* const leased = body_->lease ? body_->lease.get() : body_->memory.get();
        body_->isSeenByOthers = leased && !leased->endLease();
        if (isOwn && !body_->isSeenByOthers)
            body_->unlock();
        else
            parking().park(std::move(body_));
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        ThreadRecord const* const record = threadRecord();
        if (!record) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return WAIT_FAILED;
        }
        MutexBody& body = *body_;
        if (body.holder.load(std::memory_order_relaxed) == record->serial) {
            ++body.depth;
            return WAIT_OBJECT_0;
        }
        DWORD const result = milliseconds == 0 ? tryLockRobust(*body.native)
                                               : lockRobust(*body.native, Deadline(milliseconds));
        if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED)
            body.taken(record->serial);
        return result;
    }

    DWORD release() noexcept
    {
        ThreadRecord const* const record = threadRecord();
        MutexBody& body = *body_;
        if (!record || body.holder.load(std::memory_order_relaxed) != record->serial)
            return ERROR_NOT_OWNER;
        if (--body.depth == 0)
            body.unlock();
        return ERROR_SUCCESS;
    }

private:
    std::unique_ptr<MutexBody> body_;
};

std::shared_ptr<KernelObject> unnamedMutex(NamedParameters const& parameters)
{
    auto body = std::make_unique<MutexBody>();
    if (!report(makeRobust(body->own, Sharing::ofProcess)))
        return nullptr;
    body->native = &body->own;
    auto mutex = std::make_shared<Mutex>(std::move(body));
    if (parameters.initiallyTaken)
        mutex->wait(0);
    return mutex;
}

std::shared_ptr<KernelObject> sharedMutex(std::unique_ptr<NamedMemory> memory)
{
    if (std::unique_ptr<MutexBody> parked = parking().take(*memory)) {
        parked->lease = std::move(memory);
        return std::make_shared<Mutex>(std::move(parked));
    }
    auto body = std::make_unique<MutexBody>();
    body->native = &memory->mutex();
    if (memory->handOverMutex())
        body->taken(threadRecord()->serial);
    body->memory = std::move(memory);
    return std::make_shared<Mutex>(std::move(body));
}

constexpr NamedKind mutexKind = {
    .kind = ObjectKind::mutex,
    .makeUnnamed = unnamedMutex,
    .initialise =
        [](NamedMemory& memory, NamedParameters const&) {
            return makeRobust(memory.mutex(), Sharing::betweenProcesses);
        },
    .makeShared = sharedMutex,
};

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES attributes, BOOL initialOwner, LPCSTR name) noexcept
{
    NamedParameters const parameters = {.initiallyTaken = initialOwner != 0};
    return createObject(mutexKind, attributes, name, parameters);
}

HANDLE OpenMutexA(DWORD, BOOL inherit, LPCSTR name) noexcept
{
    return openObject(mutexKind, inherit, name);
}

BOOL ReleaseMutex(HANDLE handle) noexcept
{
    Pinned<Mutex> const mutex(handle);
    return mutex ? report(mutex->release()) : FALSE;
}
