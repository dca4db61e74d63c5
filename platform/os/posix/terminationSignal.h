// terminationSignal.h: the signal by which TerminateThread() reaches a thread.
#pragma once

namespace zk::os {

/// The signal, taken at the first call: the highest real-time signal that nobody handles; 0 if all are in use. It ends
/// the thread that gets it from sigqueue with the thread's own ThreadState, once no Shield is left; any other is
/// ignored. Given back when the module is unloaded.
int terminationSignal() noexcept;

/// Lets the calling thread get it.
void unblockTerminationSignal() noexcept;

}  // namespace zk::os
