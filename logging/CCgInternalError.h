// CCgInternalError.h: what goes wrong inside the toolkit goes to its error logger.
#pragma once

#include "logging/CCgLevel.h"
#include "logging/CCgParmList.h"
#include "logging/CCgResult.h"
#include "zk_export.h"

#include <cstdint>
#include <initializer_list>
#include <string>

/// Sends a message of catalog "ccgmsg", set 1, to the error logger; the parameters are a typed list,
/// ended by 0.
///
/// Dropped while the toolkit isn't started, if the level does not pass, and while another such report
/// is on its way.
ZK_UTIL_API void ccg_internalError(CCgLevel level, std::int32_t key, char const* defaultText, ...);

namespace zk::logging {

/// The same with the toolkit's own text for the key. For code that holds the lock.
ZK_UTIL_API void report(CCgLevel level, std::int32_t key, std::initializer_list<CCgParm> parameters = {});

ZK_UTIL_API void report(CCgLevel level, std::int32_t key, CCgParmList parameters);

/// Reports a failed call at level 5000 under key 0 with the text of its error; a success is none.
ZK_UTIL_API void reportResult(CCgResult const& result);

/// Prints one of the toolkit's own texts and a line feed to standard error.
void printError(std::int32_t key, std::initializer_list<CCgParm> parameters = {});

/// The toolkit's own text for a key from 1 to 131; "unused" and three digits where it has none.
ZK_UTIL_API std::string internalText(std::int32_t key);

}  // namespace zk::logging
