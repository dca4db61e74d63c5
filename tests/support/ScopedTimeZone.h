// ScopedTimeZone.h: puts a time zone in force for the life of the object.
//
//   ScopedTimeZone const zone("ABC-2");     // named ABC, two hours ahead of Greenwich
//
// The form "name, hours west" without daylight-saving time means the same to
// the C libraries of both targets. Process-wide.
#pragma once

#include <string>

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(char const* zone);
    ~ScopedTimeZone();
    ScopedTimeZone(ScopedTimeZone const&) = delete;
    ScopedTimeZone& operator=(ScopedTimeZone const&) = delete;

    /// The name that the C library gives the zone; not every one keeps all letters.
    std::string name() const;

private:
    std::string previous_;
};
