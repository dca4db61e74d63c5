// CCgEvent.h: a record on its way from a logger to the handlers.
#pragma once

#include "logging/CCgI18Msg.h"
#include "logging/CCgLevel.h"
#include "logging/CCgStringToStringMap.h"
#include "zk_export.h"

#include <cstdarg>
#include <cstdint>
#include <optional>
#include <string>

/// The keys of properties that the toolkit itself sets or writes.
#define CCG_PROP_SRCFILE "ccg_prop_srcfile"
#define CCG_PROP_SRCLINE "ccg_prop_srcline"
#define CCG_PROP_SRCFUNCTION "ccg_prop_srcfunction"
#define CCG_PROP_ORGANIZATION "organization"
#define CCG_PROP_PRODUCT "product"
#define CCG_PROP_COMPONENT "component"
#define CCG_PROP_CLIENT "client"
#define CCG_PROP_SERVER "server"
#define CCG_PROP_SERVERFORMAT "serverFormat"
#define CCG_PROP_PRODUCTINSTANCE "productInstance"
#define CCG_PROP_PROCESSID "processId"
#define CCG_PROP_THREADID "threadId"
#define CCG_PROP_CORRELATIONID "correlationId"

struct ZK_UTIL_API CCgEvent {
    bool isMessage = true;  ///< a message of a catalog; false: a trace
    std::int64_t time;      ///< milliseconds since the beginning of 1970, of the record's making
    CCgLevel level = CCG_ALWAYS;
    CCgI18Msg message;
    std::optional<std::string> msgId;  ///< empty: it was looked for, and there is none
    char const* locale = nullptr;      ///< not owned; set by a formatter while it renders
    CCgStringToStringMap properties;

    CCgEvent();

    /// Reads a typed list: parameters of the message, and between them properties
    /// (CCG_PROPERTY_KEY, key, marker, value) and levels, which stand alone. Ends at a 0.
    ///
    /// Another marker ends it with a report of key 71, the 64th marker with one of key 70; what was
    /// read is kept.
    void readParameters(std::va_list list);

    /// The identifier that the message's text begins with, such as "CCGBC0020E", looked for once;
    /// empty if there is none.
    std::string const& messageId();

    /// The text of a property; null if it isn't set.
    char const* property(char const* key) const noexcept;
};
