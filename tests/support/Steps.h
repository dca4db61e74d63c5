// Steps.h: two processes in lock step, by lines of text over a pair of pipes.
//
//   child.say("go");              // the one side
//   parent.awaits("go");          // the other side, which until then stood here
//
// Nobody sleeps and nobody asks twice: a side waits until the other one has
// spoken, or until it is gone, which is a failure.
#pragma once

#include <cstdint>
#include <string>

namespace zk::test {

using NativePipe = std::intptr_t;     // a descriptor, or a HANDLE
using NativeProcess = std::intptr_t;  // a process number, or a HANDLE

class Steps {
public:
    /// Takes both ends over, and closes them.
    Steps(NativePipe input, NativePipe output) noexcept : input_(input), output_(output) { }
    ~Steps();
    Steps(Steps const&) = delete;
    Steps& operator=(Steps const&) = delete;

    /// Says a line to the other side.
    /// @throws std::runtime_error if it is gone
    void say(std::string const& line);

    /// The next line that the other side says.
    /// @throws std::runtime_error if it is gone
    std::string hear();

    /// Waits for the next line, which must be this one.
    /// @throws std::runtime_error if it is another one, or the other side is gone
    void awaits(std::string const& line);

protected:
    Steps() = default;
    void open(NativePipe input, NativePipe output) noexcept;

private:
    static constexpr NativePipe none = -1;
    NativePipe input_ = none;
    NativePipe output_ = none;
};

}  // namespace zk::test
