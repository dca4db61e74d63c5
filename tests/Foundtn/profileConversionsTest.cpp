#include "Foundtn/util/IAppProfileInterface.h"

#include "tests/support/ScopedLocale.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using Profile = IAppProfileInterface;

constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();

// -- Numbers -----------------------------------------------------------------------

struct IntRow {
    char const* text;
    int ok;
    int value;
};

IntRow const intRows[] = {
    {"0", 1, 0},
    {"7", 1, 7},
    {"-7", 1, -7},
    {"+7", 1, 7},
    {" \t\r\n\v\f42", 1, 42},
    {"42abc", 1, 42},
    {"42 43", 1, 42},
    {"007", 1, 7},
    {"0x10", 1, 0},
    {"1.9", 1, 1},
    {"2147483647", 1, intMax},
    {"-2147483648", 1, intMin},
    {"2147483648", 1, intMax},
    {"-2147483649", 1, intMin},
    {"99999999999999999999999999999999", 1, intMax},
    {"-99999999999999999999999999999999", 1, intMin},
    {"", 0, 0},
    {" ", 0, 0},
    {"abc", 0, 0},
    {"-", 0, 0},
    {"- 7", 0, 0},
    {"+-7", 0, 0},
    {"--7", 0, 0},
    {",7", 0, 0},
};

TEST(ProfileConversions, readAnInt)
{
    for (IntRow const& row : intRows) {
        int ok = -1;
        int value = 12345;

        Profile::String2Int(row.text, ok, value);

        EXPECT_EQ(ok, row.ok) << '"' << row.text << '"';
        EXPECT_EQ(value, row.ok ? row.value : 12345) << '"' << row.text << '"';
        EXPECT_EQ(Profile::String2Int(row.text, 99), row.ok ? row.value : 99) << '"' << row.text << '"';
    }
}

TEST(ProfileConversions, writeAnInt)
{
    for (int const value : {0, 7, -7, intMin, intMax}) {
        CString text("old");
        Profile::Int2String(value, text);

        EXPECT_STREQ(text, std::to_string(value).c_str());
        EXPECT_STREQ(Profile::Int2String(value), text);
        EXPECT_EQ(Profile::String2Int(text, 99), value);
    }
}

struct DoubleRow {
    char const* text;
    int ok;
    double value;
};

DoubleRow const doubleRows[] = {
    {"0", 1, 0},
    {"1.5", 1, 1.5},
    {"-1.5", 1, -1.5},
    {"+1.5", 1, 1.5},
    {" \t2.25 mm", 1, 2.25},
    {".5", 1, 0.5},
    {"5.", 1, 5},
    {"1e3", 1, 1000},
    {"1,5", 1, 1},
    {"0.1", 1, 0.1f},  // read in single precision
    {"3.14159265358979", 1, 3.14159265358979f},
    {"1e39", 1, std::numeric_limits<double>::infinity()},
    {"-1e39", 1, -std::numeric_limits<double>::infinity()},
    {"1e-60", 1, 0},
    {"1e400", 1, std::numeric_limits<double>::infinity()},
    {"-1e400", 1, -std::numeric_limits<double>::infinity()},
    {"1e-400", 1, 0},
    {"1e99999999999999999999", 1, std::numeric_limits<double>::infinity()},
    {"1e-99999999999999999999", 1, 0},
    {"0e99999", 1, 0},
    {"0.001e500", 1, std::numeric_limits<double>::infinity()},
    {"1000.5e-500x", 1, 0},
    {"0x10", 1, 0},
    {"nan", 0, 0},  // words are no numbers
    {"nano", 0, 0},
    {"inf", 0, 0},
    {"-information", 0, 0},
    {"", 0, 0},
    {" ", 0, 0},
    {"abc", 0, 0},
    {"-", 0, 0},
    {"+-1", 0, 0},
    {"--1", 0, 0},
    {".", 0, 0},
    {",5", 0, 0},
};

TEST(ProfileConversions, readADoubleInSinglePrecision)
{
    for (DoubleRow const& row : doubleRows) {
        int ok = -1;
        double value = 12345;

        Profile::String2Double(row.text, ok, value);

        EXPECT_EQ(ok, row.ok) << '"' << row.text << '"';
        EXPECT_EQ(value, row.ok ? row.value : 12345) << '"' << row.text << '"';
        EXPECT_EQ(Profile::String2Double(row.text, 99.5), row.ok ? row.value : 99.5)
            << '"' << row.text << '"';
    }
}

TEST(ProfileConversions, readADoubleOfAnyLength)
{
    std::string const digits(400, '9');

    EXPECT_EQ(Profile::String2Double(digits.c_str(), 1.0), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Profile::String2Double((digits + "e-399").c_str(), 1.0), 10.0);
    EXPECT_EQ(Profile::String2Double(("0." + std::string(400, '0') + "1").c_str(), 1.0), 0.0);
    EXPECT_EQ(Profile::String2Double(("0." + std::string(400, '0') + "1e401").c_str(), 0.0), 1.0);
}

TEST(ProfileConversions, haveAPointInEveryLocale)
{
    for (char const* const name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "German_Germany.1252"}) {
        ScopedLocale const locale(name);
        if (!locale.isSet())
            continue;
        EXPECT_STREQ(Profile::Double2String(1.5), "1.500000");
        EXPECT_EQ(Profile::String2Double("1.5", 0.0), 1.5);
        EXPECT_EQ(Profile::String2Double(Profile::Double2String(-2.25), 0.0), -2.25);
        return;
    }
    GTEST_SKIP() << "the machine has no locale with a decimal comma";
}

TEST(ProfileConversions, writeADoubleWithSixDecimals)
{
    struct Row {
        double value;
        char const* text;
    };
    for (Row const& row : {Row{0, "0.000000"}, Row{1.5, "1.500000"}, Row{-0.1234567, "-0.123457"},
                           Row{1e15, "1000000000000000.000000"}, Row{1e-9, "0.000000"}}) {
        CString text("old");
        Profile::Double2String(row.value, text);

        EXPECT_STREQ(text, row.text);
        EXPECT_STREQ(Profile::Double2String(row.value), row.text);
    }
}

TEST(ProfileConversions, writeTheLargestDoubleWhole)
{
    EXPECT_EQ(Profile::Double2String(std::numeric_limits<double>::max()).GetLength(), 309 + 7);
}

// -- Booleans -----------------------------------------------------------------------

TEST(ProfileConversions, readABooleanInAnyCase)
{
    struct Row {
        char const* text;
        int ok;
        int value;
    };
    for (Row const& row : {Row{"TRUE", 1, 1}, Row{"true", 1, 1}, Row{"True", 1, 1}, Row{"FALSE", 1, 0},
                           Row{"faLse", 1, 0}, Row{"1", 0, 0}, Row{"0", 0, 0}, Row{"yes", 0, 0},
                           Row{"", 0, 0}, Row{"TRUE ", 0, 0}, Row{"TRUEX", 0, 0}}) {
        int ok = -1;
        int value = 12345;

        Profile::String2Bool(row.text, ok, value);

        EXPECT_EQ(ok, row.ok) << '"' << row.text << '"';
        EXPECT_EQ(value, row.ok ? row.value : 12345) << '"' << row.text << '"';
        EXPECT_EQ(Profile::String2Bool(row.text, 99), row.ok ? row.value : 99) << '"' << row.text << '"';
    }
}

TEST(ProfileConversions, writeABoolean)
{
    struct Row {
        int value;
        char const* text;
    };
    for (Row const& row : {Row{1, "TRUE"}, Row{0, "FALSE"}, Row{-1, "TRUE"}, Row{256, "TRUE"}}) {
        CString text("old");
        Profile::Bool2String(row.value, text);

        EXPECT_STREQ(text, row.text);
        EXPECT_STREQ(Profile::Bool2String(row.value), row.text);
    }
}

TEST(ProfileConversions, endNumbersAtANulAndTakeBooleansWhole)
{
    int ok = -1;
    int number = 0;
    Profile::String2Int(CString("1\0002", 3), ok, number);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(number, 1);

    unsigned long color = 0;
    Profile::String2Color(CString("1\000,2,3", 6), ok, color);
    EXPECT_EQ(ok, 0);

    int truth = 7;
    Profile::String2Bool(CString("TRUE\0x", 6), ok, truth);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(truth, 7);
}

// -- Colours -----------------------------------------------------------------------

TEST(ProfileConversions, readAColourWithRedInTheLowByte)
{
    struct Row {
        char const* text;
        int ok;
        unsigned long value;
    };
    for (Row const& row :
         {Row{"1,2,3", 1, 0x030201}, Row{"255,0,128", 1, 0x8000FF}, Row{" 1, 2, 3 and more", 1, 0x030201},
          Row{"256,257,-1", 1, 0xFF0100}, Row{"1,2", 0, 0x000201}, Row{"1,2,", 0, 0x000201},
          Row{"1", 0, 0x000001}, Row{"1 ,2,3", 0, 0x000001}, Row{"1;2;3", 0, 0x000001}, Row{"x,2,3", 0, 0},
          Row{"", 0, 0}}) {
        int ok = -1;
        unsigned long value = 12345;

        Profile::String2Color(row.text, ok, value);

        EXPECT_EQ(ok, row.ok) << '"' << row.text << '"';
        EXPECT_EQ(value, row.value) << '"' << row.text << '"';
        EXPECT_EQ(Profile::String2Color(row.text, 99ul), row.ok ? row.value : 99ul) << '"' << row.text << '"';
    }
}

TEST(ProfileConversions, writeTheThreeLowBytesOfAColour)
{
    for (unsigned long const value : {0x030201ul, 0xFF030201ul}) {
        CString text("old");
        Profile::Color2String(value, text);

        EXPECT_STREQ(text, "1,2,3");
        EXPECT_STREQ(Profile::Color2String(value), "1,2,3");
    }
    EXPECT_STREQ(Profile::Color2String(0xFFFFFF), "255,255,255");
}

// -- Rectangles --------------------------------------------------------------------

TEST(ProfileConversions, readARectangle)
{
    for (char const* const text : {"(1,-2,30,400)", "(1,-2,30,400", "( 1, -2,\t30, 400) tail"}) {
        CRect value(9, 9, 9, 9);

        EXPECT_TRUE(Profile::String2Rect(text, value)) << text;

        EXPECT_EQ(value, CRect(1, -2, 30, 400)) << text;
    }
}

TEST(ProfileConversions, leaveTheRectangleAloneIfFourNumbersAreNotRead)
{
    for (char const* const text :
         {"1,2,3,4", "(1,2,3", "(1,2,3)", "(1 ,2,3,4)", " (1,2,3,4)", "(a,2,3,4)", "(", ""}) {
        CRect value(9, 8, 7, 6);

        EXPECT_FALSE(Profile::String2Rect(text, value)) << text;

        EXPECT_EQ(value, CRect(9, 8, 7, 6)) << text;
    }
}

TEST(ProfileConversions, writeARectangle)
{
    CString text("old");
    Profile::Rect2String(CRect(1, -2, 30, 400), text);

    EXPECT_STREQ(text, "(1,-2,30,400)");
    EXPECT_STREQ(Profile::Rect2String(CRect(1, -2, 30, 400)), "(1,-2,30,400)");
}

}  // namespace
