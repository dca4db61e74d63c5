// ownedMutex.h: a recursive mutex of one process that survives the end of its owner.
//
//   OwnedMutex mutex;
//   if (mutex.lock(*threadRecord(), INFINITE) == WAIT_ABANDONED)
//       ...                                   // locked, and what it guards may be half-changed
//   mutex.unlock(*threadRecord());
//
// One word says who holds it, so that taking and giving back a free one are one
// exchange each:
//
//   bits 0 to 29    the number of the thread that holds it; 0: nobody
//   bit 30          the last owner ended without giving it back
//   bit 31          others may sleep on the word
//
// Each thread's record links what the thread holds. At its end, by whatever
// way, the thread walks that list and leaves bit 30 in each word. The walk may run in
// the signal handler of TerminateThread(), between any two instructions of lock()
// and unlock():
//  1. Each change of the list is one store that makes a whole list of another whole one;
//     `previous` serves unlock() alone and is not read by the walk.
//  2. While a mutex is taken but not yet in the list, or out of it and not yet
//     free, the record's `pendingMutex` points to it.
//
// A thread that leaves by the raw system call of its own abandons nothing.
#pragma once

#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/waits.h"

#include <atomic>
#include <cstdint>

namespace zk::os {

class OwnedMutex {
public:
    OwnedMutex() = default;
    OwnedMutex(OwnedMutex const&) = delete;
    OwnedMutex& operator=(OwnedMutex const&) = delete;

    /// Locks within the time: WAIT_OBJECT_0, WAIT_ABANDONED (locked as well) or
    /// WAIT_TIMEOUT. Who holds it already only counts. The mutex must outlive the call.
    DWORD lock(ThreadRecord& own, DWORD milliseconds) noexcept
    {
        if (isHeldBy(own)) {
            ++depth_;
            return WAIT_OBJECT_0;
        }
        own.pendingMutex = this;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        std::uint32_t free = 0;
        if (!word_.compare_exchange_strong(free, own.id, std::memory_order_acquire,
                                           std::memory_order_relaxed))
            return lockSlowly(own, milliseconds);
        enlist(own);
        return WAIT_OBJECT_0;
    }

    /// Gives back once; false if the thread doesn't hold it.
    bool unlock(ThreadRecord& own) noexcept
    {
        if (!isHeldBy(own))
            return false;
        if (--depth_ == 0)
            unlockLast(own);
        return true;
    }

    bool isHeld() const noexcept { return (word_.load(std::memory_order_acquire) & ownerBits) != 0; }
    bool isHeldBy(ThreadRecord const& thread) const noexcept
    {
        return (word_.load(std::memory_order_relaxed) & ownerBits) == thread.id;
    }

    /// Marks all that the thread of a record holds as abandoned. Safe in a signal handler.
    static void abandonAll(ThreadRecord& ending) noexcept;

    /// Gives all that the thread of a record holds to its new number.
    static void renumberAll(ThreadRecord const& thread, DWORD number) noexcept;

private:
    static constexpr std::uint32_t othersWait = 0x80000000u;
    static constexpr std::uint32_t isAbandoned = 0x40000000u;
    static constexpr std::uint32_t ownerBits = 0x3FFFFFFFu;

    DWORD lockSlowly(ThreadRecord& own, DWORD milliseconds) noexcept;
    void unlockLast(ThreadRecord& own) noexcept;
    void abandon(DWORD owner) noexcept;

    void enlist(ThreadRecord& own) noexcept
    {
        depth_ = 1;
        next_ = own.heldMutexes;
        previous_ = nullptr;
        if (next_)
            next_->previous_ = this;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        own.heldMutexes = this;
        own.pendingMutex = nullptr;
    }

    std::atomic<std::uint32_t> word_{0};
    // The owner's alone.
    DWORD depth_ = 0;
    OwnedMutex* next_ = nullptr;
    OwnedMutex* previous_ = nullptr;
};

}  // namespace zk::os
