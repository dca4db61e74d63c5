#include "logging/CCgLocale.h"

#include "logging/util/CxChars.h"

namespace zk::logging {

namespace {

struct Pair {
    std::string_view from;
    std::string_view to;
};

constexpr Pair aliases[] = {
    {"C", "C"},   {"american", "C"},     {"ar_AA", "ar"},    {"Ar_AA", "ar"},
    {"cz", "cs"}, {"japanese", "ja_JP"}, {"Jp_JP", "ja_JP"},
};

constexpr Pair alternates[] = {
    {"C", "C"},      {"en", "C"},        {"fr", "fr_FR"}, {"ja", "ja_JP"},
    {"pt", "pt_BR"}, {"pt_BR", "pt_BR"}, {"zh", "zh_CN"}, {"zh_TW", "zh_TW"},
};

template <std::size_t Count>
std::optional<std::string_view> lookedUp(Pair const (&table)[Count], std::string_view key) noexcept
{
    for (Pair const& entry : table)
        if (entry.from == key)
            return entry.to;
    return std::nullopt;
}

char lower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char upper(char c) noexcept
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isLetterOrDigit(char c) noexcept
{
    return CxIsLetter(c) || CxIsDigit(c);
}

// The six bytes that tell a locale's form, with a NUL for each one behind its end.
struct Head {
    char bytes[7] = "";

    explicit Head(std::string_view locale) noexcept
    {
        locale.copy(bytes, 6);
        if (bytes[2] == '-')
            bytes[2] = '_';
        if (hasLetters(0, 4) && CxIsDigit(bytes[4])) {  // "frFR8859"
            bytes[5] = '\0';
            bytes[4] = bytes[3];
            bytes[3] = bytes[2];
            bytes[2] = '_';
        }
    }

    bool hasLetters(int from, int to) const noexcept
    {
        for (int i = from; i < to; ++i)
            if (!CxIsLetter(bytes[i]))
                return false;
        return true;
    }
};

}  // namespace

std::string canonicalLocale(std::string_view locale)
{
    if (auto const known = lookedUp(aliases, locale))
        return std::string(*known);
    Head const head(locale);
    char const* const b = head.bytes;
    if (!head.hasLetters(0, 2))
        return std::string(locale);
    std::string const language{lower(b[0]), lower(b[1])};
    if (b[2] != '_' && !isLetterOrDigit(b[2]))
        return language;
    if (b[2] == '_' && head.hasLetters(3, 5) && !isLetterOrDigit(b[5]))
        return language + '_' + upper(b[3]) + upper(b[4]);
    return std::string(locale);
}

std::optional<std::string> alternateLocale(std::string_view canonical)
{
    auto found = lookedUp(alternates, canonical);
    if (!found)
        found = lookedUp(alternates, canonical.substr(0, canonical.find('_')));
    if (!found || *found == canonical)
        return std::nullopt;
    return std::string(*found);
}

std::string_view languageOf(std::string_view locale) noexcept
{
    return locale.substr(0, locale.find_first_of("_."));
}

std::string_view territoryOf(std::string_view locale) noexcept
{
    std::string_view const known = locale.substr(0, locale.find('.'));
    std::size_t const underscore = known.find('_');
    return underscore == std::string_view::npos ? std::string_view() : known.substr(underscore + 1);
}

std::string_view codesetOf(std::string_view locale) noexcept
{
    std::size_t const dot = locale.find('.');
    return dot == std::string_view::npos ? std::string_view() : locale.substr(dot + 1);
}

}  // namespace zk::logging
