// CCgListenerGroup.h: the objects that listen to another one, in order, each with a reference.
#pragma once

#include "zk_export.h"

#include <cstddef>
#include <vector>

struct CCgObject;

class ZK_UTIL_API CCgListenerGroup {
public:
    CCgListenerGroup() = default;
    ~CCgListenerGroup();
    CCgListenerGroup(CCgListenerGroup const& other);
    CCgListenerGroup(CCgListenerGroup&& other) noexcept;
    CCgListenerGroup& operator=(CCgListenerGroup other) noexcept;

    /// Adds an object at the tail; false if it is there, or null.
    bool add(CCgObject* listener);
    /// Takes an object out; false if it isn't there.
    bool remove(CCgObject* listener);

    std::size_t size() const noexcept { return listeners_.size(); }
    bool empty() const noexcept { return listeners_.empty(); }
    CCgObject* at(std::size_t index) const { return listeners_[index]; }
    auto begin() const noexcept { return listeners_.begin(); }
    auto end() const noexcept { return listeners_.end(); }

private:
    std::vector<CCgObject*> listeners_;
};
