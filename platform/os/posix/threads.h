// threads.h: threads, and the calling thread and process.
//
//   DWORD WINAPI twice(LPVOID number) { return 2 * *static_cast<DWORD*>(number); }
//
//   DWORD number = 21, code, id;
//   HANDLE const thread = CreateThread(nullptr, 0, twice, &number, CREATE_SUSPENDED, &id);
//   ResumeThread(thread);
//   WaitForSingleObject(thread, INFINITE);
//   GetExitCodeThread(thread, &code);          // code is 42
//   CloseHandle(thread);                       // at any time: the thread runs on without it
//
// A thread handle is signalled once the thread is gone: its thread_local
// objects are destroyed by then, and the mutexes it held are abandoned.
// Calls that take a thread accept GetCurrentThread() too.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/handles.h"
#include "platform/os/posix/types.h"

#include <memory>

#define CREATE_SUSPENDED 0x00000004u
#define STACK_SIZE_PARAM_IS_A_RESERVATION 0x00010000u
#define STILL_ACTIVE 259u

#define THREAD_PRIORITY_IDLE (-15)
#define THREAD_PRIORITY_LOWEST (-2)
#define THREAD_PRIORITY_BELOW_NORMAL (-1)
#define THREAD_PRIORITY_NORMAL 0
#define THREAD_PRIORITY_ABOVE_NORMAL 1
#define THREAD_PRIORITY_HIGHEST 2
#define THREAD_PRIORITY_TIME_CRITICAL 15
#define THREAD_PRIORITY_ERROR_RETURN 0x7FFFFFFF

using LPTHREAD_START_ROUTINE = DWORD (*)(LPVOID argument);

/// Starts a thread with `entry(argument)`; what it returns is the exit code.
///
/// `stackSize` 0 is the system's default; any other is rounded up to what the
/// system needs at least. With CREATE_SUSPENDED the entry waits for
/// ResumeThread(). `id` may be null. The caller owns the handle.
/// Null on failure: ERROR_INVALID_PARAMETER for another flag,
/// ERROR_NOT_ENOUGH_MEMORY if the system has no room for a thread.
ZK_UTIL_API HANDLE CreateThread(LPSECURITY_ATTRIBUTES attributes, SIZE_T stackSize,
                                LPTHREAD_START_ROUTINE entry, LPVOID argument, DWORD flags,
                                LPDWORD id) noexcept;

/// Takes one suspension back. Gives how many there were before: 1 for a thread
/// created suspended, which then runs, 0 for one that isn't suspended; 0xFFFFFFFF on failure.
ZK_UTIL_API DWORD ResumeThread(HANDLE thread) noexcept;

/// Adds a suspension to a thread that was created suspended and doesn't run yet.
/// Gives how many there were before. A running thread cannot be stopped here:
/// 0xFFFFFFFF with ERROR_NOT_SUPPORTED.
ZK_UTIL_API DWORD SuspendThread(HANDLE thread) noexcept;

/// Ends a thread wherever it is, with an exit code. Nothing of it runs any more:
/// no destructor, also of thread_local objects. Mutexes that it holds are
/// abandoned, all other locks stay locked; its memory is lost.
///
/// A request, met as soon as the thread is scheduled: wait for the handle to
/// know. A thread that was never resumed never runs its entry. For a thread
/// that has ended the call succeeds and changes nothing.
ZK_UTIL_API BOOL TerminateThread(HANDLE thread, DWORD code) noexcept;

/// Ends the calling thread with an exit code. The objects on its stack are not
/// destroyed. Its thread_local objects are, if CreateThread() made the thread;
/// another thread ends as by TerminateThread().
[[noreturn]] ZK_UTIL_API void ExitThread(DWORD code) noexcept;

/// The exit code of a thread, STILL_ACTIVE as long as it runs or is suspended.
ZK_UTIL_API BOOL GetExitCodeThread(HANDLE thread, LPDWORD code) noexcept;

/// The value that stands for the calling thread in any call; it needs no closing.
ZK_UTIL_API HANDLE GetCurrentThread() noexcept;

/// The number of the calling thread: that of the kernel, unique in the machine.
ZK_UTIL_API DWORD GetCurrentThreadId() noexcept;

/// The number of a thread; 0 with ERROR_INVALID_HANDLE for what is none.
ZK_UTIL_API DWORD GetThreadId(HANDLE thread) noexcept;

/// Sets the priority of a thread to one of the seven values; any other fails
/// with ERROR_INVALID_PARAMETER. Below normal it gives way to others ("nice");
/// above normal it comes first where the user may do that, and else is only recorded.
ZK_UTIL_API BOOL SetThreadPriority(HANDLE thread, int priority) noexcept;

/// The priority that was set last; THREAD_PRIORITY_ERROR_RETURN on failure.
ZK_UTIL_API int GetThreadPriority(HANDLE thread) noexcept;

/// Lets another thread run. Always FALSE: the system doesn't tell whether one was ready.
ZK_UTIL_API BOOL SwitchToThread() noexcept;

/// The value that stands for the calling process in any call; it needs no closing.
ZK_UTIL_API HANDLE GetCurrentProcess() noexcept;

/// The number of the calling process.
ZK_UTIL_API DWORD GetCurrentProcessId() noexcept;

/// Ends the process at once, without destructors and without flushing streams.
/// The parent sees the low 8 bits of the code.
[[noreturn]] ZK_UTIL_API void ExitProcess(UINT code) noexcept;

namespace zk::os {

/// The calling thread's own object, as for a handle. Null without memory.
std::shared_ptr<KernelObject> ownThreadObject() noexcept;

}  // namespace zk::os
