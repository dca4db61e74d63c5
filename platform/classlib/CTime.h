// CTime.h: a point of time to the second, and the span between two.
//
//   CTime const start(2001, 9, 9, 1, 46, 40);              // local time
//   start.Format("%#I:%M %p, %a %#d %b %Y");               // "1:46 AM, Sun 9 Sep 2001"
//   CTimeSpan const span = CTime::GetCurrentTime() - start;
//   span.GetDays();
//
// A time is a number of seconds since 1970 in UTC. One that has no calendar
// time, before 1970 or behind the year 3000, gives 0 for every part of the
// calendar and an empty text. Both classes are plain values of 8 bytes.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/os.h"

#include "platform/classlib/CString.h"

#include <cstdint>
#include <ctime>

#undef GetCurrentTime  // the system's headers may define it as a macro

/// A span of time in seconds; it may be negative.
class ZK_UTIL_API CTimeSpan {
public:
    constexpr CTimeSpan() noexcept = default;
    constexpr CTimeSpan(std::int64_t seconds) noexcept : seconds_(seconds) { }
    constexpr CTimeSpan(std::int32_t days, int hours, int minutes, int seconds) noexcept
        : seconds_(seconds + 60 * (minutes + 60 * (hours + std::int64_t(24) * days)))
    {
    }

    /// The whole span in days, hours, minutes or seconds, cut towards zero.
    std::int64_t GetDays() const noexcept { return seconds_ / 86400; }
    std::int64_t GetTotalHours() const noexcept { return seconds_ / 3600; }
    std::int64_t GetTotalMinutes() const noexcept { return seconds_ / 60; }
    std::int64_t GetTotalSeconds() const noexcept { return seconds_; }
    std::int64_t GetTimeSpan() const noexcept { return seconds_; }

    /// What is left of the span besides the larger units; negative in a negative span.
    int GetHours() const noexcept { return static_cast<int>(seconds_ / 3600 % 24); }
    int GetMinutes() const noexcept { return static_cast<int>(seconds_ / 60 % 60); }
    int GetSeconds() const noexcept { return static_cast<int>(seconds_ % 60); }

    CTimeSpan& operator+=(CTimeSpan other) noexcept { return *this = *this + other; }
    CTimeSpan& operator-=(CTimeSpan other) noexcept { return *this = *this - other; }
    // Sums beyond the range wrap around.
    friend CTimeSpan operator+(CTimeSpan left, CTimeSpan right) noexcept
    {
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(left.seconds_) +
                                         static_cast<std::uint64_t>(right.seconds_));
    }
    friend CTimeSpan operator-(CTimeSpan left, CTimeSpan right) noexcept
    {
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(left.seconds_) -
                                         static_cast<std::uint64_t>(right.seconds_));
    }
    friend bool operator==(CTimeSpan left, CTimeSpan right) noexcept
    {
        return left.seconds_ == right.seconds_;
    }
    friend bool operator!=(CTimeSpan left, CTimeSpan right) noexcept
    {
        return left.seconds_ != right.seconds_;
    }
    friend bool operator<(CTimeSpan left, CTimeSpan right) noexcept { return left.seconds_ < right.seconds_; }
    friend bool operator>(CTimeSpan left, CTimeSpan right) noexcept { return left.seconds_ > right.seconds_; }
    friend bool operator<=(CTimeSpan left, CTimeSpan right) noexcept
    {
        return left.seconds_ <= right.seconds_;
    }
    friend bool operator>=(CTimeSpan left, CTimeSpan right) noexcept
    {
        return left.seconds_ >= right.seconds_;
    }

    /// `format` with "%D" (days), "%H", "%M" and "%S" (two digits, of the rest)
    /// and "%%" filled in; "%#" drops leading zeros. Others stand as they are.
    CString Format(char const* format) const;
    /// The same with the numbered text `id` as format.
    CString Format(unsigned int id) const;

private:
    std::int64_t seconds_ = 0;
};

class ZK_UTIL_API CTime {
public:
    /// The current time, to the second, by the clock in force (clock.h).
    static CTime GetCurrentTime() noexcept;

    constexpr CTime() noexcept = default;
    constexpr CTime(std::time_t time) noexcept : time_(time) { }
    /// A local time. `daylight` above 0 is daylight-saving time, 0 standard time,
    /// below 0 what the zone says. Parts beyond their range carry into the next
    /// larger one. The time -1 for one that is before 1970 or behind the year 3000.
    CTime(int year, int month, int day, int hour, int minute, int second, int daylight = -1) noexcept;
    /// A local time; 0 for a year before 1900.
    explicit CTime(SYSTEMTIME const& local, int daylight = -1) noexcept;
    /// The time of a file, which is in UTC; 0 for one before 1970.
    explicit CTime(FILETIME const& utc, int daylight = -1) noexcept;

    std::time_t GetTime() const noexcept { return time_; }

    // The calendar in the local zone.
    int GetYear() const noexcept;
    int GetMonth() const noexcept;  ///< 1 is January
    int GetDay() const noexcept;    ///< 1 is the first
    int GetHour() const noexcept;
    int GetMinute() const noexcept;
    int GetSecond() const noexcept;
    int GetDayOfWeek() const noexcept;  ///< 1 is Sunday

    /// The calendar time in the local zone, or in UTC, written to `*calendar`;
    /// null, if the time has none. Without `calendar` to a place of the thread's own.
    tm* GetLocalTm(tm* calendar = nullptr) const noexcept;
    tm* GetGmtTm(tm* calendar = nullptr) const noexcept;
    /// The same as a SYSTEMTIME in the local zone; false, if the time has none.
    bool GetAsSystemTime(SYSTEMTIME& local) const noexcept;

    /// The time as `format` says, in the local zone or in UTC.
    ///
    /// The letters are those of strftime, the same on every system:
    /// "aAbBhpzZ" in the language of the C locale in force, the others as
    /// numbers; "c" is "%m/%d/%y %H:%M:%S", "x" and "X" its halves, "z" and "Z"
    /// the zone's name. "%#" drops leading zeros and makes "c" and "x" long.
    /// An unknown letter stands as it is. A null format is an empty one.
    CString Format(char const* format) const;
    CString FormatGmt(char const* format) const;
    /// The same with the numbered text `id` as format.
    CString Format(unsigned int id) const;
    CString FormatGmt(unsigned int id) const;

    CTime& operator+=(CTimeSpan span) noexcept { return *this = *this + span; }
    CTime& operator-=(CTimeSpan span) noexcept { return *this = *this - span; }
    friend CTime operator+(CTime time, CTimeSpan span) noexcept { return at(CTimeSpan(time.time_) + span); }
    friend CTime operator-(CTime time, CTimeSpan span) noexcept { return at(CTimeSpan(time.time_) - span); }
    friend CTimeSpan operator-(CTime left, CTime right) noexcept
    {
        return CTimeSpan(left.time_) - CTimeSpan(right.time_);
    }
    friend bool operator==(CTime left, CTime right) noexcept { return left.time_ == right.time_; }
    friend bool operator!=(CTime left, CTime right) noexcept { return left.time_ != right.time_; }
    friend bool operator<(CTime left, CTime right) noexcept { return left.time_ < right.time_; }
    friend bool operator>(CTime left, CTime right) noexcept { return left.time_ > right.time_; }
    friend bool operator<=(CTime left, CTime right) noexcept { return left.time_ <= right.time_; }
    friend bool operator>=(CTime left, CTime right) noexcept { return left.time_ >= right.time_; }

private:
    static CTime at(CTimeSpan since1970) noexcept
    {
        return CTime(static_cast<std::time_t>(since1970.GetTotalSeconds()));
    }

    std::time_t time_ = 0;
};
