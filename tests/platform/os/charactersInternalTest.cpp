// What holds for the code page UTF-8 alone, which the process has here.
#include "platform/os/os.h"

#include <gtest/gtest.h>

namespace {

char const* next(char const* text)
{
    return CharNextA(text);
}

}  // namespace

TEST(Utf8Characters, haveNoKindAndNoCaseByByte)
{
    for (unsigned int c = 128; c < 256; ++c) {
        EXPECT_FALSE(_ismbcspace(c) || _ismbcalnum(c) || _ismbcalpha(c) || _ismbcdigit(c) || _ismbcupper(c) ||
                     _ismbclower(c) || _ismbcpunct(c) || _ismbcgraph(c) || _ismbcprint(c))
            << c;
        EXPECT_FALSE(_ismbblead(c) || _ismbbtrail(c)) << c;
        EXPECT_EQ(_mbctolower(c), c);
        EXPECT_EQ(_mbctoupper(c), c);
    }
    EXPECT_FALSE(_ismbcalnum('A' + 256));
    EXPECT_FALSE(_ismbcprint('\t'));
}

TEST(Utf8Texts, compareBehindAscii)
{
    EXPECT_GT(_stricmp("\xC3", "z"), 0);
    EXPECT_LT(_stricmp("z", "\xC3"), 0);
}

TEST(Utf8Texts, areSteppedThroughByCharacters)
{
    struct Row {
        char const* text;
        int length;
    };
    constexpr Row rows[] = {
        {"", 0},
        {"ab", 1},
        {"\xC3\xA9z", 2},
        {"\xE2\x82\xACz", 3},
        {"\xF0\x9F\x98\x80z", 4},
        {"\xC3z", 1},  // cut off
        {"\xE2\x82z", 1},
        {"\xA9z", 1},         // not a beginning
        {"\xC0\x80", 1},      // overlong
        {"\xED\xA0\x80", 1},  // surrogate
        {"\xF4\x90\x80\x80", 1},
        {"\xFF", 1},
    };
    for (Row const& row : rows)
        EXPECT_EQ(next(row.text) - row.text, row.length) << row.text;
}

TEST(Utf8Texts, areSteppedBackByCharacters)
{
    char const text[] = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xA9";

    EXPECT_EQ(CharPrevA(text, text + 11), text + 10);  // a byte of no character
    EXPECT_EQ(CharPrevA(text, text + 10), text + 6);
    EXPECT_EQ(CharPrevA(text, text + 6), text + 3);
    EXPECT_EQ(CharPrevA(text, text + 3), text + 1);
    EXPECT_EQ(CharPrevA(text, text + 1), text);
    EXPECT_EQ(CharPrevA(text, text), text);
    EXPECT_EQ(CharPrevA(text + 2, text + 3), text + 2);  // does not look before the start
}

TEST(Utf8Texts, changeTheCaseOfLettersOutsideAscii)
{
    char text[] = "\xC3\xA4 stra\xC3\x9F"
                  "e \xD0\xB6 \xCF\x89 \xFF";

    CharUpperA(text);
    EXPECT_STREQ(text,
                 "\xC3\x84 STRA\xC3\x9F"
                 "E \xD0\x96 \xCE\xA9 \xFF");

    CharLowerA(text);
    EXPECT_STREQ(text,
                 "\xC3\xA4 stra\xC3\x9F"
                 "e \xD0\xB6 \xCF\x89 \xFF");
}

TEST(Utf8Texts, keepALetterWhoseOtherCaseIsLonger)
{
    char text[] = "\xC8\xBA.";  // U+023A, whose lower case U+2C65 has three bytes

    CharLowerA(text);

    EXPECT_STREQ(text, "\xC8\xBA.");
}

TEST(Utf8Texts, areCutAnywhereWithoutHarmToTheRest)
{
    char text[] = "\xC3\xA4\xC3\xA4";

    EXPECT_EQ(CharUpperBuffA(text, 3), 3u);

    EXPECT_STREQ(text, "\xC3\x84\xC3\xA4");
}
