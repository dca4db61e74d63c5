// CCgFileHandler.h: "ccg_filehandler", which appends records to a file and keeps older ones beside it.
//
//   out.className = ccg_filehandler
//   out.fileName = logs/trace.log
//   out.maxFileSize = 1000000
//   out.maxFiles = 5
//
// The active file is "logs/trace.log"; when it is full it becomes "logs/trace1.log", and so on up to
// "logs/trace4.log", the oldest. Its properties stand in CCgFileState.h.
//
// Each record is in the hands of the system when the call returns. A file that is removed is made again. What
// fails is reported, and every following record tries again. Two processes that write one file each roll it
// over by themselves; CCgMultiProcFileHandler.h has the handler for them.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgHandlerEntries const fileHandlerEntries;
extern CCgObjectEntries const fileHandlerObjectEntries;

}  // namespace zk::logging
