// CCgProps.h: values of seven types as property texts, and back.
//
//   CCgStringToStringMap map;
//   CCgPropsSet(map, "size", std::int32_t(1024));       // "1024"
//   bool found;
//   CCgPropsGetInt32(map, "size", found);               // 1024, true
//
// A boolean is "true" or "false", a number decimal, a float or double with six digits behind the
// point, a char the decimal number of its byte.
#pragma once

#include "logging/CCgParm.h"
#include "logging/CCgStringToStringMap.h"
#include "zk_export.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zk::logging {

ZK_UTIL_API std::string propertyText(bool value);
ZK_UTIL_API std::string propertyText(std::int32_t value);
ZK_UTIL_API std::string propertyText(std::int64_t value);
ZK_UTIL_API std::string propertyText(float value);
ZK_UTIL_API std::string propertyText(double value);
ZK_UTIL_API std::string propertyText(char value);
ZK_UTIL_API std::string propertyText(CCgParm const& parameter);

}  // namespace zk::logging

/// Sets a property to the text of a value.
template <class Value>
void CCgPropsSet(CCgStringToStringMap& map, std::string_view key, Value value)
{
    map.set(key, zk::logging::propertyText(value));
}

/// The value of a property; `found` says whether it is there and its text is of that type. If not, the
/// result is false or 0. A number may be followed by other text, as in "10 files".
ZK_UTIL_API bool CCgPropsGetBoolean(CCgStringToStringMap const& map, std::string_view key, bool& found);
ZK_UTIL_API std::int32_t CCgPropsGetInt32(CCgStringToStringMap const& map, std::string_view key, bool& found);
ZK_UTIL_API std::int64_t CCgPropsGetInt64(CCgStringToStringMap const& map, std::string_view key, bool& found);
ZK_UTIL_API float CCgPropsGetFloat(CCgStringToStringMap const& map, std::string_view key, bool& found);
ZK_UTIL_API double CCgPropsGetDouble(CCgStringToStringMap const& map, std::string_view key, bool& found);
ZK_UTIL_API char CCgPropsGetChar(CCgStringToStringMap const& map, std::string_view key, bool& found);
