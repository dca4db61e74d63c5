// interlocked.h: changes of a number that other threads see whole and in order.
//
//   LONG volatile running = 1;
//   InterlockedIncrement(&running);                      // 2
//   InterlockedCompareExchange(&running, 9, 2);          // 2; running is 9
//
// Each is a full barrier. Increment and decrement give the new value, the others the old one.
#pragma once

#include "platform/os/posix/types.h"

inline LONG InterlockedIncrement(LONG volatile* target) noexcept
{
    return __atomic_add_fetch(target, 1, __ATOMIC_SEQ_CST);
}

inline LONG64 InterlockedIncrement64(LONG64 volatile* target) noexcept
{
    return __atomic_add_fetch(target, 1, __ATOMIC_SEQ_CST);
}

inline LONG InterlockedDecrement(LONG volatile* target) noexcept
{
    return __atomic_sub_fetch(target, 1, __ATOMIC_SEQ_CST);
}

inline LONG64 InterlockedDecrement64(LONG64 volatile* target) noexcept
{
    return __atomic_sub_fetch(target, 1, __ATOMIC_SEQ_CST);
}

inline LONG InterlockedExchangeAdd(LONG volatile* target, LONG value) noexcept
{
    return __atomic_fetch_add(target, value, __ATOMIC_SEQ_CST);
}

inline LONG64 InterlockedExchangeAdd64(LONG64 volatile* target, LONG64 value) noexcept
{
    return __atomic_fetch_add(target, value, __ATOMIC_SEQ_CST);
}

inline LONG InterlockedExchange(LONG volatile* target, LONG value) noexcept
{
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}

inline LONG64 InterlockedExchange64(LONG64 volatile* target, LONG64 value) noexcept
{
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}

inline PVOID InterlockedExchangePointer(PVOID volatile* target, PVOID value) noexcept
{
    return __atomic_exchange_n(target, value, __ATOMIC_SEQ_CST);
}

/// Sets `*target` to `value` if it holds `comparand`.
inline LONG InterlockedCompareExchange(LONG volatile* target, LONG value, LONG comparand) noexcept
{
    __atomic_compare_exchange_n(target, &comparand, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}

inline LONG64 InterlockedCompareExchange64(LONG64 volatile* target, LONG64 value, LONG64 comparand) noexcept
{
    __atomic_compare_exchange_n(target, &comparand, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}

inline PVOID InterlockedCompareExchangePointer(PVOID volatile* target, PVOID value, PVOID comparand) noexcept
{
    __atomic_compare_exchange_n(target, &comparand, value, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}
