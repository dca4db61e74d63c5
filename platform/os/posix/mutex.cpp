#include "platform/os/posix/mutex.h"

#include "platform/os/posix/namedObjects.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/ownedMutex.h"
#include "platform/os/posix/robustMutex.h"
#include "platform/os/posix/sync.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/waits.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <vector>

// Two kinds
// ---------
// A mutex without a name is an OwnedMutex: nothing outside this process sees
// it, so that the threads' own records can tell of a dead owner.
//
// One with a name is a robust mutex of the system in shared memory, plus what
// only this process knows: which of its threads is inside, and how often.
// Threads are told apart by a number that is never used twice, so that a dead
// owner's number means nobody.
//
// Parking
// -------
// Closing the last handle of a mutex that a thread holds leaves that thread
// with an entry in the list of what it holds, and the memory must stay where
// the list points. Such a body is parked:
//  - without a name, until its owner has ended (its owner's own close releases it instead);
//  - with a name, likewise; but if others use the name, for good: its owner holds
//    it as before, seen by them, and finds it again when it opens the name anew.

namespace zk::os {
namespace {

struct NamedBody {
    pthread_mutex_t* native = nullptr;
    std::atomic<std::uint64_t> holder{0};  // a thread's serial number
    DWORD depth = 0;                       // of the holder alone
    std::unique_ptr<NamedMemory> memory;
    std::unique_ptr<NamedMemory> lease;  // of a parked body that is in use again
    bool isSeenByOthers = false;         // parked, while other processes use the name

    NamedBody() = default;
    ~NamedBody()
    {
        if (holder.load(std::memory_order_relaxed) != 0)
            unlock();  // of a creator who failed half-way
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

bool isFree(OwnedMutex const& mutex) noexcept
{
    return !mutex.isHeld();
}

// One that others see is never looked at: that would take the next waiter's WAIT_ABANDONED away.
bool isFree(NamedBody& body) noexcept
{
    if (body.isSeenByOthers || tryLockRobust(*body.native) == WAIT_TIMEOUT)
        return false;
    body.unlock();
    return true;
}

// Keeps bodies that are closed while a thread holds them.
template <class Body>
class Parking {
public:
    void park(std::unique_ptr<Body> body) noexcept
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

    // Takes out the first parked body of which `isWanted`, or null.
    template <class Wanted>
    std::unique_ptr<Body> take(Wanted isWanted) noexcept
    {
        Shield const shield;
        std::lock_guard const lock(mutex_);
        auto const parked =
            std::find_if(bodies_.begin(), bodies_.end(), [&](auto const& body) { return isWanted(*body); });
        if (parked == bodies_.end())
            return nullptr;
        std::unique_ptr<Body> body = std::move(*parked);
        bodies_.erase(parked);
        return body;
    }

private:
    std::mutex mutex_;
    std::vector<std::unique_ptr<Body>> bodies_;
};

template <class Body>
Parking<Body>& parking() noexcept
{
    static NeverDestroyed<Parking<Body>> instance;  // mutexes are closed by static destructors too
    return instance.object;
}

// The calling thread's record; without memory for one, null and the last error.
ThreadRecord* ownRecord() noexcept
{
    ThreadRecord* const record = threadRecord();
    if (!record)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return record;
}

class UnnamedMutex final : public KernelObject {
public:
    UnnamedMutex() : body_(std::make_unique<OwnedMutex>()) { }

    ~UnnamedMutex() override
    {
        ThreadRecord* const own = threadRecord();
        if (own && body_->isHeldBy(*own))
            while (body_->unlock(*own)) { }
        else if (body_->isHeld())
            parking<OwnedMutex>().park(std::move(body_));
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        ThreadRecord* const own = ownRecord();
        return own ? body_->lock(*own, milliseconds) : WAIT_FAILED;
    }

    DWORD release() noexcept override
    {
        ThreadRecord* const own = threadRecord();
        return own && body_->unlock(*own) ? ERROR_SUCCESS : ERROR_NOT_OWNER;
    }

private:
    std::unique_ptr<OwnedMutex> body_;
};

class NamedMutex final : public KernelObject {
public:
    explicit NamedMutex(std::unique_ptr<NamedBody> body) noexcept : body_(std::move(body)) { }

    ~NamedMutex() override
    {
        std::uint64_t const holder = body_->holder.load(std::memory_order_relaxed);
        if (holder == 0)
            return;
        ThreadRecord const* const record = threadRecord();
        bool const isOwn = record && holder == record->serial;
        NamedMemory& leased = body_->lease ? *body_->lease : *body_->memory;
        body_->isSeenByOthers = !leased.endLease();
        if (isOwn && !body_->isSeenByOthers)
            body_->unlock();
        else
            parking<NamedBody>().park(std::move(body_));
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        ThreadRecord const* const record = ownRecord();
        if (!record)
            return WAIT_FAILED;
        NamedBody& body = *body_;
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

    DWORD release() noexcept override
    {
        ThreadRecord const* const record = threadRecord();
        NamedBody& body = *body_;
        if (!record || body.holder.load(std::memory_order_relaxed) != record->serial)
            return ERROR_NOT_OWNER;
        if (--body.depth == 0)
            body.unlock();
        return ERROR_SUCCESS;
    }

private:
    std::unique_ptr<NamedBody> body_;
};

std::shared_ptr<KernelObject> unnamedMutex(NamedParameters const& parameters)
{
    auto mutex = std::make_shared<UnnamedMutex>();
    if (parameters.initiallyTaken && mutex->wait(0) != WAIT_OBJECT_0)
        return nullptr;
    return mutex;
}

std::shared_ptr<KernelObject> sharedMutex(std::unique_ptr<NamedMemory> memory)
{
    auto const isOfThisFile = [&](NamedBody const& parked) {
        return parked.isSeenByOthers && parked.memory->identity() == memory->identity();
    };
    if (std::unique_ptr<NamedBody> parked = parking<NamedBody>().take(isOfThisFile)) {
        parked->lease = std::move(memory);
        return std::make_shared<NamedMutex>(std::move(parked));
    }
    auto body = std::make_unique<NamedBody>();
    body->native = &memory->mutex();
    if (memory->handOverMutex())
        body->taken(threadRecord()->serial);
    body->memory = std::move(memory);
    return std::make_shared<NamedMutex>(std::move(body));
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
    HandlePin const pin(handle);
    return pin ? report(pin->release()) : FALSE;
}
