// options.h: the letters with which the text operations are tuned.
#pragma once

#include <cstring>

namespace zk {

inline bool hasOption(char const* opts, char option)
{
    return opts && std::strchr(opts, option);
}

}  // namespace zk
