// zk_util.h: everything that the library exports.
#pragma once

#include "zk_export.h"

#include "platform/os/os.h"

#include "platform/classlib/CObject.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/textTables.h"
