// Any bytes as a catalog file: whatever is asked for, only texts within the file come out of it.
#include "logging/CCgCatalogFile.h"
#include "logging/util/CxSystem.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

std::string const& path()
{
    static std::string const own = (std::filesystem::temp_directory_path() /
                                    ("zk-fuzz-catalog-" + std::to_string(CxProcessId()) + ".cat"))
                                       .string();
    return own;
}

void requireTextOf(CCgCatalog& catalog, std::int32_t set, std::int32_t key)
{
    char const* const text = zk::logging::catalogText(catalog, set, key);
    if (!text)
        return;
    zk::logging::CatalogSet const* const found = zk::logging::findSet(catalog, set);
    std::string const& texts = found->texts;
    require(text >= texts.data() && text + std::strlen(text) < texts.data() + texts.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::ofstream(path(), std::ios::binary).write(reinterpret_cast<char const*>(data), std::streamsize(size));
    auto const catalog = zk::logging::readCatalog(path());
    if (!catalog)
        return 0;
    require(catalog->sets.size() <= size / zk::logging::catalogSetSize);
    for (zk::logging::CatalogSet const& set : catalog->sets) {
        zk::logging::findSet(*catalog, set.id);
        requireTextOf(*catalog, set.id, 1);
        require(set.messages.size() * zk::logging::catalogMessageSize <= size);
        for (zk::logging::CatalogMessage const& message : set.messages)
            requireTextOf(*catalog, set.id, message.id);
    }
    for (std::int32_t const id : {-1, 0, 1, 2, 7, 2147483647})
        requireTextOf(*catalog, id, id);
    return 0;
}
