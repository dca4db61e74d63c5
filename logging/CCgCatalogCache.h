// CCgCatalogCache.h: catalogs that are open, and how they are found.
//
// For code that holds the toolkit's lock.
#pragma once

#include "logging/CCgCatalogFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zk::logging {

/// Opens, and gives back, a catalog for a user; null if there is none.
CCgCatalog* openCatalog(std::string_view name, unsigned flags, char const* locale);
void closeCatalog(CCgCatalog* catalog);
void purgeCatalogs();

/// The text of a message in the user's language, or in a locale; null if there is none. It is valid until
/// another catalog is opened or the cache is emptied.
///
/// Where a catalog was found it is looked for again when the environment or the cache have changed; where none
/// was found, after a second as well.
char const* translatedText(std::string const& catalog, char const* locale, std::int32_t set,
                           std::int32_t key);

/// How many places the cache has, and how many are taken.
std::size_t catalogPlaces();
std::size_t catalogsInCache();

/// The paths that a catalog may have, in the order in which they are tried.
std::vector<std::string> catalogPaths(std::string_view name, unsigned flags, char const* locale);

}  // namespace zk::logging
