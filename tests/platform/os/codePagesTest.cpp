#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// U+FFFD as `count` wide characters, and any other code as this system writes it.
std::wstring widen(std::u32string const& codes)
{
    std::wstring wide;
    for (char32_t const code : codes) {
        if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
            wide += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(code);
        }
    }
    return wide;
}

constexpr wchar_t poison = L'\x5A5A';

// Converts into a buffer of exactly the size that the call asks for, and
// checks that the size is right and that nothing is written behind it.
std::wstring toWide(UINT codePage, std::string const& text, DWORD flags = 0)
{
    int const length = static_cast<int>(text.size());
    int const needed = MultiByteToWideChar(codePage, flags, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed) + 1, poison);
    EXPECT_EQ(MultiByteToWideChar(codePage, flags, text.data(), length, wide.data(), needed), needed);
    EXPECT_EQ(wide.back(), poison);
    wide.pop_back();
    return wide;
}

std::string toNarrow(UINT codePage, std::wstring const& wide, char const* defaultChar = nullptr,
                     BOOL* used = nullptr)
{
    int const length = static_cast<int>(wide.size());
    int const needed =
        WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, defaultChar, nullptr);
    std::string text(static_cast<std::size_t>(needed) + 1, '\x5A');
    EXPECT_EQ(WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), needed, defaultChar, used),
              needed);
    EXPECT_EQ(text.back(), '\x5A');
    text.pop_back();
    return text;
}

}  // namespace

TEST(CodePages, includeTheProcesssOwn)
{
    EXPECT_TRUE(IsValidCodePage(GetACP()));
    EXPECT_TRUE(IsValidCodePage(GetOEMCP()));
}

TEST(CodePages, areKnownByNumberAlone)
{
    for (UINT const known :
         {437u, 850u, 932u, 936u, 949u, 950u, 1250u, 1252u, 1258u, 20127u, 28591u, 28605u, 65000u, 65001u})
        EXPECT_TRUE(IsValidCodePage(known)) << known;
    for (UINT const unknown : {0u, 1u, 2u, 3u, 9999u, 1200u, 65002u})
        EXPECT_FALSE(IsValidCodePage(unknown)) << unknown;
}

TEST(CodePages, tellTheirLeadBytes)
{
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0x81));
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0xE0));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 0xA0));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 'a'));
    EXPECT_TRUE(IsDBCSLeadByteEx(936, 0xFE));
    EXPECT_FALSE(IsDBCSLeadByteEx(1252, 0x81));
    EXPECT_FALSE(IsDBCSLeadByteEx(CP_UTF8, 0xC3));
    EXPECT_FALSE(IsDBCSLeadByte('a'));
    EXPECT_FAILS(IsDBCSLeadByteEx(9999, 0x81), ERROR_INVALID_PARAMETER);
}

TEST(CodePages, describeThemselves)
{
    struct Row {
        UINT codePage;
        UINT longest;
        BYTE defaultChar;
        BYTE leadBytes[6];
    };
    constexpr Row rows[] = {
        {1252, 1, '?', {}},
        {CP_UTF8, 4, '?', {}},
        {CP_UTF7, 5, '?', {}},
        {37, 1, 0x6F, {}},
        {932, 2, '?', {0x81, 0x9F, 0xE0, 0xFC}},
        {936, 2, '?', {0x81, 0xFE}},
        {949, 2, '?', {0x81, 0xFE}},
        {950, 2, '?', {0x81, 0xFE}},
        {1361, 2, '?', {0x84, 0xD3, 0xD8, 0xDE, 0xE0, 0xF9}},
    };
    for (Row const& row : rows) {
        CPINFO info;
        std::fill_n(reinterpret_cast<char*>(&info), sizeof info, '\x5A');

        EXPECT_TRUE(GetCPInfo(row.codePage, &info)) << row.codePage;

        EXPECT_EQ(info.MaxCharSize, row.longest) << row.codePage;
        EXPECT_EQ(info.DefaultChar[0], row.defaultChar) << row.codePage;
        EXPECT_EQ(info.DefaultChar[1], 0) << row.codePage;
        EXPECT_TRUE(std::equal(std::begin(row.leadBytes), std::end(row.leadBytes), info.LeadByte))
            << row.codePage;
        EXPECT_EQ(info.LeadByte[MAX_LEADBYTES - 1], 0) << row.codePage;
    }
}

TEST(CodePages, refuseToDescribeAnUnknownOne)
{
    CPINFO info;

    EXPECT_FAILS(GetCPInfo(9999, &info), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GetCPInfo(1252, nullptr), ERROR_INVALID_PARAMETER);
}

TEST(Utf8ToWide, convertsWholeCharacters)
{
    EXPECT_EQ(toWide(CP_UTF8, "plain text, more than eight bytes"), L"plain text, more than eight bytes");
    EXPECT_EQ(toWide(CP_UTF8, "\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD"),
              widen(U"\u0080\u07FF\u0800\uFFFD"));
    EXPECT_EQ(toWide(CP_UTF8, "\xED\x9F\xBF\xEE\x80\x80"), widen({0xD7FF, 0xE000}));
    EXPECT_EQ(toWide(CP_UTF8, "a\xF0\x90\x80\x80\xF4\x8F\xBF\xBFz"), widen({'a', 0x10000, 0x10FFFF, 'z'}));
}

TEST(Utf8ToWide, replacesEachPieceThatIsNoCharacter)
{
    struct Row {
        char const* text;
        char32_t const* codes;
    };
    constexpr Row rows[] = {
        {"\x80z", U"\uFFFDz"},
        {"\xC3z", U"\uFFFDz"},            // cut off
        {"\xC0\xAFz", U"\uFFFD\uFFFDz"},  // overlong
        {"\xC1\xBFz", U"\uFFFD\uFFFDz"},
        {"\xE2\x82z", U"\uFFFDz"},
        {"\xE2\xE2\x82\xACz", U"\uFFFD\u20ACz"},
        {"\xF0\x9F\x98z", U"\uFFFDz"},
        {"\xF8\x88\x80\x80\x80z", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz"},
        {"\xFFz", U"\uFFFDz"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(toWide(CP_UTF8, row.text), widen(row.codes)) << row.text;
        EXPECT_FAILS(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, row.text, -1, nullptr, 0),
                     ERROR_NO_UNICODE_TRANSLATION);
    }
}

TEST(Utf8ToWide, refusesOverlongFormsSurrogatesAndCodesThatAreTooGreat)
{
    for (char const* const text :
         {"\xE0\x9F\xBFz", "\xED\xA0\x80z", "\xED\xBF\xBFz", "\xF0\x8F\xBF\xBFz", "\xF4\x90\x80\x80z"}) {
        std::wstring const wide = toWide(CP_UTF8, text);

        EXPECT_EQ(wide.front(), 0xFFFD);
        EXPECT_EQ(wide.back(), L'z');
        EXPECT_FAILS(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, nullptr, 0),
                     ERROR_NO_UNICODE_TRANSLATION);
    }
}

TEST(Utf8ToWide, acceptsGoodTextUnderTheStrictFlag)
{
    EXPECT_EQ(toWide(CP_UTF8, "\xEF\xBF\xBD", MB_ERR_INVALID_CHARS), L"\xFFFD");
    EXPECT_EQ(toWide(CP_UTF8, "abc", MB_ERR_INVALID_CHARS), L"abc");
}

TEST(Utf8ToWide, countsTheNulOfAWholeText)
{
    wchar_t wide[4] = {poison, poison, poison, poison};

    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", -1, wide, 4), 3);
    EXPECT_EQ(std::wstring(wide, 4), std::wstring(L"ab\0\x5A5A", 4));
}

TEST(Utf8ToWide, convertsNulsWithinTheGivenLength)
{
    EXPECT_EQ(toWide(CP_UTF8, std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(Utf8ToWide, failsWhenTheBufferIsTooSmall)
{
    wchar_t wide[4] = {poison, poison, poison, poison};

    EXPECT_FAILS(MultiByteToWideChar(CP_UTF8, 0, "abc", -1, wide, 3), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(std::wstring(wide, 4), std::wstring(L"abc\x5A5A", 4));
    EXPECT_FAILS(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA9\xC3\xA9", 4, wide, 1), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(wide[1], L'b');
}

TEST(MultiByteToWide, refusesSenselessArguments)
{
    wchar_t wide[4];
    char text[4] = "a";

    for (UINT const codePage : {65001u, 1252u}) {
        EXPECT_FAILS(MultiByteToWideChar(codePage, 0, nullptr, 1, wide, 4), ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(MultiByteToWideChar(codePage, 0, text, 0, wide, 4), ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(MultiByteToWideChar(codePage, 0, text, 1, nullptr, 4), ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(MultiByteToWideChar(codePage, 0, text, 1, wide, -1), ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(MultiByteToWideChar(codePage, 0x10, text, 1, wide, 4), ERROR_INVALID_FLAGS);
        EXPECT_FAILS(WideCharToMultiByte(codePage, 0, nullptr, 1, text, 4, nullptr, nullptr),
                     ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(WideCharToMultiByte(codePage, 0, L"a", 0, text, 4, nullptr, nullptr),
                     ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(WideCharToMultiByte(codePage, 0, L"a", 1, nullptr, 4, nullptr, nullptr),
                     ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(WideCharToMultiByte(codePage, 0, L"a", 1, text, -1, nullptr, nullptr),
                     ERROR_INVALID_PARAMETER);
        EXPECT_FAILS(WideCharToMultiByte(codePage, 0x100, L"a", 1, text, 4, nullptr, nullptr),
                     ERROR_INVALID_FLAGS);
    }
    EXPECT_FAILS(MultiByteToWideChar(9999, 0, text, 1, wide, 4), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(WideCharToMultiByte(9999, 0, L"a", 1, text, 4, nullptr, nullptr), ERROR_INVALID_PARAMETER);
}

TEST(WideToUtf8, convertsWholeCharacters)
{
    EXPECT_EQ(toNarrow(CP_UTF8, L"plain"), "plain");
    EXPECT_EQ(toNarrow(CP_UTF8, widen(U"\u0080\u07FF\u0800\uFFFD")),
              "\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD");
    EXPECT_EQ(toNarrow(CP_UTF8, widen({'a', 0x10000, 0x10FFFF, 'z'})), "a\xF0\x90\x80\x80\xF4\x8F\xBF\xBFz");
    EXPECT_EQ(toNarrow(CP_UTF8, std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideToUtf8, replacesALoneSurrogate)
{
    std::wstring const wide = {wchar_t(0xD800), L'z', wchar_t(0xDC00)};

    EXPECT_EQ(toNarrow(CP_UTF8, wide), "\xEF\xBF\xBDz\xEF\xBF\xBD");
    EXPECT_FAILS(
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), 3, nullptr, 0, nullptr, nullptr),
        ERROR_NO_UNICODE_TRANSLATION);
}

TEST(WideToUtf8, neverWritesHalfACharacter)
{
    char text[] = "xxxx";

    EXPECT_FAILS(WideCharToMultiByte(CP_UTF8, 0, L"a\x20AC", 2, text, 3, nullptr, nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(text, "axxx");
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"a\x20AC", 2, text, 4, nullptr, nullptr), 4);
    EXPECT_STREQ(text, "a\xE2\x82\xAC");
}

TEST(WideToUtf8, countsTheNulOfAWholeText)
{
    char text[] = "xxxx";

    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"ab", -1, nullptr, 0, nullptr, nullptr), 3);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"ab", -1, text, 4, nullptr, nullptr), 3);
    EXPECT_EQ(std::string(text, 4), std::string("ab\0x", 4));
}

TEST(OtherCodePages, convertBothWays)
{
    struct Row {
        UINT codePage;
        char const* text;
        wchar_t const* wide;
    };
    constexpr Row rows[] = {
        {1252, "a\x80\xE4\xFF", L"a\x20AC\xE4\xFF"},
        {1252, "\x81\x8D\x8F\x90\x9D",
         L"\x81\x8D\x8F\x90\x9D"},  // control codes: the page has no character there
        {1250, "\xE8\xF8", L"\x10D\x159"},
        {1251, "\xC6", L"\x416"},
        {28591, "\x80\xE4", L"\x80\xE4"},
        {28605, "\xA4", L"\x20AC"},
        {437, "\x81\xE1", L"\xFC\xDF"},
        {850, "\x84", L"\xE4"},
        {20866, "\xC1", L"\x430"},
        {932, "a\x82\xA0\xB1", L"a\x3042\xFF71"},
        {936, "\xC4\xE3\x80", L"\x4F60\x20AC"},
        {949, "\xB0\xA1", L"\xAC00"},
        {950, "\xA4\x40", L"\x4E00"},
        {37, "\xC1\x81", L"Aa"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(toWide(row.codePage, row.text), row.wide) << row.codePage;
        EXPECT_EQ(toNarrow(row.codePage, row.wide), row.text) << row.codePage;
    }
}

TEST(OtherCodePages, convertLongTexts)
{
    std::string text;
    std::wstring wide;
    for (int i = 0; i < 10000; ++i) {
        text += "a\x82\xA0";
        wide += L"a\x3042";
    }

    EXPECT_EQ(toWide(932, text), wide);
    EXPECT_EQ(toNarrow(932, wide), text);
}

TEST(OtherCodePages, dropTheHighBitOfSevenBitText)
{
    EXPECT_EQ(toWide(20127, "A\xE4"), L"Ad");
}

TEST(OtherCodePages, replaceBytesThatAreNoCharacter)
{
    struct Row {
        UINT codePage;
        char const* text;
        wchar_t const* wide;
    };
    constexpr Row rows[] = {
        {932, "a\x81", L"a\x30FB"}, {936, "\x81 z", L"?z"}, {936, "\x81", L"?"},
        {949, "\x81 z", L"?z"},     {950, "\x81 z", L"?z"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(toWide(row.codePage, row.text), row.wide) << row.codePage;
        EXPECT_FAILS(MultiByteToWideChar(row.codePage, MB_ERR_INVALID_CHARS, row.text, -1, nullptr, 0),
                     ERROR_NO_UNICODE_TRANSLATION);
    }
}

TEST(OtherCodePages, replaceCharactersThatTheyLack)
{
    BOOL used = 7;
    EXPECT_EQ(toNarrow(1252, L"\x4E00z", nullptr, &used), "?z");
    EXPECT_EQ(used, TRUE);

    used = 7;
    EXPECT_EQ(toNarrow(1252, L"\x4E00z", "*", &used), "*z");
    EXPECT_EQ(used, TRUE);

    used = 7;
    EXPECT_EQ(toNarrow(1252, L"\x20ACz", "*", &used), "\x80z");
    EXPECT_EQ(used, FALSE);

    used = 7;
    EXPECT_EQ(toNarrow(37, L"A\x4E00", nullptr, &used), "\xC1\x6F");
    EXPECT_EQ(used, TRUE);
}

TEST(OtherCodePages, chooseNoCharacterThatMerelyLooksAlike)
{
    char text[2] = {};
    BOOL used = 7;

    EXPECT_EQ(WideCharToMultiByte(1252, WC_NO_BEST_FIT_CHARS, L"\x100", 1, text, 2, nullptr, &used), 1);

    EXPECT_EQ(text[0], '?');
    EXPECT_EQ(used, TRUE);
}

TEST(OtherCodePages, failWhenTheBufferIsTooSmall)
{
    wchar_t wide[3] = {poison, poison, poison};
    EXPECT_FAILS(MultiByteToWideChar(932, 0, "a\x82\xA0z", -1, wide, 2), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(wide[2], poison);
    EXPECT_FAILS(MultiByteToWideChar(936, 0, "a\x81 ", -1, wide, 1), ERROR_INSUFFICIENT_BUFFER);

    char text[] = "xxx";
    EXPECT_FAILS(WideCharToMultiByte(932, 0, L"\x3042z", -1, text, 2, nullptr, nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(text, "\x82\xA0x");
    EXPECT_FAILS(WideCharToMultiByte(1252, 0, L"a\x4E00", 2, text, 1, nullptr, nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
    EXPECT_FAILS(WideCharToMultiByte(1252, 0, L"a\x4E00", 2, text, 1, "*", nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(text, "a\xA0x");
}

TEST(OtherCodePages, convertAShiftedFormToItsEnd)
{
    EXPECT_EQ(toWide(CP_UTF7, "A+TgA."), L"A\x4E00.");
    EXPECT_EQ(toWide(CP_UTF7, toNarrow(CP_UTF7, L"A\x4E00")), L"A\x4E00");
}
