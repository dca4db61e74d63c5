#include "platform/os/posix/threadLocal.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/threadRecord.h"

#include <array>
#include <atomic>
#include <memory>
#include <new>

// An index has a number of use, which grows with each taking and each giving
// back and is odd while it is taken. A value counts only under the number of use that it
// was set with, so that giving an index back forgets the values of all threads at
// once, without a walk through them.

namespace {

constexpr DWORD indexCount = 1088;

constinit std::array<std::atomic<std::uint32_t>, indexCount> uses{};

struct Value {
    LPVOID pointer = nullptr;
    std::uint32_t use = 0;
};

using Values = std::array<Value, indexCount>;

thread_local std::unique_ptr<Values> ownValues;

}  // namespace

DWORD TlsAlloc() noexcept
{
    for (DWORD index = 0; index < indexCount; ++index) {
        std::uint32_t use = uses[index].load(std::memory_order_relaxed);
        if (use % 2 == 0 && uses[index].compare_exchange_strong(use, use + 1))
            return index;
    }
    SetLastError(ERROR_NO_MORE_ITEMS);
    return TLS_OUT_OF_INDEXES;
}

BOOL TlsFree(DWORD index) noexcept
{
    if (index < indexCount) {
        std::uint32_t use = uses[index].load(std::memory_order_relaxed);
        if (use % 2 == 1 && uses[index].compare_exchange_strong(use, use + 1))
            return TRUE;
    }
    return zk::os::report(ERROR_INVALID_PARAMETER);
}

LPVOID TlsGetValue(DWORD index) noexcept
{
    if (index >= indexCount) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    SetLastError(ERROR_SUCCESS);
    if (!ownValues)
        return nullptr;
    Value const& value = (*ownValues)[index];
    return value.use == uses[index].load(std::memory_order_relaxed) ? value.pointer : nullptr;
}

BOOL TlsSetValue(DWORD index, LPVOID value) noexcept
{
    if (index >= indexCount)
        return zk::os::report(ERROR_INVALID_PARAMETER);
    if (!ownValues)
        ownValues.reset(new (std::nothrow) Values);
    if (!ownValues)
        return zk::os::report(ERROR_NOT_ENOUGH_MEMORY);
    (*ownValues)[index] = {value, uses[index].load(std::memory_order_relaxed)};
    return TRUE;
}
