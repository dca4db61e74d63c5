// CCgCatalog.h: message catalogs, the texts of messages in the user's language.
//
//   CCgCatalog* const catalog = ccg_openCatalog("ccgmsg", 0, "de_DE");
//   char const* const text = ccg_getCatalogText(catalog, 1, 20, "Out of memory.", utf8);
//   ...
//   ccg_closeCatalog(catalog);
//
// A catalog is looked for along the templates of the environment's NLSPATH, "%N.cat" if there are none, which
// are separated by ";" or ":" (a ":" as second byte belongs to a drive). In each, "%N" is the catalog's name, "%L" the
// locale, "%l", "%t" and "%c" its language, territory and code set. Each template is tried with the canonical
// locale, its language, the locale whose catalogs serve it too, and "C"; the first file that exists counts. A name
// with "/" or a backslash is a path.
//
// Opened catalogs stay in a cache, with their files open, so that opening one again costs a look-up. The tool
// zkgencat makes such files. Every operation takes the toolkit's lock.
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <string>

struct CCgCatalog;
struct CCgCodeset;

/// How a catalog is looked for; a set of these.
enum CCgCatalogFlags : unsigned {
    CCG_CAT_LC_VARIABLES = 1,  ///< without a locale LC_ALL, then LC_MESSAGES count before LANG
    CCG_CAT_NO_LANGUAGE = 2,   ///< not by the language alone
    CCG_CAT_NO_ALTERNATE = 4,  ///< not by the locale whose catalogs serve it too
    CCG_CAT_NO_C = 8,          ///< not by "C"
};

/// Opens a catalog. A null locale is the user's: LANG, else the system's own, else "C".
///
/// Null if there is none, or if it is no catalog; that is no error. The caller closes it.
ZK_UTIL_API CCgCatalog* ccg_openCatalog(char const* name, unsigned flags, char const* locale);

/// A message's text in a code set, null for the default one; `defaultText` if the catalog is null or
/// has no such message. A text of the catalog is valid until it is closed.
ZK_UTIL_API char const* ccg_getCatalogText(CCgCatalog* catalog, std::int32_t set, std::int32_t key,
                                           char const* defaultText, CCgCodeset* codeset);

/// Closes a catalog, which stays in the cache; null is ignored.
ZK_UTIL_API void ccg_closeCatalog(CCgCatalog* catalog);

/// Empties the cache: what is opened from now on is read anew. A catalog that is still open lives until it
/// is closed.
ZK_UTIL_API void ccg_purgeCatalogs();

/// Set and read NLSPATH in the environment; put templates, and a ";", in front of it. False on failure.
ZK_UTIL_API bool ccg_setNlsPath(char const* templates);
ZK_UTIL_API bool ccg_prependNlsPath(char const* templates);
ZK_UTIL_API std::string ccg_getNlsPath();
