// zk_export.h: ZK_UTIL_API, the one macro that marks what the module exports.
#pragma once

#include "platform/os/exportMacro.h"
