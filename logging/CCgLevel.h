// CCgLevel.h: how severe a record is, and from where on a logger lets records through.
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <string_view>

/// Higher is more severe.
using CCgLevel = std::int32_t;

enum : CCgLevel {
    CCG_FATAL = 7000,
    CCG_ERROR = 6000,
    CCG_WARN = 5000,
    CCG_INFO = 4000,
    CCG_MIN = 3000,  ///< trace of least detail; the level of a logger that was given none
    CCG_MID = 2000,
    CCG_MAX = 1000,
    CCG_ALL = 0,
    CCG_OFF = 9999,      ///< on a logger: let nothing through but CCG_ALWAYS
    CCG_ALWAYS = -9999,  ///< on a record: passes every test; on a logger: no limit
};

/// The level that a text stands for: the number it begins with; else the level of a name that it
/// begins with, in any case (FATAL, ERROR, WARN, INFO, DEBUG_MIN, MIN, DEBUG_MID, MID, DEBUG_MAX,
/// MAX, ALL, OFF, so that "WARNING" is WARN); else -9999. A blank text is 0, null -9999.
ZK_UTIL_API CCgLevel ccg_parseLevel(char const* text) noexcept;
