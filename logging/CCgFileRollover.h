// CCgFileRollover.h: makes room for a log file that begins anew, by giving each older one the next index.
//
//   a.log  a1.log  a2.log       with at most three files: a2.log goes, a1.log is a2.log and a.log is a1.log
//
// What fails leaves every file as it was, under its old name: the oldest file is put aside first and removed last,
// and steps that were done are undone. A process that is killed half-way leaves a gap among the indexes, or the
// file that was put aside; the next one closes the gap instead of giving up one file more.
#pragma once

#include "logging/CCgFileName.h"
#include "logging/CCgReports.h"

#include <cstdint>

namespace zk::logging {

/// What stands behind the path of the active file where the oldest one is put aside.
inline constexpr std::string_view asideSuffix = ".dropped";

struct Rollover {
    FileName const& name;
    std::int32_t maxFiles;        ///< at least 2
    std::int32_t lowest = 0;      ///< the lowest index that is renamed
    bool wasInterrupted = false;  ///< a process is known to have ended in the middle of one
};

/// Renames index by index and leaves the oldest file, which has no index any more, put aside; false if the files
/// are as they were, with the reason in `reports`.
///
/// Missing files are passed over. Beyond index 1000 files count up to the first one that is missing.
bool rollOver(Rollover const& rollover, Reports& reports);

/// Removes the file that was put aside, and tells whether there was one.
bool removeOldest(FileName const& name, Reports& reports);

}  // namespace zk::logging
