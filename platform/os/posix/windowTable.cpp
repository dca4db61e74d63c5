#include "platform/os/posix/windowTable.h"

#include "platform/os/posix/coordinates.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/shieldedLock.h"

#include <algorithm>

namespace zk::os {
namespace {

struct Slot {
    std::unique_ptr<Window> window;
    std::uint16_t generation = 1;
};

constexpr std::size_t maximumWindows = 0x7000;
constexpr std::uintptr_t firstNumber = 0x10;  // below stand values with meanings of their own

struct Table {
    std::mutex mutex;
    std::vector<Slot> slots;
    std::vector<std::size_t> free;
    std::vector<HWND> topLevel;
    std::vector<HWND> messageOnly;
};

// Windows are closed by static destructors too.
Table& windows() noexcept
{
    static NeverDestroyed<Table> instance;
    return instance.object;
}

// Windows that are left are their users'.
AtModuleEnd<[] {
    Table& all = windows();
    ShieldedLock const lock(all.mutex);
    if (!all.topLevel.empty() || !all.messageOnly.empty())
        return;
    std::vector<Slot>().swap(all.slots);
    for (auto* list : {&all.topLevel, &all.messageOnly})
        std::vector<HWND>().swap(*list);
    std::vector<std::size_t>().swap(all.free);
}> const emptiedWindows;

// Room for one more than `size`, growing by doubling.
template <class Element>
void reserveOneMore(std::vector<Element>& list, std::size_t size)
{
    if (list.capacity() <= size)
        list.reserve(std::max(size + 1, size * 2));
}

HWND handleOf(std::size_t index, std::uint16_t generation) noexcept
{
    return reinterpret_cast<HWND>((std::uintptr_t(generation) << 16) | ((index + firstNumber) << 1));
}

std::size_t indexOf(HWND handle) noexcept
{
    return ((reinterpret_cast<std::uintptr_t>(handle) & 0xFFFF) >> 1) - firstNumber;
}

}  // namespace

WindowTable::WindowTable() : lock_(windows().mutex)
{
}

Window* WindowTable::find(HWND handle) const noexcept
{
    Table const& table = windows();
    std::size_t const index = indexOf(handle);
    if (index >= table.slots.size())
        return nullptr;
    Slot const& slot = table.slots[index];
    return slot.window && slot.window->handle == handle ? slot.window.get() : nullptr;
}

Window* WindowTable::require(HWND handle) const noexcept
{
    Window* const window = find(handle);
    if (!window)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

Window* WindowTable::add(HWND parent, bool onTop)
{
    Table& table = windows();
    if (table.free.empty()) {
        if (table.slots.size() >= maximumWindows)
            return nullptr;
        // So that remove() needs no memory, nor the way of a child to the top level when its parent's thread ends.
        reserveOneMore(table.free, table.slots.size());
        reserveOneMore(table.topLevel, table.slots.size());
        table.slots.emplace_back();
        table.free.push_back(table.slots.size() - 1);
    }
    std::size_t const index = table.free.back();
    Slot& slot = table.slots[index];
    auto window = std::make_unique<Window>();
    window->handle = handleOf(index, slot.generation);
    window->isMessageOnly = parent == HWND_MESSAGE;
    window->parent = window->isMessageOnly ? nullptr : parent;
    std::vector<HWND>& place = siblings(*window);
    place.insert(onTop ? place.begin() : place.end(), window->handle);
    slot.window = std::move(window);
    table.free.pop_back();
    return slot.window.get();
}

void WindowTable::remove(HWND handle) noexcept
{
    Table& table = windows();
    Window* const window = find(handle);
    if (!window)
        return;
    std::vector<HWND>& place = siblings(*window);
    place.erase(std::remove(place.begin(), place.end(), handle), place.end());
    Slot& slot = table.slots[indexOf(handle)];
    slot.window.reset();
    slot.generation = slot.generation == 0xFFFF ? 1 : static_cast<std::uint16_t>(slot.generation + 1);
    table.free.push_back(indexOf(handle));
}

std::vector<HWND>& WindowTable::siblings(Window const& window) const noexcept
{
    if (Window* const parent = window.parent ? find(window.parent) : nullptr)
        return parent->children;
    return window.isMessageOnly ? windows().messageOnly : windows().topLevel;
}

void WindowTable::moveTo(Window& window, HWND parent, bool onTop)
{
    bool const toMessages = parent == HWND_MESSAGE;
    Window* const target = parent && !toMessages ? find(parent) : nullptr;
    std::vector<HWND>& to = target ? target->children
        : toMessages               ? windows().messageOnly
                                   : windows().topLevel;
    reserveOneMore(to, to.size());
    std::vector<HWND>& from = siblings(window);
    from.erase(std::remove(from.begin(), from.end(), window.handle), from.end());
    to.insert(onTop ? to.begin() : to.end(), window.handle);
    window.parent = target ? parent : nullptr;
    window.isMessageOnly = toMessages;
}

std::vector<HWND> WindowTable::descendants(Window const& window) const
{
    std::vector<HWND> all;
    std::vector<HWND> open(window.children.rbegin(), window.children.rend());
    while (!open.empty()) {
        HWND const next = open.back();
        open.pop_back();
        all.push_back(next);
        if (Window const* const child = find(next))
            open.insert(open.end(), child->children.rbegin(), child->children.rend());
    }
    return all;
}

bool WindowTable::isBelow(HWND handle, HWND ancestor) const noexcept
{
    Window const* window = find(handle);
    while (window && window->parent) {
        if (window->parent == ancestor)
            return true;
        window = find(window->parent);
    }
    return false;
}

POINT WindowTable::origin(Window const& window) const noexcept
{
    POINT point{window.place.left, window.place.top};
    for (Window const* above = window.parent ? find(window.parent) : nullptr; above;
         above = above->parent ? find(above->parent) : nullptr) {
        point.x = wrappedSum(point.x, above->place.left);
        point.y = wrappedSum(point.y, above->place.top);
    }
    return point;
}

std::vector<HWND> WindowTable::ofThread(ThreadQueue const& queue) const
{
    std::vector<HWND> handles;
    for (Slot const& slot : windows().slots) {
        if (slot.window && slot.window->queue.get() == &queue)
            handles.push_back(slot.window->handle);
    }
    return handles;
}

void removeWindowsOf(ThreadQueue const& queue) noexcept
{
    WindowTable table;
    for (Slot const& slot : windows().slots) {
        if (!slot.window || slot.window->queue.get() != &queue)
            continue;
        --slot.window->windowClass->windows;
        // Windows of other threads that stood in it become top-level windows.
        while (!slot.window->children.empty()) {
            Window* const child = table.find(slot.window->children.back());
            if (child && child->queue.get() != &queue)
                table.moveTo(*child, nullptr, false);
            else
                slot.window->children.pop_back();
        }
        table.remove(slot.window->handle);
    }
}

}  // namespace zk::os
