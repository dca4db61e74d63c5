#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;

auto const nowhere = reinterpret_cast<HWND>(std::uintptr_t(0x1234));

struct Seen {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

std::vector<Seen> seen;
UINT refused = 0;        // the message that the procedure answers with "no"
LONG_PTR parameter = 0;  // CreateWindowExA's, as WM_NCCREATE told it
POINT leastSize{};       // the answer to WM_GETMINMAXINFO

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    seen.push_back({window, message, wParam, lParam});
    if (message == refused)
        return message == WM_CREATE ? -1 : 0;
    if (message == WM_NCCREATE)
        parameter = reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
    if (message == WM_GETMINMAXINFO && leastSize.x)
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = leastSize;
    return DefWindowProcA(window, message, wParam, lParam);
}

class Windows : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        WNDCLASSEXA description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = procedure;
        description.cbWndExtra = 16;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = "ZkWindowsTest";
        RegisterClassExA(&description);
    }

    Windows() : main_(make(WS_POPUP, nullptr, 0, {100, 50, 300, 200})) { seen.clear(); }

    ~Windows() override
    {
        refused = 0;
        leastSize = {};
        if (IsWindow(main_))
            DestroyWindow(main_);
    }

    struct Place {
        int x, y, width, height;
    };

    static HWND make(DWORD style, HWND parent, int id = 0, Place place = {10, 20, 30, 40},
                     char const* name = "ZkWindowsTest")
    {
        auto const menu = reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id));
        HWND const window =
            CreateWindowExA(0, name, "text", style, place.x, place.y, place.width, place.height, parent, menu,
                            GetModuleHandleA(nullptr), reinterpret_cast<void*>(LONG_PTR(7)));
        return window;
    }

    HWND makeChild(int id = 0, DWORD style = 0) const { return make(WS_CHILD | style, main_, id); }

    // The messages among `wanted` that came, in order.
    static std::vector<UINT> came(std::vector<UINT> const& wanted)
    {
        std::vector<UINT> numbers;
        for (Seen const& message : seen) {
            if (std::find(wanted.begin(), wanted.end(), message.message) != wanted.end())
                numbers.push_back(message.message);
        }
        return numbers;
    }

    static std::string textOf(HWND window)
    {
        char text[64];
        int const length = GetWindowTextA(window, text, sizeof text);
        return {text, static_cast<std::size_t>(length)};
    }

    static std::vector<LONG> placeOf(HWND window)
    {
        RECT place;
        EXPECT_TRUE(GetWindowRect(window, &place));
        return {place.left, place.top, place.right, place.bottom};
    }

    HWND const main_;
};

using WindowClasses = Windows;
using WindowTexts = Windows;
using WindowValues = Windows;
using WindowPlaces = Windows;
using WindowFamilies = Windows;

}  // namespace

TEST_F(WindowClasses, areRegisteredOnce)
{
    WNDCLASSEXA description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.lpszClassName = "ZKWINDOWStest";
    description.hInstance = GetModuleHandleA(nullptr);
    EXPECT_FAILS(RegisterClassExA(&description), ERROR_CLASS_ALREADY_EXISTS);

    description.cbSize = 3;
    description.lpszClassName = "ZkOther";
    EXPECT_FAILS(RegisterClassExA(&description), ERROR_INVALID_PARAMETER);
}

TEST_F(WindowClasses, areTakenAwayWhenNoWindowIsLeft)
{
    WNDCLASSA description{};
    description.lpfnWndProc = procedure;
    description.lpszClassName = "ZkOther";
    description.hInstance = GetModuleHandleA(nullptr);
    ATOM const atom = RegisterClassA(&description);
    ASSERT_NE(atom, 0);
    HWND const window = make(WS_POPUP, nullptr, 0, {}, MAKEINTATOM(atom));
    ASSERT_NE(window, nullptr);

    EXPECT_FAILS(UnregisterClassA("ZkOther", GetModuleHandleA(nullptr)), ERROR_CLASS_HAS_WINDOWS);
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClassA("zkother", GetModuleHandleA(nullptr)));
    EXPECT_FAILS(UnregisterClassA("ZkOther", GetModuleHandleA(nullptr)), ERROR_CLASS_DOES_NOT_EXIST);
}

TEST_F(WindowClasses, tellTheirNames)
{
    char name[] = "xxxxxxxxxxxxxxx";

    EXPECT_EQ(GetClassNameA(main_, name, sizeof name), 13);
    EXPECT_STREQ(name, "ZkWindowsTest");
    EXPECT_EQ(GetClassNameA(main_, name, 4), 3);
    EXPECT_STREQ(name, "ZkW");
    EXPECT_EQ(GetClassNameA(nowhere, name, 4), 0);
}

TEST_F(Windows, areMadeWithMessages)
{
    HWND const window = make(WS_POPUP, HWND_MESSAGE);

    EXPECT_NE(window, nullptr);
    EXPECT_THAT(came({WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW}),
                ElementsAre(WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE, WM_MOVE));
    EXPECT_EQ(parameter, 7);
    EXPECT_EQ(textOf(window), "text");
    DestroyWindow(window);
}

TEST_F(Windows, hearOfTheirSizeWhenFirstShownIfOverlapped)
{
    std::vector<UINT> const wanted{WM_GETMINMAXINFO, WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW};
    HWND const window = make(0, HWND_MESSAGE);
    EXPECT_THAT(came(wanted), ElementsAre(WM_GETMINMAXINFO, WM_NCCREATE, WM_CREATE));
    seen.clear();

    ShowWindow(window, SW_SHOW);
    EXPECT_THAT(came(wanted), ElementsAre(WM_SHOWWINDOW, WM_SIZE, WM_MOVE));
    seen.clear();
    ShowWindow(window, SW_HIDE);
    ShowWindow(window, SW_SHOW);
    EXPECT_THAT(came(wanted), ElementsAre(WM_SHOWWINDOW, WM_SHOWWINDOW));
    EXPECT_FALSE(IsWindowVisible(window));
    DestroyWindow(window);
}

TEST_F(Windows, areMadeAsChildrenWithMessagesToTheParent)
{
    HWND const child = makeChild(5, WS_VISIBLE);

    EXPECT_NE(child, nullptr);
    EXPECT_THAT(came({WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_PARENTNOTIFY, WM_SHOWWINDOW}),
                ElementsAre(WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_PARENTNOTIFY, WM_SHOWWINDOW));
    auto const told =
        std::find_if(seen.begin(), seen.end(), [](Seen const& s) { return s.message == WM_PARENTNOTIFY; });
    EXPECT_EQ(told->window, main_);
    EXPECT_EQ(told->wParam, MAKEWPARAM(WM_CREATE, 5));
    EXPECT_EQ(told->lParam, reinterpret_cast<LPARAM>(child));
}

TEST_F(Windows, areNotMadeWhenTheirProcedureRefuses)
{
    refused = WM_NCCREATE;
    EXPECT_EQ(make(0, HWND_MESSAGE), nullptr);
    EXPECT_THAT(came({WM_NCCREATE, WM_CREATE, WM_DESTROY, WM_NCDESTROY}),
                ElementsAre(WM_NCCREATE, WM_NCDESTROY));

    seen.clear();
    refused = WM_CREATE;
    EXPECT_EQ(make(0, HWND_MESSAGE), nullptr);
    EXPECT_THAT(came({WM_NCCREATE, WM_CREATE, WM_DESTROY, WM_NCDESTROY}),
                ElementsAre(WM_NCCREATE, WM_CREATE, WM_NCDESTROY));
    EXPECT_FALSE(IsWindow(seen.back().window));
}

TEST_F(Windows, areNotMadeOfNothing)
{
    EXPECT_EQ(make(WS_POPUP, nullptr, 0, {}, "ZkNoSuchClass"), nullptr);
    EXPECT_FAILS(make(WS_CHILD, nullptr), ERROR_TLW_WITH_WSCHILD);
    EXPECT_FAILS(make(WS_CHILD, nowhere), ERROR_INVALID_WINDOW_HANDLE);
}

TEST_F(Windows, areDestroyedFromTheTopAndEndFromTheBottom)
{
    HWND const child = makeChild();
    HWND const grandchild = make(WS_CHILD, child);
    seen.clear();

    EXPECT_TRUE(DestroyWindow(main_));

    std::vector<HWND> destroyed;
    std::vector<HWND> ended;
    for (Seen const& message : seen) {
        if (message.message == WM_DESTROY)
            destroyed.push_back(message.window);
        if (message.message == WM_NCDESTROY)
            ended.push_back(message.window);
    }
    EXPECT_THAT(destroyed, ElementsAre(main_, child, grandchild));
    EXPECT_THAT(ended, ElementsAre(grandchild, child, main_));
    EXPECT_FALSE(IsWindow(main_) || IsWindow(child) || IsWindow(grandchild));
    EXPECT_FALSE(DestroyWindow(main_));
}

TEST_F(Windows, areDestroyedWithTheirOwner)
{
    HWND const owned = make(WS_POPUP, main_);
    EXPECT_EQ(GetWindow(owned, GW_OWNER), main_);
    EXPECT_EQ(GetParent(owned), main_);

    DestroyWindow(main_);

    EXPECT_FALSE(IsWindow(owned));
}

TEST_F(Windows, areDestroyedByTheirOwnThreadAlone)
{
    std::thread([this] { EXPECT_FAILS(DestroyWindow(main_), ERROR_ACCESS_DENIED); }).join();

    EXPECT_TRUE(IsWindow(main_));
}

TEST_F(Windows, areDestroyedOnClose)
{
    SendMessageA(main_, WM_CLOSE, 0, 0);

    EXPECT_FALSE(IsWindow(main_));
    EXPECT_THAT(came({WM_CLOSE, WM_DESTROY, WM_NCDESTROY}), ElementsAre(WM_CLOSE, WM_DESTROY, WM_NCDESTROY));
}

TEST_F(Windows, areKnownByValidHandlesAlone)
{
    RECT place;
    POINT point{};
    HWND const gone = makeChild();
    DestroyWindow(gone);

    EXPECT_FALSE(IsWindow(nullptr));
    for (HWND const window : {nowhere, gone}) {
        EXPECT_FAILS(IsWindow(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetWindowRect(window, &place), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetClientRect(window, &place), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(ClientToScreen(window, &point), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(ScreenToClient(window, &point), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(MapWindowPoints(window, nullptr, &point, 1), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(MoveWindow(window, 0, 0, 0, 0, FALSE), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetWindowPos(window, nullptr, 0, 0, 0, 0, 0), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(ShowWindow(window, SW_SHOW), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(EnableWindow(window, TRUE), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(IsWindowVisible(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(IsWindowEnabled(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetWindowLongPtrA(window, GWLP_USERDATA), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetWindowLongPtrA(window, GWLP_USERDATA, 0), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetWindowTextA(window, ""), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetWindowTextLengthA(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetParent(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetParent(window, main_), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetParent(main_, window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetWindow(window, GW_CHILD), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetDlgCtrlID(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(SetFocus(window), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FAILS(GetWindowThreadProcessId(window, nullptr), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FALSE(IsChild(main_, window));
    }
}

TEST_F(WindowTexts, areSetAndRead)
{
    char text[64] = "xxxxxxxx";

    EXPECT_TRUE(SetWindowTextA(main_, "new text"));
    EXPECT_EQ(GetWindowTextLengthA(main_), 8);
    EXPECT_EQ(GetWindowTextA(main_, text, 4), 3);
    EXPECT_STREQ(text, "new");
    EXPECT_EQ(GetWindowTextA(main_, text, 9), 8);
    EXPECT_STREQ(text, "new text");
    EXPECT_EQ(GetWindowTextA(main_, text, 1), 0);
    EXPECT_EQ(text[0], '\0');
    EXPECT_EQ(GetWindowTextA(main_, text, 0), 0);
    EXPECT_TRUE(SetWindowTextA(main_, nullptr));
    EXPECT_EQ(GetWindowTextLengthA(main_), 0);
    EXPECT_THAT(came({WM_SETTEXT, WM_GETTEXT, WM_GETTEXTLENGTH}),
                ElementsAre(WM_SETTEXT, WM_GETTEXTLENGTH, WM_GETTEXT, WM_GETTEXT, WM_GETTEXT, WM_SETTEXT,
                            WM_GETTEXTLENGTH));
}

TEST_F(WindowValues, areExchanged)
{
    EXPECT_EQ(SetWindowLongPtrA(main_, GWLP_USERDATA, 99), 0);
    EXPECT_EQ(SetWindowLongPtrA(main_, GWLP_USERDATA, 100), 99);
    EXPECT_EQ(GetWindowLongPtrA(main_, GWLP_USERDATA), 100);
    EXPECT_EQ(SetWindowLongPtrA(main_, GWLP_ID, 77), 0);
    EXPECT_EQ(GetDlgCtrlID(main_), 77);
    EXPECT_EQ(GetWindowLongPtrA(main_, GWLP_WNDPROC), reinterpret_cast<LONG_PTR>(&procedure));
    EXPECT_EQ(GetWindowLongPtrA(main_, GWLP_HINSTANCE),
              reinterpret_cast<LONG_PTR>(GetModuleHandleA(nullptr)));
}

TEST_F(WindowValues, liveInTheExtraBytesOfTheClass)
{
    EXPECT_EQ(SetWindowLongPtrA(main_, 8, 0x123456789ALL), 0);
    EXPECT_EQ(GetWindowLongPtrA(main_, 8), 0x123456789ALL);
    EXPECT_EQ(GetWindowLongA(main_, 8), 0x3456789A);
    EXPECT_EQ(SetWindowLongA(main_, 0, -1), 0);
    EXPECT_EQ(GetWindowLongPtrA(main_, 0), 0xFFFFFFFFLL);
    EXPECT_FAILS(GetWindowLongPtrA(main_, 9), ERROR_INVALID_INDEX);
    EXPECT_FAILS(SetWindowLongPtrA(main_, 16, 1), ERROR_INVALID_INDEX);
    EXPECT_FAILS(GetWindowLongPtrA(main_, -99), ERROR_INVALID_INDEX);
}

TEST_F(WindowValues, tellOfNewStyles)
{
    HWND const child = makeChild();
    seen.clear();
    auto const style = SetWindowLongPtrA(child, GWL_STYLE, static_cast<LONG_PTR>(WS_CHILD | WS_GROUP));

    EXPECT_EQ(style & static_cast<LONG_PTR>(WS_CHILD), static_cast<LONG_PTR>(WS_CHILD));
    EXPECT_TRUE(GetWindowLongA(child, GWL_STYLE) & static_cast<LONG>(WS_GROUP));
    EXPECT_THAT(came({WM_STYLECHANGING, WM_STYLECHANGED}), ElementsAre(WM_STYLECHANGING, WM_STYLECHANGED));
}

TEST_F(WindowValues, holdTheProcedureThatIsCalled)
{
    static WNDPROC previous = nullptr;
    WNDPROC const other = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        return message == WM_USER ? 42 : CallWindowProcA(previous, window, message, wParam, lParam);
    };
    previous =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrA(main_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(other)));

    EXPECT_EQ(SendMessageA(main_, WM_USER, 0, 0), 42);
    EXPECT_EQ(textOf(main_), "text");
}

TEST_F(Windows, areVisibleIfAllAboveAre)
{
    HWND const child = makeChild(0, WS_VISIBLE);
    EXPECT_FALSE(IsWindowVisible(child));
    seen.clear();

    EXPECT_FALSE(ShowWindow(main_, SW_SHOWNA));
    EXPECT_TRUE(IsWindowVisible(main_));
    EXPECT_TRUE(IsWindowVisible(child));
    EXPECT_TRUE(ShowWindow(main_, SW_SHOWNA));
    EXPECT_TRUE(ShowWindow(main_, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(child));
    EXPECT_THAT(came({WM_SHOWWINDOW}), ElementsAre(WM_SHOWWINDOW, WM_SHOWWINDOW, WM_SHOWWINDOW));
}

TEST_F(Windows, areEnabledAndDisabled)
{
    HWND const child = makeChild();
    seen.clear();

    EXPECT_TRUE(IsWindowEnabled(child));
    EXPECT_FALSE(EnableWindow(child, FALSE));
    EXPECT_TRUE(EnableWindow(child, FALSE));
    EXPECT_FALSE(IsWindowEnabled(child));
    EXPECT_TRUE(EnableWindow(child, TRUE));
    EXPECT_TRUE(IsWindowEnabled(child));
    EXPECT_THAT(came({WM_ENABLE}), ElementsAre(WM_ENABLE, WM_ENABLE));
    EnableWindow(main_, FALSE);
    EXPECT_TRUE(IsWindowEnabled(child));
}

TEST_F(Windows, takeTheFocusFromEachOther)
{
    HWND const child = makeChild();
    SetFocus(nullptr);
    SetFocus(main_);
    seen.clear();

    EXPECT_EQ(SetFocus(child), main_);
    EXPECT_EQ(GetFocus(), child);
    EXPECT_THAT(came({WM_SETFOCUS, WM_KILLFOCUS}), ElementsAre(WM_KILLFOCUS, WM_SETFOCUS));
    EXPECT_EQ(SetFocus(nullptr), child);
    EXPECT_EQ(GetFocus(), nullptr);
    EnableWindow(child, FALSE);
    EXPECT_EQ(SetFocus(child), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(WindowPlaces, areRelativeToTheParent)
{
    HWND const child = makeChild();

    EXPECT_THAT(placeOf(main_), ElementsAre(100, 50, 400, 250));
    EXPECT_THAT(placeOf(child), ElementsAre(110, 70, 140, 110));
    RECT area;
    EXPECT_TRUE(GetClientRect(child, &area));
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.top, 0);
    EXPECT_EQ(area.right, 30);
    EXPECT_EQ(area.bottom, 40);
    MoveWindow(main_, 0, 0, 300, 200, FALSE);
    EXPECT_THAT(placeOf(child), ElementsAre(10, 20, 40, 60));
}

TEST_F(WindowPlaces, areMappedToTheScreenAndBack)
{
    HWND const child = makeChild();
    POINT point{1, 2};

    EXPECT_TRUE(ClientToScreen(child, &point));
    EXPECT_EQ(point.x, 111);
    EXPECT_EQ(point.y, 72);
    EXPECT_TRUE(ScreenToClient(child, &point));
    EXPECT_EQ(point.x, 1);
    EXPECT_EQ(point.y, 2);

    POINT points[] = {{0, 0}, {5, 5}};
    EXPECT_EQ(MapWindowPoints(child, main_, points, 2), MAKELONG(10, 20));
    EXPECT_EQ(points[0].x, 10);
    EXPECT_EQ(points[1].y, 25);
    EXPECT_EQ(MapWindowPoints(main_, nullptr, points, 2), MAKELONG(100, 50));
    EXPECT_EQ(points[0].x, 110);
}

TEST_F(WindowPlaces, changeWithMessages)
{
    HWND const child = makeChild();
    seen.clear();
    std::vector<UINT> const wanted{WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE};

    EXPECT_TRUE(MoveWindow(child, 1, 2, 3, 4, FALSE));
    EXPECT_THAT(came(wanted), ElementsAre(WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE));
    EXPECT_EQ(seen.back().lParam, MAKELPARAM(3, 4));
    EXPECT_THAT(placeOf(child), ElementsAre(101, 52, 104, 56));

    seen.clear();
    SetWindowPos(child, nullptr, 9, 9, 5, 6, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    EXPECT_THAT(came(wanted), ElementsAre(WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_SIZE));
    EXPECT_THAT(placeOf(child), ElementsAre(101, 52, 106, 58));

    seen.clear();
    SetWindowPos(child, nullptr, 9, 8, 5, 6, SWP_NOZORDER | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_THAT(came(wanted), ElementsAre(WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE));
    EXPECT_THAT(placeOf(child), ElementsAre(109, 58, 114, 64));

    seen.clear();
    MoveWindow(child, 9, 8, 5, 6, FALSE);
    EXPECT_THAT(came({WM_MOVE, WM_SIZE}), ElementsAre());
}

TEST_F(WindowPlaces, areNeverNegativeInSize)
{
    HWND const child = makeChild();

    MoveWindow(child, 1, 2, -3, -4, FALSE);

    EXPECT_THAT(placeOf(child), ElementsAre(101, 52, 101, 52));
}

TEST_F(WindowPlaces, keepTheLeastSizeOfAWindowWithASizingFrame)
{
    HWND const window = make(WS_POPUP | WS_THICKFRAME, nullptr, 0, {0, 0, 900, 900});
    leastSize = {700, 600};

    MoveWindow(window, 0, 0, 10, 10, FALSE);

    EXPECT_THAT(placeOf(window), ElementsAre(0, 0, 700, 600));
    DestroyWindow(window);
}

TEST_F(WindowFamilies, areWalked)
{
    HWND const a = makeChild(5);
    HWND const b = makeChild(6);
    HWND const c = makeChild(7);

    EXPECT_EQ(GetWindow(main_, GW_CHILD), a);
    EXPECT_EQ(GetWindow(a, GW_HWNDNEXT), b);
    EXPECT_EQ(GetWindow(b, GW_HWNDNEXT), c);
    EXPECT_EQ(GetWindow(c, GW_HWNDNEXT), nullptr);
    EXPECT_EQ(GetWindow(b, GW_HWNDPREV), a);
    EXPECT_EQ(GetWindow(a, GW_HWNDPREV), nullptr);
    EXPECT_EQ(GetWindow(c, GW_HWNDFIRST), a);
    EXPECT_EQ(GetWindow(a, GW_HWNDLAST), c);
    EXPECT_EQ(GetWindow(a, GW_CHILD), nullptr);
    EXPECT_EQ(GetWindow(a, GW_OWNER), nullptr);
    EXPECT_EQ(GetParent(a), main_);
    EXPECT_EQ(GetDlgItem(main_, 6), b);
    EXPECT_EQ(GetDlgItem(main_, 8), nullptr);
    EXPECT_EQ(GetDlgCtrlID(c), 7);
    EXPECT_TRUE(IsChild(main_, a));
    EXPECT_FALSE(IsChild(a, main_));
    EXPECT_FALSE(IsChild(a, a));
}

TEST_F(WindowFamilies, areReordered)
{
    HWND const a = makeChild(5);
    HWND const b = makeChild(6);
    HWND const c = makeChild(7);
    UINT const flags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    auto const order = [&] {
        std::vector<HWND> windows;
        for (HWND window = GetWindow(main_, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT))
            windows.push_back(window);
        return windows;
    };

    SetWindowPos(c, HWND_TOP, 0, 0, 0, 0, flags);
    EXPECT_THAT(order(), ElementsAre(c, a, b));
    SetWindowPos(c, HWND_BOTTOM, 0, 0, 0, 0, flags);
    EXPECT_THAT(order(), ElementsAre(a, b, c));
    SetWindowPos(a, b, 0, 0, 0, 0, flags);
    EXPECT_THAT(order(), ElementsAre(b, a, c));
    SetWindowPos(c, b, 0, 0, 0, 0, flags);
    EXPECT_THAT(order(), ElementsAre(b, c, a));
}

TEST_F(WindowFamilies, changeWithANewParent)
{
    HWND const a = makeChild();
    HWND const b = makeChild();

    EXPECT_EQ(SetParent(b, a), main_);

    EXPECT_EQ(GetParent(b), a);
    EXPECT_EQ(GetWindow(a, GW_CHILD), b);
    EXPECT_TRUE(IsChild(main_, b));
    EXPECT_THAT(placeOf(b), ElementsAre(120, 90, 150, 130));
    EXPECT_EQ(SetParent(a, b), nullptr);
    EXPECT_EQ(GetParent(a), main_);
}

TEST_F(Windows, belongToAThread)
{
    DWORD process = 0;
    DWORD const thread = GetWindowThreadProcessId(main_, &process);
    DWORD other = 0;

    std::thread([&] {
        HWND const window = make(0, HWND_MESSAGE);
        other = GetWindowThreadProcessId(window, nullptr);
        DestroyWindow(window);
    }).join();

    EXPECT_NE(thread, 0u);
    EXPECT_NE(process, 0u);
    EXPECT_NE(other, thread);
}

TEST_F(WindowPlaces, beyondTheNumbersEndAtTheLast)
{
    using Limits = std::numeric_limits<LONG>;
    LONG const most = Limits::max();

    HWND const distant = make(WS_POPUP, nullptr, 0, {most - 5, 7, most, most});

    EXPECT_EQ(placeOf(distant), (std::vector<LONG>{most - 5, 7, most, most}));
    DestroyWindow(distant);
}

TEST_F(WindowPlaces, areMovedWithin16Bits)
{
    struct {
        Place wanted;
        std::vector<LONG> place;
    } const rows[] = {
        {{INT_MAX, INT_MIN, INT_MAX, INT_MAX}, {32767, -32768, 65534, -1}},
        {{32768, -32769, 32768, 0}, {32767, -32768, 65534, -32768}},
        {{1, 2, INT_MIN, -1}, {1, 2, 1, 2}},
    };
    for (auto const& row : rows) {
        auto const& [x, y, width, height] = row.wanted;
        EXPECT_TRUE(SetWindowPos(main_, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE));
        EXPECT_EQ(placeOf(main_), row.place);
        MoveWindow(main_, 7, 8, 30, 40, FALSE);
        EXPECT_EQ(placeOf(main_), (std::vector<LONG>{7, 8, 37, 48}));
        EXPECT_TRUE(MoveWindow(main_, x, y, width, height, FALSE));
        EXPECT_EQ(placeOf(main_), row.place);
    }
}

TEST_F(WindowPlaces, pointsBeyondTheNumbersComeInAtTheOtherEnd)
{
    MoveWindow(main_, 1, 2, 30, 40, FALSE);
    POINT point = {INT_MAX, INT_MIN};

    EXPECT_TRUE(ClientToScreen(main_, &point));
    EXPECT_EQ(point.x, INT_MIN);
    EXPECT_EQ(point.y, INT_MIN + 2);

    EXPECT_TRUE(ScreenToClient(main_, &point));
    EXPECT_EQ(point.x, INT_MAX);
    EXPECT_EQ(point.y, INT_MIN);
    EXPECT_NE(MapWindowPoints(main_, nullptr, &point, 1), 0);
    EXPECT_EQ(point.x, INT_MIN);
}
