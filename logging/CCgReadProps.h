// CCgReadProps.h: reads a properties file.
//
//   # comment                       ! comment
//   cclog.errorLogger.level = WARN
//   Load.listenerNames : fileHandler console
//
// A key ends at a blank, "=" or ":" and may hold these after a backslash. A backslash at a line's end
// joins the next line without the blanks it begins with; others stand before a blank, a quote, a
// backslash, or "u" and four hex digits. A key alone on its line, a line that begins with blanks and a
// separator, and any other character behind a backslash make the file malformed.
#pragma once

#include "logging/CCgStringToStringMap.h"
#include "zk_export.h"

#include <string_view>

/// Reads a file into `target`, or, if that is null, into the toolkit's configuration, where a key is
/// an object's name, ".", and the name of a property.
///
/// False if the file cannot be read or is malformed; what stands before the mistake is kept. An unknown
/// escape is told on standard error.
ZK_UTIL_API bool CCgReadProps(char const* path, CCgStringToStringMap* target);

namespace zk::logging {

/// The same for a text that holds what a file would.
ZK_UTIL_API bool readProperties(std::string_view bytes, CCgStringToStringMap* target);

}  // namespace zk::logging
