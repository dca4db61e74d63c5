// CCgStringToStringMap.h: texts by name, in the order in which the names were first set.
#pragma once

#include "logging/util/CxListUtil.h"

#include <string>

using CCgStringToStringMap = zk::logging::NamedList<std::string>;
