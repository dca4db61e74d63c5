#include "platform/os/posix/controls.h"

#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/windowTable.h"
#include "platform/os/posix/windows.h"

#include <algorithm>

namespace zk::os {
namespace {

// What a button's messages need of its record, copied so that no lock is held.
struct ButtonState {
    DWORD kind = BS_PUSHBUTTON;
    int check = BST_UNCHECKED;  // with BST_PUSHED
    HWND parent = nullptr;
};

ButtonState stateOf(HWND handle)
{
    WindowTable const table;
    Window const* const window = table.find(handle);
    return window ? ButtonState{window->style & BS_TYPEMASK, window->check, window->parent} : ButtonState{};
}

// Tells the parent that something happened to one of its controls.
void notifyParent(HWND handle, int what)
{
    HWND parent = nullptr;
    LONG_PTR id = 0;
    {
        WindowTable const table;
        if (Window const* const window = table.find(handle)) {
            parent = window->parent;
            id = window->id;
        }
    }
    if (parent)
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(id, what), reinterpret_cast<LPARAM>(handle));
}

int greatestCheck(DWORD kind) noexcept
{
    switch (kind) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: return BST_CHECKED;
    case BS_3STATE:
    case BS_AUTO3STATE: return BST_INDETERMINATE;
    default: return BST_UNCHECKED;
    }
}

void setCheck(HWND handle, WPARAM check)
{
    WindowTable const table;
    if (Window* const window = table.find(handle)) {
        auto const greatest = static_cast<WPARAM>(greatestCheck(window->style & BS_TYPEMASK));
        int const pushed = window->check & static_cast<int>(BST_PUSHED);
        window->check = static_cast<int>(std::min(check, greatest)) | pushed;
    }
}

// The other radio buttons of the group: its members stand behind one with
// WS_GROUP, up to the next one with it.
void clearGroupOf(HWND handle)
{
    WindowTable const table;
    Window const* const own = table.find(handle);
    if (!own)
        return;
    std::vector<HWND> const& all = table.siblings(*own);
    auto const startsGroup = [&](HWND sibling) {
        Window const* const window = table.find(sibling);
        return window && (window->style & WS_GROUP) != 0;
    };
    auto const place = std::find(all.begin(), all.end(), handle);
    auto first = place;
    while (first != all.begin() && !startsGroup(*first))
        --first;
    auto const last = std::find_if(place + 1, all.end(), startsGroup);
    for (auto member = first; member != last; ++member) {
        Window* const window = table.find(*member);
        bool const isUsable = window && (window->style & WS_VISIBLE) && !(window->style & WS_DISABLED);
        if (member != place && isUsable && (window->style & BS_TYPEMASK) == BS_AUTORADIOBUTTON &&
            window->windowClass == own->windowClass)
            window->check = BST_UNCHECKED;
    }
}

void click(HWND handle)
{
    ButtonState const state = stateOf(handle);
    auto const check = static_cast<WPARAM>(state.check) & ~WPARAM(BST_PUSHED);
    switch (state.kind) {
    case BS_AUTOCHECKBOX: setCheck(handle, check ? BST_UNCHECKED : BST_CHECKED); break;
    case BS_AUTO3STATE: setCheck(handle, check == BST_INDETERMINATE ? BST_UNCHECKED : check + 1); break;
    case BS_AUTORADIOBUTTON:
        setCheck(handle, BST_CHECKED);
        clearGroupOf(handle);
        break;
    default: break;
    }
    notifyParent(handle, BN_CLICKED);
}

LRESULT dialogCode(DWORD kind) noexcept
{
    switch (kind) {
    case BS_PUSHBUTTON: return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON: return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX: return DLGC_STATIC;
    default: return DLGC_BUTTON;
    }
}

LRESULT CALLBACK buttonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case BM_GETCHECK: return stateOf(handle).check & ~static_cast<int>(BST_PUSHED);
    case BM_GETSTATE: return stateOf(handle).check;
    case BM_SETCHECK: setCheck(handle, wParam); return 0;
    case BM_SETSTATE: {
        WindowTable const table;
        if (Window* const window = table.find(handle)) {
            auto const pushed = static_cast<int>(BST_PUSHED);
            window->check = wParam ? window->check | pushed : window->check & ~pushed;
        }
        return 0;
    }
    case BM_SETSTYLE: {
        WindowTable const table;
        if (Window* const window = table.find(handle))
            window->style = (window->style & ~BS_TYPEMASK) | (static_cast<DWORD>(wParam) & BS_TYPEMASK);
        return 0;
    }
    case BM_CLICK: click(handle); return 0;
    case WM_GETDLGCODE: return dialogCode(stateOf(handle).kind);
    default: return DefWindowProcA(handle, message, wParam, lParam);
    }
}

LRESULT CALLBACK editProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SETTEXT: {
        LRESULT const result = DefWindowProcA(handle, message, wParam, lParam);
        bool const isSingleLine = (GetWindowLongA(handle, GWL_STYLE) & static_cast<LONG>(ES_MULTILINE)) == 0;
        if (isSingleLine) {
            notifyParent(handle, EN_UPDATE);
            notifyParent(handle, EN_CHANGE);
        }
        return result;
    }
    case WM_SETFOCUS: notifyParent(handle, EN_SETFOCUS); return 0;
    case WM_KILLFOCUS: notifyParent(handle, EN_KILLFOCUS); return 0;
    default: return DefWindowProcA(handle, message, wParam, lParam);
    }
}

LRESULT CALLBACK staticProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefWindowProcA(handle, message, wParam, lParam);
}

}  // namespace

std::array<Control, 3> const& controls() noexcept
{
    static constexpr std::array<Control, 3> all = {{
        {"Button", buttonProcedure},
        {"Edit", editProcedure},
        {"Static", staticProcedure},
    }};
    return all;
}

}  // namespace zk::os

BOOL CheckDlgButton(HWND parent, int id, UINT check)
{
    HWND const control = GetDlgItem(parent, id);
    if (!control)
        return FALSE;
    SendMessageA(control, BM_SETCHECK, check, 0);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND parent, int id)
{
    HWND const control = GetDlgItem(parent, id);
    return control ? static_cast<UINT>(SendMessageA(control, BM_GETCHECK, 0, 0)) : 0;
}

BOOL SetDlgItemTextA(HWND parent, int id, LPCSTR text)
{
    HWND const control = GetDlgItem(parent, id);
    return control && SetWindowTextA(control, text);
}

UINT GetDlgItemTextA(HWND parent, int id, LPSTR text, int room)
{
    HWND const control = GetDlgItem(parent, id);
    if (!control && text && room > 0)
        *text = '\0';
    return control ? static_cast<UINT>(GetWindowTextA(control, text, room)) : 0;
}

LRESULT SendDlgItemMessageA(HWND parent, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND const control = GetDlgItem(parent, id);
    return control ? SendMessageA(control, message, wParam, lParam) : 0;
}
