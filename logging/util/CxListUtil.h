// CxListUtil.h: the list of named values that the toolkit's containers are made of.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zk::logging {

/// Values by name, in the order in which their names came: a new one goes to the tail, and a value
/// that is set again keeps its place. Names match with case; looking one up walks the list.
template <class Value>
class NamedList {
public:
    using Entry = std::pair<std::string, Value>;

    Value* find(std::string_view key) noexcept
    {
        for (Entry& entry : entries_)
            if (entry.first == key)
                return &entry.second;
        return nullptr;
    }
    Value const* find(std::string_view key) const noexcept { return const_cast<NamedList*>(this)->find(key); }

    /// Sets the value of a name, a new one at the tail.
    void set(std::string_view key, Value value)
    {
        if (Value* const present = find(key))
            *present = std::move(value);
        else
            entries_.emplace_back(std::string(key), std::move(value));
    }

    /// Adds a name at the tail; false, and no change, if it is there.
    bool add(std::string_view key, Value value)
    {
        if (find(key))
            return false;
        entries_.emplace_back(std::string(key), std::move(value));
        return true;
    }

    /// Takes a name out; false if it isn't there.
    bool remove(std::string_view key)
    {
        for (auto entry = entries_.begin(); entry != entries_.end(); ++entry)
            if (entry->first == key) {
                entries_.erase(entry);
                return true;
            }
        return false;
    }

    std::size_t size() const noexcept { return entries_.size(); }
    bool empty() const noexcept { return entries_.empty(); }
    void clear() noexcept { entries_.clear(); }

    /// By place, for loops during which the list may change.
    Entry const& at(std::size_t index) const { return entries_[index]; }

    auto begin() const noexcept { return entries_.begin(); }
    auto end() const noexcept { return entries_.end(); }

private:
    std::vector<Entry> entries_;
};

}  // namespace zk::logging
