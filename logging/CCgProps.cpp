#include "logging/CCgProps.h"

#include "logging/CCgMisc.h"

#include <charconv>
#include <optional>

namespace zk::logging {

namespace {

template <class Scan>
auto scanned(CCgStringToStringMap const& map, std::string_view key, bool& found, Scan scan)
{
    std::string const* const text = map.find(key);
    auto const value = text ? scan(*text) : decltype(scan(*text))();
    found = value.has_value();
    return value.value_or(0);
}

}  // namespace

std::string propertyText(bool value)
{
    return value ? "true" : "false";
}

std::string propertyText(std::int32_t value)
{
    return std::to_string(value);
}

std::string propertyText(std::int64_t value)
{
    return std::to_string(value);
}

std::string propertyText(float value)
{
    return propertyText(static_cast<double>(value));
}

std::string propertyText(double value)
{
    char digits[400];  // the greatest number has 309 digits before its point
    char* const end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6).ptr;
    return std::string(digits, end);
}

std::string propertyText(char value)
{
    return std::to_string(static_cast<int>(value));
}

std::string propertyText(CCgParm const& parameter)
{
    if (parameter.isText())
        return parameter.text;
    if (parameter.isNumber())
        return propertyText(parameter.number);
    if (parameter.type == CCG_BOOLEAN)
        return propertyText(parameter.integer != 0);
    return propertyText(parameter.integer);
}

}  // namespace zk::logging

bool CCgPropsGetBoolean(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return zk::logging::scanned(map, key, found, zk::logging::scanBoolean);
}

std::int32_t CCgPropsGetInt32(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return zk::logging::scanned(map, key, found, zk::logging::scanInt32);
}

std::int64_t CCgPropsGetInt64(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return zk::logging::scanned(map, key, found, zk::logging::scanInt64);
}

float CCgPropsGetFloat(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return static_cast<float>(CCgPropsGetDouble(map, key, found));
}

double CCgPropsGetDouble(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return zk::logging::scanned(map, key, found, zk::logging::scanDouble);
}

char CCgPropsGetChar(CCgStringToStringMap const& map, std::string_view key, bool& found)
{
    return static_cast<char>(CCgPropsGetInt32(map, key, found));
}
