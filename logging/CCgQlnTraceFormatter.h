// CCgQlnTraceFormatter.h: "ccg_qlntraceformatter", one line of fixed fields for each record.
//
// The line begins with the record separator character (30); its fields, with " - " between them, are
//   [time] - level - host - p<process>:t<thread> - file:function(line) - message identifier - message
//
// No property has an effect: the time is always in the default form.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgFormatterEntries const traceFormatterEntries;
extern CCgObjectEntries const traceFormatterObjectEntries;

}  // namespace zk::logging
