#include "platform/os/posix/threadRecord.h"

#include "platform/os/posix/ownedMutex.h"

#include <linux/futex.h>
#include <linux/membarrier.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <new>
#include <utility>

namespace zk::os {
namespace {

constinit std::atomic<ThreadRecord*> firstRecord{nullptr};
constinit std::atomic<std::uint64_t> lastSerial{0};

// Runs at the end of a thread, after its thread_local objects are destroyed:
// those may still call into the seam. A call from another key's destructor
// makes a new record, and the system then comes round to it again.
void releaseAtThreadEnd(void* record) noexcept
{
    ownThreadRecord = nullptr;
    auto& ended = *static_cast<ThreadRecord*>(record);
    ThreadState* const state = ended.state;
    ended.release();
    if (state)
        noteEndOfThread(*state, true);
}

// Of a forked process only the forking thread goes on: the others' records are free.
void keepOwnRecordOnly() noexcept
{
    for (ThreadRecord* record = firstRecord; record; record = record->next) {
        if (record == ownThreadRecord) {
            DWORD const id = askThreadId();
            OwnedMutex::renumberAll(*record, id);
            record->id = id;
        } else if (record->inUse) {
            record->release();
        }
    }
}

constinit std::atomic<bool> hasThreadEndKey{false};
pthread_key_t threadEndKey{};

// What is set up once, before the first record.
struct Setup {
    Setup() noexcept
    {
        hasThreadEndKey = pthread_key_create(&threadEndKey, releaseAtThreadEnd) == 0;
        pthread_atfork(nullptr, nullptr, keepOwnRecordOnly);
        hasRemoteFence = syscall(SYS_membarrier, MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED, 0, 0) == 0;
    }
};

ThreadRecord* takeFromPool() noexcept
{
    for (ThreadRecord* record = firstRecord.load(std::memory_order_acquire); record; record = record->next) {
        bool free = false;
        if (!record->inUse.load(std::memory_order_relaxed) &&
            record->inUse.compare_exchange_strong(free, true, std::memory_order_acq_rel))
            return record;
    }
    return nullptr;
}

// When the module is unloaded, behind all else, nothing may lead back into it.
// The end of the process comes by here too; other threads may still run then,
// and keep their records.
[[gnu::destructor(moduleEndRecords)]] void endRecords() noexcept
{
    if (hasThreadEndKey.exchange(false))
        pthread_key_delete(threadEndKey);
    if (!isOnlyUserOfRecords())
        return;
    // The thread goes on, but nobody can ask for it any more.
    if (ownThreadRecord && ownThreadRecord->state)
        noteEndOfThread(*ownThreadRecord->state, true);
    ownThreadRecord = nullptr;
    ThreadRecord* record = firstRecord.exchange(nullptr);
    while (record)
        delete std::exchange(record, record->next);
}

ThreadRecord* makeInPool() noexcept
{
    auto* const record = new (std::nothrow) ThreadRecord;
    if (!record)
        return nullptr;
    ThreadRecord* first = firstRecord.load(std::memory_order_relaxed);
    do
        record->next = first;
    while (!firstRecord.compare_exchange_weak(first, record, std::memory_order_seq_cst));
    return record;
}

}  // namespace

thread_local constinit ThreadRecord* ownThreadRecord = nullptr;
constinit bool hasRemoteFence = false;

void passRemoteFence() noexcept
{
    syscall(SYS_membarrier, MEMBARRIER_CMD_PRIVATE_EXPEDITED, 0, 0);  // fails only where it isn't offered
}

void ThreadRecord::release() noexcept
{
    OwnedMutex::abandonAll(*this);  // before the pins go, which may keep a mutex in being
    for (auto& pin : pins)
        pin.store(0, std::memory_order_release);
    pinned = 0;
    shields = 0;
    endIsDue = 0;
    sleepsOn = nullptr;
    id = 0;
    state = nullptr;
    inUse.store(false, std::memory_order_release);
}

ThreadRecord* makeThreadRecord() noexcept
{
    [[maybe_unused]] static Setup const setup;
    if (!hasThreadEndKey)
        return nullptr;  // nobody would give the record back
    ThreadRecord* record = takeFromPool();
    if (!record)
        record = makeInPool();
    if (!record)
        return nullptr;
    if (pthread_setspecific(threadEndKey, record) != 0) {
        record->release();
        return nullptr;
    }
    record->serial = lastSerial.fetch_add(1, std::memory_order_relaxed) + 1;
    record->id = askThreadId();
    ownThreadRecord = record;
    return record;
}

DWORD askThreadId() noexcept
{
    return DWORD(gettid());
}

ThreadRecord* firstThreadRecord() noexcept
{
    return firstRecord.load(std::memory_order_seq_cst);
}

bool isOnlyUserOfRecords() noexcept
{
    for (ThreadRecord const* record = firstThreadRecord(); record; record = record->next)
        if (record != ownThreadRecord && record->inUse.load(std::memory_order_acquire))
            return false;
    return true;
}

void leaveThread() noexcept
{
    if (ThreadRecord* const record = ownThreadRecord) {
        if (auto* const word = record->sleepsOn)
            for (int const operation : {FUTEX_WAKE_PRIVATE, FUTEX_WAKE})  // the word may be the kernel's
                syscall(SYS_futex, word, operation, 1, nullptr, nullptr, 0);
        ThreadState* const state = record->state;
        ownThreadRecord = nullptr;
        record->release();
        if (state)
            noteEndOfThread(*state, false);
    }
    for (;;)
        syscall(SYS_exit, 0);  // of the thread alone
}

}  // namespace zk::os
