#include "logging/CCgConsoleHandler.h"

#include "logging/CCgHandler.h"
#include "logging/CCgLogger.h"
#include "logging/CCgMisc.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace zk::logging {

namespace {

struct Console {
    bool open = false;
};

Console& consoleOf(CCgObject* handler) noexcept
{
    return *static_cast<Console*>(handler->data);
}

void print(char* text)
{
    std::unique_ptr<char, decltype(&std::free)> const own(text, std::free);
    if (own)
        printToConsole(stdout, own.get());
}

void* createData(CCgObject*)
{
    return new Console;
}

void destroyData(void* data)
{
    delete static_cast<Console*>(data);
}

CCgResult open(CCgObject* handler)
{
    print(ccg_formatHeader(handler));
    consoleOf(handler).open = true;
    return {};
}

void close(CCgObject* handler)
{
    if (!consoleOf(handler).open)
        return;
    print(ccg_formatFooter(handler));
    consoleOf(handler).open = false;
}

void handle(CCgObject* handler, CCgEvent* event)
{
    if (!handler->logging.load(std::memory_order_relaxed))
        return;
    if (!consoleOf(handler).open)
        open(handler);
    print(ccg_formatRecord(handler, event));
    ccg_forward(handler, event);
}

}  // namespace

CCgHandlerEntries const consoleHandlerEntries = {handle, open, close};
CCgObjectEntries const consoleHandlerObjectEntries = {createData, destroyData, nullptr};

}  // namespace zk::logging
