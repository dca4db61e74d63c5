#include "logging/CCgToolkit.h"

#include "logging/CCgBasicFormatter.h"
#include "logging/CCgConsoleHandler.h"
#include "logging/CCgFileHandler.h"
#include "logging/CCgLevelFilter.h"
#include "logging/CCgLogManager.h"
#include "logging/CCgLogger.h"
#include "logging/CCgMsgIdFilter.h"
#include "logging/CCgMultiProcFileHandler.h"
#include "logging/CCgPDLogger.h"
#include "logging/CCgPDXMLFormatter.h"
#include "logging/CCgQlnTraceFormatter.h"

#include <memory>
#include <utility>

namespace zk::logging {

namespace {

void doNothing(CCgObject*, CCgEvent*)
{
}

CCgResult openNothing(CCgObject*)
{
    return {};
}

void closeNothing(CCgObject*)
{
}

char* noText(CCgObject*)
{
    return nullptr;
}

char* plainMessageText(CCgObject*, CCgI18Msg const* message)
{
    return message ? messageText(*message) : nullptr;
}

template <class Entry>
void setDefault(Entry& entry, Entry value)
{
    if (!entry)
        entry = value;
}

void completeLogger(ObjClass& objClass)
{
    setDefault(objClass.logger.log, ccg_forward);
    setDefault(objClass.object.configure, configureLevel);
}

void completeFilter(ObjClass& objClass)
{
    setDefault(objClass.filter.log, logThroughFilter);
    setDefault(objClass.filter.accept, acceptByLevel);
    setDefault(objClass.filter.forward, ccg_forward);
    setDefault(objClass.object.configure, configureLevel);
}

void completeHandler(ObjClass& objClass)
{
    setDefault(objClass.handler.handle, doNothing);
    setDefault(objClass.handler.open, openNothing);
    setDefault(objClass.handler.close, closeNothing);
    setDefault(objClass.object.configure, configureHandler);
}

void completeFormatter(ObjClass& objClass)
{
    setDefault(objClass.formatter.format, formatBasic);
    setDefault(objClass.formatter.header, noText);
    setDefault(objClass.formatter.footer, noText);
    setDefault(objClass.formatter.msgText, plainMessageText);
    setDefault(objClass.object.configure, configureFormatter);
}

void registerClass(ObjClass objClass)
{
    Manager* const known = manager();
    if (!known || known->classes.find(objClass.name))
        return;
    known->classNames[objClass.kind - CCG_LOGGER].add(objClass.name);
    std::string const name = objClass.name;
    known->classes.set(name, std::make_unique<ObjClass>(std::move(objClass)));
}

template <class Entries>
void registerWith(std::int32_t kind, char const* name, CCgI18Msg const* description,
                  Entries ObjClass::*member, Entries const& entries, CCgObjectEntries const& object,
                  void (*complete)(ObjClass&))
{
    Locked const locked;
    if (!locked || !name)
        return;
    ObjClass objClass{kind, name, {}};
    if (description)
        objClass.description = *description;
    objClass.*member = entries;
    objClass.object = object;
    complete(objClass);
    registerClass(std::move(objClass));
}

CCgI18Msg described(std::int32_t key, char const* text)
{
    return CCgI18Msg("ccgmsg", 1, key, text);
}

}  // namespace

void registerToolkitClasses()
{
    CCgI18Msg const basicLogger = described(100, "Logger for basic messages");
    CCgI18Msg const pdLogger = described(101, "Logger for messages with detailed problem data");
    CCgI18Msg const levelFilter = described(110, "Filters messages by level");
    CCgI18Msg const consoleHandler = described(120, "Handles output to the console");
    CCgI18Msg const fileHandler = described(121, "Handles output to local log files");
    CCgI18Msg const basicFormatter = described(130, "Formats a basic message summary.");
    CCgI18Msg const xmlFormatter = described(131, "Formats all message data as an XML record.");

    ccg_registerLogger("ccg_basiclogger", &basicLogger, {}, {});
    ccg_registerLogger("ccg_pdlogger", &pdLogger, pdLoggerEntries, pdLoggerObjectEntries);
    ccg_registerFilter("ccg_levelfilter", &levelFilter, {}, levelFilterObjectEntries);
    ccg_registerFilter("ccg_msgidfilter", nullptr, msgIdFilterEntries, msgIdFilterObjectEntries);
    ccg_registerHandler("ccg_consolehandler", &consoleHandler, consoleHandlerEntries,
                        consoleHandlerObjectEntries);
    ccg_registerHandler("ccg_filehandler", &fileHandler, fileHandlerEntries, fileHandlerObjectEntries);
    ccg_registerHandler("ccg_multiproc_filehandler", nullptr, multiProcFileHandlerEntries,
                        multiProcFileHandlerObjectEntries);
    ccg_registerFormatter("ccg_basicformatter", &basicFormatter, {}, {});
    ccg_registerFormatter("ccg_xmlformatter", &xmlFormatter, xmlFormatterEntries, xmlFormatterObjectEntries);
    ccg_registerFormatter("ccg_qlntraceformatter", nullptr, traceFormatterEntries,
                          traceFormatterObjectEntries);
}

}  // namespace zk::logging

using namespace zk::logging;

void ccg_registerLogger(char const* name, CCgI18Msg const* description, CCgLoggerEntries const& entries,
                        CCgObjectEntries const& object)
{
    registerWith(CCG_LOGGER, name, description, &ObjClass::logger, entries, object, completeLogger);
}

void ccg_registerFilter(char const* name, CCgI18Msg const* description, CCgFilterEntries const& entries,
                        CCgObjectEntries const& object)
{
    registerWith(CCG_FILTER, name, description, &ObjClass::filter, entries, object, completeFilter);
}

void ccg_registerHandler(char const* name, CCgI18Msg const* description, CCgHandlerEntries const& entries,
                         CCgObjectEntries const& object)
{
    registerWith(CCG_HANDLER, name, description, &ObjClass::handler, entries, object, completeHandler);
}

void ccg_registerFormatter(char const* name, CCgI18Msg const* description, CCgFormatterEntries const& entries,
                           CCgObjectEntries const& object)
{
    registerWith(CCG_FORMATTER, name, description, &ObjClass::formatter, entries, object, completeFormatter);
}

CCgStringGroup ccg_getClassNames(std::int32_t kind)
{
    Locked const locked;
    if (!locked || !manager() || kind < CCG_LOGGER || kind > CCG_FORMATTER)
        return {};
    return manager()->classNames[kind - CCG_LOGGER];
}

char* ccg_getClassDescription(char const* name)
{
    Locked const locked;
    auto const* const found = locked && name && manager() ? manager()->classes.find(name) : nullptr;
    return found && (*found)->description ? ccg_messageText(*(*found)->description) : nullptr;
}
