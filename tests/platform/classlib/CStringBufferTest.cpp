// The buffer of a CString, given out to be written to, and its memory.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <new>

TEST(CStringBuffer, holdsTheTextAndHasTheRoomAskedFor)
{
    CString text("abc");

    char* const buffer = text.GetBuffer(100);

    EXPECT_STREQ(buffer, "abc");
    std::memset(buffer, 'x', 100);
    buffer[100] = '\0';
    text.ReleaseBuffer();
    EXPECT_EQ(text, CString('x', 100));
}

TEST(CStringBuffer, isNeverSmallerThanTheText)
{
    CString text('x', 50);

    EXPECT_STREQ(text.GetBuffer(1), text);
    text.ReleaseBuffer();

    EXPECT_EQ(text.GetLength(), 50);
    EXPECT_STREQ(CString("abc").GetBuffer(-5), "abc");
    EXPECT_STREQ(CString("abc").LockBuffer(), "abc");
}

TEST(CStringBuffer, endsAtTheFirstNulOrAtTheLengthGiven)
{
    CString text;

    std::strcpy(text.GetBuffer(40), "model.cpp");
    text.ReleaseBuffer();
    EXPECT_EQ(text, "model.cpp");

    text.GetBuffer(40);
    text.ReleaseBuffer(5);
    EXPECT_EQ(text, "model");

    text.GetBuffer(40);
    text.ReleaseBufferSetLength(3);
    EXPECT_EQ(text, "mod");
    text.ReleaseBufferSetLength(-1);
    EXPECT_EQ(text, "");
}

TEST(CStringBuffer, endsAtItsRoomWithoutANulAndForALargeLength)
{
    CString text;

    std::memset(text.GetBuffer(40), 'x', 40);
    text.ReleaseBuffer();
    EXPECT_EQ(text, CString('x', 40));

    std::memset(text.GetBuffer(40), 'y', 40);
    text.ReleaseBuffer(INT_MAX);
    EXPECT_EQ(text, CString('y', 40));
}

TEST(CStringBuffer, takesALengthAtOnce)
{
    CString text("abcdef");

    text.GetBufferSetLength(3);
    EXPECT_EQ(text, "abc");

    std::memcpy(text.GetBufferSetLength(20) + 3, "defghijklmnopqrst", 17);
    EXPECT_EQ(text, "abcdefghijklmnopqrst");

    text.GetBufferSetLength(-1);
    EXPECT_EQ(text, "");
}

TEST(CStringBuffer, isAllocatedAheadAndGivenBack)
{
    CString text("abc");

    text.Preallocate(1000);
    EXPECT_GE(text.GetAllocLength(), 1000);
    EXPECT_EQ(text, "abc");

    char const* const before = text;
    text.Append(CString('x', 997));
    EXPECT_EQ(text.GetString(), before);

    text.Truncate(100);
    text.FreeExtra();
    EXPECT_EQ(text.GetAllocLength(), 100);
    EXPECT_EQ(text, "abc" + CString('x', 97));

    text.Truncate(3);
    text.FreeExtra();
    EXPECT_EQ(text.GetAllocLength(), 15);
    EXPECT_EQ(text, "abc");
    text.FreeExtra();
    EXPECT_EQ(text, "abc");
}

TEST(CStringBuffer, isCutButNeverExtended)
{
    CString text("abcdef");

    text.Truncate(10);
    EXPECT_EQ(text, "abcdef");
    text.Truncate(2);
    EXPECT_EQ(text, "ab");
    text.Truncate(-1);
    EXPECT_EQ(text, "");
}

TEST(CStringBuffer, beyondTheLongestTextIsOutOfMemoryAndChangesNothing)
{
    CString text("abc");
    std::size_t volatile const tooLong = std::size_t(INT_MAX);  // the compiler would see through it

    EXPECT_THROW(text.GetBuffer(INT_MAX), std::bad_alloc);
    EXPECT_THROW(text += std::string_view("x", tooLong), std::bad_alloc);
    EXPECT_THROW(text = std::string_view("x", tooLong), std::bad_alloc);
    EXPECT_THROW(CString(std::string_view("x", tooLong)), std::bad_alloc);
    EXPECT_THROW(CString('x', INT_MAX), std::bad_alloc);

    EXPECT_EQ(text, "abc");
}
