// CCgLogFile.h: an open log file, which others may write, rename, remove or close meanwhile.
//
//   LogFile file;
//   if (file.open(path, 0, 0744).ok()) {
//       if (file.look(now) == LogFile::State::inPlace)
//           file.write("2024-05-06 07:08:09.010+02:00 text\n");
//       file.close();
//   }
//
// What a record costs
// -------------------
// A record is written with one call into the system. Before it, every record asks what happened to
// the file since the last one, and a status of path and descriptor would cost three times as much as the
// write: the kernel then keeps exact times for the file, which each write has to bring to the disk. So
//  1. the kernel tells when a name on the path changes (FileWatch), and the path itself is looked at once per second;
//  2. the size is the end of the file, found by a seek;
//  3. a size other than the one that was left behind is somebody else's record, or somebody else's file: the program
//     has closed the descriptor, and the number now belongs to another file. Only then the identity is asked for.
#pragma once

#include "logging/CCgResult.h"
#include "platform/os/fileWatch.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zk::logging {

class LogFile {
public:
    LogFile() = default;
    ~LogFile() { close(); }
    LogFile(LogFile const&) = delete;
    LogFile& operator=(LogFile const&) = delete;

    /// Opens a file for reading and appending, and makes it if need be. `flags` are more of CxFileFlags.
    CCgResult open(std::string const& path, unsigned flags, int permissions);

    /// Closes it. The descriptor stays open if it is another file's by now.
    CCgResult close() noexcept;

    bool isOpen() const noexcept { return descriptor_ != noDescriptor; }
    std::int32_t descriptor() const noexcept { return descriptor_; }

    enum class State {
        inPlace,  ///< the path leads to the open file
        gone,     ///< it was renamed or removed, or another file has its name
        lost      ///< the descriptor is closed, or another file's; the object is closed now
    };

    /// What became of the open file, and its size, which is kept. `now` are milliseconds.
    State look(std::int64_t now);

    /// As of the last look or write.
    std::uint64_t size() const noexcept { return size_; }

    /// Writes a text at the end, in one call into the system, with line feeds as the system ends its lines.
    /// What failed half-way is taken back, unless others have written behind it.
    CCgResult write(std::string_view text);

    /// Whether the end of the file is the end of a line; true for an empty file.
    bool endsLine(std::string_view lineEnd) const;

    /// Empties the file.
    CCgResult empty() noexcept;

private:
    static constexpr std::int32_t noDescriptor = -1;

    bool isStillOurs() const noexcept;
    bool isNamed();
    CCgResult writeBytes(std::string_view bytes);
    void takeBack(std::string_view bytes) noexcept;

    std::int32_t descriptor_ = noDescriptor;
    std::uint64_t size_ = 0;
    std::string path_;
    bool isRegular_ = false;
    std::uint64_t device_ = 0;
    std::uint64_t number_ = 0;
    os::FileWatch watch_;
    std::int64_t lookedAt_ = 0;  // the second of the last look at the path
};

}  // namespace zk::logging
