// CCgParm.h: one typed parameter of a message.
//
// In a variadic list each value stands behind a marker that tells its type, and a 0 ends the list:
//
//   ccg_info(logger, "Load", 1, 7, "%s has %d units", CCG_TEXT, name, CCG_INT32, count, 0);
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <string>

/// The markers of a typed list. A boolean and a char are passed as int, a float as double.
enum CCgParmType : std::int32_t {
    CCG_PROPERTY_KEY =
        201,  ///< `char const*`; the marker and the value behind it become a property of the record
    CCG_BOOLEAN = 501,
    CCG_INT32 = 502,
    CCG_LONG = 503,  ///< `long`, which has 64 bits on Linux and 32 on Windows
    CCG_FLOAT = 504,
    CCG_DOUBLE = 505,
    CCG_CHAR = 506,
    CCG_TEXT = 507,  ///< `char const*`, copied
};

/// A type marker and a value.
struct ZK_UTIL_API CCgParm {
    std::int32_t type = CCG_INT32;
    std::int64_t integer = 0;  ///< of the types boolean, 32-bit, long and char
    double number = 0;         ///< of the types float and double
    std::string text;          ///< of the type text

    static CCgParm ofBoolean(bool value);
    static CCgParm ofInt32(std::int32_t value);
    static CCgParm ofLong(std::int64_t value);
    static CCgParm ofFloat(float value);
    static CCgParm ofDouble(double value);
    static CCgParm ofChar(char value);
    /// Null is the text "(null)".
    static CCgParm ofText(char const* value);

    bool isText() const noexcept { return type == CCG_TEXT; }
    bool isNumber() const noexcept { return type == CCG_FLOAT || type == CCG_DOUBLE; }
};
