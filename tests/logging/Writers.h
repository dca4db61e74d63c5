// Writers.h: processes that write numbered records into one file at the same time, and what became of them.
//
//   WriterTask const task = {.folder = ..., .key = 4711, .records = 20000, .maxFileSize = 1000000, .maxFiles = 50};
//   WriterResult const result = runWriters(8, task, std::chrono::milliseconds(50));    // kills one each 50 ms
//   EXPECT_EQ(result.faults, "");
#pragma once

#include <chrono>
#include <string>

namespace zk::test {

struct WriterTask {
    std::string folder;
    int key = 0;
    int records = 0;  ///< of each writer
    int maxFileSize = 0;
    int maxFiles = 0;
};

struct WriterResult {
    std::string faults;  ///< empty: each record is there once and whole, but for those that a kill met
    int kills = 0;
    int files = 0;
};

/// Runs the writers to their end. With an interval above 0, one of them after the other is killed that often, and
/// another process goes on where it stood.
WriterResult runWriters(int writers, WriterTask const& task, std::chrono::milliseconds killEach);

}  // namespace zk::test
