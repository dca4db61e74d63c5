#include "platform/os/posix/locale.h"

#include "platform/os/posix/environment.h"
#include "platform/os/posix/lastError.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

namespace zk::os {
namespace {

struct Locale {
    LCID number;
    char const* language;
    char const* country;
    UINT terminalCodePage;
    UINT textCodePage;
};

// The first entry of a language is the one for it without a country.
constexpr Locale locales[] = {
    {0x0409, "en", "US", 437, 1252}, {0x0809, "en", "GB", 850, 1252}, {0x0C09, "en", "AU", 850, 1252},
    {0x1009, "en", "CA", 850, 1252}, {0x1809, "en", "IE", 850, 1252}, {0x4009, "en", "IN", 437, 1252},
    {0x0407, "de", "DE", 850, 1252}, {0x0807, "de", "CH", 850, 1252}, {0x0C07, "de", "AT", 850, 1252},
    {0x040C, "fr", "FR", 850, 1252}, {0x080C, "fr", "BE", 850, 1252}, {0x0C0C, "fr", "CA", 850, 1252},
    {0x100C, "fr", "CH", 850, 1252}, {0x0410, "it", "IT", 850, 1252}, {0x0810, "it", "CH", 850, 1252},
    {0x0C0A, "es", "ES", 850, 1252}, {0x080A, "es", "MX", 850, 1252}, {0x0416, "pt", "BR", 850, 1252},
    {0x0816, "pt", "PT", 850, 1252}, {0x0413, "nl", "NL", 850, 1252}, {0x0813, "nl", "BE", 850, 1252},
    {0x0406, "da", "DK", 850, 1252}, {0x041D, "sv", "SE", 850, 1252}, {0x0414, "nb", "NO", 850, 1252},
    {0x040B, "fi", "FI", 850, 1252}, {0x0415, "pl", "PL", 852, 1250}, {0x0405, "cs", "CZ", 852, 1250},
    {0x041B, "sk", "SK", 852, 1250}, {0x040E, "hu", "HU", 852, 1250}, {0x0418, "ro", "RO", 852, 1250},
    {0x0419, "ru", "RU", 866, 1251}, {0x0422, "uk", "UA", 866, 1251}, {0x0408, "el", "GR", 737, 1253},
    {0x041F, "tr", "TR", 857, 1254}, {0x040D, "he", "IL", 862, 1255}, {0x0401, "ar", "SA", 720, 1256},
    {0x0411, "ja", "JP", 932, 932},  {0x0412, "ko", "KR", 949, 949},  {0x0804, "zh", "CN", 936, 936},
    {0x0404, "zh", "TW", 950, 950},  {0x0C04, "zh", "HK", 950, 950},  {0x0439, "hi", "IN", 1, 0},
};

Locale const& standard = locales[0];

constexpr Locale invariant = {LOCALE_INVARIANT, "iv", "IV", 437, 1252};

// Finds "de_DE.UTF-8@euro" and the like.
Locale const& localeOfName(std::string_view name) noexcept
{
    name = name.substr(0, name.find_first_of(".@"));
    std::size_t const mark = std::min(name.find('_'), name.size());
    std::string_view const language = name.substr(0, mark);
    std::string_view const country = name.substr(std::min(mark + 1, name.size()));
    Locale const* byLanguage = nullptr;
    for (Locale const& locale : locales) {
        if (language != locale.language)
            continue;
        if (country == locale.country)
            return locale;
        if (!byLanguage)
            byLanguage = &locale;
    }
    return byLanguage ? *byLanguage : standard;
}

// Without memory: a name that is too long for the buffer is none that is known.
Locale const& userLocale() noexcept
{
    PreserveLastError const kept;
    for (char const* const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        char name[64];
        DWORD const length = GetEnvironmentVariableA(variable, name, sizeof name);
        if (length >= sizeof name)
            return standard;
        if (length != 0)
            return localeOfName({name, length});
    }
    return standard;
}

// Null for a number that is not known.
Locale const* findLocale(LCID number) noexcept
{
    constexpr LCID languageAndSort = 0x000FFFFF;
    switch (number) {
    case 0:
    case LOCALE_USER_DEFAULT:
    case LOCALE_SYSTEM_DEFAULT: return &userLocale();
    case LOCALE_INVARIANT: return &invariant;
    default: break;
    }
    if (number & ~languageAndSort)
        return nullptr;
    auto const* const place = std::find_if(std::begin(locales), std::end(locales), [&](Locale const& locale) {
        return locale.number == (number & 0xFFFF);
    });
    return place != std::end(locales) ? place : nullptr;
}

thread_local LCID threadLocale = 0;  // 0: the user's

struct Fact {
    std::string text;
    DWORD number = 0;
    bool isNumber = true;
};

bool findFact(Locale const& locale, LCTYPE which, Fact& fact)
{
    char digits[8];
    switch (which) {
    case LOCALE_ILANGUAGE:
        std::snprintf(digits, sizeof digits, "%04x", locale.number & 0xFFFF);
        fact = {digits, locale.number};
        return true;
    case LOCALE_IDEFAULTCODEPAGE:
        fact = {std::to_string(locale.terminalCodePage), locale.terminalCodePage};
        return true;
    case LOCALE_IDEFAULTANSICODEPAGE:
        fact = {std::to_string(locale.textCodePage), locale.textCodePage};
        return true;
    case LOCALE_SISO639LANGNAME: fact = {locale.language, 0, false}; return true;
    case LOCALE_SISO3166CTRYNAME: fact = {locale.country, 0, false}; return true;
    default: return false;
    }
}

DWORD localeInfo(LCID number, LCTYPE which, char* text, int room, int& size)
{
    if (room < 0 || (room > 0 && !text))
        return ERROR_INVALID_PARAMETER;
    Locale const* const locale = findLocale(number);
    if (!locale)
        return ERROR_INVALID_PARAMETER;
    Fact fact;
    bool const asNumber = (which & LOCALE_RETURN_NUMBER) != 0;
    if (!findFact(*locale, which & ~LOCALE_RETURN_NUMBER, fact) || (asNumber && !fact.isNumber))
        return ERROR_INVALID_FLAGS;
    void const* const content = asNumber ? static_cast<void const*>(&fact.number) : fact.text.c_str();
    size = static_cast<int>(asNumber ? sizeof fact.number : fact.text.size() + 1);
    if (room == 0)
        return ERROR_SUCCESS;
    if (room < size)
        return ERROR_INSUFFICIENT_BUFFER;
    std::memcpy(text, content, static_cast<std::size_t>(size));
    return ERROR_SUCCESS;
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

LCID GetUserDefaultLCID() noexcept
{
    return userLocale().number;
}

LCID GetThreadLocale() noexcept
{
    return threadLocale ? threadLocale : GetUserDefaultLCID();
}

BOOL SetThreadLocale(LCID locale) noexcept
{
    if (!findLocale(locale))
        return report(ERROR_INVALID_PARAMETER);
    bool const isDefault = locale == LOCALE_USER_DEFAULT || locale == LOCALE_SYSTEM_DEFAULT;
    threadLocale = isDefault ? 0 : locale;
    return TRUE;
}

LANGID SetThreadUILanguage(LANGID language) noexcept
{
    return language ? language : static_cast<LANGID>(GetUserDefaultLCID());
}

int GetLocaleInfoA(LCID locale, LCTYPE fact, LPSTR text, int room) noexcept
{
    int size = 0;
    DWORD error;
    try {
        error = localeInfo(locale, fact, text, room, size);
    } catch (std::bad_alloc const&) {
        error = ERROR_NOT_ENOUGH_MEMORY;
    }
    return report(error) ? size : 0;
}
