#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

constexpr DWORD fromSystem = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
constexpr DWORD fromString = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY;

// Formats into a buffer that is big enough, and checks the result's length.
std::string format(DWORD flags, char const* source, DWORD id = 0, DWORD_PTR* arguments = nullptr)
{
    char text[512];
    std::memset(text, 0x5A, sizeof text);
    DWORD const length =
        FormatMessageA(flags, source, id, 0, text, sizeof text, reinterpret_cast<va_list*>(arguments));
    if (length == 0)
        return "error " + std::to_string(GetLastError());
    EXPECT_EQ(length, std::strlen(text));
    EXPECT_EQ(text[length + 1], 0x5A);
    return text;
}

}  // namespace

TEST(ErrorTexts, areSentencesThatEndTheirLine)
{
    for (DWORD const error :
         {0u, 2u, 3u, 5u, 6u, 8u, 17u, 32u, 80u, 87u, 112u, 127u, 183u, 267u, 1008u, 1300u, 1400u}) {
        std::string const text = format(fromSystem, nullptr, error);

        ASSERT_GT(text.size(), 3u);
        EXPECT_EQ(text.substr(text.size() - 3), ".\r\n") << error;
    }
}

TEST(ErrorTexts, doNotExistForUnknownNumbers)
{
    char text[64];

    EXPECT_FAILS(FormatMessageA(fromSystem, nullptr, 99999, 0, text, sizeof text, nullptr),
                 ERROR_MR_MID_NOT_FOUND);
}

TEST(ErrorTexts, haveABlankForALineBreakWithoutWidth)
{
    std::string const text = format(fromSystem | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr, ERROR_ACCESS_DENIED);

    EXPECT_EQ(text.substr(text.size() - 2), ". ");
}

TEST(ErrorTexts, comeInANewBuffer)
{
    std::string const expected = format(fromSystem, nullptr, ERROR_ACCESS_DENIED);
    char* text = nullptr;
    DWORD const flags = fromSystem | FORMAT_MESSAGE_ALLOCATE_BUFFER;

    DWORD const length =
        FormatMessageA(flags, nullptr, ERROR_ACCESS_DENIED, 0, reinterpret_cast<char*>(&text), 0, nullptr);

    ASSERT_NE(text, nullptr);
    EXPECT_EQ(length, expected.size());
    EXPECT_EQ(text, expected);
    EXPECT_EQ(LocalFree(text), nullptr);
}

TEST(ErrorTexts, comeInNoNewBufferOnFailure)
{
    char byte = 0;
    char* text = &byte;
    DWORD const flags = fromSystem | FORMAT_MESSAGE_ALLOCATE_BUFFER;

    EXPECT_FAILS(FormatMessageA(flags, nullptr, 99999, 0, reinterpret_cast<char*>(&text), 0, nullptr),
                 ERROR_MR_MID_NOT_FOUND);
    EXPECT_EQ(text, nullptr);
    EXPECT_FAILS(FormatMessageA(flags, nullptr, ERROR_ACCESS_DENIED, 0, nullptr, 0, nullptr),
                 ERROR_NOT_ENOUGH_MEMORY);
}

TEST(ErrorTexts, areNotCut)
{
    auto const length = static_cast<DWORD>(format(fromSystem, nullptr, ERROR_ACCESS_DENIED).size());
    std::string text(length + 2, '\x5A');

    EXPECT_EQ(FormatMessageA(fromSystem, nullptr, 5, 0, text.data(), length + 1, nullptr), length);
    EXPECT_EQ(text[length + 1], '\x5A');
    EXPECT_FAILS(FormatMessageA(fromSystem, nullptr, 5, 0, text.data(), 2, nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
    EXPECT_FAILS(FormatMessageA(fromSystem, nullptr, 5, 0, text.data(), 0, nullptr),
                 ERROR_INSUFFICIENT_BUFFER);
}

TEST(MessageTexts, needASource)
{
    EXPECT_EQ(format(FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, 5), "error 87");
}

TEST(MessageTexts, haveNumberedInserts)
{
    DWORD_PTR arguments[] = {reinterpret_cast<DWORD_PTR>("one"), reinterpret_cast<DWORD_PTR>("two"),
                             DWORD_PTR(-5), 255};
    struct Row {
        char const* source;
        char const* expected;
    };
    constexpr Row rows[] = {
        {"a %1 b %2.", "a one b two."},
        {"%2%1%2", "twoonetwo"},
        {"%3!d! %3!i! %3!ld! %3!hd!", "-5 -5 -5 -5"},
        {"%4!u! %4!lu! %4!I64u! %4!05u!", "255 255 255 00255"},
        {"%4!x! %4!X! %4!#x! %4!o!", "ff FF 0xff 377"},
        {"%3!x! %3!u!", "fffffffb 4294967291"},
        {"%4!6d!|%4!-6d!|%4!+d!", "   255|255   |+255"},
        {"%1!s!|%1!6s!|%1!-6s!|%1!.2s!", "one|   one|one   |on"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(format(fromString, row.source, 0, arguments), row.expected) << row.source;
}

TEST(MessageTexts, haveEscapes)
{
    DWORD_PTR arguments[] = {0};

    EXPECT_EQ(format(fromString, "%%|%n|%r|%t|% |%.|%!|%b|%z", 0, arguments), "%|\r\n|\r|\t| |.|!|b|z");
    EXPECT_EQ(format(fromString, "abc%0def", 0, arguments), "abc");
}

TEST(MessageTexts, endTheirLinesAsTheSystemDoes)
{
    EXPECT_EQ(format(fromString, "a\nb\r\nc\r\n"), "a\r\nb\r\nc\r\n");
    EXPECT_EQ(format(fromString | FORMAT_MESSAGE_MAX_WIDTH_MASK, "a\nb\r\nc%nd"), "a b c\r\nd");
}

TEST(MessageTexts, keepInsertsThatAreIgnored)
{
    DWORD const flags = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_IGNORE_INSERTS;

    EXPECT_EQ(format(flags, "a %1 %2!d! %% b%nc%0d"), "a %1 %2!d! %% b\r\nc");
}

TEST(MessageTexts, areRefusedWhenBroken)
{
    DWORD_PTR arguments[] = {reinterpret_cast<DWORD_PTR>("one"), 2};

    EXPECT_EQ(format(fromString, "a%", 0, arguments), "error 87");
    EXPECT_EQ(format(fromString, "%1!", 0, arguments), "error 87");
    EXPECT_EQ(format(fromString, "%1!s", 0, arguments), "error 87");
    EXPECT_EQ(format(fromString, "%1"), "error 87");
    EXPECT_EQ(format(FORMAT_MESSAGE_FROM_STRING, "%1"), "error 87");
}

TEST(MessageTexts, areNeverEmpty)
{
    EXPECT_EQ(format(fromString, ""), "error 235");
}

TEST(MessageTexts, preferTheStringToTheSystem)
{
    EXPECT_EQ(format(fromString | FORMAT_MESSAGE_FROM_SYSTEM, "x", 5), "x");
}

TEST(LocalMemory, isClearedOnRequest)
{
    auto* const memory = static_cast<char*>(LocalAlloc(LPTR, 4096));
    ASSERT_NE(memory, nullptr);

    EXPECT_EQ(std::string(memory, 4096), std::string(4096, '\0'));
    EXPECT_EQ(LocalFree(memory), nullptr);
}

TEST(LocalMemory, mayBeEmpty)
{
    HLOCAL const memory = LocalAlloc(LMEM_FIXED, 0);

    EXPECT_NE(memory, nullptr);
    EXPECT_EQ(LocalFree(memory), nullptr);
    EXPECT_EQ(LocalFree(nullptr), nullptr);
}
