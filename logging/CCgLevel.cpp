#include "logging/CCgLevel.h"

#include "logging/CCgMisc.h"

#include <string_view>

namespace {

struct LevelName {
    std::string_view name;
    CCgLevel level;
};

constexpr LevelName levelNames[] = {
    {"FATAL", CCG_FATAL},   {"ERROR", CCG_ERROR}, {"WARN", CCG_WARN},     {"INFO", CCG_INFO},
    {"DEBUG_MIN", CCG_MIN}, {"MIN", CCG_MIN},     {"DEBUG_MID", CCG_MID}, {"MID", CCG_MID},
    {"DEBUG_MAX", CCG_MAX}, {"MAX", CCG_MAX},     {"ALL", CCG_ALL},       {"OFF", CCG_OFF},
};

}  // namespace

CCgLevel ccg_parseLevel(char const* text) noexcept
{
    if (!text)
        return CCG_ALWAYS;
    std::string_view const whole(text);
    if (whole.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos)
        return CCG_ALL;
    if (auto const number = zk::logging::scanInt32(whole))
        return *number;
    for (LevelName const& entry : levelNames)
        if (zk::logging::sameIgnoringCase(whole.substr(0, entry.name.size()), entry.name))
            return entry.level;
    return CCG_ALWAYS;
}
