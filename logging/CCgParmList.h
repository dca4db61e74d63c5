// CCgParmList.h: the parameters of a message, in order.
#pragma once

#include "logging/CCgParm.h"

#include <cstddef>
#include <utility>
#include <vector>

class CCgParmList {
public:
    void add(CCgParm parameter) { parameters_.push_back(std::move(parameter)); }

    std::size_t count() const noexcept { return parameters_.size(); }

    /// The parameter at a place, counted from 0; null behind the last.
    CCgParm const* at(std::size_t index) const noexcept
    {
        return index < parameters_.size() ? &parameters_[index] : nullptr;
    }

    auto begin() const noexcept { return parameters_.begin(); }
    auto end() const noexcept { return parameters_.end(); }

private:
    std::vector<CCgParm> parameters_;
};
