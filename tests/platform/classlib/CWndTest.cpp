#include "platform/classlib/CWnd.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CButton.h"
#include "platform/classlib/CComboBox.h"
#include "platform/classlib/CException.h"
#include "platform/classlib/CWinThread.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

constexpr UINT outputMessage = 1025;

// Writes down what reaches it.
class Receiver : public CWnd {
public:
    ~Receiver() override { DestroyWindow(); }

    bool create()
    {
        return CreateEx(0, nullptr, "receiver", 0, 1, 2, 30, 40, HWND_MESSAGE, nullptr) != FALSE;
    }

    using CWnd::OnWndMsg;

    std::string log;
    BOOL swallow = FALSE;

    BOOL PreTranslateMessage(MSG* message) override
    {
        log += "pre" + std::to_string(message->message) + " ";
        return swallow;
    }

protected:
    LRESULT OnOutput(WPARAM wParam, LPARAM lParam)
    {
        log += "output" + std::to_string(wParam) + "," + std::to_string(lParam) + " ";
        return 17;
    }
    LRESULT OnThrow(WPARAM wParam, LPARAM)
    {
        if (wParam)
            AfxThrowUserException();
        AfxThrowNotSupportedException();
    }
    void OnSize(UINT type, int width, int height)
    {
        CWnd::OnSize(type, width, height);
        log += "size" + std::to_string(width) + "x" + std::to_string(height) + " ";
    }
    void OnGetMinMaxInfo(MINMAXINFO* info)
    {
        CWnd::OnGetMinMaxInfo(info);
        info->ptMinTrackSize = {111, 222};
    }
    void OnApply() { log += "apply "; }
    void OnClicked() { log += "clicked "; }
    void OnRange() { log += "range "; }
    void PostNcDestroy() override { log += m_hWnd ? "early " : "destroyed "; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Receiver, CWnd)
ON_WM_SIZE()
ON_WM_GETMINMAXINFO()
ON_MESSAGE(outputMessage, OnOutput)
ON_MESSAGE(1030, OnThrow)
ON_COMMAND(500, OnApply)
ON_COMMAND_RANGE(600, 602, OnRange)
ON_BN_CLICKED(501, OnClicked)
ON_CONTROL(0x300, 501, OnApply)
END_MESSAGE_MAP()

// Takes one message before its base does.
class Louder : public Receiver {
    LRESULT OnOutput(WPARAM, LPARAM)
    {
        log += "louder ";
        return 18;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Louder, Receiver)
ON_MESSAGE(outputMessage, OnOutput)
END_MESSAGE_MAP()

class CountingPresenter : public zk::MessageBoxPresenter {
public:
    CountingPresenter() { before_ = zk::installMessageBoxPresenter(this); }
    ~CountingPresenter() override { zk::installMessageBoxPresenter(before_); }
    int present(char const* text, char const*, UINT, UINT) override
    {
        shown += text;
        return IDOK;
    }

    std::string shown;

private:
    zk::MessageBoxPresenter* before_;
};

HWND plainWindow()
{
    return CreateWindowExA(0, "STATIC", "plain", 0, 0, 0, 10, 10, HWND_MESSAGE, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

// Takes all messages of the thread, as its loop does.
void pump()
{
    CWinThread loop;
    MSG waiting;
    while (PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE))
        loop.PumpMessage();
}

}  // namespace

TEST(Window, isCreatedAndDestroyed)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    HWND const handle = window.m_hWnd;

    EXPECT_TRUE(IsWindow(handle));
    EXPECT_EQ(window.GetSafeHwnd(), handle);
    EXPECT_TRUE(window.DestroyWindow());

    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}

TEST(Window, goesWithItsObject)
{
    HWND handle;
    {
        Receiver window;
        ASSERT_TRUE(window.create());
        handle = window.m_hWnd;
    }

    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, tellsItsEndWhenItIsGone)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    window.log.clear();

    DestroyWindow(window.m_hWnd);

    EXPECT_EQ(window.log, "destroyed ");
}

TEST(Window, isCreatedOncePerObject)
{
    Receiver window;
    ASSERT_TRUE(window.create());

    EXPECT_FAILS(window.create(), ERROR_ALREADY_EXISTS);
}

TEST(Window, ofAnUnknownClassIsNotCreated)
{
    CWnd window;

    EXPECT_FALSE(window.CreateEx(0, "NoSuchClassAnywhere", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr));
    EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST(Window, keepsItsText)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    CString text;

    window.GetWindowText(text);
    EXPECT_EQ(text, "receiver");
    window.SetWindowText("a longer text than the one before");
    window.GetWindowText(text);
    EXPECT_EQ(text, "a longer text than the one before");
    EXPECT_EQ(window.GetWindowTextLength(), 33);
    char buffer[5];
    EXPECT_EQ(window.GetWindowText(buffer, 5), 4);
    EXPECT_STREQ(buffer, "a lo");
    window.SetWindowText("");
    window.GetWindowText(text);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(Window, handlesSentAndPostedMessages)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    window.log.clear();

    EXPECT_EQ(window.SendMessage(outputMessage, 1, 2), 17);
    EXPECT_TRUE(window.PostMessage(outputMessage, 3, 4));
    EXPECT_EQ(window.log, "output1,2 ");
    pump();

    EXPECT_EQ(window.log, "output1,2 pre1025 output3,4 ");
}

TEST(Window, givesAMessageWithoutHandlerToTheDefault)
{
    Receiver window;
    ASSERT_TRUE(window.create());

    EXPECT_EQ(window.SendMessage(outputMessage + 1), 0);
    EXPECT_EQ(window.SendMessage(WM_GETTEXTLENGTH), 8);
}

TEST(Window, swallowsAMessageBeforeItIsDispatched)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    window.log.clear();
    window.swallow = TRUE;

    window.PostMessage(outputMessage);
    pump();

    EXPECT_EQ(window.log, "pre1025 ");
}

TEST(Window, isPostedToByAnyThread)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    window.log.clear();

    HANDLE const thread = CreateThread(
        nullptr, 0,
        [](void* argument) -> DWORD {
            return DWORD(static_cast<CWnd*>(argument)->PostMessage(outputMessage, 5, 6));
        },
        static_cast<CWnd*>(&window), 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    pump();

    EXPECT_EQ(window.log, "pre1025 output5,6 ");
}

TEST(Window, thatDoesNotExistGetsNothing)
{
    CWnd window;

    EXPECT_FAILS(window.PostMessage(outputMessage), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(window.SendMessage(outputMessage), 0);
    EXPECT_EQ(window.GetDlgItem(5), nullptr);
    EXPECT_EQ(window.GetParent(), nullptr);
    EXPECT_FALSE(window.ShowWindow(SW_SHOW));
    CString text("poison");
    window.GetWindowText(text);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(window.GetDlgItemText(5, text), 0);
    EXPECT_EQ(window.IsDlgButtonChecked(5), 0u);
}

TEST(MessageMap, asksTheDerivedClassFirst)
{
    Louder window;
    ASSERT_TRUE(window.create());
    window.log.clear();

    EXPECT_EQ(window.SendMessage(outputMessage), 18);
    window.SendMessage(WM_COMMAND, 500);

    EXPECT_EQ(window.log, "louder apply ");
}

TEST(MessageMap, findsCommandsByIdAndCode)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    HWND const control = plainWindow();
    struct {
        WPARAM wParam;
        LPARAM lParam;
        char const* log;
    } const rows[] = {
        {500, 0, "apply "},
        {MAKELONG(500, 1), 0, "apply "},  // from a key
        {MAKELONG(501, 0), LPARAM(control), "clicked "},
        {MAKELONG(501, 0x300), LPARAM(control), "apply "},
        {MAKELONG(501, 0x301), LPARAM(control), ""},
        {599, 0, ""},
        {600, 0, "range "},
        {602, 0, "range "},
        {603, 0, ""},
    };
    for (auto const& row : rows) {
        window.log.clear();

        window.SendMessage(WM_COMMAND, row.wParam, row.lParam);

        EXPECT_EQ(window.log, row.log) << "word parameter " << row.wParam;
    }
    DestroyWindow(control);
}

TEST(MessageMap, tellsWhetherACommandWasHandled)
{
    Receiver window;

    EXPECT_TRUE(window.OnCmdMsg(500, CN_COMMAND));
    EXPECT_FALSE(window.OnCmdMsg(499, CN_COMMAND));
    EXPECT_FALSE(window.OnCmdMsg(500, 1));
}

TEST(MessageMap, takesSizesApart)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    window.log.clear();

    window.SendMessage(WM_SIZE, 0, MAKELONG(640, 480));

    EXPECT_EQ(window.log, "size640x480 ");
}

TEST(MessageMap, handsOutSizeLimits)
{
    Receiver window;
    ASSERT_TRUE(window.create());
    MINMAXINFO info = {};

    window.SendMessage(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));

    EXPECT_EQ(info.ptMinTrackSize.x, 111);
    EXPECT_EQ(info.ptMinTrackSize.y, 222);
}

TEST(MessageMap, endsAnExceptionOfAHandlerWithAReport)
{
    CountingPresenter presenter;
    Receiver window;
    ASSERT_TRUE(window.create());

    EXPECT_EQ(window.SendMessage(1030, 0), 0);
    EXPECT_EQ(presenter.shown, "The operation is not supported.");
    EXPECT_EQ(window.SendMessage(1030, 1), 0);

    EXPECT_EQ(presenter.shown, "The operation is not supported.") << "the user was told already";
}

TEST(WindowObject, standsForItsWindow)
{
    Receiver window;
    ASSERT_TRUE(window.create());

    EXPECT_EQ(CWnd::FromHandle(window.m_hWnd), &window);
    EXPECT_EQ(CWnd::FromHandlePermanent(window.m_hWnd), &window);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(nullptr), nullptr);
}

TEST(WindowObject, isTemporaryForAWindowWithoutOne)
{
    HWND const handle = plainWindow();
    ASSERT_NE(handle, nullptr);

    CWnd* const temporary = CWnd::FromHandle(handle);

    EXPECT_EQ(temporary->m_hWnd, handle);
    EXPECT_EQ(temporary->GetRuntimeClass(), RUNTIME_CLASS(CWnd));
    EXPECT_EQ(CWnd::FromHandle(handle), temporary);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    CWnd::DeleteTempMap();
    EXPECT_TRUE(IsWindow(handle));
    DestroyWindow(handle);
}

TEST(WindowObject, isAttachedToOneWindowAndDetached)
{
    HWND const handle = plainWindow();
    CWnd object, other;

    EXPECT_TRUE(object.Attach(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), &object);
    EXPECT_FALSE(other.Attach(handle));
    EXPECT_FALSE(object.Attach(handle));
    EXPECT_FALSE(other.Attach(nullptr));

    EXPECT_EQ(object.Detach(), handle);
    EXPECT_EQ(object.m_hWnd, nullptr);
    EXPECT_EQ(object.Detach(), nullptr);
    EXPECT_TRUE(IsWindow(handle));
    DestroyWindow(handle);
}

TEST(WindowObject, thatIsAttachedDestroysItsWindowToo)
{
    HWND const handle = plainWindow();
    {
        CWnd object;
        object.Attach(handle);
    }

    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(WindowObject, takesOverTheMessagesOfAnotherWindow)
{
    HWND const handle = plainWindow();
    Receiver object;

    ASSERT_TRUE(object.SubclassWindow(handle));
    EXPECT_EQ(SendMessageA(handle, outputMessage, 7, 8), 17);
    EXPECT_EQ(object.GetWindowTextLength(), 5) << "by the window's own procedure";
    EXPECT_EQ(object.UnsubclassWindow(), handle);

    EXPECT_EQ(SendMessageA(handle, outputMessage, 7, 8), 0);
    EXPECT_FALSE(object.SubclassWindow(nullptr));
    DestroyWindow(handle);
}

TEST(WindowObject, ofAControlKnowsItsClass)
{
    Receiver parent;
    ASSERT_TRUE(parent.create());
    CButton button;
    RECT const place = {1, 2, 31, 42};

    ASSERT_TRUE(button.Create("push", WS_CHILD, place, &parent, 501));

    EXPECT_TRUE(CWnd::FromHandle(button.m_hWnd)->IsKindOf(RUNTIME_CLASS(CButton)));
    EXPECT_FALSE(CWnd::FromHandle(button.m_hWnd)->IsKindOf(RUNTIME_CLASS(CComboBox)));
    EXPECT_EQ(button.GetParent(), &parent);
    EXPECT_EQ(parent.GetDlgItem(501), &button);
    EXPECT_EQ(parent.GetDlgItem(502), nullptr);
    EXPECT_EQ(button.GetDlgCtrlID(), 501);
    HWND found = nullptr;
    parent.GetDlgItem(501, &found);
    EXPECT_EQ(found, button.m_hWnd);
    EXPECT_EQ(parent.GetWindow(GW_CHILD), &button);
}

TEST(ButtonControl, isCheckedThroughItsParent)
{
    Receiver parent;
    ASSERT_TRUE(parent.create());
    CButton box;
    RECT const place = {0, 0, 10, 10};
    ASSERT_TRUE(box.Create("box", WS_CHILD | BS_AUTOCHECKBOX, place, &parent, 501));

    EXPECT_EQ(parent.IsDlgButtonChecked(501), 0u);
    parent.CheckDlgButton(501, BST_CHECKED);

    EXPECT_EQ(parent.IsDlgButtonChecked(501), UINT(BST_CHECKED));
    EXPECT_EQ(box.GetCheck(), 1);
    box.SetCheck(0);
    EXPECT_EQ(parent.IsDlgButtonChecked(501), 0u);
}

TEST(ButtonControl, tellsItsParentOfAClick)
{
    Receiver parent;
    ASSERT_TRUE(parent.create());
    CButton button;
    RECT const place = {0, 0, 10, 10};
    ASSERT_TRUE(button.Create("push", WS_CHILD, place, &parent, 501));
    parent.log.clear();

    button.SendMessage(BM_CLICK);

    EXPECT_EQ(parent.log, "clicked ");
}

TEST(ControlText, isReachedThroughTheParent)
{
    Receiver parent;
    ASSERT_TRUE(parent.create());
    CButton button;
    RECT const place = {0, 0, 10, 10};
    ASSERT_TRUE(button.Create("old", WS_CHILD, place, &parent, 501));
    CString text;
    char buffer[4];

    parent.SetDlgItemText(501, "newer");

    EXPECT_EQ(parent.GetDlgItemText(501, text), 5);
    EXPECT_EQ(text, "newer");
    EXPECT_EQ(parent.GetDlgItemText(501, buffer, 4), 3);
    EXPECT_STREQ(buffer, "new");
    EXPECT_EQ(parent.GetDlgItemText(999, buffer, 4), 0);
    EXPECT_STREQ(buffer, "");
}

TEST(WindowState, keepsPlaceVisibilityAndStyle)
{
    Receiver parent;
    ASSERT_TRUE(parent.create());
    CButton button;
    RECT const place = {5, 6, 35, 46};
    ASSERT_TRUE(button.Create("push", WS_CHILD, place, &parent, 501));
    RECT rect;

    button.GetWindowRect(&rect);
    parent.ScreenToClient(&rect);
    EXPECT_EQ(rect.left, 5);
    EXPECT_EQ(rect.bottom, 46);
    button.MoveWindow(1, 2, 3, 4);
    button.GetWindowRect(&rect);
    EXPECT_EQ(rect.right - rect.left, 3);
    EXPECT_EQ(rect.bottom - rect.top, 4);
    RECT const other = {7, 8, 17, 28};
    button.MoveWindow(&other);
    button.GetClientRect(&rect);
    EXPECT_EQ(rect.right, 10);
    EXPECT_EQ(rect.bottom, 20);
    button.ClientToScreen(&rect);
    parent.ScreenToClient(&rect);
    EXPECT_EQ(rect.left, 7);
    EXPECT_TRUE(button.SetWindowPos(nullptr, 0, 0, 50, 60, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE));
    button.GetWindowRect(&rect);
    EXPECT_EQ(rect.right - rect.left, 50);

    EXPECT_TRUE(button.IsWindowEnabled());
    EXPECT_FALSE(button.EnableWindow(FALSE));
    EXPECT_FALSE(button.IsWindowEnabled());
    EXPECT_EQ(button.GetStyle() & WS_DISABLED, DWORD(WS_DISABLED));
    EXPECT_TRUE(button.ModifyStyle(0, WS_TABSTOP));
    EXPECT_FALSE(button.ModifyStyle(0, WS_TABSTOP));
    EXPECT_EQ(button.GetStyle() & WS_TABSTOP, DWORD(WS_TABSTOP));
    EXPECT_EQ(button.GetStyle() & WS_VISIBLE, 0u);
    EXPECT_FALSE(button.ShowWindow(SW_SHOW));
    EXPECT_EQ(button.GetStyle() & WS_VISIBLE, DWORD(WS_VISIBLE));
}
