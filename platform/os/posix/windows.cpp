// What a window is, and its family.
#include "platform/os/posix/windows.h"

#include "platform/os/posix/coordinates.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/threadQueue.h"
#include "platform/os/posix/windowTable.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include <unistd.h>

namespace zk::os {
namespace {

// Reads or writes `value` at an index of a window, with the table's lock held.
// The extra bytes are reached with `width` bytes.
DWORD exchange(Window& window, int index, LONG_PTR* newValue, LONG_PTR& value, std::size_t width)
{
    auto const swap = [&](auto& member) {
        auto const previous = member;
        if (newValue)
            member = (std::remove_reference_t<decltype(member)>)(*newValue);
        value = (LONG_PTR)(previous);
    };
    switch (index) {
    case GWL_STYLE: swap(window.style); return ERROR_SUCCESS;
    case GWL_EXSTYLE: swap(window.exStyle); return ERROR_SUCCESS;
    case GWLP_ID: swap(window.id); return ERROR_SUCCESS;
    case GWLP_USERDATA: swap(window.userData); return ERROR_SUCCESS;
    case GWLP_WNDPROC: swap(window.procedure); return ERROR_SUCCESS;
    case GWLP_HINSTANCE: swap(window.instance); return ERROR_SUCCESS;
    case GWLP_HWNDPARENT:
        if (window.style & WS_CHILD) {
            value = reinterpret_cast<LONG_PTR>(window.parent);
            return newValue ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
        }
        swap(window.owner);
        return ERROR_SUCCESS;
    default: break;
    }
    if (index < 0 || static_cast<std::size_t>(index) + width > window.extra.size())
        return ERROR_INVALID_INDEX;
    std::byte* const place = window.extra.data() + index;
    if (width == sizeof(LONG_PTR)) {
        std::memcpy(&value, place, width);
    } else {
        LONG narrow;
        std::memcpy(&narrow, place, width);
        value = narrow;
    }
    if (newValue && width == sizeof(LONG_PTR)) {
        std::memcpy(place, newValue, width);
    } else if (newValue) {
        auto const narrow = static_cast<LONG>(*newValue);
        std::memcpy(place, &narrow, width);
    }
    return ERROR_SUCCESS;
}

LONG_PTR getLong(HWND handle, int index, std::size_t width) noexcept
{
    WindowTable const table;
    Window* const window = table.require(handle);
    LONG_PTR value = 0;
    if (!window || !report(exchange(*window, index, nullptr, value, width)))
        return 0;
    return value;
}

LONG_PTR setLong(HWND handle, int index, LONG_PTR newValue, std::size_t width)
{
    bool const isStyle = index == GWL_STYLE || index == GWL_EXSTYLE;
    STYLESTRUCT styles{};
    if (isStyle) {
        WindowTable const table;
        Window const* const window = table.require(handle);
        if (!window)
            return 0;
        styles.styleOld = index == GWL_STYLE ? window->style : window->exStyle;
    }
    auto const which = static_cast<WPARAM>(static_cast<LONG_PTR>(index));
    auto const parameter = reinterpret_cast<LPARAM>(&styles);
    if (isStyle) {
        styles.styleNew = static_cast<DWORD>(newValue);
        SendMessageA(handle, WM_STYLECHANGING, which, parameter);
        newValue = static_cast<LONG_PTR>(styles.styleNew);
    }
    LONG_PTR previous = 0;
    {
        WindowTable const table;
        Window* const window = table.require(handle);
        if (!window || !report(exchange(*window, index, &newValue, previous, width)))
            return 0;
    }
    if (isStyle)
        SendMessageA(handle, WM_STYLECHANGED, which, parameter);
    return previous;
}

// Sets or clears a style bit; gives whether it was set, or -1 for no window.
int exchangeStyleBit(HWND handle, DWORD bit, bool set)
{
    WindowTable const table;
    Window* const window = table.require(handle);
    if (!window)
        return -1;
    bool const was = (window->style & bit) != 0;
    window->style = set ? window->style | bit : window->style & ~bit;
    return was;
}

}  // namespace

void tellFirstSize(HWND handle)
{
    RECT place;
    {
        WindowTable const table;
        Window* const window = table.find(handle);
        if (!window || !std::exchange(window->needsSize, false))
            return;
        place = window->place;
    }
    SendMessageA(
        handle, WM_SIZE, SIZE_RESTORED,
        MAKELPARAM(clampedDifference(place.right, place.left), clampedDifference(place.bottom, place.top)));
    SendMessageA(handle, WM_MOVE, 0, MAKELPARAM(place.left, place.top));
}

}  // namespace zk::os

using namespace zk::os;

LONG_PTR GetWindowLongPtrA(HWND window, int index) noexcept
{
    return getLong(window, index, sizeof(LONG_PTR));
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value)
{
    return setLong(window, index, value, sizeof(LONG_PTR));
}

LONG GetWindowLongA(HWND window, int index) noexcept
{
    return static_cast<LONG>(getLong(window, index, sizeof(LONG)));
}

LONG SetWindowLongA(HWND window, int index, LONG value)
{
    return static_cast<LONG>(setLong(window, index, value, sizeof(LONG)));
}

BOOL SetWindowTextA(HWND window, LPCSTR text)
{
    if (!WindowTable().require(window))
        return FALSE;
    return SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int GetWindowTextA(HWND window, LPSTR text, int room)
{
    if (!text || room <= 0)
        return 0;
    *text = '\0';
    if (!WindowTable().require(window))
        return 0;
    return static_cast<int>(
        SendMessageA(window, WM_GETTEXT, static_cast<WPARAM>(room), reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextLengthA(HWND window)
{
    return static_cast<int>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0));
}

BOOL ShowWindow(HWND window, int how)
{
    bool const show = how != SW_HIDE;
    {
        WindowTable const table;
        Window const* const record = table.require(window);
        if (!record)
            return FALSE;
        bool const isShown = (record->style & WS_VISIBLE) != 0;
        if (isShown == show && how != SW_SHOWNA)
            return isShown;
    }
    SendMessageA(window, WM_SHOWWINDOW, show, 0);
    int const wasShown = exchangeStyleBit(window, WS_VISIBLE, show);
    if (show)
        tellFirstSize(window);
    return wasShown == 1;
}

BOOL IsWindowVisible(HWND handle) noexcept
{
    WindowTable const table;
    Window const* window = table.require(handle);
    while (window && (window->style & WS_VISIBLE) && !window->isMessageOnly) {
        if (!window->parent)
            return TRUE;
        window = table.find(window->parent);
    }
    return FALSE;
}

BOOL EnableWindow(HWND window, BOOL enable)
{
    if (!WindowTable().require(window))
        return FALSE;
    if (!enable)
        SendMessageA(window, WM_CANCELMODE, 0, 0);
    int const wasDisabled = exchangeStyleBit(window, WS_DISABLED, !enable);
    if (wasDisabled >= 0 && (wasDisabled != 0) != !enable)
        SendMessageA(window, WM_ENABLE, enable != FALSE, 0);
    return wasDisabled == 1;
}

BOOL IsWindowEnabled(HWND handle) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    return window && !(window->style & WS_DISABLED);
}

HWND SetFocus(HWND window)
{
    ThreadQueue& queue = *ownQueue();
    if (window) {
        WindowTable const table;
        Window const* const record = table.require(window);
        if (!record)
            return nullptr;
        if (record->queue.get() != &queue) {
            SetLastError(ERROR_ACCESS_DENIED);
            return nullptr;
        }
        if (record->style & WS_DISABLED)
            return nullptr;
    }
    HWND const previous = queue.focus;
    if (previous == window)
        return previous;
    queue.focus = window;
    if (previous && IsWindow(previous))
        callWindow(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    if (window && queue.focus == window)
        callWindow(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
    return previous;
}

HWND GetFocus() noexcept
{
    ThreadQueue const* const queue = ownQueueIfAny();
    return queue ? queue->focus : nullptr;
}

DWORD GetWindowThreadProcessId(HWND handle, LPDWORD process) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return 0;
    if (process)
        *process = static_cast<DWORD>(getpid());
    return window->queue->thread();
}

HWND GetParent(HWND handle) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return nullptr;
    return window->style & WS_CHILD ? window->parent : window->style & WS_POPUP ? window->owner : nullptr;
}

HWND SetParent(HWND handle, HWND parent) noexcept
{
    WindowTable table;
    Window* const window = table.require(handle);
    bool const isReal = parent && parent != HWND_MESSAGE;
    if (!window || (isReal && !table.require(parent)))
        return nullptr;
    if (isReal && (parent == handle || table.isBelow(parent, handle))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HWND const previous = window->parent;
    try {
        table.moveTo(*window, parent, true);
    } catch (std::bad_alloc const&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return previous;
}

BOOL IsChild(HWND parent, HWND handle) noexcept
{
    WindowTable const table;
    return table.require(parent) && table.require(handle) && table.isBelow(handle, parent);
}

HWND GetWindow(HWND handle, UINT which) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return nullptr;
    std::vector<HWND> const& order = table.siblings(*window);
    auto const place = std::find(order.begin(), order.end(), handle);
    switch (which) {
    case GW_CHILD: return window->children.empty() ? nullptr : window->children.front();
    case GW_OWNER: return window->owner;
    case GW_HWNDFIRST: return order.front();
    case GW_HWNDLAST: return order.back();
    case GW_HWNDNEXT: return place + 1 == order.end() ? nullptr : *(place + 1);
    case GW_HWNDPREV: return place == order.begin() ? nullptr : *(place - 1);
    default: return nullptr;
    }
}

HWND GetDlgItem(HWND parent, int id) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(parent);
    if (!window)
        return nullptr;
    for (HWND const child : window->children) {
        Window const* const record = table.find(child);
        if (record && static_cast<int>(record->id) == id)
            return child;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int GetDlgCtrlID(HWND handle) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    return window ? static_cast<int>(window->id) : 0;
}
