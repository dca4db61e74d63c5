// The texts of CTime and CTimeSpan.
#include "platform/classlib/CTime.h"

#include <cstring>

namespace {

// Appends `number` with at least `digits` digits, or as it is after a "#".
void appendNumber(CString& text, std::int64_t number, int digits, bool plain)
{
    text.AppendFormat("%0*d", plain ? 1 : digits, number);
}

int hourOfTwelve(tm const& time)
{
    int const hour = time.tm_hour % 12;
    return hour == 0 ? 12 : hour;
}

// The number of the week, the first of which starts with the first `firstDay` (0 is Sunday).
int weekOf(tm const& time, int firstDay)
{
    return (time.tm_yday + 7 - (time.tm_wday + 7 - firstDay) % 7) / 7;
}

struct IsoWeek {
    int year;
    int week;
};

bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Weeks start on Monday and belong to the year of their Thursday.
IsoWeek isoWeekOf(tm const& time)
{
    int year = time.tm_year + 1900;
    int thursday = time.tm_yday - (time.tm_wday + 6) % 7 + 3;
    if (thursday < 0) {
        --year;
        thursday += isLeapYear(year) ? 366 : 365;
    } else if (int const days = isLeapYear(year) ? 366 : 365; thursday >= days) {
        ++year;
        thursday -= days;
    }
    return {year, thursday / 7 + 1};
}

// What strftime makes of one letter, in the locale in force.
void appendByLocale(CString& text, tm const& time, char letter)
{
    char const format[] = {'%', letter, '\0'};
    char buffer[256];
    text.Append(buffer, static_cast<int>(std::strftime(buffer, sizeof buffer, format, &time)));
}

class TimeFormatter {
public:
    TimeFormatter(tm const& time, char const* zone) : time_(time), zone_(zone) { }

    void append(char const* format)
    {
        while (*format) {
            std::size_t const plain = std::strcspn(format, "%");
            text_.Append(format, static_cast<int>(plain));
            format += plain;
            if (*format == '%')
                format = appendConversion(format);
        }
    }

    CString const& text() const { return text_; }

private:
    // Fills in the conversion at `percent` and gives the position behind it.
    char const* appendConversion(char const* percent)
    {
        char const* at = percent + 1;
        bool const plain = *at == '#';
        at += plain ? 1 : 0;
        if ((*at == 'E' || *at == 'O') && at[1])
            ++at;  // the locale's other calendar and digits: there are none
        if (*at == '\0' || !(appendNumberOf(*at, plain) || appendTextOf(*at, plain)))
            text_.Append(percent, static_cast<int>(at - percent) + (*at ? 1 : 0));
        return *at ? at + 1 : at;
    }

    bool appendNumberOf(char letter, bool plain)
    {
        switch (letter) {
        case 'C': appendNumber(text_, (time_.tm_year + 1900) / 100, 2, plain); break;
        case 'd': appendNumber(text_, time_.tm_mday, 2, plain); break;
        case 'e': text_.AppendFormat("%*d", plain ? 1 : 2, time_.tm_mday); break;
        case 'g': appendNumber(text_, isoWeekOf(time_).year % 100, 2, plain); break;
        case 'G': appendNumber(text_, isoWeekOf(time_).year, 4, plain); break;
        case 'H': appendNumber(text_, time_.tm_hour, 2, plain); break;
        case 'I': appendNumber(text_, hourOfTwelve(time_), 2, plain); break;
        case 'j': appendNumber(text_, time_.tm_yday + 1, 3, plain); break;
        case 'm': appendNumber(text_, time_.tm_mon + 1, 2, plain); break;
        case 'M': appendNumber(text_, time_.tm_min, 2, plain); break;
        case 'S': appendNumber(text_, time_.tm_sec, 2, plain); break;
        case 'u': appendNumber(text_, time_.tm_wday == 0 ? 7 : time_.tm_wday, 1, plain); break;
        case 'U': appendNumber(text_, weekOf(time_, 0), 2, plain); break;
        case 'V': appendNumber(text_, isoWeekOf(time_).week, 2, plain); break;
        case 'w': appendNumber(text_, time_.tm_wday, 1, plain); break;
        case 'W': appendNumber(text_, weekOf(time_, 1), 2, plain); break;
        case 'y': appendNumber(text_, time_.tm_year % 100, 2, plain); break;
        case 'Y': appendNumber(text_, time_.tm_year + 1900, 4, plain); break;
        default: return false;
        }
        return true;
    }

    bool appendTextOf(char letter, bool isLong)
    {
        switch (letter) {
        case 'a':
        case 'A':
        case 'b':
        case 'B': appendByLocale(text_, time_, letter); break;
        case 'h': appendByLocale(text_, time_, 'b'); break;
        case 'p': appendHalfOfDay(); break;
        case 'z':
        case 'Z': appendZone(); break;
        case 'c': append(isLong ? "%A, %B %d, %Y %H:%M:%S" : "%m/%d/%y %H:%M:%S"); break;
        case 'x': append(isLong ? "%A, %B %d, %Y" : "%m/%d/%y"); break;
        case 'X':
        case 'T': append("%H:%M:%S"); break;
        case 'D': append("%m/%d/%y"); break;
        case 'F': append("%Y-%m-%d"); break;
        case 'r': append("%I:%M:%S %p"); break;
        case 'R': append("%H:%M"); break;
        case 'n': text_ += '\n'; break;
        case 't': text_ += '\t'; break;
        case '%': text_ += '%'; break;
        default: return false;
        }
        return true;
    }

    // Many locales know no halves of the day; the letter still means something to the reader.
    void appendHalfOfDay()
    {
        int const length = text_.GetLength();
        appendByLocale(text_, time_, 'p');
        if (text_.GetLength() == length)
            text_ += time_.tm_hour < 12 ? "AM" : "PM";
    }

    void appendZone()
    {
        if (zone_)
            text_ += zone_;
        else
            appendByLocale(text_, time_, 'Z');
    }

    CString text_;
    tm const& time_;
    char const* zone_;  // null: that of the time
};

CString formatTime(tm const* time, char const* format, char const* zone)
{
    if (!time || !format)
        return CString();
    TimeFormatter formatter(*time, zone);
    formatter.append(format);
    return formatter.text();
}

CString textOf(unsigned int id)
{
    CString text;
    text.LoadString(id);
    return text;
}

}  // namespace

CString CTime::Format(char const* format) const
{
    tm calendar;
    return formatTime(GetLocalTm(&calendar), format, nullptr);
}

CString CTime::FormatGmt(char const* format) const
{
    tm calendar;
    return formatTime(GetGmtTm(&calendar), format, "GMT");
}

CString CTime::Format(unsigned int id) const
{
    return Format(textOf(id));
}

CString CTime::FormatGmt(unsigned int id) const
{
    return FormatGmt(textOf(id));
}

CString CTimeSpan::Format(char const* format) const
{
    CString text;
    char const* at = format ? format : "";
    while (*at) {
        if (*at != '%') {
            text += *at++;
            continue;
        }
        char const* const percent = at++;
        bool const plain = *at == '#';
        at += plain ? 1 : 0;
        switch (*at) {
        case 'D': appendNumber(text, GetDays(), 1, true); break;
        case 'H': appendNumber(text, GetHours(), 2, plain); break;
        case 'M': appendNumber(text, GetMinutes(), 2, plain); break;
        case 'S': appendNumber(text, GetSeconds(), 2, plain); break;
        case '%': text += '%'; break;
        case '\0': text += percent; continue;
        default: text.Append(percent, static_cast<int>(at - percent) + 1); break;
        }
        ++at;
    }
    return text;
}

CString CTimeSpan::Format(unsigned int id) const
{
    return Format(textOf(id));
}
