// CCgMsgId.h: the identifier that a message's text begins with.
//
//   ccg_classifyMsgId("CCGBC0020E Out of memory.");     // length 10, severity at 9, format 541
#pragma once

#include "zk_export.h"

#include <string_view>

struct CCgMsgIdForm {
    char const* name = nullptr;  ///< the format's name; null: the text begins with no identifier
    int code = 0;
    int length = 0;
    int severityAt = 0;  ///< the position of the "I", "W" or "E"
};

/// Three to six letters, two to six digits and a severity, in one of eleven combinations, make an
/// identifier. Only the first ten bytes count, and what follows does not.
ZK_UTIL_API CCgMsgIdForm ccg_classifyMsgId(std::string_view text) noexcept;
