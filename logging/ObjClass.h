// ObjClass.h: what the objects of a class do, as a table of functions.
//
//   ccg_registerHandler("my_handler", nullptr, {.handle = myHandle}, {});
//   CCgObject* const handler = ccg_getObject("mine", "my_handler");
//
// All functions are called with the toolkit's lock held.
#pragma once

#include "logging/CCgI18Msg.h"
#include "logging/CCgResult.h"
#include "logging/CCgStringGroup.h"
#include "zk_export.h"

#include <cstdint>
#include <optional>
#include <string>

struct CCgEvent;
struct CCgObject;

/// The kinds of classes.
enum : std::int32_t { CCG_LOGGER = 101, CCG_FILTER = 102, CCG_HANDLER = 103, CCG_FORMATTER = 104 };

/// What a logger does; a null entry is the default.
struct CCgLoggerEntries {
    void (*log)(CCgObject* logger, CCgEvent* event) = nullptr;  ///< default: ccg_forward
};

/// What a filter does.
struct CCgFilterEntries {
    void (*log)(CCgObject* filter, CCgEvent* event) = nullptr;  ///< default: forward what accept lets through
    bool (*accept)(CCgObject* filter, CCgEvent* event) = nullptr;   ///< default: the level test
    void (*forward)(CCgObject* filter, CCgEvent* event) = nullptr;  ///< default: ccg_forward
};

/// What a handler does; the defaults do nothing.
struct CCgHandlerEntries {
    void (*handle)(CCgObject* handler, CCgEvent* event) = nullptr;
    CCgResult (*open)(CCgObject* handler) = nullptr;
    void (*close)(CCgObject* handler) = nullptr;
};

/// What a formatter does. Texts are for the caller, who frees them; null is no text.
struct CCgFormatterEntries {
    char* (*format)(CCgObject* formatter, CCgEvent* event) = nullptr;  ///< default: the basic format
    char* (*header)(CCgObject* formatter) = nullptr;                   ///< default: no text
    char* (*footer)(CCgObject* formatter) = nullptr;                   ///< default: no text
    char* (*msgText)(CCgObject* formatter, CCgI18Msg const* message) = nullptr;  ///< default: ccg_messageText
};

/// The life of an object's own data, and its properties.
struct CCgObjectEntries {
    void* (*createData)(CCgObject* object) = nullptr;  ///< default: no data
    void (*destroyData)(void* data) = nullptr;         ///< default: nothing
    void (*configure)(CCgObject* object,
                      char const* key) = nullptr;  ///< after a property changed; default: the kind's
};

struct ObjClass {
    std::int32_t kind;
    std::string name;
    std::optional<CCgI18Msg> description;
    // The entries of the kind; those of the others are null.
    CCgLoggerEntries logger = {};
    CCgFilterEntries filter = {};
    CCgHandlerEntries handler = {};
    CCgFormatterEntries formatter = {};
    CCgObjectEntries object = {};
};

/// Register a class; `description`, which may be null, is copied. A name that is registered already,
/// and a toolkit that isn't started, change nothing.
ZK_UTIL_API void ccg_registerLogger(char const* name, CCgI18Msg const* description,
                                    CCgLoggerEntries const& entries, CCgObjectEntries const& object);
ZK_UTIL_API void ccg_registerFilter(char const* name, CCgI18Msg const* description,
                                    CCgFilterEntries const& entries, CCgObjectEntries const& object);
ZK_UTIL_API void ccg_registerHandler(char const* name, CCgI18Msg const* description,
                                     CCgHandlerEntries const& entries, CCgObjectEntries const& object);
ZK_UTIL_API void ccg_registerFormatter(char const* name, CCgI18Msg const* description,
                                       CCgFormatterEntries const& entries, CCgObjectEntries const& object);

/// The names of all classes of a kind, in the order of registration; empty for another kind.
ZK_UTIL_API CCgStringGroup ccg_getClassNames(std::int32_t kind);

/// The description of a class in the user's language, for the caller to free; null if it has none.
ZK_UTIL_API char* ccg_getClassDescription(char const* name);
