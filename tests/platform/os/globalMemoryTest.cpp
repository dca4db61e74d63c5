#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

// A movable block for the length of a test.
class Block {
public:
    explicit Block(SIZE_T size, UINT flags = GMEM_MOVEABLE) : handle_(GlobalAlloc(flags, size)) { }
    ~Block() { GlobalFree(handle_); }
    Block(Block const&) = delete;
    Block& operator=(Block const&) = delete;

    operator HGLOBAL() const { return handle_; }

private:
    HGLOBAL handle_;
};

TEST(GlobalMemory, keepsWhatIsWrittenWhileItIsLocked)
{
    Block const block(6);

    std::strcpy(static_cast<char*>(GlobalLock(block)), "model");
    GlobalUnlock(block);

    EXPECT_STREQ(static_cast<char*>(GlobalLock(block)), "model");
    GlobalUnlock(block);
}

TEST(GlobalMemory, isZeroOnRequest)
{
    Block const block(1000, GHND);

    char const* const bytes = static_cast<char*>(GlobalLock(block));

    EXPECT_TRUE(std::all_of(bytes, bytes + 1000, [](char c) { return c == '\0'; }));
    GlobalUnlock(block);
}

TEST(GlobalMemory, countsItsLocks)
{
    Block const block(8);
    void* const address = GlobalLock(block);

    EXPECT_EQ(GlobalLock(block), address);
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FAILS(GlobalUnlock(block), NO_ERROR);
    EXPECT_FAILS(GlobalUnlock(block), ERROR_NOT_LOCKED);
}

TEST(GlobalMemory, knowsItsSize)
{
    EXPECT_GE(GlobalSize(Block(10)), 10u);
}

TEST(GlobalMemory, isFreedThoughItIsLocked)
{
    HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 8);
    GlobalLock(block);

    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(GlobalMemory, ofNoBlockIsFreedInSilence)
{
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
}

}  // namespace
