// CCgMultiProcFileHandler.h: "ccg_multiproc_filehandler", which appends records to a file that other processes
// write at the same time.
//
//   out.className = ccg_multiproc_filehandler
//   out.fileName = /var/log/team.log
//   out.MPFileSemKey = 4711
//
// Its properties stand in CCgFileState.h. All processes that write one file have the same key, maxFileSize and
// maxFiles. The active file is never renamed: when it is full it is copied to index 1 and emptied, so that every
// process goes on with the file that it has open. Formatters' headers and footers are not written.
//
// Under the mutex of the key
// --------------------------
//  1. A process looks whether its file is still the one behind the name, and how large it is.
//  2. It copies and empties a full one.
//  3. It writes its record, in one call into the system.
// A process that is killed in the middle costs nobody more than its own record. The next owner learns of it from the
// mutex: it begins a new line if the file ends within one, closes the gap that was left among the
// indexes, and does not copy a second time what was copied already.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgHandlerEntries const multiProcFileHandlerEntries;
extern CCgObjectEntries const multiProcFileHandlerObjectEntries;

}  // namespace zk::logging
