#include "platform/os/os.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstdint>

#include <string>

namespace {

TEST(Clipboard, formatZeroHoldsNothing)
{
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_TRUE(EmptyClipboard());
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 1);

    EXPECT_FAILS(SetClipboardData(0, block), ERROR_CLIPBOARD_NOT_OPEN);

    EXPECT_FALSE(IsClipboardFormatAvailable(0));
    EXPECT_EQ(GlobalFree(block), nullptr) << "still the caller's";
    EXPECT_TRUE(CloseClipboard());
}

TEST(Clipboard, numbersNamesFromC000UpToFFFF)
{
    UINT const first = RegisterClipboardFormatA("zk clipboard test");

    EXPECT_GE(first, 0xC000u);
    EXPECT_LE(first, 0xFFFFu);
    EXPECT_EQ(RegisterClipboardFormatA("ZK Clipboard Test"), first);
}

TEST(GlobalMemory, refusesMoreThanThereCanBe)
{
    EXPECT_FAILS(GlobalAlloc(GMEM_MOVEABLE, SIZE_MAX), ERROR_NOT_ENOUGH_MEMORY);
}

}  // namespace
