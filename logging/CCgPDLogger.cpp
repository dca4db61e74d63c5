#include "logging/CCgPDLogger.h"

#include "logging/CCgInternalError.h"
#include "logging/CCgLogger.h"
#include "logging/CCgProps.h"
#include "logging/util/CxSystem.h"
#include "logging/util/CxThread.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

namespace zk::logging {

namespace {

struct PDLogger {
    std::optional<std::string> organization, product, component, client, server, serverFormat,
        productInstance;
    CCgObject* msgIdFormatter = nullptr;
};

struct Field {
    char const* key;
    std::optional<std::string> PDLogger::*value;
};

constexpr Field fields[] = {
    {CCG_PROP_ORGANIZATION, &PDLogger::organization},
    {CCG_PROP_PRODUCT, &PDLogger::product},
    {CCG_PROP_COMPONENT, &PDLogger::component},
    {CCG_PROP_CLIENT, &PDLogger::client},
    {CCG_PROP_SERVER, &PDLogger::server},
    {CCG_PROP_SERVERFORMAT, &PDLogger::serverFormat},
    {CCG_PROP_PRODUCTINSTANCE, &PDLogger::productInstance},
};

void* createData(CCgObject*)
{
    auto* const data = new PDLogger;
    data->serverFormat = "IP";
    std::string host;
    if (CxHostName(host).ok())
        data->server = std::move(host);
    else
        report(CCG_WARN, 35, {CCgParm::ofText("ccg_pdlogger")});
    data->msgIdFormatter = getObject("cclog.pdMsgIdFormatter", "ccg_xmlformatter");
    return data;
}

void destroyData(void* data)
{
    auto* const own = static_cast<PDLogger*>(data);
    if (own)
        releaseObject(own->msgIdFormatter);
    delete own;
}

void configure(CCgObject* logger, char const* key)
{
    auto* const own = static_cast<PDLogger*>(logger->data);
    std::string const* const value = logger->properties.find(key);
    for (Field const& field : fields)
        if (own && value && std::string_view(key) == field.key) {
            own->*field.value = *value;
            return;
        }
    configureLevel(logger, key);
}

void log(CCgObject* logger, CCgEvent* event)
{
    if (auto const* const own = static_cast<PDLogger const*>(logger->data))
        for (Field const& field : fields)
            if (auto const& value = own->*field.value)
                event->properties.set(field.key, *value);
    CCgPropsSet(event->properties, CCG_PROP_PROCESSID, static_cast<std::int64_t>(CxProcessId()));
    CCgPropsSet(event->properties, CCG_PROP_THREADID, static_cast<std::int64_t>(CxCurrentThreadId()));
    event->messageId();
    ccg_forward(logger, event);
}

}  // namespace

CCgLoggerEntries const pdLoggerEntries = {log};
CCgObjectEntries const pdLoggerObjectEntries = {createData, destroyData, configure};

}  // namespace zk::logging
