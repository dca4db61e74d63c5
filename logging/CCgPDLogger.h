// CCgPDLogger.h: "ccg_pdlogger", a logger that adds to each record where it comes from.
//
// Properties, beside those of every logger: organization, product, component, client, server,
// serverFormat and productInstance, which every record then has. At first "server" is the full name
// of this host and "serverFormat" is "IP". Each record gets "processId", "threadId" and the identifier
// of its message too.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgLoggerEntries const pdLoggerEntries;
extern CCgObjectEntries const pdLoggerObjectEntries;

}  // namespace zk::logging
