#include "platform/os/posix/messageQueue.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/threadQueue.h"
#include "platform/os/posix/windowTable.h"

#include <new>

namespace zk::os {
namespace {

HWND const noWindow = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));

DWORD milliseconds() noexcept
{
    timespec now{};
    systemCalls().clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<DWORD>(now.tv_sec * 1000 + now.tv_nsec / 1000000);
}

MSG makeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    return {window, message, wParam, lParam, milliseconds(), {0, 0}};
}

// Runs `work`, which gives an error number, and turns memory that runs out into one.
template <class Work>
BOOL reportOf(Work&& work) noexcept
{
    try {
        return report(work());
    } catch (std::bad_alloc const&) {
        return report(ERROR_NOT_ENOUGH_MEMORY);
    }
}

std::shared_ptr<ThreadQueue> queueOfWindow(HWND handle)
{
    WindowTable const table;
    Window const* const window = table.require(handle);
    return window ? window->queue : nullptr;
}

// A filter on a window needs one.
bool isPossible(HWND filter)
{
    return !filter || filter == noWindow || WindowTable().require(filter);
}

LRESULT sendToThread(ThreadQueue& target, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    ThreadQueue& own = *ownQueue();
    auto sent = std::make_shared<SentMessage>();
    sent->window = window;
    sent->message = message;
    sent->wParam = wParam;
    sent->lParam = lParam;
    sent->sender = ownQueue();
    if (!target.send(sent)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    for (;;) {
        std::uint32_t const seen = own.arrivals();
        own.answerSent();
        if (sent->isDone.load(std::memory_order_acquire))
            return sent->result;
        own.waitForArrival(seen);
    }
}

}  // namespace

LRESULT callWindow(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    WNDPROC procedure;
    {
        WindowTable const table;
        Window const* const window = table.require(handle);
        if (!window)
            return 0;
        procedure = window->procedure;
    }
    return procedure(handle, message, wParam, lParam);
}

}  // namespace zk::os

using namespace zk::os;

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    return reportOf([&]() -> DWORD {
        auto const queue = window ? queueOfWindow(window) : ownQueue();
        if (!queue)
            return ERROR_INVALID_WINDOW_HANDLE;
        return queue->post(makeMessage(window, message, wParam, lParam));
    });
}

BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    return reportOf([&]() -> DWORD {
        auto const queue = thread == ownThread() ? ownQueue() : queueOf(thread);
        if (!queue)
            return ERROR_INVALID_THREAD_ID;
        return queue->post(makeMessage(nullptr, message, wParam, lParam));
    });
}

void PostQuitMessage(int exitCode) noexcept
{
    reportOf([&]() -> DWORD {
        ownQueue()->postQuit(exitCode);
        return ERROR_SUCCESS;
    });
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto const queue = queueOfWindow(window);
    if (!queue)
        return 0;
    if (queue->thread() == ownThread())
        return callWindow(window, message, wParam, lParam);
    return sendToThread(*queue, window, message, wParam, lParam);
}

BOOL GetMessageA(LPMSG message, HWND window, UINT first, UINT last)
{
    if (!isPossible(window))
        return -1;
    ThreadQueue& queue = *ownQueue();
    for (;;) {
        std::uint32_t const seen = queue.lastLook = queue.arrivals();
        queue.answerSent();
        if (queue.take({window, first, last}, true, *message))
            return message->message != WM_QUIT;
        queue.waitForArrival(seen);
    }
}

BOOL PeekMessageA(LPMSG message, HWND window, UINT first, UINT last, UINT remove)
{
    if (!isPossible(window))
        return FALSE;
    ThreadQueue& queue = *ownQueue();
    queue.lastLook = queue.arrivals();
    queue.answerSent();
    return queue.take({window, first, last}, (remove & PM_REMOVE) != 0, *message);
}

BOOL WaitMessage()
{
    ThreadQueue& queue = *ownQueue();
    std::uint32_t const seen = queue.lastLook;
    queue.waitForArrival(seen);
    queue.answerSent();
    return TRUE;
}

BOOL TranslateMessage(MSG const*) noexcept
{
    return FALSE;
}

LRESULT DispatchMessageA(MSG const* message)
{
    return message->hwnd ? callWindow(message->hwnd, message->message, message->wParam, message->lParam) : 0;
}
