#include "logging/util/CxPrintUtil.h"
#include "logging/util/CxChars.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

std::string utf8(std::uint32_t codePoint)
{
    CxStringBuff buffer;
    CxAppendUtf8(buffer, codePoint);
    return std::string(buffer.view());
}

TEST(CxPrintUtil, writesTheLeastAndTheGreatestNumbers)
{
    CxStringBuff buffer;

    CxAppendDecimal(buffer, std::numeric_limits<std::int64_t>::min());
    buffer.append(' ');
    CxAppendUnsignedDecimal(buffer, std::numeric_limits<std::uint64_t>::max());
    buffer.append(' ');
    CxAppendDecimal(buffer, 0);

    EXPECT_STREQ(buffer.text(), "-9223372036854775808 18446744073709551615 0");
}

TEST(CxPrintUtil, codePointTakesAsManyBytesAsItNeeds)
{
    struct Row {
        std::uint32_t codePoint;
        std::string bytes;
    };
    Row const rows[] = {
        {0, std::string(1, '\0')},
        {0x41, "A"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FE, "\xDF\xBE"},
        {0x800, "\xE0\xA0\x80"},
        {0x20AC, "\xE2\x82\xAC"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
        {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
        {0x200000, "\xF8\x88\x80\x80\x80"},
        {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
        {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
        {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(utf8(row.codePoint), row.bytes) << row.codePoint;
}

TEST(CxPrintUtil, codePoint2047TakesTheThreeByteForm)
{
    EXPECT_EQ(utf8(2047), "\xE0\x9F\xBF");
}

TEST(CxPrintUtil, codePointBeyondSixBytesIsWrittenAsTheLastOne)
{
    EXPECT_EQ(utf8(0xFFFFFFFF), utf8(0x7FFFFFFF));
}

TEST(CxChars, digitsAndLettersAreThoseOfAscii)
{
    for (int c = 0; c < 256; ++c) {
        bool const digit = c >= '0' && c <= '9';
        bool const letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        EXPECT_EQ(CxIsDigit(static_cast<char>(c)), digit) << c;
        EXPECT_EQ(CxIsLetter(static_cast<char>(c)), letter) << c;
    }
}

}  // namespace
