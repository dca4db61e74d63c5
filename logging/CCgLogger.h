// CCgLogger.h: sends records through a logger.
//
//   CCgObject* const logger = ccg_getObject("Load", nullptr);
//   ccg_warn(logger, "Load", 1, 7, "%s has %d units", CCG_TEXT, name, CCG_INT32, count, 0);
//   ccg_min(logger, __FILE__, nullptr, __LINE__, "unit %d", CCG_INT32, index, 0);
//
// A message is text of a catalog, in the user's language; a trace is text for developers. Values come
// in a typed list (CCgParm.h) that ends at a 0, or as a va_list that was started. In a list,
// CCG_PROPERTY_KEY, a key, a marker and a value make a property of the record, and a level that stands
// alone becomes the record's.
//
// Each entry first asks ccg_isLoggable(): a record that the logger rejects costs a comparison, without
// lock and without allocation. Nothing is thrown and nothing is returned: what goes wrong on the way
// is told to the toolkit's error logger.
#pragma once

#include "logging/CCgEvent.h"
#include "logging/CCgObject.h"
#include "zk_export.h"

#include <cstdarg>
#include <cstdint>
#include <type_traits>

/// Whether a logger lets a record of that level through. Takes no lock.
inline bool ccg_isLoggable(CCgObject const* logger, CCgLevel level) noexcept
{
    if (!logger || !logger->logging.load(std::memory_order_relaxed))
        return false;
    CCgLevel const limit = logger->level.load(std::memory_order_relaxed);
    return level >= limit || level == CCG_ALWAYS || limit == CCG_ALWAYS;
}

/// Build a record and send it, whatever its level, unless `logger` is none, is off or is no logger.
/// Take the lock.
ZK_UTIL_API void ccg_logMessage(CCgObject* logger, CCgLevel level, char const* catalog, std::int32_t set,
                                std::int32_t key, char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_logTrace(CCgObject* logger, CCgLevel level, char const* file, char const* function,
                              std::int32_t line, char const* text, std::va_list list) noexcept;

/// The same with the list itself.
ZK_UTIL_API void ccg_sendMessage(CCgObject* logger, CCgLevel level, char const* catalog, std::int32_t set,
                                 std::int32_t key, char const* defaultText, ...) noexcept;
ZK_UTIL_API void ccg_sendTrace(CCgObject* logger, CCgLevel level, char const* file, char const* function,
                               std::int32_t line, char const* text, ...) noexcept;

/// Hands a record to the listeners of an object, in order: a logger logs it, a filter filters it, a
/// handler handles it, each unless it is off; a formatter is passed over.
///
/// A listener that this record is on its way through already is left out. A logger without listeners
/// is reported under key 1. For entries of classes: the lock is held.
ZK_UTIL_API void ccg_forward(CCgObject* object, CCgEvent* event);

namespace zk::logging {

/// Sends a record through a logger, for code that holds the lock.
void sendEvent(CCgObject* logger, CCgEvent& event);

// The 0 that ends a list, also where the caller forgot it.
template <class... Values>
inline void messageAt(CCgLevel level, CCgObject* logger, char const* catalog, std::int32_t set,
                      std::int32_t key, char const* defaultText, Values... list)
{
    static_assert((std::is_scalar_v<Values> && ...), "only numbers and pointers stand in a typed list");
    if (ccg_isLoggable(logger, level))
        ccg_sendMessage(logger, level, catalog, set, key, defaultText, list..., 0);
}

template <class... Values>
inline void traceAt(CCgLevel level, CCgObject* logger, char const* file, char const* function,
                    std::int32_t line, char const* text, Values... list)
{
    static_assert((std::is_scalar_v<Values> && ...), "only numbers and pointers stand in a typed list");
    if (ccg_isLoggable(logger, level))
        ccg_sendTrace(logger, level, file, function, line, text, list..., 0);
}

}  // namespace zk::logging

/// Messages: always passes every test.
template <class... Values>
inline void ccg_always(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                       char const* defaultText, Values... list)
{
    zk::logging::messageAt(CCG_ALWAYS, logger, catalog, set, key, defaultText, list...);
}
template <class... Values>
inline void ccg_info(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                     char const* defaultText, Values... list)
{
    zk::logging::messageAt(CCG_INFO, logger, catalog, set, key, defaultText, list...);
}
template <class... Values>
inline void ccg_warn(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                     char const* defaultText, Values... list)
{
    zk::logging::messageAt(CCG_WARN, logger, catalog, set, key, defaultText, list...);
}
template <class... Values>
inline void ccg_error(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                      char const* defaultText, Values... list)
{
    zk::logging::messageAt(CCG_ERROR, logger, catalog, set, key, defaultText, list...);
}
template <class... Values>
inline void ccg_fatal(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                      char const* defaultText, Values... list)
{
    zk::logging::messageAt(CCG_FATAL, logger, catalog, set, key, defaultText, list...);
}

/// Traces, with the place in the source; a null file or function is none.
template <class... Values>
inline void ccg_min(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                    char const* text, Values... list)
{
    zk::logging::traceAt(CCG_MIN, logger, file, function, line, text, list...);
}
template <class... Values>
inline void ccg_mid(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                    char const* text, Values... list)
{
    zk::logging::traceAt(CCG_MID, logger, file, function, line, text, list...);
}
template <class... Values>
inline void ccg_max(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                    char const* text, Values... list)
{
    zk::logging::traceAt(CCG_MAX, logger, file, function, line, text, list...);
}

/// A trace that passes every test, without a place.
template <class... Values>
inline void ccg_trace(CCgObject* logger, char const* text, Values... list)
{
    zk::logging::traceAt(CCG_ALWAYS, logger, nullptr, nullptr, 0, text, list...);
}

/// The same entries with a list that was started.
ZK_UTIL_API void ccg_valways(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                             char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vinfo(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                           char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vwarn(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                           char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_verror(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                            char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vfatal(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                            char const* defaultText, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vmin(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                          char const* text, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vmid(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                          char const* text, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vmax(CCgObject* logger, char const* file, char const* function, std::int32_t line,
                          char const* text, std::va_list list) noexcept;
ZK_UTIL_API void ccg_vtrace(CCgObject* logger, char const* text, std::va_list list) noexcept;
