// CCgCatalogPaths.cpp: where a catalog may lie, declared in CCgCatalogCache.h.
#include "logging/CCgCatalog.h"
#include "logging/CCgCatalogCache.h"
#include "logging/CCgLocale.h"
#include "logging/util/CxSystem.h"
#include "platform/os/userLanguage.h"

#include <algorithm>
#include <initializer_list>

namespace zk::logging {

namespace {

constexpr char const* templatesVariable = "NLSPATH";
constexpr std::string_view defaultTemplates("%N.cat");
constexpr std::string_view defaultLocale("C");

// The first variable that is set, and not empty.
std::optional<std::string> firstSet(std::initializer_list<char const*> names)
{
    for (char const* const name : names)
        if (auto value = CxGetEnvironment(name); value && !value->empty())
            return value;
    return std::nullopt;
}

std::string chosenLocale(unsigned flags, char const* given)
{
    if (given)
        return given;
    auto const chosen =
        flags & CCG_CAT_LC_VARIABLES ? firstSet({"LC_ALL", "LC_MESSAGES", "LANG"}) : firstSet({"LANG"});
    if (chosen)
        return *chosen;
    std::string const own = os::userLanguage();
    return own.empty() ? std::string(defaultLocale) : own;
}

std::vector<std::string> localesToTry(unsigned flags, char const* given)
{
    std::vector<std::string> locales;
    auto const add = [&](std::string locale) {
        if (std::find(locales.begin(), locales.end(), locale) == locales.end())
            locales.push_back(std::move(locale));
    };
    std::string const canonical = canonicalLocale(chosenLocale(flags, given));
    add(canonical);
    if (!(flags & CCG_CAT_NO_LANGUAGE))
        add(canonical.substr(0, 2));
    if (auto alternate = alternateLocale(canonical); alternate && !(flags & CCG_CAT_NO_ALTERNATE))
        add(*std::move(alternate));
    if (!(flags & CCG_CAT_NO_C))
        add(std::string(defaultLocale));
    return locales;
}

// Cuts the first template off; the ":" of a drive belongs to it.
std::string_view takeTemplate(std::string_view& rest)
{
    std::size_t const drive = rest.size() > 1 && rest[1] == ':' ? 2 : 0;
    std::string_view const first = rest.substr(0, rest.find_first_of(":;", drive));
    rest.remove_prefix(std::min(first.size() + 1, rest.size()));
    return first;
}

std::string expanded(std::string_view pattern, std::string_view name, std::string_view locale)
{
    std::string path;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const letter = pattern[i] == '%' && i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        switch (letter) {
        case 'L': path += locale; break;
        case 'N': path += name; break;
        case 'l': path += languageOf(locale); break;
        case 't': path += territoryOf(locale); break;
        case 'c': path += codesetOf(locale); break;
        default: path += pattern[i]; continue;
        }
        ++i;
    }
    return path;
}

}  // namespace

std::vector<std::string> catalogPaths(std::string_view name, unsigned flags, char const* locale)
{
    if (name.find_first_of("/\\") != std::string_view::npos)
        return {std::string(name)};
    std::vector<std::string> paths;
    std::vector<std::string> const locales = localesToTry(flags, locale);
    std::string const own = ccg_getNlsPath();
    for (std::string_view rest = own.empty() ? defaultTemplates : std::string_view(own); !rest.empty();) {
        std::string_view const pattern = takeTemplate(rest);
        if (pattern.empty())
            continue;
        for (std::string const& candidate : locales) {
            std::string path = expanded(pattern, name, candidate);
            if (std::find(paths.begin(), paths.end(), path) == paths.end())
                paths.push_back(std::move(path));
        }
    }
    return paths;
}

}  // namespace zk::logging

bool ccg_setNlsPath(char const* templates)
{
    return CxSetEnvironment(zk::logging::templatesVariable, templates).ok();
}

bool ccg_prependNlsPath(char const* templates)
{
    std::string const before = ccg_getNlsPath();
    std::string all = templates ? templates : "";
    if (!all.empty() && !before.empty())
        all += ';';
    return ccg_setNlsPath((all + before).c_str());
}

std::string ccg_getNlsPath()
{
    return CxGetEnvironment(zk::logging::templatesVariable).value_or("");
}
