// Making and ending windows.
#include "platform/os/posix/coordinates.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/threadQueue.h"
#include "platform/os/posix/windowTable.h"
#include "platform/os/posix/windows.h"

#include <algorithm>
#include <utility>

namespace zk::os {
namespace {

int orZero(int value) noexcept
{
    return value == CW_USEDEFAULT ? 0 : value;
}

bool hasSizeLimits(DWORD style) noexcept
{
    return (style & WS_THICKFRAME) != 0 || (style & (WS_POPUP | WS_CHILD)) == 0;
}

// Tells a child's parent of the child's beginning or end.
void notifyParentOf(HWND handle, UINT event)
{
    HWND parent = nullptr;
    LONG_PTR id = 0;
    {
        WindowTable const table;
        Window const* const window = table.find(handle);
        if (window && (window->style & WS_CHILD) && !(window->exStyle & WS_EX_NOPARENTNOTIFY)) {
            parent = window->parent;
            id = window->id;
        }
    }
    if (parent)
        SendMessageA(parent, WM_PARENTNOTIFY, MAKEWPARAM(event, id), reinterpret_cast<LPARAM>(handle));
}

// Makes the record of a window from its description.
DWORD addRecord(CREATESTRUCTA const& description, std::shared_ptr<WindowClass> const& windowClass,
                HWND& handle)
{
    bool const isChild = (description.style & static_cast<LONG>(WS_CHILD)) != 0;
    bool const isMessageOnly = description.hwndParent == HWND_MESSAGE;
    auto const queue = ownQueue();
    WindowTable table;
    if (description.hwndParent && !isMessageOnly && !table.find(description.hwndParent))
        return ERROR_INVALID_WINDOW_HANDLE;
    std::vector<std::byte> extra(static_cast<std::size_t>(windowClass->extraBytes));
    Window* const window = table.add(isMessageOnly || isChild ? description.hwndParent : nullptr, !isChild);
    if (!window)
        return ERROR_NOT_ENOUGH_MEMORY;
    window->queue = queue;
    window->windowClass = windowClass;
    ++windowClass->windows;
    window->procedure = windowClass->procedure;
    window->instance = description.hInstance;
    window->style = static_cast<DWORD>(description.style);
    window->exStyle = description.dwExStyle;
    window->place = {description.x, description.y, clampedSum(description.x, std::max(description.cx, 0)),
                     clampedSum(description.y, std::max(description.cy, 0))};
    window->owner = isChild || isMessageOnly ? nullptr : description.hwndParent;
    window->id = isChild ? reinterpret_cast<LONG_PTR>(description.hMenu) : 0;
    window->extra = std::move(extra);
    window->needsSize = (window->style & (WS_CHILD | WS_POPUP)) == 0;
    handle = window->handle;
    return ERROR_SUCCESS;
}

// Takes the window away without WM_DESTROY: its procedure refused it.
void withdraw(HWND handle)
{
    callWindow(handle, WM_NCDESTROY, 0, 0);
    WindowTable table;
    if (Window* const window = table.find(handle)) {
        --window->windowClass->windows;
        table.remove(handle);
    }
}

// The messages of a window's beginning; false if it was refused.
bool begin(HWND handle, CREATESTRUCTA& description)
{
    auto const style = static_cast<DWORD>(description.style);
    auto const parameter = reinterpret_cast<LPARAM>(&description);
    if (hasSizeLimits(style)) {
        MINMAXINFO limits{};
        callWindow(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    }
    if (!callWindow(handle, WM_NCCREATE, 0, parameter)) {
        PreserveLastError const kept;
        withdraw(handle);
        return false;
    }
    RECT area{description.x, description.y, clampedSum(description.x, description.cx),
              clampedSum(description.y, description.cy)};
    callWindow(handle, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&area));
    if (callWindow(handle, WM_CREATE, 0, parameter) == -1) {
        PreserveLastError const kept;
        withdraw(handle);
        return false;
    }
    if (!IsWindow(handle))
        return false;
    if (style & (WS_CHILD | WS_POPUP)) {
        callWindow(handle, WM_SIZE, SIZE_RESTORED,
                   MAKELPARAM(std::max(description.cx, 0), std::max(description.cy, 0)));
        callWindow(handle, WM_MOVE, 0, MAKELPARAM(description.x, description.y));
    }
    notifyParentOf(handle, WM_CREATE);
    if (style & WS_VISIBLE) {
        callWindow(handle, WM_SHOWWINDOW, TRUE, 0);
        tellFirstSize(handle);
    }
    return IsWindow(handle) != FALSE;
}

// Hides a window that is about to end, so that it goes the way of one that was never shown.
void hide(HWND handle)
{
    bool wasShown = false;
    {
        WindowTable const table;
        if (Window* const window = table.find(handle)) {
            wasShown = (window->style & WS_VISIBLE) != 0;
            window->style &= ~WS_VISIBLE;
        }
    }
    if (wasShown)
        callWindow(handle, WM_SHOWWINDOW, FALSE, 0);
}

// All windows that end with one: itself, those below it, each before those below that.
std::vector<HWND> family(HWND handle)
{
    WindowTable const table;
    std::vector<HWND> members;
    if (Window const* const window = table.find(handle)) {
        members = table.descendants(*window);
        members.insert(members.begin(), handle);
    }
    return members;
}

std::vector<HWND> ownedBy(HWND handle)
{
    WindowTable const table;
    std::vector<HWND> owned;
    for (HWND const other : table.ofThread(*ownQueue())) {
        Window const* const window = table.find(other);
        if (window && window->owner == handle)
            owned.push_back(other);
    }
    return owned;
}

// Ends one window and those below it; a member of another thread is told by a sent message.
void end(HWND handle)
{
    {
        WindowTable const table;
        Window* const window = table.find(handle);
        if (!window || std::exchange(window->isEnding, true))
            return;
    }
    notifyParentOf(handle, WM_DESTROY);
    hide(handle);
    for (HWND const member : family(handle))
        SendMessageA(member, WM_DESTROY, 0, 0);
    auto members = family(handle);  // anew: a procedure may have ended some
    std::for_each(members.rbegin(), members.rend(), [](HWND member) {
        if (!IsWindow(member))
            return;
        SendMessageA(member, WM_NCDESTROY, 0, 0);
        std::shared_ptr<ThreadQueue> queue;
        {
            WindowTable table;
            Window* const window = table.find(member);
            if (!window)
                return;
            queue = window->queue;
            --window->windowClass->windows;
            table.remove(member);
        }
        queue->forget(member);
        if (queue == ownQueue() && queue->focus == member)
            queue->focus = nullptr;
    });
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR text, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter)
{
    auto const windowClass = className ? findWindowClass(className) : nullptr;
    if (!windowClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    if ((style & WS_CHILD) && !parent) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    CREATESTRUCTA description{parameter, instance,       menu,
                              parent,    orZero(height), orZero(width),
                              orZero(y), orZero(x),      static_cast<LONG>(style),
                              text,      className,      exStyle};
    HWND handle = nullptr;
    if (!report(addRecord(description, windowClass, handle)))
        return nullptr;
    return begin(handle, description) ? handle : nullptr;
}

BOOL DestroyWindow(HWND handle)
{
    {
        WindowTable const table;
        Window const* const window = table.require(handle);
        if (!window)
            return FALSE;
        if (window->queue->thread() != ownThread())
            return report(ERROR_ACCESS_DENIED);
        if (window->isEnding)
            return TRUE;
    }
    // Those that the window owns end first, and before each of them those that it owns.
    std::vector<HWND> ending{handle};
    for (std::size_t i = 0; i < ending.size(); ++i) {
        for (HWND const owned : ownedBy(ending[i])) {
            if (std::find(ending.begin(), ending.end(), owned) == ending.end())
                ending.push_back(owned);
        }
    }
    std::for_each(ending.rbegin(), ending.rend(), [](HWND member) {
        if (IsWindow(member))
            end(member);
    });
    return TRUE;
}

BOOL IsWindow(HWND handle) noexcept
{
    if (!handle)
        return FALSE;
    return WindowTable().require(handle) != nullptr;
}
