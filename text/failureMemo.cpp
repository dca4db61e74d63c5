#include "text/failureMemo.h"

#include <algorithm>

namespace zk {

void FailureMemo::addPage(std::size_t choice, std::size_t page)
{
    if (choice >= choices_.size())
        choices_.resize(choice + 1);
    std::vector<Page>& pages = choices_[choice];
    if (page >= pages.size())
        pages.resize(std::max(page + 1, pages.size() * 2));
    pages[page] = std::make_unique<std::uint64_t[]>(pagePositions / 64);
}

}  // namespace zk
