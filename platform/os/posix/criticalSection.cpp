#include "platform/os/posix/criticalSection.h"

#include "platform/os/posix/futex.h"
#include "platform/os/posix/threadRecord.h"

#include <atomic>

// The word of a section is the number of the thread inside, so that entering
// again and entering a free section are one look and one exchange each. The top
// bit says that a waiter may sleep; who has slept takes the section with the
// bit set, since there may be more behind it.

namespace {

using namespace zk::os;

constexpr DWORD othersWait = 0x80000000u;

std::atomic<DWORD>& holderOf(CRITICAL_SECTION& section) noexcept
{
    static_assert(sizeof(std::atomic<DWORD>) == sizeof(DWORD));
    return reinterpret_cast<std::atomic<DWORD>&>(section.Holder);
}

bool takeFree(std::atomic<DWORD>& holder, DWORD own) noexcept
{
    DWORD free = 0;
    return holder.compare_exchange_strong(free, own, std::memory_order_acquire, std::memory_order_relaxed);
}

__attribute__((noinline)) void enterContended(CRITICAL_SECTION& section, DWORD own) noexcept
{
    auto& holder = holderOf(section);
    for (DWORD spins = section.SpinCount; spins > 0; --spins) {
        if (holder.load(std::memory_order_relaxed) == 0 && takeFree(holder, own))
            return;
        __builtin_ia32_pause();
    }
    static Deadline const never(INFINITE);
    for (;;) {
        DWORD seen = holder.load(std::memory_order_relaxed);
        if (seen == 0) {
            if (takeFree(holder, own | othersWait))
                return;
        } else if ((seen & othersWait) ||
                   holder.compare_exchange_strong(seen, seen | othersWait, std::memory_order_relaxed)) {
            sleepOn(holder, seen | othersWait, Sharing::ofProcess, never);
        }
    }
}

}  // namespace

void InitializeCriticalSection(LPCRITICAL_SECTION section) noexcept
{
    *section = CRITICAL_SECTION();
}

BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD spinCount) noexcept
{
    *section = CRITICAL_SECTION();
    section->SpinCount = spinCount & 0x00FFFFFF;  // the bits above are flags of the other target
    return TRUE;
}

void EnterCriticalSection(LPCRITICAL_SECTION section) noexcept
{
    DWORD const own = ownThreadId();
    auto& holder = holderOf(*section);
    if (!takeFree(holder, own)) {
        if ((holder.load(std::memory_order_relaxed) & ~othersWait) == own) {
            ++section->RecursionCount;
            return;
        }
        enterContended(*section, own);
    }
    section->RecursionCount = 1;
}

BOOL TryEnterCriticalSection(LPCRITICAL_SECTION section) noexcept
{
    DWORD const own = ownThreadId();
    auto& holder = holderOf(*section);
    if (takeFree(holder, own)) {
        section->RecursionCount = 1;
        return TRUE;
    }
    if ((holder.load(std::memory_order_relaxed) & ~othersWait) != own)
        return FALSE;
    ++section->RecursionCount;
    return TRUE;
}

void LeaveCriticalSection(LPCRITICAL_SECTION section) noexcept
{
    auto& holder = holderOf(*section);
    if ((holder.load(std::memory_order_relaxed) & ~othersWait) != ownThreadId())
        return;
    if (--section->RecursionCount > 0)
        return;
    if (holder.exchange(0, std::memory_order_release) & othersWait)
        wake(holder, Sharing::ofProcess, 1);
}

void DeleteCriticalSection(LPCRITICAL_SECTION section) noexcept
{
    *section = CRITICAL_SECTION();
}
