#include "platform/classlib/windowMap.h"

#include "platform/classlib/CWnd.h"

#include <iterator>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace zk::windowMap {
namespace {

struct Map {
    std::shared_mutex mutex;
    std::unordered_map<HWND, CWnd*> objects;
};

// Gives up its window, which never was its own.
struct EndTemporary {
    void operator()(CWnd* object) const
    {
        object->m_hWnd = nullptr;
        delete object;
    }
};
using Temporary = std::unique_ptr<CWnd, EndTemporary>;

// A thread has its own temporary objects. They stand here, by thread, and not in
// thread_local storage: its destructors come too late in threads of a loaded module.
struct TemporaryObjects {
    std::mutex mutex;
    std::unordered_map<DWORD, std::unordered_map<HWND, Temporary>> threads;
    std::size_t count = 0;
    std::size_t sweepAt = 64;
};

TemporaryObjects& temporaryObjects()
{
    static TemporaryObjects instance;
    return instance;
}

// Threads that end without a word leave objects behind. Call with the mutex held.
void sweep(TemporaryObjects& all)
{
    all.count = 0;
    for (auto thread = all.threads.begin(); thread != all.threads.end();) {
        std::erase_if(thread->second, [](auto const& entry) { return !IsWindow(entry.first); });
        all.count += thread->second.size();
        thread = thread->second.empty() ? all.threads.erase(thread) : std::next(thread);
    }
    all.sweepAt = 64 + 2 * all.count;
}

Map& map()
{
    static Map instance;
    return instance;
}

}  // namespace

bool enter(HWND window, CWnd* object)
{
    Map& all = map();
    std::unique_lock const lock(all.mutex);
    return all.objects.try_emplace(window, object).second;
}

void leave(HWND window) noexcept
{
    Map& all = map();
    std::unique_lock const lock(all.mutex);
    all.objects.erase(window);
}

CWnd* find(HWND window) noexcept
{
    Map& all = map();
    std::shared_lock const lock(all.mutex);
    auto const found = all.objects.find(window);
    return found == all.objects.end() ? nullptr : found->second;
}

CWnd* temporaryObject(HWND window)
{
    TemporaryObjects& all = temporaryObjects();
    std::lock_guard const lock(all.mutex);
    if (all.count >= all.sweepAt)
        sweep(all);
    Temporary& object = all.threads[GetCurrentThreadId()][window];
    if (!object) {
        object.reset(new CWnd);
        object->m_hWnd = window;
        ++all.count;
    }
    return object.get();
}

void deleteTemporaryObjects()
{
    TemporaryObjects& all = temporaryObjects();
    std::lock_guard const lock(all.mutex);
    all.threads.erase(GetCurrentThreadId());
}

}  // namespace zk::windowMap
