// preferences.h: a switch of the code generation. The user's preferences are members of IToolMode.
#pragma once

#include "zk_export.h"

/// True if the setting "CodeGen", "ForceInternalCG" is "True" in any case. Read anew at each call.
ZK_UTIL_API bool ForceInternalCG();
