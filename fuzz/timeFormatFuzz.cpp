// Any time in any format: the text is short and UTF-8, and the default form is what the C library's calls make.
#include "logging/CCgFormatter.h"
#include "logging/util/CxUtf8.h"

#include <ctime>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

using namespace zk::logging;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// The whole text of the default form, put together from the C library's parts.
std::string expected(std::int64_t milliseconds)
{
    time_t const seconds = milliseconds / 1000;
    tm calendar;
    localtime_r(&seconds, &calendar);
    char date[64];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &calendar);
    long const hours = -timezone / 3600 + (calendar.tm_isdst > 0 ? 1 : 0);
    char rest[64];
    std::snprintf(rest, sizeof rest, ".%03d%+03ld:%02ld", int(milliseconds % 1000), hours,
                  std::labs(timezone / 60 % 60));
    return std::string(date) + rest;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    constexpr char const* zones[] = {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "IST-5:30",
                                     "NST3:30NDT,M3.2.0,M11.1.0"};
    std::int64_t time = 0;
    if (size < sizeof time + 1)
        return 0;
    std::memcpy(&time, data, sizeof time);
    static int zone = -1;
    if (int const wanted = data[sizeof time] % 4; wanted != zone) {
        zone = wanted;
        setenv("TZ", zones[zone], 1);
        tzset();
    }
    std::string const format(reinterpret_cast<char const*>(data) + sizeof time + 1, size - sizeof time - 1);
    constexpr std::int64_t lastSecond = 32535215999;  // of the year 3000, in UTC
    constexpr std::int64_t day = 86400;

    CxStringBuff text;
    if (appendFormattedTime(text, format.c_str(), time))
        require(text.length() > 0 && text.length() <= 127);
    else
        require(text.length() == 0);

    CxStringBuff plain;
    bool const hasText = appendDefaultTimeText(plain, time);
    if (time >= day * 1000 && time <= (lastSecond - day) * 1000)
        require(hasText && plain.view() == expected(time));
    if (time < 0)
        require(!hasText && plain.length() == 0);
    return 0;
}
