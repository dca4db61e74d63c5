#include "platform/classlib/CTime.h"

#include "tests/support/ScopedTimeZone.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class CTimeFormat : public testing::Test {
protected:
    ScopedTimeZone const zone_{"ABC-2"};
    CTime const morning{2001, 9, 9, 1, 6, 4};
};

}  // namespace

TEST_F(CTimeFormat, fillsInTheParts)
{
    struct Row {
        char const* format;
        char const* text;
    };
    for (auto const& [format, text] : std::vector<Row>{
             {"%a %A %b %B %h", "Sun Sunday Sep September Sep"},
             {"%Y-%m-%d %H:%M:%S", "2001-09-09 01:06:04"},
             {"%#Y-%#m-%#d %#H:%#M:%#S", "2001-9-9 1:6:4"},
             {"%y %#y %C", "01 1 20"},
             {"%I %#I %p", "01 1 AM"},
             {"%j %#j", "252 252"},
             {"%U %W %V %w %u", "36 36 36 0 7"},
             {"%G %g", "2001 01"},
             {"%c", "09/09/01 01:06:04"},
             {"%#c", "Sunday, September 09, 2001 01:06:04"},
             {"%x %X", "09/09/01 01:06:04"},
             {"%#x", "Sunday, September 09, 2001"},
             {"%D %F %T %R", "09/09/01 2001-09-09 01:06:04 01:06"},
             {"%r", "01:06:04 AM"},
             {"%e|%#e", " 9|9"},
             {"%n%t%%%#%", "\n\t%%"},
             {"%Ey %Od", "01 09"},
             {"%a, %#d, %b %Y ", "Sun, 9, Sep 2001 "},
             {"%m, %d, %Y (%H:%M:%S)", "09, 09, 2001 (01:06:04)"},
             {"", ""},
             {"plain", "plain"},
         })
        EXPECT_EQ(morning.Format(format), text) << format;
}

TEST_F(CTimeFormat, namesTheZone)
{
    std::string const name = zone_.name();

    EXPECT_FALSE(name.empty());
    EXPECT_EQ(morning.Format("%z %Z %#z"), name + ' ' + name + ' ' + name);
    EXPECT_EQ(morning.Format("%#I:%M %z "), "1:06 " + name + ' ');
}

TEST_F(CTimeFormat, leavesUnknownLettersAsTheyStand)
{
    EXPECT_EQ(morning.Format("%q%d"), "%q09");
    EXPECT_EQ(morning.Format("%#q"), "%#q");
    EXPECT_EQ(morning.Format("%Eq"), "%Eq");
    EXPECT_EQ(morning.Format("100%"), "100%");
    EXPECT_EQ(morning.Format("%#"), "%#");
    EXPECT_EQ(morning.Format("%E"), "%E");
    EXPECT_EQ(morning.Format(static_cast<char const*>(nullptr)), "");
}

TEST_F(CTimeFormat, countsTwelveHoursTwice)
{
    struct Row {
        int hour;
        char const* text;
    };
    for (auto const& [hour, text] : std::vector<Row>{
             {0, "12 AM"}, {1, "01 AM"}, {11, "11 AM"}, {12, "12 PM"}, {13, "01 PM"}, {23, "11 PM"}})
        EXPECT_EQ(CTime(2001, 9, 9, hour, 0, 0).Format("%I %p"), text);
}

TEST_F(CTimeFormat, numbersTheWeeksOfAYear)
{
    struct Row {
        int year;
        int month;
        int day;
        char const* text;  // weeks from Sunday, from Monday, ISO year and week
    };
    for (auto const& [year, month, day, text] : std::vector<Row>{
             {2000, 1, 1, "00 00 1999 52"},
             {2000, 1, 2, "01 00 1999 52"},
             {2000, 1, 3, "01 01 2000 01"},
             {2000, 12, 31, "53 52 2000 52"},
             {2004, 12, 31, "52 52 2004 53"},
             {2005, 1, 1, "00 00 2004 53"},
             {2008, 12, 29, "52 52 2009 01"},
             {2009, 1, 1, "00 00 2009 01"},
             {2021, 1, 3, "01 00 2020 53"},
         })
        EXPECT_EQ(CTime(year, month, day, 12, 0, 0).Format("%U %W %G %V"), text)
            << year << ' ' << month << ' ' << day;
}

TEST_F(CTimeFormat, hasItsOwnZoneInUtc)
{
    EXPECT_EQ(morning.FormatGmt("%#d %H:%M %z"), "8 23:06 GMT");
    EXPECT_EQ(CTime(0).FormatGmt("%c"), "01/01/70 00:00:00");
}

TEST_F(CTimeFormat, makesLongTexts)
{
    CString format;
    CString expected;
    for (int i = 0; i < 200; ++i) {
        format += "%Y%B";
        expected += "2001September";
    }

    EXPECT_EQ(morning.Format(format), expected);
}

TEST(CTimeSpanFormat, fillsInThePartsOfASpan)
{
    CTimeSpan const span(3, 4, 5, 6);

    EXPECT_EQ(span.Format("%D days, %H:%M:%S"), "3 days, 04:05:06");
    EXPECT_EQ(span.Format("%#H:%#M:%#S"), "4:5:6");
    EXPECT_EQ(span.Format("100%%"), "100%");
    EXPECT_EQ(span.Format("%q %#q 5%"), "%q %#q 5%");
    EXPECT_EQ(span.Format("%#"), "%#");
    EXPECT_EQ(span.Format(""), "");
    EXPECT_EQ(span.Format(static_cast<char const*>(nullptr)), "");
}
