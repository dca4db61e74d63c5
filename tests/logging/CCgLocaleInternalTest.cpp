#include "logging/CCgLocale.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

using namespace zk::logging;

TEST(CCgLocale, hasACanonicalForm)
{
    struct Row {
        char const* locale;
        char const* canonical;
    };
    Row const rows[] = {
        // by name
        {"C", "C"},
        {"american", "C"},
        {"ar_AA", "ar"},
        {"Ar_AA", "ar"},
        {"cz", "cs"},
        {"japanese", "ja_JP"},
        {"Jp_JP", "ja_JP"},
        // four letters and a digit
        {"frFR8859-1", "fr_FR"},
        {"ENus8", "en_US"},
        // the language alone
        {"fr", "fr"},
        {"FR", "fr"},
        {"fr.UTF-8", "fr"},
        {"de@euro", "de"},
        // language and territory
        {"de_DE", "de_DE"},
        {"DE_de", "de_DE"},
        {"de-DE", "de_DE"},
        {"de_DE.UTF-8", "de_DE"},
        {"de_DE@euro", "de_DE"},
        {"pt-br", "pt_BR"},
        // anything else stays whole
        {"", ""},
        {"x", "x"},
        {"deu", "deu"},
        {"german", "german"},
        {"frFR", "frFR"},
        {"de_D", "de_D"},
        {"de_DEU", "de_DEU"},
        {"de_DE8859", "de_DE8859"},
        {"zh-Hant-TW", "zh-Hant-TW"},
        {"C.UTF-8", "C.UTF-8"},
        {"POSIX", "POSIX"},
        {"4711", "4711"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(canonicalLocale(row.locale), row.canonical) << row.locale;
}

TEST(CCgLocale, hasAnAlternateOne)
{
    struct Row {
        char const* canonical;
        std::optional<std::string> alternate;
    };
    Row const rows[] = {
        {"en", "C"},
        {"en_US", "C"},
        {"fr", "fr_FR"},
        {"fr_CA", "fr_FR"},
        {"ja", "ja_JP"},
        {"pt", "pt_BR"},
        {"pt_PT", "pt_BR"},
        {"zh", "zh_CN"},
        {"zh_HK", "zh_CN"},
        {"C", std::nullopt},
        {"fr_FR", std::nullopt},
        {"pt_BR", std::nullopt},
        {"zh_TW", std::nullopt},
        {"de", std::nullopt},
        {"de_DE", std::nullopt},
        {"", std::nullopt},
    };
    for (Row const& row : rows)
        EXPECT_EQ(alternateLocale(row.canonical), row.alternate) << row.canonical;
}

TEST(CCgLocale, isMadeOfThreeParts)
{
    EXPECT_EQ(languageOf("de_DE.UTF-8"), "de");
    EXPECT_EQ(territoryOf("de_DE.UTF-8"), "DE");
    EXPECT_EQ(codesetOf("de_DE.UTF-8"), "UTF-8");
    EXPECT_EQ(languageOf("de.UTF_8"), "de");
    EXPECT_EQ(territoryOf("de.UTF_8"), "");
    EXPECT_EQ(codesetOf("de"), "");
}
