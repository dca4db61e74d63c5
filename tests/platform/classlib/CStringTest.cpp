// What a CString is: making, copying, moving, assigning, comparing, its buffer.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace {

std::string const longText(100, 'x');

static_assert(std::is_nothrow_move_constructible_v<CString>);
static_assert(std::is_nothrow_move_assignable_v<CString>);
static_assert(sizeof(CString) <= 32);
static_assert(!std::is_constructible_v<CString, int>, "a number is no text");
static_assert(!std::is_constructible_v<bool, CString>, "a text is no condition");

}  // namespace

TEST(CString, isEmptyAtFirst)
{
    CString const text;

    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 0);
    EXPECT_STREQ(text, "");
}
