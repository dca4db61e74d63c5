#include "logging/CCgLevelFilter.h"

#include "logging/CCgEvent.h"
#include "logging/CCgObject.h"

namespace zk::logging {

namespace {

// Called while the object is built: its level is told by the configuration, and is 0 until then.
void* startWithoutLimit(CCgObject* filter)
{
    filter->level.store(CCG_ALL, std::memory_order_relaxed);
    return nullptr;
}

}  // namespace

bool acceptByLevel(CCgObject* filter, CCgEvent* event)
{
    if (!event)
        return false;
    CCgLevel const limit = filter->level.load(std::memory_order_relaxed);
    return limit == CCG_ALL || event->level == CCG_ALWAYS || event->level >= limit;
}

CCgObjectEntries const levelFilterObjectEntries = {startWithoutLimit, nullptr, nullptr};

}  // namespace zk::logging
