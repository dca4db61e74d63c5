// ChildProcess.h: a test's second process, its code beside the test.
//
//   ZK_CHILD(holdsMutex)
//   {
//       HANDLE const mutex = CreateMutexA(nullptr, TRUE, parent.argument().c_str());
//       parent.say("held");
//       parent.awaits("go");
//       return mutex ? 0 : 1;
//   }
//
//   TEST(Mutex, ...)
//   {
//       ChildProcess child("holdsMutex", name);
//       child.awaits("held");
//       child.kill();
//       ...
//   }
//
// The test program starts itself again; the child runs the named function
// instead of the tests, and its result is the exit code. Both sides go in lock step (Steps.h).
#pragma once

#include "tests/support/Steps.h"

#include <string>
#include <vector>

namespace zk::test {

/// What a child's function sees of its parent.
class Parent : public Steps {
public:
    Parent(NativePipe input, NativePipe output, std::string argument)
        : Steps(input, output), argument_(std::move(argument))
    {
    }

    std::string const& argument() const { return argument_; }

private:
    std::string const argument_;
};

class ChildProcess : public Steps {
public:
    /// Starts the function that ZK_CHILD(name) defines, with an argument.
    /// @throws std::runtime_error if the process cannot be started
    explicit ChildProcess(std::string const& name, std::string const& argument = {});

    /// Kills the child if it still runs, and takes its end.
    ~ChildProcess();

    /// Ends the child there and then (SIGKILL, TerminateProcess), and waits until it is gone.
    void kill();

    /// Waits for the child's end. Its exit code; -1 after kill().
    int exitCode();

private:
    NativeProcess process_;
    int exitCode_ = -1;
    bool hasEnded_ = false;
};

/// What a program came to: its exit code (-1 if a signal ended it) and all that it wrote.
struct ProgramResult {
    int code = -1;
    std::string out;
    std::string err;
};

/// What becomes of a program's standard output: kept for the test, closed from the start, or such that no write
/// succeeds.
enum class Output { kept, closed, unwritable };

/// Runs another program to its end, without a shell, with an empty standard input.
/// @throws std::runtime_error if it cannot be started
ProgramResult runProgram(std::string const& program, std::vector<std::string> const& arguments,
                         Output output = Output::kept);

/// For the test program's main(): true if it is a child, which has run by then.
bool runAsChild(int argc, char** argv, int& exitCode);

using ChildFunction = int (*)(Parent&);

/// Enters a function into the list of those that a child may run.
struct ChildEntry {
    ChildEntry(char const* name, ChildFunction function);
};

}  // namespace zk::test

/// Defines the code of a child process: the body of a function int(zk::test::Parent& parent).
#define ZK_CHILD(name)                                                                                       \
    static int zkChild_##name([[maybe_unused]] zk::test::Parent& parent);                                    \
    static zk::test::ChildEntry const zkChildEntry_##name(#name, zkChild_##name);                            \
    static int zkChild_##name([[maybe_unused]] zk::test::Parent& parent)
