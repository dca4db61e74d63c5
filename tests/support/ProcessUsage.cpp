#include "tests/support/ProcessUsage.h"

#ifdef _WIN32
#    include <windows.h>

#    include <tlhelp32.h>

#    include <vector>
#else
#    include <malloc.h>

#    include <filesystem>
#    include <iterator>
#endif

namespace zk::test {
namespace {

#ifdef _WIN32

std::size_t allocatedBytes()
{
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
    heaps.resize(GetProcessHeaps(DWORD(heaps.size()), heaps.data()));
    std::size_t sum = 0;
    for (HANDLE const heap : heaps) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heap);
        while (HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                sum += entry.cbData;
        HeapUnlock(heap);
    }
    return sum;
}

std::size_t openHandles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::size_t runningThreads()
{
    HANDLE const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL found = Thread32First(snapshot, &entry); found; found = Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

#else

std::size_t allocatedBytes()
{
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::size_t entriesOf(char const* folder)
{
    return std::size_t(std::distance(std::filesystem::directory_iterator(folder), {}));
}

std::size_t openHandles()
{
    return entriesOf("/proc/self/fd");
}

std::size_t runningThreads()
{
    return entriesOf("/proc/self/task");
}

#endif

}  // namespace

ProcessUsage::ProcessUsage() : memory(allocatedBytes()), handles(openHandles()), threads(runningThreads())
{
}

}  // namespace zk::test
