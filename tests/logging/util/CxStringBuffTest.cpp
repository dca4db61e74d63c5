#include "logging/util/CxStringBuff.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct Free {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, Free>;

TEST(CxStringBuff, takesNoMemoryBeforeItsFirstByte)
{
    CxStringBuff const buffer;

    EXPECT_EQ(buffer.capacity(), 0);
    EXPECT_STREQ(buffer.text(), "");
}

TEST(CxStringBuff, startsAt1024Bytes)
{
    CxStringBuff buffer;

    buffer.append('x');

    EXPECT_EQ(buffer.capacity(), 1024);
}

TEST(CxStringBuff, doublesWhenTheTerminatorWouldNotFit)
{
    CxStringBuff buffer;

    buffer.append(std::string(1023, 'x'));
    EXPECT_EQ(buffer.capacity(), 1024);
    buffer.append('x');
    EXPECT_EQ(buffer.capacity(), 2048);
}

TEST(CxStringBuff, doublesAsOftenAsALongAdditionNeeds)
{
    CxStringBuff buffer;

    buffer.append(std::string(5000, 'x'));

    EXPECT_EQ(buffer.capacity(), 8192);
    EXPECT_EQ(buffer.length(), 5000);
}

TEST(CxStringBuff, keepsATerminatorAtAllTimes)
{
    CxStringBuff buffer;
    for (int i = 0; i < 3000; ++i) {
        buffer.append('x');
        ASSERT_EQ(buffer.text()[buffer.length()], '\0');
    }
    buffer.truncate(10);
    EXPECT_EQ(buffer.text()[10], '\0');
}

TEST(CxStringBuff, handsItsTextOverAndIsEmptyThen)
{
    CxStringBuff buffer;
    buffer.append("abc");
    char const* const written = buffer.text();

    Text const text(buffer.take());

    EXPECT_EQ(text.get(), written);
    EXPECT_STREQ(text.get(), "abc");
    EXPECT_EQ(buffer.length(), 0);
    EXPECT_STREQ(buffer.text(), "");
}

TEST(CxStringBuff, givesAnEmptyTextWhenNothingWasAdded)
{
    CxStringBuff buffer;

    Text const text(buffer.take());

    EXPECT_STREQ(text.get(), "");
}

TEST(CxStringBuff, holdsNulBytes)
{
    CxStringBuff buffer;

    buffer.append(std::string_view("a\0b", 3));

    EXPECT_EQ(buffer.view(), std::string_view("a\0b", 3));
}

TEST(CxStringBuff, repeatsAByte)
{
    CxStringBuff buffer;

    buffer.append(3, '0');
    buffer.append(0, '1');

    EXPECT_STREQ(buffer.text(), "000");
}

TEST(CxStringBuff, leavesOutWhatNoTextCanHold)
{
    CxStringBuff buffer;
    buffer.append("abc");

    EXPECT_FALSE(buffer.append(std::size_t(0x7FFFFFFF), 'x'));

    EXPECT_STREQ(buffer.text(), "abc");
}

}  // namespace
