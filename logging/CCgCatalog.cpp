#include "logging/CCgCatalog.h"

#include "logging/CCgCatalogCache.h"
#include "logging/CCgCodesetText.h"
#include "logging/CCgLogManager.h"
#include "logging/util/CxFile.h"
#include "logging/util/CxSystem.h"
#include "platform/os/os.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace zk::logging {

namespace {

constexpr std::size_t firstPlaces = 10;

// Open catalogs by path. A place whose catalog nobody uses is given to the next one, the longest unused first;
// where all are used, there will be twice as many.
class Cache {
public:
    // The catalog of a path; null if it isn't here.
    CCgCatalog* find(std::string_view path) noexcept
    {
        for (auto const& catalog : places_)
            if (catalog && catalog->path == path)
                return catalog.get();
        return nullptr;
    }

    CCgCatalog* add(std::unique_ptr<CCgCatalog> catalog)
    {
        auto place = std::find(places_.begin(), places_.end(), nullptr);
        if (place == places_.end())
            place = leastUsed();
        if (place == places_.end()) {
            std::size_t const index = places_.size();
            places_.resize(index * 2);
            place = places_.begin() + static_cast<std::ptrdiff_t>(index);
        }
        catalog->cached = true;
        *place = std::move(catalog);
        ++generation_;
        return place->get();
    }

    CCgCatalog* use(CCgCatalog* catalog) noexcept
    {
        catalog->stamp = ++stamps_;
        ++catalog->users;
        return catalog;
    }

    // What is still used belongs to its users from now on.
    void purge()
    {
        for (auto& catalog : places_) {
            if (catalog && catalog->users > 0) {
                catalog->cached = false;
                catalog.release();
            }
            catalog.reset();
        }
        places_.resize(firstPlaces);
        ++generation_;
    }

    std::size_t places() const noexcept { return places_.size(); }
    std::size_t taken() const noexcept
    {
        return static_cast<std::size_t>(
            std::count_if(places_.begin(), places_.end(), [](auto const& c) { return bool(c); }));
    }

    // Changes whenever a catalog has come or gone.
    std::uint64_t generation() const noexcept { return generation_; }

private:
    using Places = std::vector<std::unique_ptr<CCgCatalog>>;

    Places::iterator leastUsed() noexcept
    {
        auto oldest = places_.end();
        for (auto place = places_.begin(); place != places_.end(); ++place)
            if ((*place)->users == 0 && (oldest == places_.end() || (*place)->stamp < (*oldest)->stamp))
                oldest = place;
        return oldest;
    }

    Places places_ = Places(firstPlaces);
    std::uint64_t stamps_ = 0;
    std::uint64_t generation_ = 0;
};

// Not destroyed with the module: objects of other modules may still log while they end.
Cache& cache()
{
    static auto* const catalogs = new Cache;
    return *catalogs;
}

bool exists(std::string const& path)
{
    CxFileStatus status;
    return CxFileStat(path.c_str(), status).ok();
}

}  // namespace

CCgCatalog* openCatalog(std::string_view name, unsigned flags, char const* locale)
{
    for (std::string& path : catalogPaths(name, flags, locale)) {
        if (CCgCatalog* const found = cache().find(path))
            return cache().use(found);
        if (!exists(path))
            continue;
        std::unique_ptr<CCgCatalog> catalog = readCatalog(path);
        if (!catalog)
            return nullptr;
        catalog->path = std::move(path);
        return cache().use(cache().add(std::move(catalog)));
    }
    return nullptr;
}

void closeCatalog(CCgCatalog* catalog)
{
    if (!catalog || catalog->users <= 0)
        return;
    --catalog->users;
    if (catalog->users == 0 && !catalog->cached)
        delete catalog;
}

void purgeCatalogs()
{
    cache().purge();
}

std::size_t catalogPlaces()
{
    return cache().places();
}

std::size_t catalogsInCache()
{
    return cache().taken();
}

char const* translatedText(std::string const& name, char const* locale, std::int32_t set, std::int32_t key)
{
    CCgCatalog* const catalog = openCatalog(name, 0, locale);
    if (!catalog)
        return nullptr;
    char const* const text = catalogText(*catalog, set, key);
    closeCatalog(catalog);
    return text;
}

namespace {

// A message's text in another code set than UTF-8, converted once.
char const* convertedText(CCgCatalog& catalog, std::int32_t set, std::int32_t key, char const* text,
                          CCgCodeset& codeset)
{
    auto& converted = findSet(catalog, set)->converted;
    auto const [place, isNew] = converted.try_emplace({key, codeset.name});
    if (isNew)
        place->second = codesetOfUtf8(codeset, text);
    return place->second.c_str();
}

}  // namespace

}  // namespace zk::logging

using namespace zk::logging;

CCgCatalog* ccg_openCatalog(char const* name, unsigned flags, char const* locale)
{
    Locked const locked;
    return locked && name ? openCatalog(name, flags, locale) : nullptr;
}

char const* ccg_getCatalogText(CCgCatalog* catalog, std::int32_t set, std::int32_t key,
                               char const* defaultText, CCgCodeset* codeset)
{
    Locked const locked;
    char const* const text = locked && catalog ? catalogText(*catalog, set, key) : nullptr;
    if (!text)
        return defaultText;
    CCgCodeset& wanted = codeset ? *codeset : *ccg_defaultCodeset();
    return wanted.kind == CCG_CODESET_UTF8 ? text : convertedText(*catalog, set, key, text, wanted);
}

void ccg_closeCatalog(CCgCatalog* catalog)
{
    if (Locked const locked; locked)
        closeCatalog(catalog);
}

void ccg_purgeCatalogs()
{
    if (Locked const locked; locked)
        purgeCatalogs();
}
