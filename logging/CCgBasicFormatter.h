// CCgBasicFormatter.h: "ccg_basicformatter", one line for each record.
//
//   2024-05-06 07:08:09.010+02:00 model.cpp readUnit 42 The unit is unknown.
//
// Properties: "separator" (default one space), "dateTimeFormat", "locale", and those of every object.
// The time comes first, the message last; between them, each if the record has it, source file,
// function and line, organization, product, component, client and server.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

/// What a formatter's `format` does by default.
char* formatBasic(CCgObject* formatter, CCgEvent* event);

}  // namespace zk::logging
