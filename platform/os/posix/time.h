// time.h: the clock, the counters, and file times taken apart.
//
//   FILETIME now;
//   SYSTEMTIME utc;
//   GetSystemTimeAsFileTime(&now);
//   FileTimeToSystemTime(&now, &utc);       // utc.wYear is 2024
//
// A file time counts 100 ns from the beginning of 1601 on, in UTC.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

/// Takes a time apart. ERROR_INVALID_PARAMETER above 0x7FFFFFFFFFFFFFFF.
ZK_UTIL_API BOOL WINAPI FileTimeToSystemTime(FILETIME const* time, LPSYSTEMTIME parts) noexcept;

/// Puts a time together; the day of the week is not looked at.
/// ERROR_INVALID_PARAMETER for a date that the calendar doesn't have or that
/// lies before 1601, and for a time of day that the clock doesn't have.
ZK_UTIL_API BOOL WINAPI SystemTimeToFileTime(SYSTEMTIME const* parts, LPFILETIME time) noexcept;

/// UTC to local time and back, both with the distance that the zone has now,
/// also for times at which it had another. Never before 1601 or behind the last time.
ZK_UTIL_API BOOL WINAPI FileTimeToLocalFileTime(FILETIME const* time, LPFILETIME local) noexcept;
ZK_UTIL_API BOOL WINAPI LocalFileTimeToFileTime(FILETIME const* local, LPFILETIME time) noexcept;

/// -1, 0 or 1: the first is earlier, both are the same, the first is later.
ZK_UTIL_API LONG WINAPI CompareFileTime(FILETIME const* first, FILETIME const* second) noexcept;

/// The time of the clock: in UTC, in the local zone, and as a file time.
ZK_UTIL_API void WINAPI GetSystemTime(LPSYSTEMTIME time) noexcept;
ZK_UTIL_API void WINAPI GetLocalTime(LPSYSTEMTIME time) noexcept;
ZK_UTIL_API void WINAPI GetSystemTimeAsFileTime(LPFILETIME time) noexcept;

/// A counter that never goes back, and its ticks per second: 10,000,000.
ZK_UTIL_API BOOL WINAPI QueryPerformanceCounter(LARGE_INTEGER* ticks) noexcept;
ZK_UTIL_API BOOL WINAPI QueryPerformanceFrequency(LARGE_INTEGER* ticksPerSecond) noexcept;

/// Milliseconds since the system was started, time asleep included; the first begins anew after 49.7 days.
ZK_UTIL_API DWORD WINAPI GetTickCount() noexcept;
ZK_UTIL_API ULONGLONG WINAPI GetTickCount64() noexcept;

/// Holds the thread for at least so long, whatever signals come: 0 lets others
/// run that are ready, INFINITE never ends.
ZK_UTIL_API void WINAPI Sleep(DWORD milliseconds) noexcept;
