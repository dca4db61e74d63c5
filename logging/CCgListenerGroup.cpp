#include "logging/CCgListenerGroup.h"

#include "logging/CCgObject.h"

#include <algorithm>
#include <utility>

CCgListenerGroup::~CCgListenerGroup()
{
    for (CCgObject* const listener : listeners_)
        ccg_releaseObject(listener);
}

CCgListenerGroup::CCgListenerGroup(CCgListenerGroup const& other) : listeners_(other.listeners_)
{
    for (CCgObject* const listener : listeners_)
        ccg_addRefObject(listener);
}

CCgListenerGroup::CCgListenerGroup(CCgListenerGroup&& other) noexcept
    : listeners_(std::exchange(other.listeners_, {}))
{
}

CCgListenerGroup& CCgListenerGroup::operator=(CCgListenerGroup other) noexcept
{
    std::swap(listeners_, other.listeners_);
    return *this;
}

bool CCgListenerGroup::add(CCgObject* listener)
{
    if (!listener || std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end())
        return false;
    listeners_.push_back(listener);
    ccg_addRefObject(listener);
    return true;
}

bool CCgListenerGroup::remove(CCgObject* listener)
{
    auto const found = std::find(listeners_.begin(), listeners_.end(), listener);
    if (found == listeners_.end())
        return false;
    listeners_.erase(found);
    ccg_releaseObject(listener);
    return true;
}
