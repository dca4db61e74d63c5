#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<WPARAM> commands;
LPARAM lastSender = 0;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND) {
        commands.push_back(wParam);
        lastSender = lParam;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

class Controls : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        WNDCLASSEXA description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = procedure;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = "ZkControlsTest";
        RegisterClassExA(&description);
    }

    Controls()
        : parent_(CreateWindowExA(0, "ZkControlsTest", "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr))
    {
        commands.clear();
    }
    ~Controls() override { DestroyWindow(parent_); }

    HWND make(char const* name, DWORD style, int id, char const* text = "text") const
    {
        HWND const control = CreateWindowExA(0, name, text, WS_CHILD | style, 0, 0, 9, 9, parent_,
                                             reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)),
                                             GetModuleHandleA(nullptr), nullptr);
        EXPECT_NE(control, nullptr);
        commands.clear();
        return control;
    }

    static LRESULT click(HWND button) { return SendMessageA(button, BM_CLICK, 0, 0); }
    static LRESULT checkOf(HWND button) { return SendMessageA(button, BM_GETCHECK, 0, 0); }

    HWND const parent_;
};

using Buttons = Controls;
using EditFields = Controls;

}  // namespace

TEST_F(Buttons, tellTheirParentOfAClick)
{
    HWND const button = make("BUTTON", BS_PUSHBUTTON, 13);

    click(button);

    EXPECT_THAT(commands, ElementsAre(MAKEWPARAM(13, BN_CLICKED)));
    EXPECT_EQ(lastSender, reinterpret_cast<LPARAM>(button));
}

TEST_F(Buttons, haveNoCheckWhenTheyArePushed)
{
    HWND const button = make("BUTTON", BS_PUSHBUTTON, 13);

    SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
    click(button);

    EXPECT_EQ(checkOf(button), LRESULT(BST_UNCHECKED));
}

TEST_F(Buttons, holdACheck)
{
    HWND const box = make("BUTTON", BS_CHECKBOX, 14);

    SendMessageA(box, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_EQ(checkOf(box), LRESULT(BST_CHECKED));
    SendMessageA(box, BM_SETCHECK, BST_INDETERMINATE, 0);
    EXPECT_EQ(checkOf(box), LRESULT(BST_CHECKED));
    click(box);
    EXPECT_EQ(checkOf(box), LRESULT(BST_CHECKED));
    SendMessageA(box, BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_EQ(checkOf(box), LRESULT(BST_UNCHECKED));
}

TEST_F(Buttons, changeTheirCheckOnAClickIfAutomatic)
{
    HWND const two = make("BUTTON", BS_AUTOCHECKBOX, 15);
    HWND const three = make("BUTTON", BS_AUTO3STATE, 16);
    std::vector<LRESULT> ofTwo;
    std::vector<LRESULT> ofThree;

    for (int i = 0; i < 4; ++i) {
        click(two);
        ofTwo.push_back(checkOf(two));
        click(three);
        ofThree.push_back(checkOf(three));
    }

    EXPECT_THAT(ofTwo, ElementsAre(1, 0, 1, 0));
    EXPECT_THAT(ofThree, ElementsAre(1, 2, 0, 1));
}

TEST_F(Buttons, ofOneGroupShareACheck)
{
    ShowWindow(parent_, SW_SHOWNA);
    HWND const other = make("BUTTON", WS_VISIBLE | BS_AUTORADIOBUTTON | WS_GROUP, 20);
    HWND const a = make("BUTTON", WS_VISIBLE | BS_AUTORADIOBUTTON | WS_GROUP, 21);
    HWND const b = make("BUTTON", WS_VISIBLE | BS_AUTORADIOBUTTON, 22);
    HWND const c = make("BUTTON", WS_VISIBLE | BS_AUTORADIOBUTTON, 23);
    HWND const next = make("BUTTON", WS_VISIBLE | BS_AUTORADIOBUTTON | WS_GROUP, 24);
    for (HWND const button : {other, a, next})
        click(button);

    click(c);
    EXPECT_EQ(checkOf(a), 0);
    EXPECT_EQ(checkOf(b), 0);
    EXPECT_EQ(checkOf(c), 1);
    click(b);
    EXPECT_EQ(checkOf(b), 1);
    EXPECT_EQ(checkOf(c), 0);
    EXPECT_EQ(checkOf(other), 1);
    EXPECT_EQ(checkOf(next), 1);
}

TEST_F(Buttons, areCheckedByNumber)
{
    make("BUTTON", BS_AUTOCHECKBOX, 12);

    EXPECT_TRUE(CheckDlgButton(parent_, 12, BST_CHECKED));
    EXPECT_EQ(IsDlgButtonChecked(parent_, 12), UINT(BST_CHECKED));
    EXPECT_TRUE(CheckDlgButton(parent_, 12, BST_UNCHECKED));
    EXPECT_EQ(IsDlgButtonChecked(parent_, 12), UINT(BST_UNCHECKED));
    EXPECT_EQ(IsDlgButtonChecked(parent_, 99), 0u);
}

TEST_F(Buttons, sayWhatTheyAreToADialog)
{
    struct Row {
        DWORD style;
        LRESULT code;
    };
    constexpr Row rows[] = {
        {BS_PUSHBUTTON, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON},
        {BS_DEFPUSHBUTTON, DLGC_BUTTON | DLGC_DEFPUSHBUTTON},
        {BS_CHECKBOX, DLGC_BUTTON},
        {BS_AUTORADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON},
        {BS_GROUPBOX, DLGC_STATIC},
    };
    for (Row const& row : rows)
        EXPECT_EQ(SendMessageA(make("BUTTON", row.style, 1), WM_GETDLGCODE, 0, 0), row.code) << row.style;
}

TEST_F(Buttons, arePushedAndChangeTheirStyle)
{
    HWND const button = make("BUTTON", BS_PUSHBUTTON, 13);

    SendMessageA(button, BM_SETSTATE, TRUE, 0);
    EXPECT_TRUE(SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
    EXPECT_EQ(checkOf(button), 0);
    SendMessageA(button, BM_SETSTATE, FALSE, 0);
    EXPECT_FALSE(SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED);
    SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
    EXPECT_EQ(SendMessageA(button, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
}

TEST_F(EditFields, tellTheirParentOfANewText)
{
    HWND const field = make("EDIT", 0, 24, "one");

    EXPECT_TRUE(SetWindowTextA(field, "two"));

    EXPECT_THAT(commands, ElementsAre(MAKEWPARAM(24, EN_UPDATE), MAKEWPARAM(24, EN_CHANGE)));
    EXPECT_EQ(lastSender, reinterpret_cast<LPARAM>(field));
}

TEST_F(EditFields, tellTheirParentOfTheFocus)
{
    HWND const field = make("EDIT", 0, 24);
    SetFocus(nullptr);

    SetFocus(field);
    SetFocus(nullptr);

    EXPECT_THAT(commands, ElementsAre(MAKEWPARAM(24, EN_SETFOCUS), MAKEWPARAM(24, EN_KILLFOCUS)));
}

TEST_F(Controls, haveTexts)
{
    char text[64];
    for (char const* const name : {"STATIC", "EDIT", "BUTTON"}) {
        HWND const control = make(name, 0, 30, "label");
        EXPECT_EQ(GetWindowTextA(control, text, sizeof text), 5);
        EXPECT_STREQ(text, "label");
        DestroyWindow(control);
    }
}

TEST_F(Controls, areReachedByNumber)
{
    char text[64] = "x";
    make("EDIT", 0, 24);

    EXPECT_TRUE(SetDlgItemTextA(parent_, 24, "new"));
    EXPECT_EQ(GetDlgItemTextA(parent_, 24, text, sizeof text), 3u);
    EXPECT_STREQ(text, "new");
    EXPECT_EQ(SendDlgItemMessageA(parent_, 24, WM_GETTEXTLENGTH, 0, 0), 3);
    EXPECT_FALSE(SetDlgItemTextA(parent_, 99, ""));
    EXPECT_EQ(GetDlgItemTextA(parent_, 99, text, sizeof text), 0u);
    EXPECT_EQ(text[0], '\0');
    EXPECT_EQ(SendDlgItemMessageA(parent_, 99, WM_GETTEXTLENGTH, 0, 0), 0);
}
