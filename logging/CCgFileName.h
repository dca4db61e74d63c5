// CCgFileName.h: the name of a log file, taken apart, and the names that it has while it grows old.
//
//   FileName name;
//   parseFileName(markedFileName("logs/trace12.log"), name);      // "logs/trace12_.log"
//   name.path(0);                              // "/home/me/logs//trace12_.log", the active file
//   name.path(2);                              // "/home/me/logs//trace12_2.log"
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zk::logging {

inline constexpr std::size_t longestFileName = 260;

struct FileName {
    std::string directory;  ///< absolute; "" is the root
    std::string baseName;   ///< with the separator that it began with, if there was one
    std::optional<std::string> extension;
    std::int32_t number = 0;  ///< the digits that the name ended in

    /// The path of the file that is `index` rollovers old: the index, unless it is 0, stands behind the base name.
    std::string path(std::int32_t index) const;
};

/// A name with "_" behind a digit that stands at its end or before its extension, so that no index can be
/// taken for a part of it: "log7" is "log7_".
std::string markedFileName(std::string_view name);

enum class FileNameFault { none, missing, tooLong, invalid };

/// Takes a name apart. A relative one counts from the directory that is current now.
///
/// On failure all fields are empty: an empty name is missing, one of more than 260 bytes too long, and
/// one that begins with "/" invalid where the backslash is the separator and the environment has no
/// `SystemDrive`.
FileNameFault parseFileName(std::string_view name, FileName& parsed);

}  // namespace zk::logging
