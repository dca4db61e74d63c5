#include "tests/support/ScopedTimeZone.h"

#include <cstdlib>
#include <ctime>

namespace {

// An empty zone takes the variable out again.
void setZone(std::string const& zone)
{
#ifdef _WIN32
    _putenv(("TZ=" + zone).c_str());
#else
    if (zone.empty())
        unsetenv("TZ");
    else
        setenv("TZ", zone.c_str(), 1);
#endif
    tzset();
}

}  // namespace

ScopedTimeZone::ScopedTimeZone(char const* zone)
{
    if (char const* const previous = std::getenv("TZ"))
        previous_ = previous;
    setZone(zone);
}

ScopedTimeZone::~ScopedTimeZone()
{
    setZone(previous_);
}

std::string ScopedTimeZone::name() const
{
    return tzname[0];
}
