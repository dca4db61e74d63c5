#include "tests/support/ScopedHandle.h"
#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

namespace {

class RestoredStandardHandle {
public:
    explicit RestoredStandardHandle(DWORD which) : which_(which), before_(GetStdHandle(which)) { }
    ~RestoredStandardHandle() { SetStdHandle(which_, before_); }

private:
    DWORD const which_;
    HANDLE const before_;
};

}  // namespace

TEST(StandardHandles, areTheSameAtEachCall)
{
    HANDLE const output = GetStdHandle(STD_OUTPUT_HANDLE);

    EXPECT_NE(output, INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetStdHandle(STD_OUTPUT_HANDLE), output);
}

TEST(StandardHandles, areThree)
{
    EXPECT_FAILS(GetStdHandle(5), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetStdHandle(STD_ERROR_HANDLE - 1), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(GetStdHandle(0), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(SetStdHandle(5, nullptr), ERROR_INVALID_HANDLE);
}

TEST(StandardHandles, areSetToAnyValue)
{
    RestoredStandardHandle const restored(STD_INPUT_HANDLE);

    EXPECT_SUCCEEDS(SetStdHandle(STD_INPUT_HANDLE, nullptr));
    EXPECT_EQ(GetStdHandle(STD_INPUT_HANDLE), nullptr);

    EXPECT_SUCCEEDS(SetStdHandle(STD_INPUT_HANDLE, INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetStdHandle(STD_INPUT_HANDLE), INVALID_HANDLE_VALUE);
}
