// What the supplied blocks refuse; the system's own don't survive all of it.
#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

namespace {

auto const none = reinterpret_cast<HGLOBAL>(std::uintptr_t(0x1234));

TEST(SuppliedGlobalMemory, takesMovableBlocksAlone)
{
    EXPECT_FAILS(GlobalAlloc(0, 8), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GlobalAlloc(GMEM_ZEROINIT, 8), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GlobalAlloc(GMEM_MOVEABLE | 0x2000, 8), ERROR_INVALID_PARAMETER);
}

TEST(SuppliedGlobalMemory, refusesWhatIsNoBlock)
{
    EXPECT_FAILS(GlobalLock(none), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GlobalUnlock(none), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GlobalSize(none), ERROR_INVALID_HANDLE);
    SetLastError(0);
    EXPECT_EQ(GlobalFree(none), none);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
}

TEST(SuppliedGlobalMemory, knowsAStaleHandle)
{
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 8);
    GlobalFree(block);

    EXPECT_FAILS(GlobalLock(block), ERROR_INVALID_HANDLE);
    EXPECT_EQ(GlobalFree(block), block);
}

TEST(SuppliedGlobalMemory, ofNoBytesHasAnAddress)
{
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 0);

    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalSize(block), 0u);
    GlobalFree(block);
}

}  // namespace
