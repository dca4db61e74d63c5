// Composing a CString from a format and arguments.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace {

char const* const noText = nullptr;

template <class... Arguments>
CString formatted(char const* format, Arguments const&... arguments)
{
    CString text("before");
    text.Format(format, arguments...);
    return text;
}

template <class... Arguments>
CString message(char const* format, Arguments const&... arguments)
{
    CString text("before");
    text.FormatMessage(format, arguments...);
    return text;
}

// What the C library makes of a format, where both are to agree.
template <class... Arguments>
std::string printed(char const* format, Arguments... arguments)
{
    char buffer[512];
    int const length = std::snprintf(buffer, sizeof buffer, format, arguments...);
    return std::string(buffer, static_cast<std::size_t>(length));
}

CString formattedByList(char const* format, ...)
{
    CString text("before");
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return text;
}

}  // namespace

TEST(CStringFormat, fillsInItsArguments)
{
    EXPECT_EQ(formatted("%s,%.3f,%d\n", "name", 1.5, -7), "name,1.500,-7\n");
    EXPECT_EQ(formatted("%d%%", 50), "50%");
    EXPECT_EQ(formatted("plain"), "plain");
    EXPECT_EQ(formatted(""), "");
    EXPECT_EQ(formatted(noText), "");
}

TEST(CStringFormat, takesTextsOfEveryKind)
{
    unsigned char const bytes[] = "bytes";
    char array[10] = "array";

    EXPECT_EQ(formatted("%s", CString("CString")), "CString");
    EXPECT_EQ(formatted("%s", std::string("string")), "string");
    EXPECT_EQ(formatted("%s", std::string_view("view", 3)), "vie");
    EXPECT_EQ(formatted("%s", bytes), "bytes");
    EXPECT_EQ(formatted("%s", array), "array");
    EXPECT_EQ(formatted("%s", noText), "(null)");
    EXPECT_EQ(formatted("%s", nullptr), "(null)");
    EXPECT_EQ(formatted("%s", std::string_view()), "");
    EXPECT_EQ(formatted("%hs %ls %S", "a", "b", "c"), "a b c");
}

TEST(CStringFormat, keepsNulBytesOfTextsAndCharacters)
{
    EXPECT_EQ(formatted("%s|", CString("a\0b", 3)), std::string_view("a\0b|", 4));
    EXPECT_EQ(formatted("%c|", 0), std::string_view("\0|", 2));
}

TEST(CStringFormat, cutsAndPadsTexts)
{
    for (char const* format :
         {"%s", "%5s|", "%-5s|", "%.2s|", "%5.2s|", "%-5.2s|", "%2s|", "%.0s|", "%.9s|"}) {
        EXPECT_EQ(formatted(format, "abc"), printed(format, "abc")) << format;
        EXPECT_EQ(formatted(format, CString("abc")), printed(format, "abc")) << format;
    }
    char const noEnd[] = {'a', 'b', 'c'};
    EXPECT_EQ(formatted("%.3s", static_cast<char const*>(noEnd)), "abc");
}

TEST(CStringFormat, takesWidthAndPrecisionFromArguments)
{
    EXPECT_EQ(formatted("%*d|%-*d|%.*f", 4, 1, 4, 2, 1, 2.55), "   1|2   |2.5");
    EXPECT_EQ(formatted("%*d|", -4, 1), "1   |");
    EXPECT_EQ(formatted("%.*s|", -1, "abc"), "abc|");
    EXPECT_EQ(formatted("%*.*s|", 4, 2, "abc"), "  ab|");
    EXPECT_EQ(formatted("%*s|", "no number", "abc"), "abc|");
}

TEST(CStringFormat, printsIntegersAsPrintfDoes)
{
    for (char const* format : {"%d",    "%i",    "%u",    "%x",     "%X",    "%o",     "%5d|",    "%-5d|",
                               "%05d",  "%+d",   "% d",   "%+ d",   "%.3d",  "%6.3d|", "%-6.3d|", "%06.3d|",
                               "%.0d",  "%#x",   "%#X",   "%#o",    "%#8x|", "%#08x",  "%-#8x|",  "%#.4x",
                               "%#.3o", "%+05d", "% 05d", "%-05d|", "%hd",   "%hhd",   "%hu",     "%hhx"}) {
        for (int value : {0, 1, -1, 7, 9, 10, 42, 99, 100, -100, 12345, 65536 + 5, INT_MAX, INT_MIN})
            EXPECT_EQ(formatted(format, value), printed(format, value)) << format << ' ' << value;
    }
}

TEST(CStringFormat, keepsTheZeroOfAnOctalNumberWithoutDigits)
{
    EXPECT_EQ(formatted("%#.0o %.0o", 0, 0), "0 ");
}

TEST(CStringFormat, printsLongIntegersWholeWhicheverSizeItIsTold)
{
    std::int64_t const number = -9223372036854775807 - 1;
    std::uint64_t const large = 18446744073709551615u;

    for (char const* format : {"%d", "%ld", "%lld", "%I64d", "%I32d", "%Id", "%zd", "%jd", "%td", "%qd"})
        EXPECT_EQ(formatted(format, number), "-9223372036854775808") << format;
    for (char const* format : {"%u", "%lu", "%llu", "%I64u", "%zu"})
        EXPECT_EQ(formatted(format, large), "18446744073709551615") << format;
    EXPECT_EQ(formatted("%llx", large), "ffffffffffffffff");
    EXPECT_EQ(formatted("%d", large), "-1");
    EXPECT_EQ(formatted("%hd", std::int64_t(0x123456789)), "26505");
}

TEST(CStringFormat, takesSmallIntegersBooleansAndEnumerators)
{
    enum Plain { five = 5 };
    enum class Scoped : unsigned char { six = 6 };

    EXPECT_EQ(formatted("%d %d %d", true, five, Scoped::six), "1 5 6");
    EXPECT_EQ(formatted("%d %u %x", static_cast<short>(-1), static_cast<unsigned short>(65535),
                        static_cast<signed char>(-1)),
              "-1 65535 ffffffff");
    EXPECT_EQ(formatted("%d", 'a'), "97");
}

TEST(CStringFormat, printsCharacters)
{
    EXPECT_EQ(formatted("%c%c%c", 'a', 98, 99u), "abc");
    EXPECT_EQ(formatted("%3c|%-3c|", 'a', 'b'), "  a|b  |");
    EXPECT_EQ(formatted("%c", 256 + 'a'), "a");
}

TEST(CStringFormat, printsFloatingNumbersAsPrintfDoes)
{
    for (char const* format : {"%f", "%.3f", "%.0f", "%#.0f", "%10.2f|", "%-10.2f|", "%010.2f", "%+.1f",
                               "% .1f", "%e", "%.2E", "%g", "%G", "%#g", "%a", "%lf", "%.20f"}) {
        for (double value : {0.0, -0.0, 1.0, -1.5, 3.14159265358979, 1e10, 1e-10, 123456789.125, 1e100})
            EXPECT_EQ(formatted(format, value), printed(format, value)) << format << ' ' << value;
    }
    EXPECT_EQ(formatted("%f", 1.5f), "1.500000");
    EXPECT_EQ(formatted("%.2f", 2.5L), "2.50");
    EXPECT_EQ(formatted("%f %F", HUGE_VAL, -HUGE_VAL), "inf -INF");
    EXPECT_EQ(formatted("%.1f", 1e300).GetLength(), 303);
}

TEST(CStringFormat, printsPointersAlikeOnEverySystem)
{
    EXPECT_EQ(formatted("%p", reinterpret_cast<void*>(std::uintptr_t(0x12AB))), "00000000000012AB");
    EXPECT_EQ(formatted("%p", static_cast<void*>(nullptr)), "0000000000000000");
    EXPECT_EQ(formatted("%18p|%-18p|", static_cast<void*>(nullptr), static_cast<int*>(nullptr)),
              "  0000000000000000|0000000000000000  |");
}

TEST(CStringFormat, convertsANumberThatDoesNotFitItsConversion)
{
    EXPECT_EQ(formatted("%d", 2.9), "2");
    EXPECT_EQ(formatted("%d", -2.9), "-2");
    EXPECT_EQ(formatted("%d", 1e300), "9223372036854775807");
    EXPECT_EQ(formatted("%d", -1e300), "-9223372036854775808");
    EXPECT_EQ(formatted("%d", std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(formatted("%.1f", 3), "3.0");
    EXPECT_EQ(formatted("%.1f", 3u), "3.0");
    EXPECT_EQ(formatted("%c", 97.0), "a");
    EXPECT_EQ(formatted("%x", reinterpret_cast<void*>(std::uintptr_t(0x12ab))), "12ab");
    EXPECT_EQ(formatted("%f", static_cast<void*>(nullptr)), "0000000000000000");
    EXPECT_EQ(formatted("%p", 10), "000000000000000A");
    EXPECT_EQ(formatted("%p", 1.5), "0000000000000000");
}

TEST(CStringFormat, printsANumberWhereATextIsExpected)
{
    EXPECT_EQ(formatted("%s %s %s", -7, 7u, 1.5), "-7 7 1.5");
    EXPECT_EQ(formatted("%5s|%.1s", 42, 42), "   42|42");
    EXPECT_EQ(formatted("%s", static_cast<void*>(nullptr)), "0000000000000000");
}

TEST(CStringFormat, printsATextWhereANumberIsExpected)
{
    EXPECT_EQ(formatted("%d %5x| %.1f %c %p", "a", "b", "cc", "dd", "e"), "a     b| cc dd e");
}

TEST(CStringFormat, leavesAConversionWithoutArgumentAsItStands)
{
    EXPECT_EQ(formatted("%s"), "%s");
    EXPECT_EQ(formatted("%d and %-5.2f", 1), "1 and %-5.2f");
}

TEST(CStringFormat, leavesAnUnknownConversionAsItStandsAndSparesItsArgument)
{
    EXPECT_EQ(formatted("%y %d", 1), "%y 1");
    EXPECT_EQ(formatted("%1$d", 1), "%1$d");
    EXPECT_EQ(formatted("100%", 1), "100%");
    EXPECT_EQ(formatted("%5.2", 1), "%5.2");
    EXPECT_EQ(formatted("%-", 1), "%-");
}

TEST(CStringFormat, neverWritesThroughAnArgument)
{
    int written = 7;

    EXPECT_EQ(formatted("ab%ncd", &written), "abcd");
    EXPECT_EQ(written, 7);
}

TEST(CStringFormat, ignoresArgumentsThatNoConversionAsksFor)
{
    EXPECT_EQ(formatted("%d", 1, 2, "three"), "1");
}

TEST(CStringFormat, boundsWidthsAndDigits)
{
    EXPECT_EQ(formatted("%99999999999999d", 1).GetLength(), 65535);
    EXPECT_EQ(formatted("%.99999999999999d", 1).GetLength(), 65535);
    EXPECT_EQ(formatted("%2147483647s", "a").GetLength(), 65535);
    EXPECT_EQ(formatted("%-*d", INT_MIN, 1).GetLength(), 65535);
    EXPECT_EQ(formatted("%.2147483647f", 1.0).GetLength(), 65537);
}

TEST(CStringFormat, makesLongTexts)
{
    CString const part('x', 1000);

    EXPECT_EQ(formatted("%s-%s-%d", part, part, 5), part + "-" + part + "-5");
}

TEST(CStringFormat, mayHaveTheTextItselfAsFormatAndArgument)
{
    CString text("a%s");

    text.Format(text, text);

    EXPECT_EQ(text, "aa%s");
}

TEST(CStringFormat, appendsToTheText)
{
    CString text("a");

    text.AppendFormat("%d", 1);
    text.AppendFormat("%s", text);

    EXPECT_EQ(text, "a1a1");
}

TEST(CStringFormat, takesAListOfArguments)
{
    CString text("a");

    EXPECT_EQ(formattedByList("%s %d %.1f", "x", 7, 1.5), "x 7 1.5");
    EXPECT_EQ(formattedByList("%1000d|", 7).GetLength(), 1001);
    EXPECT_EQ(formattedByList(noText), "");

    auto const append = [&text](char const* format, ...) {
        std::va_list arguments;
        va_start(arguments, format);
        text.AppendFormatV(format, arguments);
        va_end(arguments);
    };
    append("%d", 5);
    EXPECT_EQ(text, "a5");
}

TEST(CStringFormat, takesListedIntegersBySize)
{
    long long const large = 0x123456789ABCDEF;

    EXPECT_EQ(formattedByList("%I64d %I64u %I64x %d", -large, 18446744073709551615ull, large, 7),
              "-81985529216486895 18446744073709551615 123456789abcdef 7");
    EXPECT_EQ(formattedByList("%Id %Iu %I32d %d", std::ptrdiff_t(-large), std::size_t(large), -5, 7),
              "-81985529216486895 81985529216486895 -5 7");
    EXPECT_EQ(formattedByList("%lld %llx %jd %zu %td %d", large, large, std::intmax_t(1), std::size_t(2),
                              std::ptrdiff_t(3), 7),
              "81985529216486895 123456789abcdef 1 2 3 7");
    EXPECT_EQ(formattedByList("%ld %lu %hd %hhu %i %u %c", -1L, 2UL, 65537, 257, -3, 4000000000u, 'x'),
              "-1 2 1 1 -3 4000000000 x");
    EXPECT_EQ(formattedByList("%*d|%-*d|%.*f|%d", 4, 1, 4, 2, 2, 1.239, 7), "   1|2   |1.24|7");
    EXPECT_EQ(formattedByList("%f %Lf %g", 1.5, 2.5L, 0.25), "1.500000 2.500000 0.25");
}

TEST(CStringFormat, takesListedTextsByWidth)
{
    EXPECT_EQ(formattedByList("%s %hs %hS %d", "a", "b", "c", 7), "a b c 7");
    EXPECT_EQ(formattedByList("%ls %S %ws %d", L"a", L"b", L"c", 7), "a b c 7");
    EXPECT_EQ(formattedByList("%4S|%-3ls|%.2S|", L"a", L"b", L"abc"), "   a|b  |ab|");
    EXPECT_EQ(formattedByList("%s %S", noText, static_cast<wchar_t const*>(nullptr)), "(null) (null)");
    EXPECT_EQ(formattedByList("%C%lc%hc", 'a', 'b', 'c'), "abc");
}

TEST(CStringFormat, takesWideTexts)
{
    EXPECT_EQ(formatted("%S|%ls|%s|%6s|%.1s", L"a", L"b", L"c", L"d", L"ef"), "a|b|c|     d|e");
    EXPECT_EQ(formatted("%d %s", L"x", static_cast<wchar_t const*>(nullptr)), "x (null)");
}

TEST(CStringFormat, printsWideTextsInTheProcessCodePage)
{
    wchar_t const text[] = L"\u00E9-\u20AC";
    char bytes[16];
    int const length = WideCharToMultiByte(CP_ACP, 0, text, 3, bytes, sizeof bytes, nullptr, nullptr);

    EXPECT_EQ(formatted("%S", text), std::string_view(bytes, static_cast<std::size_t>(length)));
    EXPECT_EQ(formattedByList("%S", text), std::string_view(bytes, static_cast<std::size_t>(length)));
    EXPECT_LE(formatted("%.2S", text).GetLength(), 2) << "no character is cut";
}

TEST(CStringFormat, aListedCountIsNeverWritten)
{
    int untouched = 77;
    int volatile* const seen = &untouched;
    std::string const format("ab%nc%hhn%lln%d");

    EXPECT_EQ(formattedByList(format.c_str(), &untouched, &untouched, &untouched, 5), "abc5");

    EXPECT_EQ(*seen, 77);
}

TEST(CStringFormat, leavesAListedConversionThatItDoesNotKnowAsItStands)
{
    EXPECT_EQ(formattedByList("%y %d %**d %% %", 5, 4), "%y 5 %**d % %");
}

TEST(CStringFormatMessage, fillsInNumberedInserts)
{
    EXPECT_EQ(message("%2 of %1", "a", 7), "7 of a");
    EXPECT_EQ(message("%1%1", CString("ab")), "abab");
    EXPECT_EQ(message("%1!05d! %1!x!", 42), "00042 2a");
    EXPECT_EQ(message("%10 %1", 1, 2, 3, 4, 5, 6, 7, 8, 9, "ten"), "ten 1");
    EXPECT_EQ(message(noText), "");
}

TEST(CStringFormatMessage, knowsItsEscapes)
{
    EXPECT_EQ(message("100%%"), "100%");
    EXPECT_EQ(message("a%nb"), "a\r\nb");
    EXPECT_EQ(message("a%0b"), "a");
    EXPECT_EQ(message("a%!b%.c% d"), "a!b.c d");
    EXPECT_EQ(message("a%"), "a%");
}

TEST(CStringFormatMessage, leavesWhatItCannotFillInAsItStands)
{
    EXPECT_EQ(message("%1 %2", "a"), "a %2");
    EXPECT_EQ(message("%1!y!", "a"), "%1!y!");
    EXPECT_EQ(message("%1!d", 5), "5!d");
    EXPECT_EQ(message("%1!*d!", 5), "%1!*d!");
}
