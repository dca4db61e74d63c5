#include "logging/CCgLogManager.h"

#include "logging/CCgCatalogCache.h"
#include "logging/CCgCodesetText.h"
#include "logging/CCgInternalError.h"
#include "logging/CCgReadProps.h"
#include "logging/CCgToolkit.h"
#include "logging/util/CxMutex.h"

#include <atomic>
#include <mutex>
#include <new>
#include <utility>

namespace zk::logging {

namespace {

// The toolkit's lock, made on first use. Stopping does not close it: another thread may be waiting.
// It goes with the module, and what locks still later makes a new one.
struct ToolkitLock {
    std::atomic<HANDLE> handle{nullptr};
    std::mutex making;

    ~ToolkitLock()
    {
        CxMutex mutex{handle.exchange(nullptr)};
        CxMutexClose(mutex);
    }
};
ToolkitLock toolkitLock;

// Not destroyed with the module: objects of other modules may still log while they end.
Manager* current = nullptr;

CxMutex theMutex() noexcept
{
    if (HANDLE const made = toolkitLock.handle.load(std::memory_order_acquire))
        return {made};
    std::lock_guard const guard(toolkitLock.making);
    if (HANDLE const made = toolkitLock.handle.load(std::memory_order_acquire))
        return {made};
    CxMutex mutex;
    if (CxMutexCreate(mutex).ok())
        toolkitLock.handle.store(mutex.handle, std::memory_order_release);
    return mutex;
}

constexpr char const* errorLoggerName = "cclog.errorLogger";
constexpr char const* defaultConsoleName = "cclog.defaultConsole";

// Errors go to standard output unless the configuration sends them elsewhere.
CCgObject* errorLogger()
{
    CCgObject* const logger = getObject(errorLoggerName, "ccg_basiclogger");
    if (logger && logger->listeners.empty()) {
        // The console handler comes with "cclog.defaultFormatter", unless its configuration names another.
        CCgObject* const console = getObject(defaultConsoleName, "ccg_consolehandler");
        logger->listeners.add(console);
        releaseObject(console);
    }
    return logger;
}

void start(char const* propertiesPath)
{
    registerToolkitClasses();
    if (propertiesPath && !CCgReadProps(propertiesPath, nullptr)) {
        printError(51, {CCgParm::ofText(propertiesPath)});
        return;
    }
    current->errorLogger = errorLogger();
    current->started = true;
}

void stop()
{
    current->stopping = true;
    for (auto const& [name, node] : current->configs)
        releaseConfig(node);
    current->configs.clear();
    current->configNames.clear();
    // Each object takes others with it: begin anew after each.
    while (!current->objects.empty())
        retireObject(current->objects.at(0).second);
    delete std::exchange(current, nullptr);
    purgeCatalogs();
    stopCodesets();
}

}  // namespace

Manager* manager() noexcept
{
    return current;
}

}  // namespace zk::logging

bool ccg_lock() noexcept
{
    return CxMutexLock(zk::logging::theMutex()).ok();
}

void ccg_unlock() noexcept
{
    CxMutexUnlock(zk::logging::theMutex());
}

bool ccg_initManager(char const* propertiesPath)
{
    using namespace zk::logging;
    Locked const locked;
    if (!locked)
        return false;
    if (current)
        return current->started;  // not yet: a class that is being set up asks
    try {
        startCodesets();
        current = new Manager;
        start(propertiesPath);
    } catch (std::bad_alloc const&) {
        printError(50);
    }
    if (current && !current->started)
        stop();
    return current != nullptr;
}

void ccg_shutdownManager()
{
    zk::logging::Locked const locked;
    if (locked && zk::logging::current)
        zk::logging::stop();
}
