// OutOfMemory.h: lets `new` fail in a test, once or from the n-th time on.
//
//   EXPECT_GT(failuresOf([&] { text.Append("more"); }, [&] { return text == "all there was"; }), 0);
//
// For programs that hold the library inside themselves (INTERNAL): those of a
// shared one have an operator of their own on one of the targets.
#pragma once

#include <functional>

namespace zk::test {

/// While one lives, `new` fails in this thread after `successes` times.
class OutOfMemory {
public:
    explicit OutOfMemory(int successes = 0) noexcept;
    ~OutOfMemory();
    OutOfMemory(OutOfMemory const&) = delete;
    OutOfMemory& operator=(OutOfMemory const&) = delete;

    /// Whether `new` has failed since.
    static bool hasFailed() noexcept;
};

/// While one lives, the `number`-th `new` of this thread fails, and no other one.
class FailingAllocation {
public:
    explicit FailingAllocation(int number) noexcept;
    ~FailingAllocation();
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;

    /// Whether the call has come so far.
    bool hasFailed() const noexcept { return OutOfMemory::hasFailed(); }
};

/// Calls `work` with ever more memory, from none on, until it needs no more. Each time that
/// memory lacks it must throw std::bad_alloc, and `isUnchanged` must hold afterwards.
/// Gives how often that was; -1 if something else happened.
int failuresOf(std::function<void()> const& work, std::function<bool()> const& isUnchanged);

}  // namespace zk::test
