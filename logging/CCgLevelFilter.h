// CCgLevelFilter.h: "ccg_levelfilter", which lets records from a level on through.
//
// Properties: "level", and those of every object. A filter that was given no level lets all through.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

/// What a filter's `log` does by default: forwards what `accept` lets through, if the filter is on.
void logThroughFilter(CCgObject* filter, CCgEvent* event);

/// The level test: passes records of the filter's level or above, and those of the always level.
bool acceptByLevel(CCgObject* filter, CCgEvent* event);

extern CCgObjectEntries const levelFilterObjectEntries;

}  // namespace zk::logging
