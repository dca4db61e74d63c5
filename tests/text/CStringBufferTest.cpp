#include "text/CStringBuffer.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>

#include <string>

namespace {

class Buffer : public CStringBuffer {
public:
    using CStringBuffer::CStringBuffer;
    int capacity() const { return m_capacity; }
    int length() const { return m_length; }
};

TEST(CStringBuffer, beginsEmptyWithRoomForTheCharactersAskedFor)
{
    Buffer const buffer(10);

    EXPECT_TRUE(buffer.IsEmpty());
    EXPECT_EQ(buffer.capacity(), 11);
    EXPECT_STREQ(buffer.toString(), "");
}

TEST(CStringBuffer, takesANegativeSizeForNone)
{
    Buffer buffer(-5);

    buffer.AppendChar('a');

    EXPECT_STREQ(buffer.toString(), "a");
}

TEST(CStringBuffer, beginsWithAText)
{
    Buffer buffer(CString("abc"));

    EXPECT_STREQ(buffer.getBuffer(), "abc");
    EXPECT_EQ(buffer.capacity(), 4);
}

TEST(CStringBuffer, appendsTextsPiecesAndCharacters)
{
    CStringBuffer buffer(0);

    buffer.Append("ab");
    buffer.Append("xcdx", 1, 2);
    buffer.AppendChars(const_cast<char*>("ef"));
    buffer.AppendChar('g');

    EXPECT_STREQ(buffer.toString(), "abcdefg");
    CString text("old");
    buffer.populateCString(text);
    EXPECT_STREQ(text, "abcdefg");
    EXPECT_STREQ(buffer.getBuffer(), "abcdefg");
}

TEST(CStringBuffer, cutsAPieceToTheText)
{
    CStringBuffer buffer(0);

    buffer.Append("abc", 2, 100);
    buffer.Append("abc", 5, 1);
    buffer.Append("abc", 0, -1);
    buffer.AppendChars(nullptr);

    EXPECT_STREQ(buffer.toString(), "c");
}

TEST(CStringBuffer, fillsItsRoomToTheLastByteBeforeItGrows)
{
    Buffer buffer(5);

    buffer.Append("abcde");

    EXPECT_EQ(buffer.capacity(), 6);
}

// A block of 11 bytes, full with 10 characters.
TEST(CStringBuffer, growsByAThirdAndThePieceThatDidNotFit)
{
    Buffer text(CString("0123456789")), characters(CString("0123456789")), character(CString("0123456789"));

    text.Append("abc");             // 14.3 + 3 + 1
    characters.AppendChars("abc");  // 14.3 + 3 + 2
    character.AppendChar('a');      // 14.3 + 2

    EXPECT_EQ(text.capacity(), 18);
    EXPECT_EQ(characters.capacity(), 19);
    EXPECT_EQ(character.capacity(), 16);
}

// With one byte more than the text and its NUL, characters need another one, a text does not.
TEST(CStringBuffer, asksForOneMoreByteForCharacters)
{
    Buffer text(3), characters(3), character(1);

    text.Append("abc");
    characters.AppendChars("abc");
    character.AppendChar('a');

    EXPECT_EQ(text.capacity(), 4);
    EXPECT_EQ(characters.capacity(), 10);  // 5.2 + 3 + 2
    EXPECT_EQ(character.capacity(), 2);
}

TEST(CStringBuffer, keepsItsBlockWhenItIsEmptied)
{
    Buffer buffer(CString("abc"));

    buffer.Empty();

    EXPECT_TRUE(buffer.IsEmpty());
    EXPECT_EQ(buffer.capacity(), 4);
    EXPECT_STREQ(buffer.toString(), "");
}

TEST(CStringBuffer, givesItsBlockBackAndTakesANewOne)
{
    Buffer buffer(CString("abc"));

    buffer.ReleaseBuffer();

    EXPECT_EQ(buffer.getBuffer(), nullptr);
    EXPECT_EQ(buffer.capacity(), 0);
    EXPECT_EQ(buffer.length(), 0);
    EXPECT_STREQ(buffer.toString(), "");
    buffer.Append("x");
    EXPECT_STREQ(buffer.getBuffer(), "x");
}

TEST(CStringBuffer, keepsNulsInTexts)
{
    CStringBuffer buffer(0);

    buffer.Append(CString("a\0b", 3));

    EXPECT_EQ(buffer.toString(), CString("a\0b", 3));
}

TEST(CStringBuffer, takesAMillionCharactersOneByOne)
{
    CStringBuffer buffer(0);

    for (int i = 0; i < 1000000; ++i)
        buffer.AppendChar(char('a' + i % 26));

    EXPECT_EQ(buffer.toString().GetLength(), 1000000);
    EXPECT_EQ(buffer.toString()[999999], 'a' + 999999 % 26);
}

TEST(CStringBuffer, takesItsOwnTextAndPartsOfIt)
{
    CStringBuffer buffer("abc");

    buffer.AppendChars(buffer.getBuffer());      // grows, so that the block moves
    buffer.AppendChars(buffer.getBuffer() + 4);  // "bc"

    EXPECT_STREQ(buffer.getBuffer(), "abcabcbc");

    CStringBuffer roomy(100);
    roomy.AppendChars("xy");
    roomy.AppendChars(roomy.getBuffer());
    EXPECT_STREQ(roomy.getBuffer(), "xyxy");
}

// Of what is done here no more than the result shows: a capacity that no int holds, made one, is refused as well.
TEST(CStringBuffer, refusesMoreThanAnIntCanCount)
{
    EXPECT_THROW(CStringBuffer buffer(INT_MAX), std::bad_alloc);
}

}  // namespace
