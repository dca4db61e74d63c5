// CCgStringGroup.h: names in order, none twice.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

class CCgStringGroup {
public:
    /// Adds a name at the tail; false, and no change, if it is there.
    bool add(std::string_view name)
    {
        if (contains(name))
            return false;
        names_.emplace_back(name);
        return true;
    }

    /// Takes a name out; false if it isn't there.
    bool remove(std::string_view name)
    {
        auto const found = std::find(names_.begin(), names_.end(), name);
        if (found == names_.end())
            return false;
        names_.erase(found);
        return true;
    }

    bool contains(std::string_view name) const noexcept
    {
        return std::find(names_.begin(), names_.end(), name) != names_.end();
    }

    std::size_t size() const noexcept { return names_.size(); }
    bool empty() const noexcept { return names_.empty(); }
    void clear() noexcept { names_.clear(); }
    std::string const& at(std::size_t index) const { return names_[index]; }
    auto begin() const noexcept { return names_.begin(); }
    auto end() const noexcept { return names_.end(); }

private:
    std::vector<std::string> names_;
};
