#include "platform/os/posix/ownedMutex.h"

#include "platform/os/posix/futex.h"

namespace zk::os {

DWORD OwnedMutex::lockSlowly(ThreadRecord& own, DWORD milliseconds) noexcept
{
    // Who has slept takes the mutex with the bit set, since there may be more behind it.
    std::uint32_t taken = own.id;
    Deadline const deadline(milliseconds == 0 ? INFINITE : milliseconds);
    DWORD result = WAIT_TIMEOUT;
    bool isLate = milliseconds == 0;
    for (;;) {
        std::uint32_t seen = word_.load(std::memory_order_relaxed);
        if ((seen & ownerBits) == 0) {
            if (!word_.compare_exchange_strong(seen, taken | (seen & othersWait), std::memory_order_acquire,
                                               std::memory_order_relaxed))
                continue;
            enlist(own);
            result = seen & isAbandoned ? WAIT_ABANDONED : WAIT_OBJECT_0;
            break;
        }
        if (isLate)
            break;
        if (!(seen & othersWait) &&
            !word_.compare_exchange_strong(seen, seen | othersWait, std::memory_order_relaxed))
            continue;
        own.sleepsOn = &word_;
        isLate = sleepOn(word_, seen | othersWait, Sharing::ofProcess, deadline) == Wake::timedOut;
        taken = own.id | othersWait;
    }
    own.pendingMutex = nullptr;
    own.sleepsOn = nullptr;
    return result;
}

void OwnedMutex::unlockLast(ThreadRecord& own) noexcept
{
    own.pendingMutex = this;
    std::atomic_signal_fence(std::memory_order_seq_cst);
    if (previous_)
        previous_->next_ = next_;
    else
        own.heldMutexes = next_;
    if (next_)
        next_->previous_ = previous_;
    if (word_.exchange(0, std::memory_order_release) & othersWait)
        wake(word_, Sharing::ofProcess, 1);
    std::atomic_signal_fence(std::memory_order_seq_cst);
    own.pendingMutex = nullptr;
}

void OwnedMutex::abandon(DWORD owner) noexcept
{
    if ((word_.load(std::memory_order_relaxed) & ownerBits) == owner &&
        (word_.exchange(isAbandoned, std::memory_order_release) & othersWait))
        wake(word_, Sharing::ofProcess, 1);
}

void OwnedMutex::abandonAll(ThreadRecord& ending) noexcept
{
    for (OwnedMutex* held = ending.heldMutexes; held;) {
        OwnedMutex* const next = held->next_;  // an abandoned one may be freed there and then
        held->abandon(ending.id);
        held = next;
    }
    if (ending.pendingMutex)
        ending.pendingMutex->abandon(ending.id);
    ending.heldMutexes = ending.pendingMutex = nullptr;
}

void OwnedMutex::renumberAll(ThreadRecord const& thread, DWORD number) noexcept
{
    for (OwnedMutex* held = thread.heldMutexes; held; held = held->next_)
        held->word_.store(number, std::memory_order_relaxed);
}

}  // namespace zk::os
