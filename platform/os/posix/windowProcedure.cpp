// What a window does with the messages that its procedure does not care for.
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/windowTable.h"
#include "platform/os/posix/windows.h"

#include <algorithm>
#include <string>

namespace zk::os {
namespace {

bool setText(HWND handle, char const* text)
{
    std::string copy(text ? text : "");
    WindowTable const table;
    Window* const window = table.require(handle);
    if (window)
        window->text = std::move(copy);
    return window != nullptr;
}

LRESULT copyText(HWND handle, WPARAM room, char* text)
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    if (!window || room == 0)
        return 0;
    std::size_t const length = window->text.copy(text, room - 1);
    text[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT textLength(HWND handle)
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    return window ? static_cast<LRESULT>(window->text.size()) : 0;
}

// Holds a size within the limits that the window tells, if it has a frame for sizing.
void limitSize(HWND handle, WINDOWPOS& position)
{
    auto const style = static_cast<DWORD>(GetWindowLongA(handle, GWL_STYLE));
    bool const hasLimits = (style & WS_THICKFRAME) != 0 || (style & (WS_POPUP | WS_CHILD)) == 0;
    if ((position.flags & SWP_NOSIZE) || !hasLimits)
        return;
    constexpr LONG farAway = 0x7FFF;
    MINMAXINFO limits{};
    limits.ptMaxSize = limits.ptMaxTrackSize = {farAway, farAway};
    SendMessageA(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    auto const within = [](int value, LONG least, LONG most) {
        return std::max<int>(std::min<int>(value, most), least);
    };
    position.cx = within(position.cx, limits.ptMinTrackSize.x, limits.ptMaxTrackSize.x);
    position.cy = within(position.cy, limits.ptMinTrackSize.y, limits.ptMaxTrackSize.y);
}

void tellOfChange(HWND handle, WINDOWPOS const& position)
{
    if (!(position.flags & SWP_NOMOVE))
        SendMessageA(handle, WM_MOVE, 0, MAKELPARAM(position.x, position.y));
    if (!(position.flags & SWP_NOSIZE))
        SendMessageA(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(position.cx, position.cy));
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

LRESULT DefWindowProcA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCCREATE: return setText(handle, reinterpret_cast<CREATESTRUCTA const*>(lParam)->lpszName);
    case WM_SETTEXT: return setText(handle, reinterpret_cast<char const*>(lParam));
    case WM_GETTEXT: return copyText(handle, wParam, reinterpret_cast<char*>(lParam));
    case WM_GETTEXTLENGTH: return textLength(handle);
    case WM_CLOSE: DestroyWindow(handle); return 0;
    case WM_WINDOWPOSCHANGING: limitSize(handle, *reinterpret_cast<WINDOWPOS*>(lParam)); return 0;
    case WM_WINDOWPOSCHANGED: tellOfChange(handle, *reinterpret_cast<WINDOWPOS const*>(lParam)); return 0;
    default: return 0;
    }
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return procedure ? procedure(window, message, wParam, lParam) : 0;
}
