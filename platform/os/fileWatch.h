// fileWatch.h: notices that a path may lead elsewhere than it did, without asking the file system each time.
//
//   zk::os::FileWatch watch;
//   watch.start("/var/log/a.log");               // after the file was opened
//   ...
//   if (watch.mayHaveChanged())                  // mostly not
//       ...                                      // ask the file system what the path leads to now
//
// Linux: the kernel tells (inotify) when the file, a folder or a link on the way to it is renamed or removed.
// It does not tell of what other machines do in a shared folder, and of file systems that are mounted over
// a folder: who cannot miss those asks the file system now and then as well. Elsewhere, and where the kernel has
// no watch to give, mayHaveChanged() is always true.
#pragma once

#include "platform/os/exportMacro.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zk::os {

class ZK_UTIL_API FileWatch {
public:
    FileWatch() = default;
    ~FileWatch() { stop(); }
    FileWatch(FileWatch const&) = delete;
    FileWatch& operator=(FileWatch const&) = delete;

    /// Watches an absolute path from now on, in place of what was watched.
    ///
    /// Takes a few microseconds and no descriptor: a process has one for all its watches, made with the first.
    void start(char const* path) noexcept;

    /// Ends the watch; mayHaveChanged() is true from then on.
    void stop() noexcept;

    /// Whether something is watched.
    bool isAtWork() const noexcept { return service_ != 0; }

    /// False only if the path leads where it led at the last call that gave true, or at start().
    ///
    /// Costs one short call into the kernel. In a forked child the first call gives true and begins anew.
    bool mayHaveChanged() noexcept;

private:
    std::string path_;
    std::vector<int> watches_;
    std::uint64_t service_ = 0;  // the process's own number; 0: nothing is watched
    std::uint64_t seen_ = 0;     // the count of events that was looked at last
};

}  // namespace zk::os
