#include "platform/os/posix/threadQueue.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/windowTable.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include <unistd.h>

namespace zk::os {
namespace {

constexpr std::size_t maximumPosted = 10000;

struct Registry {
    std::mutex mutex;
    std::map<DWORD, std::shared_ptr<ThreadQueue>> queues;
};

// Threads may end behind the static destructors.
Registry& registry() noexcept
{
    static NeverDestroyed<Registry> instance;
    return instance.object;
}

// Holds a thread's queue, and ends it with the thread.
struct QueueHolder {
    std::shared_ptr<ThreadQueue> queue;

    ~QueueHolder()
    {
        if (!queue)
            return;
        Shield const shield;
        {
            std::lock_guard const lock(registry().mutex);
            auto const entry = registry().queues.find(queue->thread());
            if (entry != registry().queues.end() && entry->second == queue)
                registry().queues.erase(entry);
        }
        removeWindowsOf(*queue);
        queue->close();
    }
};

thread_local QueueHolder holder;

bool passes(ThreadQueue::Filter const& filter, WindowTable const* table, MSG const& message) noexcept
{
    bool const isAnyNumber = filter.first == 0 && filter.last == 0;
    if (!isAnyNumber && (message.message < filter.first || message.message > filter.last))
        return false;
    if (!filter.window)
        return true;
    if (!table)
        return message.hwnd == nullptr;
    return message.hwnd == filter.window || (message.hwnd && table->isBelow(message.hwnd, filter.window));
}

// Answers a sent message, whatever becomes of the window's procedure.
class Answer {
public:
    explicit Answer(SentMessage& message) noexcept : message_(message) { }
    ~Answer()
    {
        message_.isDone.store(true, std::memory_order_release);
        message_.sender->announce();
    }
    Answer(Answer const&) = delete;
    Answer& operator=(Answer const&) = delete;

private:
    SentMessage& message_;
};

}  // namespace

DWORD ownThread() noexcept
{
    thread_local DWORD const number = static_cast<DWORD>(gettid());
    return number;
}

std::shared_ptr<ThreadQueue> const& ownQueue()
{
    if (!holder.queue) {
        Shield const shield;
        auto queue = std::make_shared<ThreadQueue>(ownThread());
        std::lock_guard const lock(registry().mutex);
        registry().queues[queue->thread()] = queue;  // in place of one whose thread was ended by force
        holder.queue = std::move(queue);
    }
    return holder.queue;
}

ThreadQueue* ownQueueIfAny() noexcept
{
    return holder.queue.get();
}

std::shared_ptr<ThreadQueue> queueOf(DWORD thread)
{
    Shield const shield;
    std::lock_guard const lock(registry().mutex);
    auto const entry = registry().queues.find(thread);
    return entry != registry().queues.end() ? entry->second : nullptr;
}

DWORD ThreadQueue::post(MSG const& message)
{
    Shield const shield;
    {
        std::lock_guard const lock(mutex_);
        if (isClosed_)
            return ERROR_INVALID_THREAD_ID;
        if (posted_.size() >= maximumPosted)
            return ERROR_NOT_ENOUGH_QUOTA;
        posted_.push_back(message);
    }
    announce();
    return ERROR_SUCCESS;
}

bool ThreadQueue::send(std::shared_ptr<SentMessage> message)
{
    Shield const shield;
    {
        std::lock_guard const lock(mutex_);
        if (isClosed_)
            return false;
        sent_.push_back(std::move(message));
    }
    announce();
    return true;
}

void ThreadQueue::postQuit(int exitCode)
{
    Shield const shield;
    {
        std::lock_guard const lock(mutex_);
        quits_ = true;
        exitCode_ = exitCode;
    }
    announce();
}

std::shared_ptr<SentMessage> ThreadQueue::nextSent() noexcept
{
    Shield const shield;
    std::lock_guard const lock(mutex_);
    if (sent_.empty())
        return nullptr;
    auto message = std::move(sent_.front());
    sent_.pop_front();
    return message;
}

void ThreadQueue::answerSent()
{
    while (auto const message = nextSent()) {
        Answer const answer(*message);
        message->result = callWindow(message->window, message->message, message->wParam, message->lParam);
    }
}

bool ThreadQueue::take(Filter const& filter, bool remove, MSG& message)
{
    HWND const none = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
    std::optional<WindowTable> table;
    if (filter.window && filter.window != none)
        table.emplace();
    Shield const shield;
    std::lock_guard const lock(mutex_);
    auto const found = std::find_if(posted_.begin(), posted_.end(), [&](MSG const& posted) {
        return passes(filter, table ? &*table : nullptr, posted);
    });
    if (found != posted_.end()) {
        message = *found;
        if (remove)
            posted_.erase(found);
        return true;
    }
    if (!quits_)
        return false;
    message = {};
    message.message = WM_QUIT;
    message.wParam = static_cast<WPARAM>(exitCode_);
    if (remove)
        quits_ = false;
    return true;
}

void ThreadQueue::waitForArrival(std::uint32_t seen) const noexcept
{
    arrivals_.wait(seen, std::memory_order_acquire);
}

void ThreadQueue::announce() noexcept
{
    arrivals_.fetch_add(1, std::memory_order_release);
    arrivals_.notify_all();
}

void ThreadQueue::forget(HWND window)
{
    Shield const shield;
    std::lock_guard const lock(mutex_);
    posted_.erase(std::remove_if(posted_.begin(), posted_.end(),
                                 [&](MSG const& message) { return message.hwnd == window; }),
                  posted_.end());
}

void ThreadQueue::close() noexcept
{
    {
        std::lock_guard const lock(mutex_);
        isClosed_ = true;
        posted_.clear();
    }
    while (auto const unanswered = nextSent())
        Answer const answer(*unanswered);
}

}  // namespace zk::os
