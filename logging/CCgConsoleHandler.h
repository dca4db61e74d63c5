// CCgConsoleHandler.h: "ccg_consolehandler", which prints records to standard output.
//
// Properties: "formatterName", and those of every object. Text is printed in the console's code set; of
// one record at most 4095 bytes.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgHandlerEntries const consoleHandlerEntries;
extern CCgObjectEntries const consoleHandlerObjectEntries;

}  // namespace zk::logging
