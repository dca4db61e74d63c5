// threadQueue.h: the queue of one thread, as the files on windows and messages share it.
//
// Locks, in the order in which they may be held together:
//   1. the window table's (windowTable.h);
//   2. a queue's own.
// None is held while a window procedure runs.
#pragma once

#include "platform/os/posix/windowTypes.h"

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>

namespace zk::os {

class ThreadQueue;

/// A message on its way to another thread's window, and its answer.
struct SentMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::shared_ptr<ThreadQueue> sender;
    LRESULT result = 0;
    std::atomic<bool> isDone = false;
};

class ThreadQueue {
public:
    explicit ThreadQueue(DWORD thread) noexcept : thread_(thread) { }

    DWORD thread() const noexcept { return thread_; }

    /// Adds a posted message; an error number if the queue is full or its thread has ended.
    DWORD post(MSG const& message);

    /// Adds a sent message; false if the thread has ended.
    bool send(std::shared_ptr<SentMessage> message);

    void postQuit(int exitCode);

    /// Answers all messages that were sent to this thread.
    void answerSent();

    struct Filter {
        HWND window = nullptr;
        UINT first = 0;
        UINT last = 0;
    };

    /// Finds the first message that passes, and takes it out if `remove`.
    bool take(Filter const& filter, bool remove, MSG& message);

    /// What changes with every arrival; to be read before looking.
    std::uint32_t arrivals() const noexcept { return arrivals_.load(std::memory_order_acquire); }

    /// Waits until arrivals() is no longer `seen`.
    void waitForArrival(std::uint32_t seen) const noexcept;

    /// Tells a waiting thread to look again.
    void announce() noexcept;

    /// Drops what was posted to a window that is gone.
    void forget(HWND window);

    /// Ends the queue with its thread: sent messages are answered with 0. Needs no memory.
    void close() noexcept;

    // The thread's own, used by no other one.
    HWND focus = nullptr;        // the window with the keyboard's focus
    std::uint32_t lastLook = 0;  // arrivals() when the thread last looked for messages

private:
    std::shared_ptr<SentMessage> nextSent() noexcept;

    DWORD const thread_;
    std::atomic<std::uint32_t> arrivals_ = 0;
    mutable std::mutex mutex_;  // guards what follows
    std::deque<MSG> posted_;
    std::deque<std::shared_ptr<SentMessage>> sent_;
    bool quits_ = false;
    int exitCode_ = 0;
    bool isClosed_ = false;
};

/// The calling thread's queue, made at the first call.
std::shared_ptr<ThreadQueue> const& ownQueue();

/// The calling thread's queue, or null if it has none yet.
ThreadQueue* ownQueueIfAny() noexcept;

/// The queue of a thread, or null.
std::shared_ptr<ThreadQueue> queueOf(DWORD thread);

/// The calling thread's number.
DWORD ownThread() noexcept;

/// Calls the procedure of a window of the calling thread. 0 with ERROR_INVALID_WINDOW_HANDLE for none.
LRESULT callWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace zk::os
