#include "platform/os/posix/threads.h"

#include "platform/os/posix/futex.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/terminationSignal.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/waits.h"

#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csetjmp>
#include <csignal>
#include <mutex>
#include <new>

// How a thread lives and ends
// ---------------------------
// The thread exists from CreateThread() on, so that a lack of memory shows
// there. It stands at a *gate* until nobody suspends it, and runs its entry then.
//
//   gate: n > 0 suspended n times -> 0 may go -> running
//                                 \-> barred (terminated before it ran)
//
// Four ways lead to the end, and each passes noteEndOfThread() on the thread itself:
//  - the entry returns: the C++ runtime destroys the thread_local objects, then
//    the destructor of our thread key runs;
//  - ExitThread(): a jump back to where the entry was called, then the same. (Unwinding
//    instead would run destructors, and stop the process at a noexcept function.)
//  - TerminateThread(): a reserved real-time signal, whose handler leaves by the
//    raw system call. pthread_cancel() would not do: it never stops a thread
//    that computes, and unwinds. This is outside what the C library promises:
//    the thread's C++ objects and the library's memory for them are lost.
//  - ExitThread() in a thread that CreateThread() did not make: the raw system call, too.
//
// The end is noted in the word `end`. A moment later the kernel marks the named
// mutexes that the thread holds as abandoned, and last of all it writes 0 into the
// word that holds the thread's number and wakes one who sleeps on it. A waiter must
// see all of that, so it *watches* that word: one sleep, and no other wake-up
// than the kernel's own. The word lies in the C library's block of the thread, at a
// distance from its start that prctl(PR_GET_TID_ADDRESS) tells. The block stays
// until the thread is joined, which the last watcher does; one who was ended
// while it watched counts as watching for ever, and the last handle's end joins then.
//
// Where the distance can't be found out, and for threads that CreateThread() did
// not make, waiters sleep on `end`, and join the thread if it is theirs to join.
//
// A ThreadState belongs to the thread and to each object behind handles, and the last of
// these frees it. If the objects go first, the thread is detached.

namespace zk::os {

namespace {

enum Gate : std::uint32_t { opened = 0, running = 0xFFFFFFFE, barred = 0xFFFFFFFF };
constexpr std::uint32_t maximumSuspensions = 127;

enum End : std::uint32_t { notYet, notYetAndAwaited, ended };

constexpr std::uint64_t noCode = ~std::uint64_t(0);

// How far behind the start of the C library's block the kernel keeps a thread's number; 0: not known.
std::ptrdiff_t findNumberOffset() noexcept
{
#ifdef __SANITIZE_THREAD__
    return 0;  // the sanitizer doesn't see the kernel's write, and takes the look at it for a race
#endif
    char* place = nullptr;
    if (prctl(PR_GET_TID_ADDRESS, &place, 0, 0, 0) != 0 || !place)
        return 0;
    std::ptrdiff_t const offset = place - reinterpret_cast<char const*>(pthread_self());
    constexpr std::ptrdiff_t largestBlock = 4096;
    bool const isInside = offset > 0 && offset < largestBlock;
    return isInside && *reinterpret_cast<pid_t const*>(place) == gettid() ? offset : 0;
}

std::ptrdiff_t numberOffset() noexcept
{
    static std::ptrdiff_t const offset = findNumberOffset();
    return offset;
}

}  // namespace

class ThreadState {
public:
    ThreadState(LPTHREAD_START_ROUTINE entry, LPVOID argument, bool suspended) noexcept
        : entry_(entry), argument_(argument), gate_(suspended)
    {
    }

    /// For a thread that CreateThread() did not make; called on it.
    ThreadState() noexcept : gate_(Gate::running), id_(ownThreadId()), owners_(1) { }

    DWORD start(SIZE_T stackSize) noexcept;
    void run() noexcept(false);
    [[noreturn]] void exit(DWORD code) noexcept;
    void noteEnd(bool mayFree) noexcept;

    DWORD wait(DWORD milliseconds) noexcept;
    DWORD resume(DWORD& before) noexcept;
    DWORD suspend(DWORD& before) noexcept;
    DWORD terminate(DWORD code) noexcept;
    DWORD exitCode() const noexcept;
    DWORD id() noexcept;
    DWORD setPriority(int priority) noexcept;
    int priority() const noexcept { return priority_.load(std::memory_order_relaxed); }

    void addObject() noexcept;
    void removeObject() noexcept;

private:
    bool passGate() noexcept;
    bool hasEnded() const noexcept { return end_.load(std::memory_order_seq_cst) == End::ended; }
    std::atomic<std::uint32_t>* beginToWatch() noexcept;
    void endToWatch(std::atomic<std::uint32_t>& number, bool isGone) noexcept;
    DWORD waitForEnd(DWORD milliseconds) noexcept;
    void join() noexcept;
    void removeOwner() noexcept
    {
        if (owners_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    LPTHREAD_START_ROUTINE const entry_ = nullptr;
    LPVOID const argument_ = nullptr;
    std::jmp_buf backToStart_;
    std::atomic<std::uint32_t> gate_;
    std::atomic<std::uint32_t> end_{End::notYet};
    std::atomic<std::uint64_t> code_{noCode};  // the first way to end sets it
    std::atomic<DWORD> id_{0};                 // set by the thread itself
    std::atomic<int> priority_{THREAD_PRIORITY_NORMAL};
    std::atomic<int> owners_{0};  // the thread, and each object behind handles

    std::mutex nativeMutex_;  // guards the following
    pthread_t native_{};
    bool isJoinable_ = false;
    bool isToBeKilled_ = false;
    int objects_ = 0;
    int watchers_ = 0;
};

namespace {

// What handles of a thread refer to.
class ThreadObject final : public KernelObject {
public:
    explicit ThreadObject(ThreadState& state) noexcept : state_(state) { state_.addObject(); }
    ~ThreadObject() override { state_.removeObject(); }

    DWORD wait(DWORD milliseconds) noexcept override { return state_.wait(milliseconds); }
    ThreadState& state() noexcept { return state_; }

private:
    ThreadState& state_;
};

int niceOf(int priority) noexcept
{
    switch (priority) {
    case THREAD_PRIORITY_IDLE: return 19;
    case THREAD_PRIORITY_LOWEST: return 10;
    case THREAD_PRIORITY_BELOW_NORMAL: return 5;
    case THREAD_PRIORITY_ABOVE_NORMAL: return -5;
    case THREAD_PRIORITY_HIGHEST: return -10;
    case THREAD_PRIORITY_TIME_CRITICAL: return -20;
    default: return 0;
    }
}

bool isPriority(int value) noexcept
{
    return (value >= THREAD_PRIORITY_LOWEST && value <= THREAD_PRIORITY_HIGHEST) ||
        value == THREAD_PRIORITY_IDLE || value == THREAD_PRIORITY_TIME_CRITICAL;
}

}  // namespace

extern "C" {
static void* zkRunThread(void* state)
{
    static_cast<ThreadState*>(state)->run();
    return nullptr;
}
}

DWORD ThreadState::start(SIZE_T stackSize) noexcept
{
    pthread_attr_t attributes;
    if (int const error = pthread_attr_init(&attributes))
        return errorFromErrno(error);
    if (stackSize != 0) {
        constexpr SIZE_T page = 4096;
        SIZE_T const least = SIZE_T(PTHREAD_STACK_MIN) + 16 * page;
        SIZE_T const most = SIZE_T(-1) / 2;
        SIZE_T const wanted = (std::clamp(stackSize, least, most) + page - 1) / page * page;
        pthread_attr_setstacksize(&attributes, wanted);
    }
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    owners_.fetch_add(1, std::memory_order_relaxed);  // the thread
    int const error = systemCalls().pthread_create(&native_, &attributes, zkRunThread, this);
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        owners_.fetch_sub(1, std::memory_order_relaxed);
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    isJoinable_ = true;
    return ERROR_SUCCESS;
}

void ThreadState::run() noexcept(false)
{
    id_.store(ownThreadId(), std::memory_order_release);
    ThreadRecord* const record = threadRecord();
    if (record)
        record->state = this;
    unblockTerminationSignal();
    if (passGate() && _setjmp(backToStart_) == 0) {
        std::uint64_t unset = noCode;
        DWORD const code = entry_(argument_);
        code_.compare_exchange_strong(unset, code);
    }
    if (!record)
        noteEnd(true);  // nobody else would
}

// Waits until the thread may run; false if it never may.
bool ThreadState::passGate() noexcept
{
    static Deadline const never(INFINITE);
    for (;;) {
        std::uint32_t seen = gate_.load(std::memory_order_acquire);
        if (seen == Gate::barred)
            return false;
        if (seen == Gate::opened && gate_.compare_exchange_strong(seen, Gate::running))
            return true;
        if (seen != Gate::opened)
            sleepOn(gate_, seen, Sharing::ofProcess, never);
    }
}

void ThreadState::exit(DWORD code) noexcept
{
    std::uint64_t unset = noCode;
    code_.compare_exchange_strong(unset, code);
    if (!entry_)
        leaveThread();
    std::longjmp(backToStart_, 1);
}

void ThreadState::noteEnd(bool mayFree) noexcept
{
    if (end_.exchange(End::ended, std::memory_order_seq_cst) == End::notYetAndAwaited)
        wake(end_, Sharing::ofProcess, everySleeper);
    if (mayFree)
        removeOwner();
    else
        owners_.fetch_sub(1, std::memory_order_acq_rel);
}

DWORD ThreadState::wait(DWORD milliseconds) noexcept
{
    std::atomic<std::uint32_t>* const number = beginToWatch();
    if (!number)
        return waitForEnd(milliseconds);
    std::uint32_t seen = number->load(std::memory_order_acquire);
    if (seen != 0 && milliseconds != 0) {
        Deadline const deadline(milliseconds);
        ThreadRecord* const record = threadRecord();
        if (record)
            record->sleepsOn = number;
        while (seen != 0) {
            bool const isLate = sleepOn(*number, seen, Sharing::betweenProcesses, deadline) == Wake::timedOut;
            seen = number->load(std::memory_order_acquire);
            if (isLate)
                break;
        }
        if (record)
            record->sleepsOn = nullptr;
    }
    endToWatch(*number, seen == 0);
    return seen == 0 ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

// The word to watch, until endToWatch(); null for a thread that is joined, or not to be watched.
std::atomic<std::uint32_t>* ThreadState::beginToWatch() noexcept
{
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    if (!isJoinable_ || numberOffset() == 0)
        return nullptr;
    ++watchers_;
    return reinterpret_cast<std::atomic<std::uint32_t>*>(reinterpret_cast<char*>(native_) + numberOffset());
}

void ThreadState::endToWatch(std::atomic<std::uint32_t>& number, bool isGone) noexcept
{
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    --watchers_;
    if (!isGone || !isJoinable_)
        return;
    if (watchers_ > 0) {
        wake(number, Sharing::betweenProcesses, everySleeper);  // the kernel woke but one
    } else {
        pthread_join(native_, nullptr);
        isJoinable_ = false;
    }
}

DWORD ThreadState::waitForEnd(DWORD milliseconds) noexcept
{
    if (!hasEnded()) {
        if (milliseconds == 0)
            return WAIT_TIMEOUT;
        Deadline const deadline(milliseconds);
        for (;;) {
            std::uint32_t seen = End::notYet;
            end_.compare_exchange_strong(seen, End::notYetAndAwaited);
            if (seen == End::ended)
                break;
            if (sleepOn(end_, End::notYetAndAwaited, Sharing::ofProcess, deadline) == Wake::timedOut &&
                !hasEnded())
                return WAIT_TIMEOUT;
        }
    }
    join();
    return WAIT_OBJECT_0;
}

// Call when the thread has noted its end: it is gone afterwards.
void ThreadState::join() noexcept
{
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    if (isJoinable_)
        pthread_join(native_, nullptr);
    isJoinable_ = false;
}

DWORD ThreadState::resume(DWORD& before) noexcept
{
    std::uint32_t seen = gate_.load();
    do
        if (seen == Gate::opened || seen == Gate::running || seen == Gate::barred) {
            before = 0;
            return ERROR_SUCCESS;
        }
    while (!gate_.compare_exchange_weak(seen, seen - 1));
    before = seen;
    if (seen == 1)
        wake(gate_, Sharing::ofProcess, 1);
    return ERROR_SUCCESS;
}

DWORD ThreadState::suspend(DWORD& before) noexcept
{
    std::uint32_t seen = gate_.load();
    do {
        if (seen == Gate::running)
            return ERROR_NOT_SUPPORTED;
        if (seen == Gate::barred)
            return ERROR_ACCESS_DENIED;
        if (seen == maximumSuspensions)
            return ERROR_SIGNAL_REFUSED;
    } while (!gate_.compare_exchange_weak(seen, seen + 1));
    before = seen;
    return ERROR_SUCCESS;
}

DWORD ThreadState::terminate(DWORD code) noexcept
{
    if (hasEnded())
        return ERROR_SUCCESS;
    int const number = terminationSignal();
    if (number == 0)
        return ERROR_NOT_SUPPORTED;
    std::uint64_t unset = noCode;
    code_.compare_exchange_strong(unset, code);

    std::uint32_t seen = gate_.load();
    while (seen != Gate::running && seen != Gate::barred)
        if (gate_.compare_exchange_weak(seen, Gate::barred)) {
            wake(gate_, Sharing::ofProcess, 1);
            return ERROR_SUCCESS;
        }
    if (seen == Gate::barred)
        return ERROR_SUCCESS;
    ThreadRecord const* const record = ownThreadRecord;
    if (record && record->state == this)
        leaveThread();
    {
        Shield const shield;
        std::lock_guard const lock(nativeMutex_);
        isToBeKilled_ = true;
    }
    siginfo_t info{};
    info.si_signo = number;
    info.si_code = SI_QUEUE;
    info.si_pid = getpid();
    info.si_uid = getuid();
    info.si_value.sival_ptr = this;
    // A thread that has just ended is no failure: it is what was asked for.
    if (syscall(SYS_rt_tgsigqueueinfo, getpid(), id(), number, &info) != 0 && errno != ESRCH)
        return errorFromErrno(errno);
    return ERROR_SUCCESS;
}

DWORD ThreadState::exitCode() const noexcept
{
    if (!hasEnded())
        return STILL_ACTIVE;
    std::uint64_t const code = code_.load();
    return code == noCode ? 0 : DWORD(code);
}

// The thread publishes its number when it first runs. Until then its clock
// tells: the kernel forms the number of a thread's clock from that of the thread.
DWORD ThreadState::id() noexcept
{
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    for (;;) {
        if (DWORD const published = id_.load(std::memory_order_acquire))
            return published;
        clockid_t clock;
        if (isJoinable_ && pthread_getcpuclockid(native_, &clock) == 0)
            return DWORD(~(clock >> 3));
    }
}

DWORD ThreadState::setPriority(int priority) noexcept
{
    if (!isPriority(priority))
        return ERROR_INVALID_PARAMETER;
    priority_.store(priority, std::memory_order_relaxed);
    if (!hasEnded())
        setpriority(PRIO_PROCESS, id(), niceOf(priority));  // refused above normal to most users
    return ERROR_SUCCESS;
}

void ThreadState::addObject() noexcept
{
    Shield const shield;
    std::lock_guard const lock(nativeMutex_);
    owners_.fetch_add(1, std::memory_order_relaxed);
    ++objects_;
}

void ThreadState::removeObject() noexcept
{
    Shield const shield;
    {
        std::lock_guard const lock(nativeMutex_);
        if (--objects_ == 0 && isJoinable_) {
            // What a thread that is ended by the signal leaves behind, only a join frees; its end is near.
            if (isToBeKilled_)
                pthread_join(native_, nullptr);
            else
                pthread_detach(native_);
            isJoinable_ = false;
        }
    }
    removeOwner();
}

void noteEndOfThread(ThreadState& state, bool mayFree) noexcept
{
    state.noteEnd(mayFree);
}

std::shared_ptr<KernelObject> ownThreadObject() noexcept
try {
    ThreadRecord* const record = threadRecord();
    if (!record)
        throw std::bad_alloc();
    if (!record->state)
        record->state = new ThreadState;
    return std::make_shared<ThreadObject>(*record->state);
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace zk::os

using namespace zk::os;

HANDLE CreateThread(LPSECURITY_ATTRIBUTES attributes, SIZE_T stackSize, LPTHREAD_START_ROUTINE entry,
                    LPVOID argument, DWORD flags, LPDWORD id) noexcept
try {
    if ((flags & ~(CREATE_SUSPENDED | STACK_SIZE_PARAM_IS_A_RESERVATION)) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto state = std::make_unique<ThreadState>(entry, argument, (flags & CREATE_SUSPENDED) != 0);
    auto object = std::make_shared<ThreadObject>(*state);
    ThreadState& thread = *state.release();  // the object's
    HANDLE const handle = openHandle(object, attributes && attributes->bInheritHandle);
    if (!handle)
        return nullptr;
    if (!report(thread.start(stackSize))) {
        CloseHandle(handle);
        return nullptr;
    }
    if (id)
        *id = thread.id();
    return handle;
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

DWORD ResumeThread(HANDLE handle) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    DWORD before;
    return thread && report(thread->state().resume(before)) ? before : DWORD(-1);
}

DWORD SuspendThread(HANDLE handle) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    DWORD before;
    return thread && report(thread->state().suspend(before)) ? before : DWORD(-1);
}

BOOL TerminateThread(HANDLE handle, DWORD code) noexcept
{
    std::shared_ptr<ThreadObject> const thread = objectOf<ThreadObject>(handle);
    return thread ? report(thread->state().terminate(code)) : FALSE;
}

void ExitThread(DWORD code) noexcept
{
    ThreadRecord const* const record = threadRecord();
    if (!record || !record->state)
        leaveThread();
    record->state->exit(code);
}

BOOL GetExitCodeThread(HANDLE handle, LPDWORD code) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    if (!thread)
        return FALSE;
    *code = thread->state().exitCode();
    return TRUE;
}

HANDLE GetCurrentThread() noexcept
{
    return reinterpret_cast<HANDLE>(LONG_PTR(-2));
}

DWORD GetCurrentThreadId() noexcept
{
    return ownThreadId();
}

DWORD GetThreadId(HANDLE handle) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    return thread ? thread->state().id() : 0;
}

BOOL SetThreadPriority(HANDLE handle, int priority) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    return thread ? report(thread->state().setPriority(priority)) : FALSE;
}

int GetThreadPriority(HANDLE handle) noexcept
{
    Pinned<ThreadObject> const thread(handle);
    return thread ? thread->state().priority() : THREAD_PRIORITY_ERROR_RETURN;
}

BOOL SwitchToThread() noexcept
{
    sched_yield();
    return FALSE;
}

HANDLE GetCurrentProcess() noexcept
{
    return reinterpret_cast<HANDLE>(LONG_PTR(-1));
}

DWORD GetCurrentProcessId() noexcept
{
    return DWORD(getpid());
}

void ExitProcess(UINT code) noexcept
{
    _exit(int(code));
}
