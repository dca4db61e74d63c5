#include "platform/os/posix/handles.h"

#include <mutex>
#include <shared_mutex>
#include <vector>

namespace zk::os {
namespace {

struct Slot {
    std::shared_ptr<KernelObject> object;
    std::uint32_t generation = 1;
    bool inheritable = false;
};

constexpr std::size_t maximumHandles = std::size_t(1) << 20;

struct Table {
    std::shared_mutex mutex;
    std::vector<Slot> slots;
    std::vector<std::uint32_t> free;
};

// Never destroyed: handles are closed by static destructors too.
Table& table() noexcept
{
    static Table& instance = *new Table;
    return instance;
}

// Bits 2 to 21: slot + 1; bits 22 to 53: generation. The two low bits are
// clear, as in every handle of the other target, and no value is negative.
HANDLE handleValue(std::size_t index, std::uint32_t generation) noexcept
{
    auto const value = (std::uintptr_t(generation) << 24) | (std::uintptr_t(index + 1) << 2);
    return reinterpret_cast<HANDLE>(value);
}

// Call with the mutex held.
Slot* find(Table& handles, HANDLE handle) noexcept
{
    auto const value = reinterpret_cast<std::uintptr_t>(handle);
    std::size_t const position = (value & 0xFFFFFF) >> 2;
    if (position == 0 || position > handles.slots.size() || (value & 3) != 0)
        return nullptr;
    Slot& slot = handles.slots[position - 1];
    return slot.object && handleValue(position - 1, slot.generation) == handle ? &slot : nullptr;
}

bool isPseudoHandle(HANDLE handle) noexcept
{
    auto const value = reinterpret_cast<std::intptr_t>(handle);
    return value == -1 || value == -2;
}

}  // namespace

KernelObject::~KernelObject() = default;

DWORD KernelObject::wait(DWORD) noexcept
{
    SetLastError(ERROR_INVALID_HANDLE);
    return 0xFFFFFFFFu;
}

int KernelObject::descriptor() const noexcept
{
    return -1;
}

HANDLE openHandle(std::shared_ptr<KernelObject> object, bool inheritable) noexcept
{
    Table& handles = table();
    std::unique_lock const lock(handles.mutex);
    std::size_t index;
    if (!handles.free.empty()) {
        index = handles.free.back();
        handles.free.pop_back();
    } else if (handles.slots.size() < maximumHandles) {
        index = handles.slots.size();
        handles.slots.emplace_back();
    } else {
        SetLastError(ERROR_TOO_MANY_OPEN_FILES);
        return nullptr;
    }
    Slot& slot = handles.slots[index];
    slot.object = std::move(object);
    slot.inheritable = inheritable;
    return handleValue(index, slot.generation);
}

std::shared_ptr<KernelObject> objectOf(HANDLE handle) noexcept
{
    Table& handles = table();
    std::shared_lock const lock(handles.mutex);
    Slot const* const slot = find(handles, handle);
    if (!slot) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return slot->object;
}

}  // namespace zk::os

using namespace zk::os;

BOOL CloseHandle(HANDLE handle) noexcept
{
    if (isPseudoHandle(handle))
        return TRUE;
    Table& handles = table();
    std::shared_ptr<KernelObject> released;   // destroyed behind the lock
    {
        std::unique_lock const lock(handles.mutex);
        Slot* const slot = find(handles, handle);
        if (!slot)
            return report(ERROR_INVALID_HANDLE);
        released = std::move(slot->object);
        slot->object = nullptr;
        ++slot->generation;
        auto const position = (reinterpret_cast<std::uintptr_t>(handle) & 0xFFFFFF) >> 2;
        handles.free.push_back(std::uint32_t(position - 1));
    }
    return TRUE;
}

BOOL GetHandleInformation(HANDLE handle, LPDWORD flags) noexcept
{
    Table& handles = table();
    std::shared_lock const lock(handles.mutex);
    Slot const* const slot = find(handles, handle);
    if (!slot)
        return report(ERROR_INVALID_HANDLE);
    *flags = slot->inheritable ? HANDLE_FLAG_INHERIT : 0;
    return TRUE;
}

BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags) noexcept
{
    if ((mask & ~HANDLE_FLAG_INHERIT) != 0)
        return report(ERROR_INVALID_PARAMETER);
    Table& handles = table();
    std::unique_lock const lock(handles.mutex);
    Slot* const slot = find(handles, handle);
    if (!slot)
        return report(ERROR_INVALID_HANDLE);
    if (mask & HANDLE_FLAG_INHERIT)
        slot->inheritable = (flags & HANDLE_FLAG_INHERIT) != 0;
    return TRUE;
}

BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target,
                     DWORD, BOOL inherit, DWORD options) noexcept
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
