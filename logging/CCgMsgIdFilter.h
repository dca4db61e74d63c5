// CCgMsgIdFilter.h: "ccg_msgidfilter", which lets records through by the identifier of their message.
//
// Properties, beside those of every object:
//   mode             BLOCK: what matches is stopped (default); PASSTHRU: only what matches passes
//   msgIds           patterns with "*", between blanks; default "*W *I"
//   msgIdRepeatTime  milliseconds in which an identifier passes once; default 0: always
#pragma once

#include "logging/ObjClass.h"
#include "zk_export.h"

#include <string_view>

/// Whether a pattern, in which "*" stands for any text, matches a message identifier.
///
/// Each piece between stars is looked for once, from where the one before ended, and the last must
/// end the text: "*B*" matches only a text in which the first "B" stands last. A star at the end counts
/// only behind a pattern's first piece: "ABC*" matches "ABCD". Stars alone match everything.
ZK_UTIL_API bool ccg_matchesMsgId(std::string_view pattern, std::string_view text) noexcept;

namespace zk::logging {

extern CCgFilterEntries const msgIdFilterEntries;
extern CCgObjectEntries const msgIdFilterObjectEntries;

}  // namespace zk::logging
