// ObjectNames.h: names of shared objects that no other test and no other run uses.
//
//   uniqueName("Global\\")                // "Global\zk-test-4711-1"
#pragma once

#include "platform/os/os.h"

#include <atomic>
#include <string>

namespace zk::test {

inline std::string uniqueName(std::string const& prefix = {})
{
    static std::atomic<int> count{0};
    return prefix + "zk-test-" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(++count);
}

}  // namespace zk::test
