#include "platform/classlib/CDataExchange.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CButton.h"
#include "platform/classlib/CEdit.h"
#include "platform/classlib/CException.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int applyId = 1001;
constexpr int textId = 1002;
constexpr int numberId = 1003;
constexpr int tickId = 1004;

// A window with a control of each kind, and members for them.
class Panel : public CWnd {
public:
    Panel()
    {
        CreateEx(0, nullptr, "panel", 0, 0, 0, 100, 100, HWND_MESSAGE, nullptr);
        makeControl("BUTTON", 0, applyId);
        makeControl("EDIT", 0, textId);
        makeControl("EDIT", 0, numberId);
        makeControl("BUTTON", BS_AUTO3STATE, tickId);
    }

    CString textOf(int id) const
    {
        CString text;
        GetDlgItemText(id, text);
        return text;
    }

    CButton apply;
    CString text;
    int number = 0;
    int ticked = 0;
    int missing = 0;

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        CWnd::DoDataExchange(pDX);
        DDX_Control(pDX, applyId, apply);
        DDX_Text(pDX, textId, text);
        DDX_Text(pDX, numberId, number);
        DDX_Check(pDX, tickId, ticked);
        if (missing != 0)
            DDX_Check(pDX, missing, ticked);
    }

private:
    void makeControl(char const* className, DWORD style, int id)
    {
        CreateWindowExA(0, className, "", WS_CHILD | style, 0, 0, 10, 10, m_hWnd,
                        reinterpret_cast<HMENU>(INT_PTR(id)), GetModuleHandleA(nullptr), nullptr);
    }
};

class SilentPresenter : public zk::MessageBoxPresenter {
public:
    SilentPresenter() { before_ = zk::installMessageBoxPresenter(this); }
    ~SilentPresenter() override { zk::installMessageBoxPresenter(before_); }
    int present(char const* text, char const*, UINT, UINT) override
    {
        shown += text;
        return IDOK;
    }

    std::string shown;

private:
    zk::MessageBoxPresenter* before_;
};

}  // namespace

TEST(DataExchange, fillsTheControls)
{
    Panel panel;
    panel.text = "a text";
    panel.number = -42;
    panel.ticked = BST_INDETERMINATE;

    ASSERT_TRUE(panel.UpdateData(FALSE));

    EXPECT_EQ(panel.textOf(textId), "a text");
    EXPECT_EQ(panel.textOf(numberId), "-42");
    EXPECT_EQ(panel.IsDlgButtonChecked(tickId), UINT(BST_INDETERMINATE));
}

TEST(DataExchange, fillsTheMembers)
{
    Panel panel;
    panel.SetDlgItemText(textId, "typed");
    panel.SetDlgItemText(numberId, " 17 ");
    panel.CheckDlgButton(tickId, BST_CHECKED);

    ASSERT_TRUE(panel.UpdateData(TRUE));

    EXPECT_EQ(panel.text, "typed");
    EXPECT_EQ(panel.number, 17);
    EXPECT_EQ(panel.ticked, 1);
}

TEST(DataExchange, makesAMemberTheObjectOfItsControl)
{
    Panel panel;

    panel.UpdateData(FALSE);
    panel.UpdateData(FALSE);

    EXPECT_EQ(panel.GetDlgItem(applyId), &panel.apply);
}

TEST(DataExchange, ticksOnlyWhatABoxCanShow)
{
    for (int const value : {-1, 3}) {
        Panel panel;
        panel.ticked = value;

        panel.UpdateData(FALSE);

        EXPECT_EQ(panel.IsDlgButtonChecked(tickId), 0u) << value;
    }
}

TEST(DataExchange, tellsTheUserOfWhatIsNoNumber)
{
    for (char const* const typed : {"", "x", "12x", "99999999999", "1 2"}) {
        SilentPresenter presenter;
        Panel panel;
        panel.number = 5;
        panel.SetDlgItemText(numberId, typed);

        EXPECT_FALSE(panel.UpdateData(TRUE)) << typed;

        EXPECT_EQ(panel.number, 5);
        EXPECT_EQ(presenter.shown, "Please enter an integer.");
    }
}

TEST(DataExchange, isNotPossibleWithAControlThatIsMissing)
{
    Panel panel;
    panel.missing = 999;

    try {
        panel.UpdateData(FALSE);
        FAIL() << "nothing was thrown";
    } catch (CNotSupportedException* exception) {
        exception->Delete();
    }
}
