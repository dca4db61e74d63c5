#include "logging/CCgLogger.h"

#include "logging/CCgInternalError.h"
#include "logging/CCgLevelFilter.h"
#include "logging/CCgLogManager.h"

#include <exception>

namespace zk::logging {

namespace {

// A step of a record's way: the objects that it is passing through, the latest first.
struct Step {
    CCgObject const* object;
    CCgEvent const* event;
    Step const* previous;
    int depth;
};

thread_local Step const* latest = nullptr;

// A way through more objects than this is cut: the stack ends somewhere.
constexpr int longestWay = 100;

class OnTheWay {
public:
    OnTheWay(CCgObject const* object, CCgEvent const* event)
        : step_{object, event, latest, latest ? latest->depth + 1 : 1}
    {
        latest = &step_;
    }
    ~OnTheWay() { latest = step_.previous; }
    OnTheWay(OnTheWay const&) = delete;
    OnTheWay& operator=(OnTheWay const&) = delete;

private:
    Step step_;
};

bool passesThrough(CCgObject const* object, CCgEvent const* event) noexcept
{
    for (Step const* step = latest; step; step = step->previous)
        if (step->object == object && step->event == event)
            return true;
    return latest && latest->depth >= longestWay;
}

void deliver(CCgObject* listener, CCgEvent* event)
{
    if (!listener->objClass || !listener->logging.load(std::memory_order_relaxed) ||
        passesThrough(listener, event))
        return;
    OnTheWay const step(listener, event);
    ObjClass const& objClass = *listener->objClass;
    switch (objClass.kind) {
    case CCG_LOGGER: objClass.logger.log(listener, event); break;
    case CCG_FILTER: objClass.filter.log(listener, event); break;
    case CCG_HANDLER: objClass.handler.handle(listener, event); break;
    default: break;
    }
}

bool canLog(CCgObject const* logger) noexcept
{
    return isOfKind(logger, CCG_LOGGER) && logger->logging.load(std::memory_order_relaxed);
}

// Runs under the lock. Nothing that fails in here reaches the caller.
template <class Send>
void guarded(Send send) noexcept
{
    try {
        if (Locked const locked; locked)
            send();
    } catch (std::exception const&) {
        // Without memory there is no record.
    }
}

}  // namespace

void sendEvent(CCgObject* logger, CCgEvent& event)
{
    if (canLog(logger))
        deliver(logger, &event);
}

void logThroughFilter(CCgObject* filter, CCgEvent* event)
{
    if (!isOfKind(filter, CCG_FILTER) || !filter->logging.load(std::memory_order_relaxed))
        return;
    CCgFilterEntries const& entries = filter->objClass->filter;
    if (entries.accept && entries.forward && entries.accept(filter, event))
        entries.forward(filter, event);
}

}  // namespace zk::logging

using namespace zk::logging;

void ccg_forward(CCgObject* object, CCgEvent* event)
{
    if (!object || !event)
        return;
    if (object->listeners.empty()) {
        if (isOfKind(object, CCG_LOGGER))
            report(CCG_ERROR, 1, {CCgParm::ofText(object->name.c_str())});
        return;
    }
    // By place, and each held: what a listener does may change the group.
    for (std::size_t i = 0; i < object->listeners.size(); ++i) {
        struct Held {
            explicit Held(CCgObject* object) noexcept : object(object) { addReference(object); }
            ~Held() { releaseObject(object); }

            CCgObject* const object;
        } const listener(object->listeners.at(i));
        deliver(listener.object, event);
    }
}

void ccg_logMessage(CCgObject* logger, CCgLevel level, char const* catalog, std::int32_t set,
                    std::int32_t key, char const* defaultText, std::va_list list) noexcept
{
    guarded([&] {
        if (!canLog(logger))
            return;
        CCgEvent event;
        event.level = level;
        event.message = CCgI18Msg(catalog, set, key, defaultText);
        event.readParameters(list);
        sendEvent(logger, event);
    });
}

void ccg_logTrace(CCgObject* logger, CCgLevel level, char const* file, char const* function,
                  std::int32_t line, char const* text, std::va_list list) noexcept
{
    guarded([&] {
        if (!canLog(logger))
            return;
        CCgEvent event;
        event.isMessage = false;
        event.level = level;
        event.message = CCgI18Msg(nullptr, 0, 0, text);
        event.readParameters(list);
        if (file) {
            event.properties.set(CCG_PROP_SRCFILE, file);
            event.properties.set(CCG_PROP_SRCLINE, std::to_string(line));
        }
        if (function)
            event.properties.set(CCG_PROP_SRCFUNCTION, function);
        sendEvent(logger, event);
    });
}

void ccg_sendMessage(CCgObject* logger, CCgLevel level, char const* catalog, std::int32_t set,
                     std::int32_t key, char const* defaultText, ...) noexcept
{
    std::va_list list;
    va_start(list, defaultText);
    ccg_logMessage(logger, level, catalog, set, key, defaultText, list);
    va_end(list);
}

void ccg_sendTrace(CCgObject* logger, CCgLevel level, char const* file, char const* function,
                   std::int32_t line, char const* text, ...) noexcept
{
    std::va_list list;
    va_start(list, text);
    ccg_logTrace(logger, level, file, function, line, text, list);
    va_end(list);
}

namespace {

void message(CCgLevel level, CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
             char const* defaultText, std::va_list list) noexcept
{
    if (ccg_isLoggable(logger, level))
        ccg_logMessage(logger, level, catalog, set, key, defaultText, list);
}

void trace(CCgLevel level, CCgObject* logger, char const* file, char const* function, std::int32_t line,
           char const* text, std::va_list list) noexcept
{
    if (ccg_isLoggable(logger, level))
        ccg_logTrace(logger, level, file, function, line, text, list);
}

}  // namespace

void ccg_valways(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                 char const* defaultText, std::va_list list) noexcept
{
    message(CCG_ALWAYS, logger, catalog, set, key, defaultText, list);
}

void ccg_vinfo(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
               char const* defaultText, std::va_list list) noexcept
{
    message(CCG_INFO, logger, catalog, set, key, defaultText, list);
}

void ccg_vwarn(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
               char const* defaultText, std::va_list list) noexcept
{
    message(CCG_WARN, logger, catalog, set, key, defaultText, list);
}

void ccg_verror(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                char const* defaultText, std::va_list list) noexcept
{
    message(CCG_ERROR, logger, catalog, set, key, defaultText, list);
}

void ccg_vfatal(CCgObject* logger, char const* catalog, std::int32_t set, std::int32_t key,
                char const* defaultText, std::va_list list) noexcept
{
    message(CCG_FATAL, logger, catalog, set, key, defaultText, list);
}

void ccg_vmin(CCgObject* logger, char const* file, char const* function, std::int32_t line, char const* text,
              std::va_list list) noexcept
{
    trace(CCG_MIN, logger, file, function, line, text, list);
}

void ccg_vmid(CCgObject* logger, char const* file, char const* function, std::int32_t line, char const* text,
              std::va_list list) noexcept
{
    trace(CCG_MID, logger, file, function, line, text, list);
}

void ccg_vmax(CCgObject* logger, char const* file, char const* function, std::int32_t line, char const* text,
              std::va_list list) noexcept
{
    trace(CCG_MAX, logger, file, function, line, text, list);
}

void ccg_vtrace(CCgObject* logger, char const* text, std::va_list list) noexcept
{
    trace(CCG_ALWAYS, logger, nullptr, nullptr, 0, text, list);
}
