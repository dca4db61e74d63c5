#include "platform/classlib/CDialog.h"

#include "platform/classlib/CException.h"
#include "platform/classlib/CWinApp.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

constexpr UINT missingTemplate = 9;

class Confirm : public CDialog {
public:
    using CDialog::CDialog;

    BOOL OnInitDialog() override
    {
        BOOL const result = CDialog::OnInitDialog();
        if (whenReady)
            whenReady(*this);
        return result;
    }
    BOOL PreTranslateMessage(MSG* message) override
    {
        if (message->message == WM_KEYDOWN && message->wParam == swallowedKey)
            return TRUE;
        return CDialog::PreTranslateMessage(message);
    }
    using CDialog::EndDialog;

    std::function<void(Confirm&)> whenReady;
    WPARAM swallowedKey = 0;

protected:
    void OnNo() { EndDialog(IDNO); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Confirm, CDialog)
ON_COMMAND(IDNO, OnNo)
END_MESSAGE_MAP()

}  // namespace

TEST(Dialog, withoutATemplateFailsAtOnce)
{
    Confirm modal(missingTemplate);
    Confirm named("noSuchTemplate");
    Confirm modeless;

    SetLastError(0);
    EXPECT_EQ(modal.DoModal(), -1);
    EXPECT_NE(GetLastError(), 0u);
    EXPECT_EQ(named.DoModal(), -1);
    EXPECT_FALSE(modeless.Create(missingTemplate));

    EXPECT_EQ(modal.m_hWnd, nullptr);
    EXPECT_EQ(modeless.m_hWnd, nullptr);
}

TEST(Dialog, thatFailsLeavesItsOwnerEnabled)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "owner", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    Confirm dialog(missingTemplate, &owner);

    EXPECT_EQ(dialog.DoModal(), -1);

    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST(Dialog, thatDoesNotExistCanBeEnded)
{
    Confirm dialog;

    dialog.EndDialog(3);

    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

#ifdef _WIN32  // modules of the other system hold no templates

namespace {

constexpr UINT confirmTemplate = 5511;  // dialogs.rc

}  // namespace

TEST(ModalDialog, endsWithTheAnswer)
{
    struct {
        UINT command;
        INT_PTR answer;
    } const rows[] = {{IDOK, IDOK}, {IDCANCEL, IDCANCEL}, {IDNO, IDNO}};
    for (auto const& row : rows) {
        Confirm dialog(confirmTemplate);
        dialog.whenReady = [&](Confirm& made) { made.PostMessage(WM_COMMAND, row.command); };

        EXPECT_EQ(dialog.DoModal(), row.answer);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }
}

TEST(ModalDialog, isCancelledByClosingItsWindow)
{
    Confirm dialog(confirmTemplate);
    dialog.whenReady = [](Confirm& made) { made.PostMessage(WM_CLOSE); };

    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(ModalDialog, mayEndBeforeItShows)
{
    Confirm dialog(confirmTemplate);
    dialog.whenReady = [](Confirm& made) { made.EndDialog(77); };

    EXPECT_EQ(dialog.DoModal(), 77);
}

TEST(ModalDialog, hasItsControlsWhenItBegins)
{
    Confirm dialog(confirmTemplate);
    CString text;
    dialog.whenReady = [&](Confirm& made) {
        made.GetDlgItemText(5514, text);
        made.EndDialog(0);
    };

    dialog.DoModal();

    EXPECT_EQ(text, "the text");
}

TEST(ModalDialog, disablesItsOwnerMeanwhile)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr));
    Confirm dialog(confirmTemplate, &owner);
    BOOL enabledMeanwhile = TRUE;
    dialog.whenReady = [&](Confirm& made) {
        enabledMeanwhile = owner.IsWindowEnabled();
        made.EndDialog(0);
    };

    dialog.DoModal();

    EXPECT_FALSE(enabledMeanwhile);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST(ModalDialog, cancelsWithEscapeUnlessItSwallowsTheKey)
{
    for (bool const swallows : {false, true}) {
        Confirm dialog(confirmTemplate);
        dialog.swallowedKey = swallows ? VK_ESCAPE : 0;
        dialog.whenReady = [](Confirm& made) {
            made.PostMessage(WM_KEYDOWN, VK_ESCAPE);
            made.PostMessage(WM_COMMAND, IDNO);
        };

        EXPECT_EQ(dialog.DoModal(), swallows ? IDNO : IDCANCEL);
    }
}

TEST(ModalDialog, leavesQuitToTheLoopOutside)
{
    Confirm dialog(confirmTemplate);
    dialog.whenReady = [](Confirm&) { PostQuitMessage(5); };

    EXPECT_EQ(dialog.DoModal(), -1);

    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, UINT(WM_QUIT));
    EXPECT_EQ(message.wParam, 5u);
}

TEST(ModalDialog, passesOnWhatItsBeginningThrows)
{
    Confirm dialog(confirmTemplate);
    dialog.whenReady = [](Confirm&) { AfxThrowNotSupportedException(); };

    try {
        dialog.DoModal();
        FAIL() << "nothing was thrown";
    } catch (CNotSupportedException* exception) {
        exception->Delete();
    }

    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(ModalDialog, runsInTheLoopOfTheApplication)
{
    CWinApp const application;
    Confirm dialog(confirmTemplate);
    dialog.whenReady = [](Confirm& made) { made.PostMessage(WM_COMMAND, IDNO); };

    EXPECT_EQ(dialog.DoModal(), IDNO);
}

TEST(ModelessDialog, livesUntilItIsDestroyed)
{
    Confirm dialog;
    ASSERT_TRUE(dialog.Create(confirmTemplate));

    EXPECT_NE(dialog.GetDlgItem(5514), nullptr);
    dialog.EndDialog(1);
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_TRUE(dialog.DestroyWindow());
}

#endif
