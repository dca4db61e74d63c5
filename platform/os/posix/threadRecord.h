// threadRecord.h: what the seam keeps per thread.
//
//   ThreadRecord* const own = threadRecord();      // made at the thread's first call
//   {
//       Shield const shield;                       // TerminateThread() waits for the end of this block
//       ...                                        // a lock of the seam is held here
//   }
//
// A record is taken when a thread first calls into the seam and goes back to
// the pool when the thread ends, whichever way it ends. Records are not freed
// before the module is unloaded, so a reader may walk all of them without a lock.
#pragma once

#include "platform/os/posix/types.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>

namespace zk::os {

class OwnedMutex;
class ThreadState;

struct alignas(64) ThreadRecord {
    static constexpr unsigned pinCapacity = 4;

    /// The handle values that the thread uses right now (see handles.h); 0: a free place.
    std::array<std::atomic<std::uintptr_t>, pinCapacity> pins{};
    unsigned pinned = 0;  ///< how many places are taken; the thread's own

    /// While above 0 the thread may not be ended by TerminateThread(). Read by
    /// the signal handler on the thread itself, hence the type.
    std::sig_atomic_t volatile shields = 0;
    /// A request to end that arrived behind a shield.
    std::sig_atomic_t volatile endIsDue = 0;

    /// The word that the thread sleeps on as one of several takers. Ended in
    /// that moment, the thread hands a wake-up that it may have used up on to the next one.
    std::atomic<std::uint32_t>* volatile sleepsOn = nullptr;

    OwnedMutex* heldMutexes = nullptr;   ///< what the thread holds (see ownedMutex.h)
    OwnedMutex* pendingMutex = nullptr;  ///< what it is taking or giving back right now

    std::uint64_t serial = 0;      ///< of the thread: unlike numbers and records, never used again
    DWORD id = 0;                  ///< the thread's number
    ThreadState* state = nullptr;  ///< the object behind the thread's handles, if it has one

    std::atomic<bool> inUse{true};
    ThreadRecord* next = nullptr;  ///< in the list of all records; fixed once it is linked

    /// Makes the record ready for another thread; mutexes that this one holds are
    /// abandoned. Safe in a signal handler.
    void release() noexcept;
};

/// The calling thread's record, or null if there is no memory for one.
ThreadRecord* threadRecord() noexcept;

/// The first of all records; follow `next`.
ThreadRecord* firstThreadRecord() noexcept;

/// True if no other thread has a record: none is inside of the seam, or comes
/// back to something that it left there.
bool isOnlyUserOfRecords() noexcept;

// The order in which the seam gives back what would outlive an unloaded module
// (priorities of destructor functions, highest first). All come behind the
// destructors of objects, which may still use it.
constexpr int moduleEndHandles = 103;
constexpr int moduleEndSignal = 102;
constexpr int moduleEndRecords = 101;

/// Tells a thread's object that the thread ends, on that thread. `mayFree` is
/// false in a signal handler. Afterwards the thread doesn't know the object any more.
void noteEndOfThread(ThreadState& state, bool mayFree) noexcept;

/// Ends the calling thread there and then: no destructor, no handler for its
/// end runs. Its record goes back to the pool, and the kernel marks the mutexes
/// it holds as abandoned. Safe in a signal handler.
[[noreturn]] void leaveThread() noexcept;

/// Keeps TerminateThread() off for the length of a block that holds a lock of
/// the seam or has half-changed something. The request is met at the end of the
/// outermost block.
class Shield {
public:
    Shield() noexcept : record_(threadRecord())
    {
        if (record_)
            record_->shields = record_->shields + 1;
    }

    ~Shield()
    {
        if (!record_)
            return;
        record_->shields = record_->shields - 1;
        if (record_->endIsDue && record_->shields == 0)
            leaveThread();
    }

    Shield(Shield const&) = delete;
    Shield& operator=(Shield const&) = delete;

private:
    ThreadRecord* const record_;
};

// One load away: this thread's record, null before its first call. The model
// of access costs a few bytes of the space that the loader keeps for modules.
extern thread_local constinit ThreadRecord* ownThreadRecord __attribute__((tls_model("initial-exec")));

/// True if passRemoteFence() works, so that pins do without a fence of their
/// own. Set before the first record is made; tests switch it off.
extern constinit bool hasRemoteFence;

/// Passes a memory fence through all running threads of this process, where the kernel offers it.
void passRemoteFence() noexcept;

ThreadRecord* makeThreadRecord() noexcept;
DWORD askThreadId() noexcept;

inline ThreadRecord* threadRecord() noexcept
{
    return __builtin_expect(ownThreadRecord != nullptr, 1) ? ownThreadRecord : makeThreadRecord();
}

/// The calling thread's number.
inline DWORD ownThreadId() noexcept
{
    ThreadRecord const* const record = threadRecord();
    return __builtin_expect(record != nullptr, 1) ? record->id : askThreadId();
}

}  // namespace zk::os
