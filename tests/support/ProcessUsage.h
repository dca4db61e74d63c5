// ProcessUsage.h: what this process holds, to show that nothing was left behind.
//
//   ProcessUsage const before;
//   ...
//   EXPECT_EQ(ProcessUsage().handles, before.handles);
#pragma once

#include <cstddef>

namespace zk::test {

struct ProcessUsage {
    /// Measures now.
    ProcessUsage();

    std::size_t memory;   ///< bytes that are allocated on the heap
    std::size_t handles;  ///< open descriptors, or open handles of the system
    std::size_t threads;  ///< threads of this process, the caller's too
};

}  // namespace zk::test
