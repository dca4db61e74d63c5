// failureMemo.h: what a search of an expression has tried in vain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace zk {

/// Remembers from which places the rest of an expression has failed already.
///
/// Whether the steps from one step on match from one position on depends on
/// nothing else. So what has failed once fails again, and a search that
/// remembers it takes each pair of step and position once, instead of
/// exponentially often. Nothing is forgotten: a search that walks to and fro
/// between what it knows and what it forgot would be exponential again. Memory
/// is taken for the choices and positions that come up, a bit for each pair.
class FailureMemo {
public:
    /// Whether the pair was noted before; notes it.
    bool testAndSet(std::size_t choice, std::size_t position)
    {
        std::uint64_t& word = wordOf(choice, position);
        std::uint64_t const bit = std::uint64_t(1) << (position % 64);
        bool const noted = word & bit;
        word |= bit;
        return noted;
    }

private:
    static constexpr std::size_t pagePositions = 4096;
    using Page = std::unique_ptr<std::uint64_t[]>;

    std::uint64_t& wordOf(std::size_t choice, std::size_t position)
    {
        std::size_t const page = position / pagePositions;
        if (choice >= choices_.size() || page >= choices_[choice].size() || !choices_[choice][page])
            addPage(choice, page);
        return choices_[choice][page][position % pagePositions / 64];
    }
    void addPage(std::size_t choice, std::size_t page);

    std::vector<std::vector<Page>> choices_;
};

}  // namespace zk
