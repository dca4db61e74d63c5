#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

namespace {

class ScrollBars : public testing::Test {
protected:
    ~ScrollBars() override { DestroyWindow(window_); }

    LONG_PTR bars() const { return GetWindowLongPtrA(window_, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL); }

    HWND const window_ = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                                         GetModuleHandleA(nullptr), nullptr);
};

TEST_F(ScrollBars, areStylesOfTheirWindow)
{
    EXPECT_TRUE(ShowScrollBar(window_, SB_VERT, TRUE));
    EXPECT_EQ(bars(), WS_VSCROLL);

    EXPECT_TRUE(ShowScrollBar(window_, SB_HORZ, TRUE));
    EXPECT_EQ(bars(), WS_VSCROLL | WS_HSCROLL);

    EXPECT_TRUE(ShowScrollBar(window_, SB_BOTH, FALSE));
    EXPECT_EQ(bars(), 0);
}

TEST_F(ScrollBars, thatAreControlsAreShownAndHidden)
{
    ShowScrollBar(window_, SB_CTL, TRUE);
    EXPECT_TRUE(IsWindowVisible(window_));

    ShowScrollBar(window_, SB_CTL, FALSE);
    EXPECT_FALSE(IsWindowVisible(window_));
}

TEST_F(ScrollBars, ofNoWindowAreAnError)
{
    EXPECT_FALSE(ShowScrollBar(nullptr, SB_VERT, TRUE));
}

}  // namespace
