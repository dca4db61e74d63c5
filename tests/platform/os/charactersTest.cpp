#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <string>

namespace {

unsigned char const* bytes(char const* text)
{
    return reinterpret_cast<unsigned char const*>(text);
}

std::string charactersFor(int (*test)(unsigned int))
{
    std::string found;
    for (unsigned int c = 0; c < 128; ++c) {
        if (test(c))
            found += static_cast<char>(c);
    }
    return found;
}

std::string const digits = "0123456789";
std::string const upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
std::string const lower = "abcdefghijklmnopqrstuvwxyz";

}  // namespace

TEST(MultibyteCharacters, haveTheKindsOfAscii)
{
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcspace(c); }), "\t\n\v\f\r ");
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcdigit(c); }), digits);
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcupper(c); }), upper);
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbclower(c); }), lower);
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcalpha(c); }), upper + lower);
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcalnum(c); }), digits + upper + lower);
    EXPECT_EQ(charactersFor([](unsigned int c) { return _ismbcpunct(c); }),
              "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~");
}

TEST(MultibyteCharacters, haveNoKindAboveAsciiWhereThePageIsUtf8)
{
    if (GetACP() != CP_UTF8)
        GTEST_SKIP() << "the code page is another one";
    for (unsigned int c = 128; c < 256; ++c) {
        EXPECT_FALSE(_ismbcspace(c) || _ismbcdigit(c) || _ismbcupper(c) || _ismbclower(c) || _ismbcalpha(c) ||
                     _ismbcalnum(c) || _ismbcpunct(c))
            << c;
        EXPECT_EQ(_mbctolower(c), c);
        EXPECT_EQ(_mbctoupper(c), c);
    }
}

TEST(MultibyteCharacters, areVisibleFromExclamationMarkToTilde)
{
    for (unsigned int c = 0; c < 128; ++c) {
        if (c == '\t')
            continue;  // the run-time libraries disagree on it

        EXPECT_EQ(_ismbcgraph(c) != 0, c > ' ' && c < 127) << c;
        EXPECT_EQ(_ismbcprint(c) != 0, c >= ' ' && c < 127) << c;
    }
}

TEST(MultibyteCharacters, changeCaseBetweenLatinLetters)
{
    for (unsigned int c = 0; c < 128; ++c) {
        bool const isUpper = c >= 'A' && c <= 'Z';
        bool const isLower = c >= 'a' && c <= 'z';

        EXPECT_EQ(_mbctolower(c), isUpper ? c + 32 : c);
        EXPECT_EQ(_mbctoupper(c), isLower ? c - 32 : c);
    }
}

TEST(MultibyteCharacters, areOneByteLongInACodePageWithoutLeadBytes)
{
    auto const* const text = bytes("ab");

    EXPECT_EQ(_mbclen(text), 1u);
    EXPECT_EQ(_mbsinc(text), text + 1);
    EXPECT_EQ(_mbsdec(text, text + 2), text + 1);
    EXPECT_EQ(_mbslen(text), 2u);
    EXPECT_FALSE(_ismbblead(0xC3));
    EXPECT_FALSE(_ismbbtrail(0xA9));
    EXPECT_FALSE(_ismbslead(text, text + 1));
    EXPECT_FALSE(_ismbstrail(text, text + 1));
}

TEST(MultibyteTexts, haveNothingBeforeTheirStart)
{
    auto const* const text = bytes("ab");

    EXPECT_EQ(_mbsdec(text, text), nullptr);
    EXPECT_EQ(_mbsdec(text + 1, text), nullptr);
}

TEST(MultibyteTexts, areSearchedForACharacter)
{
    auto const* const text = bytes("a=b=c");

    EXPECT_EQ(_mbschr(text, '='), text + 1);
    EXPECT_EQ(_mbsrchr(text, '='), text + 3);
    EXPECT_EQ(_mbschr(text, 'x'), nullptr);
    EXPECT_EQ(_mbsrchr(text, 'x'), nullptr);
    EXPECT_EQ(_mbschr(text, 0), text + 5);
    EXPECT_EQ(_mbsrchr(text, 0), text + 5);
}

TEST(MultibyteTexts, areSearchedForAText)
{
    auto const* const text = bytes("abcabc");

    EXPECT_EQ(_mbsstr(text, bytes("ca")), text + 2);
    EXPECT_EQ(_mbsstr(text, bytes("cb")), nullptr);
    EXPECT_EQ(_mbsstr(text, bytes("")), text);
}

TEST(MultibyteTexts, areSearchedForCharactersOfASet)
{
    auto const* const text = bytes("12ab");

    EXPECT_EQ(_mbspbrk(text, bytes("ba")), text + 2);
    EXPECT_EQ(_mbspbrk(text, bytes("x")), nullptr);
    EXPECT_EQ(_mbspbrk(text, bytes("")), nullptr);
    EXPECT_EQ(_mbsspn(text, bytes("21")), 2u);
    EXPECT_EQ(_mbsspn(text, bytes("")), 0u);
    EXPECT_EQ(_mbscspn(text, bytes("b")), 3u);
    EXPECT_EQ(_mbscspn(text, bytes("")), 4u);
}

TEST(MultibyteTexts, areComparedByBytes)
{
    EXPECT_EQ(_mbscmp(bytes("abc"), bytes("abc")), 0);
    EXPECT_LT(_mbscmp(bytes("ab"), bytes("abc")), 0);
    EXPECT_GT(_mbscmp(bytes("b"), bytes("abc")), 0);
    EXPECT_LT(_mbscmp(bytes("A"), bytes("a")), 0);
    EXPECT_LT(_mbscmp(bytes("z"), bytes("\xC3")), 0);
    EXPECT_EQ(_mbsnbcmp(bytes("abc"), bytes("abd"), 2), 0);
    EXPECT_LT(_mbsnbcmp(bytes("abc"), bytes("abd"), 3), 0);
    EXPECT_EQ(_mbsnbcmp(bytes("a"), bytes("b"), 0), 0);
}

TEST(MultibyteTexts, areComparedWithoutCase)
{
    EXPECT_EQ(_mbsicmp(bytes("Model.INI"), bytes("mODEL.ini")), 0);
    EXPECT_LT(_mbsicmp(bytes("A"), bytes("b")), 0);
    EXPECT_EQ(_mbsnbicmp(bytes("ABx"), bytes("aby"), 2), 0);
    EXPECT_NE(_mbsnbicmp(bytes("ABx"), bytes("aby"), 3), 0);
}

TEST(MultibyteTexts, changeCaseInPlace)
{
    unsigned char text[] = "Az09[`{@";

    EXPECT_EQ(_mbsupr(text), text);
    EXPECT_STREQ(reinterpret_cast<char*>(text), "AZ09[`{@");
    EXPECT_EQ(_mbslwr(text), text);
    EXPECT_STREQ(reinterpret_cast<char*>(text), "az09[`{@");
}

TEST(MultibyteTexts, areCopiedAndFilledUpWithNuls)
{
    unsigned char target[] = "xxxxxxx";

    EXPECT_EQ(_mbsnbcpy(target, bytes("abc"), 6), target);

    EXPECT_EQ(std::string(reinterpret_cast<char*>(target), 7), std::string("abc\0\0\0x", 7));
}

TEST(MultibyteTexts, areCutWithoutANul)
{
    unsigned char target[] = "xxxx";

    _mbsnbcpy(target, bytes("abc"), 2);

    EXPECT_STREQ(reinterpret_cast<char*>(target), "abxx");
}
