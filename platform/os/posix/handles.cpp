#include "platform/os/posix/handles.h"

#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/threads.h"

#include <pthread.h>
#include <sched.h>

#include <array>
#include <atomic>
#include <mutex>
#include <new>

namespace zk::os {
namespace {

// A place of the table. `handle` and `object` are read without the lock, the rest with it.
struct Slot {
    std::atomic<std::uintptr_t> handle{0};            // the value that is open here; 0: none
    std::atomic<KernelObject*> object{nullptr};       // what `kept` points to; fixed while `handle` stands
    std::atomic<ThreadRecord const*> owner{nullptr};  // the one thread that used the handle; null: several
    std::shared_ptr<KernelObject> kept;
    std::uint32_t generation = 0;
    std::uint32_t nextFree = 0;  // index + 1 of the next free slot; 0: none
    bool inheritable = false;
};

constexpr std::size_t slotsPerChunk = 1024;
constexpr std::size_t maximumChunks = 1024;

// A chunk stays where it is, so that a slot is found without a lock.
struct Table {
    std::mutex mutex;
    std::array<std::atomic<Slot*>, maximumChunks> chunks{};
    std::size_t used = 0;         // slots that were ever taken
    std::uint32_t firstFree = 0;  // index + 1
};

// Handles are closed by static destructors too.
constinit NeverDestroyed<Table> storage;

Table& table() noexcept
{
    return storage.object;
}

// The table's lock.
struct TableLock : ShieldedLock {
    TableLock() noexcept : ShieldedLock(table().mutex) { }
};

// Bits 2 to 22: slot + 1; from bit 24 on: generation. The two low bits are
// clear, as in every handle of the other target, and no value is negative.
std::uintptr_t handleValue(std::size_t index, std::uint32_t generation) noexcept
{
    return (std::uintptr_t(generation) << 24) | (std::uintptr_t(index + 1) << 2);
}

std::size_t indexOf(std::uintptr_t value) noexcept
{
    return ((value & 0xFFFFFF) >> 2) - 1;
}

Slot& slotAt(std::size_t index) noexcept
{
    Slot* const chunk = table().chunks[index / slotsPerChunk].load(std::memory_order_acquire);
    return chunk[index % slotsPerChunk];
}

// The slot that a value names, whether the value is open or not; null if there is no such slot.
Slot* slotOf(std::uintptr_t value) noexcept
{
    std::size_t const index = indexOf(value);
    if (index >= slotsPerChunk * maximumChunks)
        return nullptr;
    Slot* const chunk = table().chunks[index / slotsPerChunk].load(std::memory_order_acquire);
    return chunk ? chunk + index % slotsPerChunk : nullptr;
}

// The slot of an open handle, else null. Call with the lock held.
Slot* openSlot(HANDLE handle) noexcept
{
    auto const value = reinterpret_cast<std::uintptr_t>(handle);
    Slot* const slot = value == 0 ? nullptr : slotOf(value);
    return slot && slot->handle.load(std::memory_order_relaxed) == value ? slot : nullptr;
}

bool isPseudoHandle(HANDLE handle) noexcept
{
    auto const value = reinterpret_cast<std::intptr_t>(handle);
    return value == -1 || value == -2;
}

// Step 1 of a pin, in an order that a closer can rely on.
void announce(std::atomic<std::uintptr_t>& pin, std::uintptr_t value) noexcept
{
    if (hasRemoteFence) {
        pin.store(value, std::memory_order_release);
        std::atomic_signal_fence(std::memory_order_seq_cst);
    } else {
        pin.exchange(value, std::memory_order_seq_cst);
    }
}

// Waits until no other thread pins a value that is no longer open.
void waitForPins(std::uintptr_t value) noexcept
{
    passRemoteFence();
    for (ThreadRecord const* record = firstThreadRecord(); record; record = record->next) {
        if (record == ownThreadRecord)
            continue;
        for (auto const& pin : record->pins)
            while (pin.load(std::memory_order_seq_cst) == value)
                sched_yield();
    }
}

// Call with the lock held: the index of a free slot, or an error.
DWORD takeSlot(std::size_t& index) noexcept
{
    Table& handles = table();
    if (handles.firstFree != 0) {
        index = handles.firstFree - 1;
        handles.firstFree = slotAt(index).nextFree;
        return ERROR_SUCCESS;
    }
    if (handles.used == slotsPerChunk * maximumChunks)
        return ERROR_TOO_MANY_OPEN_FILES;
    if (handles.used % slotsPerChunk == 0) {
        auto* const chunk = new (std::nothrow) Slot[slotsPerChunk];
        if (!chunk)
            return ERROR_NOT_ENOUGH_MEMORY;
        handles.chunks[handles.used / slotsPerChunk].store(chunk, std::memory_order_release);
    }
    index = handles.used++;
    return ERROR_SUCCESS;
}

// Call with the lock held: gives a slot back that holds nothing.
void freeSlot(std::size_t index) noexcept
{
    Table& handles = table();
    slotAt(index).nextFree = handles.firstFree;
    handles.firstFree = std::uint32_t(index + 1);
}

// Empties the slot of an open handle and gives out what it held; null for any other value.
std::shared_ptr<KernelObject> takeOut(HANDLE handle) noexcept
{
    Shield const shield;
    auto const value = reinterpret_cast<std::uintptr_t>(handle);
    Slot* slot;
    bool isShared;
    {
        TableLock const lock;
        slot = openSlot(handle);
        if (!slot)
            return nullptr;
        isShared = !ownThreadRecord || slot->owner.load(std::memory_order_relaxed) != ownThreadRecord;
        slot->handle.store(0, std::memory_order_seq_cst);
    }
    if (isShared)
        waitForPins(value);
    std::shared_ptr<KernelObject> taken = std::move(slot->kept);
    TableLock const lock;
    freeSlot(indexOf(value));
    return taken;
}

// When the module is unloaded: the table's memory, unless handles are open or
// other threads may come for it.
[[gnu::destructor(moduleEndHandles)]] void freeTable() noexcept
{
    Table& handles = table();
    std::lock_guard const lock(handles.mutex);
    if (!isOnlyUserOfRecords())
        return;
    for (std::size_t index = 0; index < handles.used; ++index)
        if (slotAt(index).handle.load(std::memory_order_relaxed) != 0)
            return;
    for (auto& chunk : handles.chunks)
        delete[] chunk.exchange(nullptr);
    handles.used = 0;
    handles.firstFree = 0;
}

void lockTable() noexcept
{
    table().mutex.lock();
}

void unlockTable() noexcept
{
    table().mutex.unlock();
}

// A fork in one thread must not leave the child with a lock that another one held.
[[maybe_unused]] int const forkHandlers = pthread_atfork(lockTable, unlockTable, unlockTable);

}  // namespace

KernelObject::~KernelObject() = default;

DWORD KernelObject::wait(DWORD) noexcept
{
    SetLastError(ERROR_INVALID_HANDLE);
    return 0xFFFFFFFFu;
}

DWORD KernelObject::release() noexcept
{
    return ERROR_INVALID_HANDLE;
}

int KernelObject::descriptor() const noexcept
{
    return -1;
}

namespace {

// Call with the lock held: enters an object into a slot that was taken for it.
HANDLE openSlotFor(std::size_t index, std::shared_ptr<KernelObject> object, bool inheritable,
                   ThreadRecord const* owner) noexcept
{
    Slot& slot = slotAt(index);
    slot.kept = std::move(object);
    slot.inheritable = inheritable;
    slot.object.store(slot.kept.get(), std::memory_order_relaxed);
    slot.owner.store(owner, std::memory_order_relaxed);
    std::uintptr_t const value = handleValue(index, ++slot.generation);
    slot.handle.store(value, std::memory_order_release);
    return reinterpret_cast<HANDLE>(value);
}

}  // namespace

HANDLE openHandle(std::shared_ptr<KernelObject> object, bool inheritable) noexcept
{
    ThreadRecord const* const owner = threadRecord();
    TableLock const lock;
    std::size_t index;
    return report(takeSlot(index)) ? openSlotFor(index, std::move(object), inheritable, owner) : nullptr;
}

HandlePlace::HandlePlace() noexcept
{
    TableLock const lock;
    error_ = takeSlot(index_);
    isTaken_ = error_ == ERROR_SUCCESS;
}

HandlePlace::~HandlePlace()
{
    if (!isTaken_)
        return;
    TableLock const lock;
    freeSlot(index_);
}

HANDLE HandlePlace::open(std::shared_ptr<KernelObject> object, bool inheritable) noexcept
{
    ThreadRecord const* const owner = threadRecord();
    TableLock const lock;
    isTaken_ = false;
    return openSlotFor(index_, std::move(object), inheritable, owner);
}

std::shared_ptr<KernelObject> objectOf(HANDLE handle) noexcept
{
    return HandlePin(handle).share();
}

std::vector<std::pair<HANDLE, std::shared_ptr<KernelObject>>> inheritableObjects()
{
    std::vector<std::pair<HANDLE, std::shared_ptr<KernelObject>>> objects;
    TableLock const lock;
    Table const& handles = table();
    for (std::size_t index = 0; index < handles.used; ++index) {
        Slot const& slot = slotAt(index);
        std::uintptr_t const value = slot.handle.load(std::memory_order_relaxed);
        if (value != 0 && slot.inheritable)
            objects.emplace_back(reinterpret_cast<HANDLE>(value), slot.kept);
    }
    return objects;
}

HandlePin::HandlePin(HANDLE handle) noexcept
{
    if (!pinInPlace(handle) && !pinOfOtherThread(handle))
        SetLastError(ERROR_INVALID_HANDLE);
}

HandlePin::~HandlePin()
{
    if (record_)
        record_->pins[--record_->pinned].store(0, std::memory_order_release);
}

// The common case: the slot is this thread's own or known to be shared, and the thread has a place left.
bool HandlePin::pinInPlace(HANDLE handle) noexcept
{
    auto const value = reinterpret_cast<std::uintptr_t>(handle);
    Slot const* const slot = slotOf(value);
    ThreadRecord* const record = threadRecord();
    if (!slot || !record || record->pinned == ThreadRecord::pinCapacity)
        return false;
    // The order matters: an owner that is read after the handle belongs to this handle or to a later one.
    if (slot->handle.load(std::memory_order_acquire) != value)
        return false;
    ThreadRecord const* const owner = slot->owner.load(std::memory_order_relaxed);
    if (owner && owner != record)
        return false;
    auto& pin = record->pins[record->pinned];
    announce(pin, value);
    if (slot->handle.load(std::memory_order_acquire) != value) {
        pin.store(0, std::memory_order_release);
        return false;
    }
    ++record->pinned;
    record_ = record;
    slot_ = slot;
    object_ = slot->object.load(std::memory_order_relaxed);
    return true;
}

// Marks the slot as shared and tries again; without a place to pin in, copies
// the pointer. The value that stands for the calling thread comes here as well.
bool HandlePin::pinOfOtherThread(HANDLE handle) noexcept
{
    if (handle == GetCurrentThread()) {
        kept_ = ownThreadObject();
        object_ = kept_.get();
        return object_ != nullptr;
    }
    bool hasPlace;
    {
        TableLock const lock;
        Slot* const slot = openSlot(handle);
        if (!slot)
            return false;
        ThreadRecord const* const record = threadRecord();
        hasPlace = record && record->pinned < ThreadRecord::pinCapacity;
        slot->owner.store(nullptr, std::memory_order_relaxed);
        if (!hasPlace) {
            kept_ = slot->kept;
            object_ = kept_.get();
            return true;
        }
    }
    return pinInPlace(handle);
}

std::shared_ptr<KernelObject> HandlePin::share() const noexcept
{
    // A pinned slot keeps its pointer: only a closer changes it, after the end of the pin.
    return record_ ? static_cast<Slot const*>(slot_)->kept : kept_;
}

}  // namespace zk::os

using namespace zk::os;

BOOL CloseHandle(HANDLE handle) noexcept
{
    if (isPseudoHandle(handle))
        return TRUE;
    std::shared_ptr<KernelObject> const released = takeOut(handle);  // destroyed behind lock and shield
    return released ? TRUE : report(ERROR_INVALID_HANDLE);
}

BOOL GetHandleInformation(HANDLE handle, LPDWORD flags) noexcept
{
    TableLock const lock;
    Slot const* const slot = openSlot(handle);
    if (!slot)
        return report(ERROR_INVALID_HANDLE);
    *flags = slot->inheritable ? HANDLE_FLAG_INHERIT : 0;
    return TRUE;
}

BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags) noexcept
{
    if ((mask & ~HANDLE_FLAG_INHERIT) != 0)
        return report(ERROR_INVALID_PARAMETER);
    TableLock const lock;
    Slot* const slot = openSlot(handle);
    if (!slot)
        return report(ERROR_INVALID_HANDLE);
    if (mask & HANDLE_FLAG_INHERIT)
        slot->inheritable = (flags & HANDLE_FLAG_INHERIT) != 0;
    return TRUE;
}

BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target, DWORD,
                     BOOL inherit, DWORD options) noexcept
{
    HANDLE const thisProcess = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1));
    if (sourceProcess != thisProcess || targetProcess != thisProcess)
        return report(ERROR_INVALID_HANDLE);
    if (!(options & DUPLICATE_SAME_ACCESS))
        return report(ERROR_INVALID_PARAMETER);
    std::shared_ptr<KernelObject> object = objectOf(source);
    if (!object)
        return FALSE;
    HANDLE const copy = openHandle(std::move(object), inherit != 0);
    if (!copy)
        return FALSE;
    *target = copy;
    if (options & DUPLICATE_CLOSE_SOURCE)
        CloseHandle(source);
    return TRUE;
}
