// CCgObject.h: the one shape of everything that logs, filters, writes or formats.
//
//   CCgObject* const logger = ccg_getObject("Load", nullptr);   // one reference for the caller
//   ccg_setProperty(logger, "level", "WARN");
//   ...
//   ccg_releaseObject(logger);
//
// An object is counted: the toolkit itself holds one reference to each, and an object whose last other
// reference is released ends, a file handler with its file closed. The next request for its name builds
// a new one from the same configuration.
//
// All texts are UTF-8. Every operation here takes the toolkit's lock, and does nothing if there is none
// to be had. An object that outlives the toolkit is off; its references are still to be released.
#pragma once

#include "logging/CCgI18Msg.h"
#include "logging/CCgLevel.h"
#include "logging/CCgListenerGroup.h"
#include "logging/CCgStringToStringMap.h"
#include "logging/ObjClass.h"
#include "zk_export.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

struct CCgObject {
    ObjClass* objClass = nullptr;  ///< none once the toolkit has stopped
    std::int32_t references = 0;   ///< the toolkit's own included
    std::string name;
    std::atomic<bool> logging{true};

    std::atomic<CCgLevel> level{CCG_MIN};       ///< of loggers and filters
    CCgListenerGroup listeners;                 ///< of loggers, filters and handlers
    CCgObject* formatter = nullptr;             ///< of handlers, counted
    std::optional<std::string> separator;       ///< of formatters, as the two below
    std::optional<std::string> dateTimeFormat;  ///< for strftime
    std::optional<std::string> locale;          ///< of the messages

    CCgStringToStringMap properties;
    void* data = nullptr;  ///< what the class's createData made

    bool registered = false;  ///< the toolkit holds a reference
    bool ending = false;      ///< it is being destroyed
};

/// The object of a name, built on first request, with one reference for the caller. `className`
/// may be null: the class is then the one that the configuration's "className" gives.
///
/// Null on failure, which is reported: key 60 for an object without a class, 61 for one of another
/// class than asked for, 62 for a class that isn't registered, 63 where no class is given.
ZK_UTIL_API CCgObject* ccg_getObject(char const* name, char const* className);

/// Take one more reference, or give one back. Null is ignored.
ZK_UTIL_API void ccg_addRefObject(CCgObject* object);
ZK_UTIL_API void ccg_releaseObject(CCgObject* object);

/// Sets a property of an object, and lets its class act on it. A null object, key or text is ignored.
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, char const* value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, bool value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, std::int32_t value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, std::int64_t value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, float value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, double value);
ZK_UTIL_API void ccg_setProperty(CCgObject* object, char const* key, char value);

/// The text of a property of the object itself; the caller frees it. Null if it isn't set.
/// `found`, which may be null, tells whether it is.
ZK_UTIL_API char* ccg_getProperty(CCgObject* object, char const* key, bool* found);

/// The same in the other types; not found too where the text is not of that type.
ZK_UTIL_API bool ccg_getBooleanProperty(CCgObject* object, char const* key, bool* found);
ZK_UTIL_API std::int32_t ccg_getInt32Property(CCgObject* object, char const* key, bool* found);
ZK_UTIL_API std::int64_t ccg_getInt64Property(CCgObject* object, char const* key, bool* found);
ZK_UTIL_API float ccg_getFloatProperty(CCgObject* object, char const* key, bool* found);
ZK_UTIL_API double ccg_getDoubleProperty(CCgObject* object, char const* key, bool* found);
ZK_UTIL_API char ccg_getCharProperty(CCgObject* object, char const* key, bool* found);

/// Adds a listener to a logger, filter or handler, or takes it away. False for a formatter, null, and
/// a listener that is there already, or that isn't.
ZK_UTIL_API bool ccg_addListener(CCgObject* object, CCgObject* listener);
ZK_UTIL_API bool ccg_removeListener(CCgObject* object, CCgObject* listener);

/// The listeners of an object, in order, with a reference each for as long as the result lives.
ZK_UTIL_API CCgListenerGroup ccg_getListeners(CCgObject* object);

namespace zk::logging {

// The same for code that holds the lock.
CCgObject* getObject(char const* name, char const* className);
void addReference(CCgObject* object) noexcept;
void releaseObject(CCgObject* object);
void setProperty(CCgObject* object, std::string_view key, std::string value);

/// Whether an object is there, has a class, and is of that kind.
bool isOfKind(CCgObject const* object, std::int32_t kind) noexcept;

/// Takes an object out of the toolkit that stops: what it holds is let go, and it is off from then on.
void retireObject(CCgObject* object);

// The tails of every class's configure.
ZK_UTIL_API void configureBase(CCgObject* object, char const* key);
ZK_UTIL_API void configureLevel(CCgObject* object, char const* key);      // loggers and level filters
ZK_UTIL_API void configureHandler(CCgObject* object, char const* key);    // "formatterName"
ZK_UTIL_API void configureFormatter(CCgObject* object, char const* key);  // "separator", ...

}  // namespace zk::logging
