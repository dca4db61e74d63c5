#include "platform/os/posix/windowPlaces.h"

#include "platform/os/posix/coordinates.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/windowTable.h"
#include "platform/os/posix/windows.h"

#include <algorithm>

namespace zk::os {
namespace {

LONG widthOf(RECT const& place) noexcept
{
    return clampedDifference(place.right, place.left);
}

LONG heightOf(RECT const& place) noexcept
{
    return clampedDifference(place.bottom, place.top);
}

// Puts a window behind another one among its siblings. False for one that is none of them.
bool reorder(WindowTable const& table, Window const& window, HWND behind)
{
    std::vector<HWND>& order = table.siblings(window);
    if (behind == window.handle)
        return true;
    auto const own = std::find(order.begin(), order.end(), window.handle);
    if (behind == HWND_TOP || behind == HWND_TOPMOST || behind == HWND_NOTOPMOST) {
        std::rotate(order.begin(), own, own + 1);
        return true;
    }
    if (behind == HWND_BOTTOM) {
        std::rotate(own, own + 1, order.end());
        return true;
    }
    auto const other = std::find(order.begin(), order.end(), behind);
    if (other == order.end())
        return false;
    if (other < own)
        std::rotate(other + 1, own, own + 1);
    else
        std::rotate(own, own + 1, other + 1);
    return true;
}

// Does what a position asks for, and marks in it what changed nothing.
DWORD apply(WINDOWPOS& position)
{
    WindowTable const table;
    Window* const window = table.find(position.hwnd);
    if (!window)
        return ERROR_INVALID_WINDOW_HANDLE;
    if (!(position.flags & SWP_NOZORDER) && !reorder(table, *window, position.hwndInsertAfter))
        return ERROR_INVALID_WINDOW_HANDLE;
    RECT place = window->place;
    if (!(position.flags & SWP_NOMOVE)) {
        place.left = position.x;
        place.top = position.y;
    }
    LONG const width = position.flags & SWP_NOSIZE ? widthOf(window->place) : std::max(position.cx, 0);
    LONG const height = position.flags & SWP_NOSIZE ? heightOf(window->place) : std::max(position.cy, 0);
    place.right = clampedSum(place.left, width);
    place.bottom = clampedSum(place.top, height);
    if (place.left == window->place.left && place.top == window->place.top)
        position.flags |= SWP_NOMOVE;
    if (width == widthOf(window->place) && height == heightOf(window->place))
        position.flags |= SWP_NOSIZE;
    window->place = place;
    position.x = place.left;
    position.y = place.top;
    position.cx = width;
    position.cy = height;
    return ERROR_SUCCESS;
}

bool changesShow(HWND handle, UINT flags)
{
    WindowTable const table;
    Window const* const window = table.find(handle);
    bool const isShown = window && (window->style & WS_VISIBLE);
    return (flags & SWP_SHOWWINDOW && !isShown) || (flags & SWP_HIDEWINDOW && isShown);
}

void setShown(HWND handle, bool shown)
{
    WindowTable const table;
    if (Window* const window = table.find(handle))
        window->style = shown ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
}

// The distance between the origins of two client areas; null is the screen.
bool distanceBetween(HWND from, HWND to, POINT& distance) noexcept
{
    WindowTable const table;
    distance = {0, 0};
    if (from) {
        Window const* const window = table.require(from);
        if (!window)
            return false;
        distance = table.origin(*window);
    }
    if (to) {
        Window const* const window = table.require(to);
        if (!window)
            return false;
        POINT const origin = table.origin(*window);
        distance.x = wrappedDifference(distance.x, origin.x);
        distance.y = wrappedDifference(distance.y, origin.y);
    }
    return true;
}

BOOL convert(HWND from, HWND to, POINT& point) noexcept
{
    POINT distance;
    if (!distanceBetween(from, to, distance))
        return FALSE;
    point.x = wrappedSum(point.x, distance.x);
    point.y = wrappedSum(point.y, distance.y);
    return TRUE;
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

BOOL SetWindowPos(HWND handle, HWND insertAfter, int x, int y, int width, int height, UINT flags)
{
    if (!WindowTable().require(handle))
        return FALSE;
    // What a call may ask for; a window's procedure, and its creator, may go beyond.
    constexpr int least = -32768, most = 32767;
    WINDOWPOS position{handle, insertAfter, x, y, width, height, flags};
    if (!(flags & SWP_NOMOVE)) {
        position.x = std::clamp(x, least, most);
        position.y = std::clamp(y, least, most);
    }
    if (!(flags & SWP_NOSIZE)) {
        position.cx = std::clamp(width, 0, most);
        position.cy = std::clamp(height, 0, most);
    }
    auto const parameter = reinterpret_cast<LPARAM>(&position);
    SendMessageA(handle, WM_WINDOWPOSCHANGING, 0, parameter);
    bool const shows = changesShow(handle, position.flags);
    if (shows)
        SendMessageA(handle, WM_SHOWWINDOW, (position.flags & SWP_SHOWWINDOW) != 0, 0);
    if (DWORD const error = apply(position); error != ERROR_SUCCESS)
        return report(error);
    if (shows)
        setShown(handle, (position.flags & SWP_SHOWWINDOW) != 0);
    constexpr UINT nothing = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
    if (shows || (position.flags & nothing) != nothing || (position.flags & SWP_FRAMECHANGED))
        SendMessageA(handle, WM_WINDOWPOSCHANGED, 0, parameter);
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL)
{
    return SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL GetWindowRect(HWND handle, LPRECT place) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return FALSE;
    POINT const origin = table.origin(*window);
    *place = {origin.x, origin.y, clampedSum(origin.x, widthOf(window->place)),
              clampedSum(origin.y, heightOf(window->place))};
    return TRUE;
}

BOOL GetClientRect(HWND handle, LPRECT place) noexcept
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window)
        return FALSE;
    *place = {0, 0, widthOf(window->place), heightOf(window->place)};
    return TRUE;
}

BOOL ClientToScreen(HWND window, LPPOINT point) noexcept
{
    return window ? convert(window, nullptr, *point) : report(ERROR_INVALID_WINDOW_HANDLE);
}

BOOL ScreenToClient(HWND window, LPPOINT point) noexcept
{
    return window ? convert(nullptr, window, *point) : report(ERROR_INVALID_WINDOW_HANDLE);
}

int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) noexcept
{
    POINT distance;
    if (!distanceBetween(from, to, distance))
        return 0;
    for (UINT i = 0; i < count; ++i) {
        points[i].x = wrappedSum(points[i].x, distance.x);
        points[i].y = wrappedSum(points[i].y, distance.y);
    }
    return static_cast<int>(MAKELONG(distance.x, distance.y));
}
