#include "logging/CCgPrintf.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr char const* failed = "(failed)";

std::string printed(char const* format, ...)
{
    CxStringBuff buffer;
    std::va_list arguments;
    va_start(arguments, format);
    bool const done = CCgPrintfV(buffer, format, arguments);
    va_end(arguments);
    return done ? std::string(buffer.view()) : failed;
}

std::string rendered(char const* format, std::vector<CCgParm> const& values)
{
    CCgParmList list;
    for (CCgParm const& value : values)
        list.add(value);
    CxStringBuff buffer;
    return CCgPrintfList(buffer, format, &list) ? std::string(buffer.view()) : failed;
}

// What the C library makes of the same.
template <class... Values>
std::string expected(char const* format, Values... values)
{
    char text[1024];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

TEST(CCgPrintf, printsIntegersAsTheCLibraryDoes)
{
    char const* const formats[] = {"%d",    "%5d",  "%-5d|",  "%05d", "%+d",  "% d", "%.3d", "%8.3d", "%+.0d",
                                   "%-05d", "%u",   "%x",     "%X",   "%#x",  "%o",  "%#o",  "%#.4o", "%i",
                                   "%#08x", "%+5i", "%08.3d", "%hd",  "%hhd", "%hu", "%hhu", "%3.0x"};
    for (char const* const format : formats)
        for (int const value : {0, 1, -1, 42, -42, 8, 70000, INT_MAX, INT_MIN})
            EXPECT_EQ(printed(format, value), expected(format, value)) << format << ' ' << value;
}

TEST(CCgPrintf, printsLongIntegersAsTheCLibraryDoes)
{
    EXPECT_EQ(printed("%ld", LONG_MIN), expected("%ld", LONG_MIN));
    EXPECT_EQ(printed("%lu", ULONG_MAX), expected("%lu", ULONG_MAX));
    for (char const* const format : {"%lld", "%llx", "%jd", "%zd", "%td", "%llu"})
        EXPECT_EQ(printed(format, LLONG_MIN), expected(format, LLONG_MIN)) << format;
    EXPECT_EQ(printed("%I64d", LLONG_MAX), "9223372036854775807");
    EXPECT_EQ(printed("%qd %Zd", LLONG_MAX, LLONG_MIN), "9223372036854775807 -9223372036854775808");
}

TEST(CCgPrintf, printsNumbersAsTheCLibraryDoes)
{
    char const* const formats[] = {"%f",      "%e",    "%g",    "%E",    "%G",   "%F",     "%a",
                                   "%A",      "%.0f",  "%#.0f", "%+f",   "% f",  "%12.3f", "%-12.3f|",
                                   "%012.3f", "%.10g", "%#g",   "%020a", "%.50f"};
    double const values[] = {0.0,
                             -0.0,
                             1.5,
                             -2.25,
                             1e300,
                             1e-300,
                             123456.789,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};
    for (char const* const format : formats)
        for (double const value : values)
            EXPECT_EQ(printed(format, value), expected(format, value)) << format << ' ' << value;
    EXPECT_EQ(printed("%.3Lf", 2.5L), "2.500");
}

TEST(CCgPrintf, octalZeroKeepsADigitWhereItsPrefixIsAskedFor)
{
    EXPECT_EQ(printed("%#.0o", 0), "0");
    EXPECT_EQ(printed("%.0o", 0), "");
}

TEST(CCgPrintf, infinityIsNotFilledWithZeros)
{
    EXPECT_EQ(printed("%06f", std::numeric_limits<double>::infinity()), "   inf");
}

TEST(CCgPrintf, printsTextsAndCharacters)
{
    EXPECT_EQ(printed("[%s]", "abc"), "[abc]");
    EXPECT_EQ(printed("[%5s][%-5s][%.2s][%5.2s]", "abc", "abc", "abc", "abc"), "[  abc][abc  ][ab][   ab]");
    EXPECT_EQ(printed("[%c][%3c][%-3c]", 'a', 'b', 'c'), "[a][  b][c  ]");
    EXPECT_EQ(printed("%s", static_cast<char const*>(nullptr)), "(null)");
}

TEST(CCgPrintf, textWithPrecisionNeedsNoNul)
{
    char const bytes[] = {'a', 'b', 'c'};

    EXPECT_EQ(printed("%.3s", bytes), "abc");
}

TEST(CCgPrintf, wideTextsAndCharactersBecomeTextOfTheCodePage)
{
    EXPECT_EQ(printed("%ls %S", L"abc", L"def"), "abc def");
    EXPECT_EQ(printed("%lc%C", static_cast<std::wint_t>(L'x'), static_cast<std::wint_t>(L'y')), "xy");
    EXPECT_EQ(printed("[%.2ls]", L"abc"), "[ab]");
}

TEST(CCgPrintf, twoPercentSignsAreOne)
{
    EXPECT_EQ(printed("100%%"), "100%");
    EXPECT_EQ(printed("%%d%d", 1), "%d1");
}

TEST(CCgPrintf, positionsChooseTheValues)
{
    EXPECT_EQ(printed("%2$s: %1$05d", 42, "units"), "units: 00042");
    EXPECT_EQ(printed("%1$s%1$s", "ab"), "abab");
    EXPECT_EQ(rendered("%2$s %1$s", {CCgParm::ofText("a"), CCgParm::ofText("b")}), "b a");
}

TEST(CCgPrintf, directiveWithoutPositionTakesTheNextIndexOfACounterOfItsOwn)
{
    EXPECT_EQ(rendered("%2$s %s", {CCgParm::ofText("a"), CCgParm::ofText("b")}), "b a");
    EXPECT_EQ(printed("%2$s %s", "a", "b"), "b a");
}

TEST(CCgPrintf, widthAndPrecisionComeFromTheListToo)
{
    EXPECT_EQ(printed("[%*d]", 5, 42), "[   42]");
    EXPECT_EQ(printed("[%*d]", -5, 42), "[42   ]");
    EXPECT_EQ(printed("[%.*s]", 2, "abc"), "[ab]");
    EXPECT_EQ(printed("[%.*f]", -1, 1.5), "[1.500000]");
    EXPECT_EQ(printed("[%3$*1$.*2$s]", 5, 2, "abc"), "[   ab]");
    EXPECT_EQ(printed("[%2$*1$d]", 4, 7), "[   7]");
    EXPECT_EQ(rendered("[%*d]", {CCgParm::ofInt32(4), CCgParm::ofInt32(7)}), "[   7]");
    EXPECT_EQ(rendered("[%*d]", {CCgParm::ofInt32(INT_MIN), CCgParm::ofInt32(7)}).size(), 65537u);
}

TEST(CCgPrintf, widthEndsAt65535)
{
    EXPECT_EQ(printed("%99999999999999d", 1).size(), 65535u);
    EXPECT_EQ(printed("%*d", INT_MIN, 1).size(), 65535u);
    EXPECT_EQ(printed("%.99999999d", 1).size(), 65535u);
}

TEST(CCgPrintf, countOfCharactersIsNeverWritten)
{
    int count = 7;

    EXPECT_EQ(printed("ab%ncd%d", &count, 1), "abcd1");

    EXPECT_EQ(count, 7);
}

TEST(CCgPrintf, malformedDirectiveGivesNoText)
{
    for (char const* const format :
         {"%", "abc %", "%y", "%5", "%-", "%.", "%1$", "%0$d", "%l", "%*0$d", "%w", "%5%"})
        EXPECT_EQ(rendered(format, {CCgParm::ofInt32(1), CCgParm::ofInt32(2)}), failed) << format;
}

TEST(CCgPrintf, failureLeavesTheBufferAsItWas)
{
    CxStringBuff buffer;
    buffer.append("before");

    EXPECT_FALSE(CCgPrintfList(buffer, "text %s", nullptr));

    EXPECT_STREQ(buffer.text(), "before");
}

TEST(CCgPrintf, missingParameterGivesNoText)
{
    EXPECT_EQ(rendered("%s", {}), failed);
    EXPECT_EQ(rendered("%2$s", {CCgParm::ofText("a")}), failed);
    EXPECT_EQ(rendered("%*d", {CCgParm::ofInt32(3)}), failed);
    EXPECT_EQ(rendered("%*d", {CCgParm::ofText("3"), CCgParm::ofInt32(3)}), failed);
}

TEST(CCgPrintf, parametersTooManyAreLeftOut)
{
    EXPECT_EQ(rendered("text", {CCgParm::ofInt32(1)}), "text");
}

TEST(CCgPrintf, parameterIsPrintedAsTheTypeThatItHas)
{
    CCgParm const text = CCgParm::ofText("abc");
    CCgParm const number = CCgParm::ofDouble(2.5);
    CCgParm const integer = CCgParm::ofInt32(42);
    struct Row {
        char const* format;
        CCgParm value;
        char const* text;
    };
    Row const rows[] = {
        {"%s", integer, "42"},
        {"%5s", integer, "   42"},
        {"%f", integer, "42.000000"},
        {"%.1f", integer, "42.0"},
        {"%c", CCgParm::ofInt32('A'), "A"},
        {"%x", CCgParm::ofInt32(-1), "ffffffff"},
        {"%lx", CCgParm::ofInt32(-1), "ffffffff"},
        {"%d", text, "abc"},
        {"%.2d", text, "abc"},
        {"%.2s", text, "ab"},
        {"%6f", text, "   abc"},
        {"%d", number, "2.500000"},
        {"%s", number, "2.500000"},
        {"%.2f", number, "2.50"},
        {"%g", CCgParm::ofFloat(0.5f), "0.5"},
        {"%s", CCgParm::ofBoolean(true), "true"},
        {"%s", CCgParm::ofBoolean(false), "false"},
        {"%d", CCgParm::ofBoolean(true), "1"},
        {"%s", CCgParm::ofChar('x'), "x"},
        {"%d", CCgParm::ofChar('x'), "120"},
        {"%d", CCgParm::ofLong(LONG_MIN), nullptr},
        {"%n", integer, ""},
        {"%p", CCgParm::ofInt32(255), "00000000000000FF"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(rendered(row.format, {row.value}), row.text ? row.text : std::to_string(LONG_MIN))
            << row.format;
}

TEST(CCgPrintf, variableListThatCannotBeReadGivesNoText)
{
    EXPECT_EQ(printed("%2$d", 1, 2), failed);      // of what type is the first?
    EXPECT_EQ(printed("%1$d %1$s", "a"), failed);  // two types for one
    EXPECT_EQ(printed("%65$d", 1), failed);
}

TEST(CCgPrintf, digitsAreGroupedAsTheLocaleSays)
{
    // The "C" locale has no groups.
    EXPECT_EQ(printed("%'d", 1234567), "1234567");
    EXPECT_EQ(printed("%'.2f", 1234567.5), "1234567.50");
    EXPECT_EQ(printed("%'010d", 1234), "0000001234");
}

}  // namespace
