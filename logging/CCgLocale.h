// CCgLocale.h: locales as they stand in the names of message catalogs.
//
//   canonicalLocale("DE_de.UTF-8");      // "de_DE"
//   alternateLocale("fr_CA");            // "fr_FR"
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zk::logging {

/// A locale in its canonical form: a language in lower case, mostly with "_" and a territory in upper case.
/// What is no locale of a known form stays as it is.
std::string canonicalLocale(std::string_view locale);

/// The locale whose catalogs serve a canonical one as well; none if that is itself.
std::optional<std::string> alternateLocale(std::string_view canonical);

/// The parts of "ll_CC.codeset"; empty where there is none.
std::string_view languageOf(std::string_view locale) noexcept;
std::string_view territoryOf(std::string_view locale) noexcept;
std::string_view codesetOf(std::string_view locale) noexcept;

}  // namespace zk::logging
