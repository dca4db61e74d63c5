#include "logging/CCgFileRollover.h"

#include "logging/util/CxFile.h"
#include "platform/os/os.h"

#include <algorithm>
#include <cerrno>
#include <string>

namespace zk::logging {

namespace {

constexpr std::int32_t sparseIndexes = 1000;

enum class Outcome { done, nothingThere, failed };

Outcome outcomeOf(CCgResult const& result, Reports& reports)
{
    if (result.ok())
        return Outcome::done;
    bool const isMissing =
        result.status == 'w' && (result.code == ERROR_FILE_NOT_FOUND || result.code == ERROR_PATH_NOT_FOUND);
    if (isMissing)
        return Outcome::nothingThere;
    reports.add(result);
    return Outcome::failed;
}

bool exists(std::string const& path)
{
    CxFileStatus status;
    return CxFileStat(path.c_str(), status).ok();
}

bool isFolder(std::string const& path)
{
    CxFileStatus status;
    return CxFileStat(path.c_str(), status).ok() && status.isFolder;
}

std::string asidePath(FileName const& name)
{
    return name.path(0).append(asideSuffix);
}

class Files {
public:
    Files(FileName const& name, Reports& reports)
        : name_(name), aside_(asidePath(name)), reports_(reports) { }

    std::string const& aside() const { return aside_; }
    bool has(std::int32_t index) const { return exists(name_.path(index)); }
    bool hasAside() const { return exists(aside_); }

    Outcome rename(std::int32_t from, std::int32_t to) { return rename(name_.path(from), name_.path(to)); }
    Outcome putAside(std::int32_t index) { return rename(name_.path(index), aside_); }
    Outcome putBack(std::int32_t index) { return rename(aside_, name_.path(index)); }

private:
    Outcome rename(std::string const& from, std::string const& to)
    {
        return outcomeOf(CxFileRename(from.c_str(), to.c_str()), reports_);
    }

    FileName const& name_;
    std::string const aside_;
    Reports& reports_;
};

// The index that is free once all from `lowest` on have moved up: the one behind the last, or the first gap that
// an interrupted rollover left.
std::int32_t highestTarget(Rollover const& rollover, Files const& files, bool closesGap)
{
    std::int32_t const last = rollover.maxFiles - 1;
    std::int32_t index = closesGap ? rollover.lowest : std::min(last, sparseIndexes);
    while (index < last && files.has(index))
        ++index;
    return index;
}

}  // namespace

bool rollOver(Rollover const& rollover, Reports& reports)
{
    Files files(rollover.name, reports);
    bool const isStale = files.hasAside();  // of an interrupted rollover, which was about to remove it
    std::int32_t const top = highestTarget(rollover, files, isStale || rollover.wasInterrupted);
    if (std::max(files.aside().size(), rollover.name.path(top).size()) > CX_LONGEST_PATH) {
        reports.add(libraryError(ENAMETOOLONG));
        return false;
    }
    if (isFolder(rollover.name.path(top))) {
        reports.add({'w', ERROR_ACCESS_DENIED});
        return false;
    }
    Outcome const oldest = files.putAside(top);
    if (oldest == Outcome::failed)
        return false;
    for (std::int32_t index = top - 1; index >= rollover.lowest; --index) {
        if (files.rename(index, index + 1) != Outcome::failed)
            continue;
        for (std::int32_t moved = index + 1; moved < top; ++moved)
            files.rename(moved + 1, moved);
        if (oldest == Outcome::done)
            files.putBack(top);
        return false;
    }
    return true;
}

bool removeOldest(FileName const& name, Reports& reports)
{
    return outcomeOf(CxFileDelete(asidePath(name).c_str()), reports) == Outcome::done;
}

}  // namespace zk::logging
