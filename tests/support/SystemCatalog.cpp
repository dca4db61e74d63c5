#ifndef _WIN32

#    include "tests/support/SystemCatalog.h"

#    include <nl_types.h>

#    include <stdexcept>

namespace zk::test {

SystemCatalog::SystemCatalog(std::string const& path) : catalog_(catopen(path.c_str(), 0))
{
    if (catalog_ == reinterpret_cast<nl_catd>(-1))
        throw std::runtime_error("no catalog: " + path);
}

SystemCatalog::~SystemCatalog()
{
    catclose(catalog_);
}

std::optional<std::string> SystemCatalog::text(int set, int number) const
{
    static char const none[] = "";
    char const* const found = catgets(catalog_, set, number, none);
    return found == none ? std::nullopt : std::optional<std::string>(found);
}

}  // namespace zk::test

#endif
