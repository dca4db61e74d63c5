#include "platform/os/posix/globalMemory.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>

using zk::os::report;

namespace {

struct Block {
    std::unique_ptr<char[]> memory;
    SIZE_T size;
    unsigned locks;
};

struct Blocks {
    std::mutex mutex;
    std::unordered_map<HGLOBAL, Block> byHandle;
    std::uintptr_t lastHandle = 0;
};

// Blocks are freed by static destructors too.
Blocks& blocks() noexcept
{
    static zk::os::NeverDestroyed<Blocks> instance;
    return instance.object;
}

// Blocks that are left are their users'.
zk::os::AtModuleEnd<[] {
    zk::os::ShieldedLock const lock(blocks().mutex);
    if (blocks().byHandle.empty())
        decltype(Blocks::byHandle)().swap(blocks().byHandle);
}> const emptiedBlocks;

// Call with the mutex held.
Block* find(HGLOBAL handle)
{
    auto const found = blocks().byHandle.find(handle);
    if (found == blocks().byHandle.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return &found->second;
}

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T size) noexcept
try {
    if ((flags & ~GHND) != 0 || !(flags & GMEM_MOVEABLE)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (size == SIZE_MAX) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    // One byte at the least, so that an empty block has an address too.
    std::unique_ptr<char[]> memory(flags & GMEM_ZEROINIT ? new char[size + 1]() : new char[size + 1]);
    zk::os::ShieldedLock const lock(blocks().mutex);
    HGLOBAL const handle = reinterpret_cast<HGLOBAL>(blocks().lastHandle += 4);
    blocks().byHandle.emplace(handle, Block{std::move(memory), size, 0});
    return handle;
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL handle) noexcept
{
    zk::os::ShieldedLock const lock(blocks().mutex);
    Block* const block = find(handle);
    if (!block)
        return nullptr;
    ++block->locks;
    return block->memory.get();
}

BOOL GlobalUnlock(HGLOBAL handle) noexcept
{
    zk::os::ShieldedLock const lock(blocks().mutex);
    Block* const block = find(handle);
    if (!block)
        return FALSE;
    if (block->locks == 0)
        return report(ERROR_NOT_LOCKED);
    if (--block->locks > 0)
        return TRUE;
    SetLastError(NO_ERROR);
    return FALSE;
}

SIZE_T GlobalSize(HGLOBAL handle) noexcept
{
    zk::os::ShieldedLock const lock(blocks().mutex);
    Block const* const block = find(handle);
    return block ? block->size : 0;
}

HGLOBAL GlobalFree(HGLOBAL handle) noexcept
{
    if (!handle)
        return nullptr;
    zk::os::ShieldedLock const lock(blocks().mutex);
    if (!find(handle))
        return handle;
    blocks().byHandle.erase(handle);
    return nullptr;
}
