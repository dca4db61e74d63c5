#include "platform/os/posix/clipboard.h"

#include "platform/os/posix/globalMemory.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/textOperations.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

using zk::os::report;

namespace {

constexpr UINT firstNamedFormat = 0xC000;
constexpr UINT lastNamedFormat = 0xFFFF;

// Names that differ in case alone are the same.
struct ComesBefore {
    bool operator()(std::string const& left, std::string const& right) const noexcept
    {
        return _stricmp(left.c_str(), right.c_str()) < 0;
    }
};

struct Clipboard {
    std::mutex mutex;
    std::optional<std::thread::id> openBy;
    std::map<UINT, HGLOBAL> blocks;
    std::map<std::string, UINT, ComesBefore> names;  // of the formats from firstNamedFormat on

    bool isOpenHere() const { return openBy == std::this_thread::get_id(); }
};

// The clipboard is used by static destructors too.
Clipboard& clipboard() noexcept
{
    static zk::os::NeverDestroyed<Clipboard> instance;
    return instance.object;
}

// The blocks are the clipboard's own. Call with the mutex held.
void freeBlocks() noexcept
{
    for (auto const& [format, block] : clipboard().blocks)
        GlobalFree(block);
    clipboard().blocks.clear();
}

void forgetAll() noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    freeBlocks();
    clipboard().names.clear();
}

zk::os::AtModuleEnd<forgetAll> const emptiedClipboard;

}  // namespace

BOOL OpenClipboard(HWND) noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    if (clipboard().openBy && !clipboard().isOpenHere())
        return report(ERROR_ACCESS_DENIED);
    clipboard().openBy = std::this_thread::get_id();
    return TRUE;
}

BOOL CloseClipboard() noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    if (!clipboard().isOpenHere())
        return report(ERROR_CLIPBOARD_NOT_OPEN);
    clipboard().openBy.reset();
    return TRUE;
}

BOOL EmptyClipboard() noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    if (!clipboard().isOpenHere())
        return report(ERROR_CLIPBOARD_NOT_OPEN);
    freeBlocks();
    return TRUE;
}

HANDLE SetClipboardData(UINT format, HANDLE block) noexcept
try {
    zk::os::ShieldedLock const lock(clipboard().mutex);
    if (!clipboard().isOpenHere() || format == 0) {
        SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
        return nullptr;
    }
    if (!GlobalLock(block))
        return nullptr;
    GlobalUnlock(block);
    HGLOBAL& held = clipboard().blocks[format];
    if (held != block)
        GlobalFree(held);
    held = block;
    return block;
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HANDLE GetClipboardData(UINT format) noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    if (!clipboard().isOpenHere()) {
        SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
        return nullptr;
    }
    auto const found = clipboard().blocks.find(format);
    return found == clipboard().blocks.end() ? nullptr : found->second;
}

BOOL IsClipboardFormatAvailable(UINT format) noexcept
{
    zk::os::ShieldedLock const lock(clipboard().mutex);
    return clipboard().blocks.count(format) != 0;
}

UINT RegisterClipboardFormatA(LPCSTR name) noexcept
try {
    if (!name || !*name) {
        SetLastError(ERROR_INVALID_NAME);
        return 0;
    }
    zk::os::ShieldedLock const lock(clipboard().mutex);
    auto& names = clipboard().names;
    auto const known = names.find(name);
    if (known != names.end())
        return known->second;
    if (firstNamedFormat + names.size() > lastNamedFormat) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    UINT const number = UINT(firstNamedFormat + names.size());
    names.emplace(name, number);
    return number;
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}
