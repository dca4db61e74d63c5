#include "logging/CCgFormatter.h"

#include "logging/CCgMisc.h"
#include "platform/os/os.h"
#include "platform/os/timeZone.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

namespace zk::logging {

namespace {

constexpr std::size_t formattedTimeSize = 128;

// Splits a time up; the milliseconds are the rest.
bool localTime(std::int64_t milliseconds, tm& calendar)
{
    __time64_t const seconds = milliseconds / 1000;
    return milliseconds >= 0 && _localtime64_s(&calendar, &seconds) == 0;
}

void writeDigits(char* target, int count, int number) noexcept
{
    for (int i = count - 1; i >= 0; --i, number /= 10)
        target[i] = static_cast<char>('0' + number % 10);
}

// The text of one second, kept: most records fall into the second of the one before. The zone may be
// changed meanwhile, which the C library tells when it splits up a time, here or elsewhere.
struct SecondText {
    std::int64_t second = -1;
    long secondsWest = 0;
    bool hasSummer = false;
    char date[20] = "";  // "2024-05-06 07:08:09"
    char zone[16] = "";  // "+02:00"
    int zoneLength = 0;

    bool isOf(std::int64_t wanted) const noexcept
    {
        return wanted == second && secondsWest == os::secondsWestOfGreenwich() &&
            hasSummer == os::hasDaylightSavingTime();
    }

    bool fill(std::int64_t milliseconds)
    {
        tm calendar;
        if (!localTime(milliseconds, calendar))
            return false;
        second = milliseconds / 1000;
        secondsWest = os::secondsWestOfGreenwich();
        hasSummer = os::hasDaylightSavingTime();
        writeDigits(date, 4, calendar.tm_year + 1900);
        date[4] = date[7] = '-';
        writeDigits(date + 5, 2, calendar.tm_mon + 1);
        writeDigits(date + 8, 2, calendar.tm_mday);
        date[10] = ' ';
        writeDigits(date + 11, 2, calendar.tm_hour);
        date[13] = date[16] = ':';
        writeDigits(date + 14, 2, calendar.tm_min);
        writeDigits(date + 17, 2, calendar.tm_sec);
        long const hours = -secondsWest / 3600 + (calendar.tm_isdst > 0 ? 1 : 0);
        long const minutes = std::labs(secondsWest / 60 % 60);
        zoneLength = std::snprintf(zone, sizeof zone, "%+.2ld:%02ld", hours, minutes);
        return true;
    }
};

// What both C libraries know as directives.
constexpr std::string_view commonDirectives("aAbBcdHIjmMpSUwWxXyYzZ%");

// Spells out the directives that stand for others, and keeps those that the C library need not know.
std::string safeFormat(std::string_view format)
{
    std::string safe;
    for (std::size_t i = 0; i < format.size(); ++i) {
        safe += format[i];
        if (format[i] != '%')
            continue;
        char const directive = i + 1 < format.size() ? format[i + 1] : '\0';
        switch (directive) {
        case 'D': safe += "m/%d/%y"; break;
        case 'F': safe += "Y-%m-%d"; break;
        case 'R': safe += "H:%M"; break;
        case 'T': safe += "H:%M:%S"; break;
        default:
            if (directive == '\0' || commonDirectives.find(directive) == std::string_view::npos)
                safe += '%';
            if (directive != '\0')
                safe += directive;
        }
        ++i;
    }
    return safe;
}

}  // namespace

bool appendDefaultTimeText(CxStringBuff& buffer, std::int64_t milliseconds)
{
    thread_local SecondText kept;
    if (milliseconds < 0 || (!kept.isOf(milliseconds / 1000) && !kept.fill(milliseconds)))
        return false;
    char fraction[4] = ".";
    writeDigits(fraction + 1, 3, static_cast<int>(milliseconds % 1000));
    buffer.append(std::string_view(kept.date, 19));
    buffer.append(std::string_view(fraction, 4));
    buffer.append(std::string_view(kept.zone, static_cast<std::size_t>(kept.zoneLength)));
    return true;
}

bool appendFormattedTime(CxStringBuff& buffer, char const* format, std::int64_t milliseconds)
{
    tm calendar;
    if (!localTime(milliseconds, calendar))
        return false;
    std::string const safe = safeFormat(processTextOfUtf8(format));
    char text[formattedTimeSize];
    std::size_t const length = std::strftime(text, sizeof text, safe.c_str(), &calendar);
    return length > 0 && buffer.append(utf8OfProcessText({text, length}));
}

bool appendTimeText(CxStringBuff& buffer, CCgObject const& formatter, std::int64_t milliseconds)
{
    return formatter.dateTimeFormat
        ? appendFormattedTime(buffer, formatter.dateTimeFormat->c_str(), milliseconds)
        : appendDefaultTimeText(buffer, milliseconds);
}

void appendMessageText(CxStringBuff& buffer, CCgObject& formatter, CCgEvent& event)
{
    RecordLocale const locale(formatter, event);
    std::unique_ptr<char, decltype(&std::free)> const text(
        formatter.objClass->formatter.msgText(&formatter, &event.message), std::free);
    if (text)
        buffer.append(std::string_view(text.get()));
}

}  // namespace zk::logging
