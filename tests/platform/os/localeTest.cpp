#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

std::string fact(LCID locale, LCTYPE which)
{
    char text[32];
    int const size = GetLocaleInfoA(locale, which, text, sizeof text);
    EXPECT_GT(size, 0) << which;
    return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : "";
}

}  // namespace

TEST(Locales, haveCodePagesAndNames)
{
    struct Row {
        LCID locale;
        char const* number;
        char const* terminal;
        char const* texts;
        char const* language;
        char const* country;
    };
    constexpr Row rows[] = {
        {1033, "0409", "437", "1252", "en", "US"}, {2057, "0809", "850", "1252", "en", "GB"},
        {3081, "0c09", "850", "1252", "en", "AU"}, {4105, "1009", "850", "1252", "en", "CA"},
        {6153, "1809", "850", "1252", "en", "IE"}, {16393, "4009", "437", "1252", "en", "IN"},
        {1031, "0407", "850", "1252", "de", "DE"}, {2055, "0807", "850", "1252", "de", "CH"},
        {3079, "0c07", "850", "1252", "de", "AT"}, {1036, "040c", "850", "1252", "fr", "FR"},
        {2060, "080c", "850", "1252", "fr", "BE"}, {3084, "0c0c", "850", "1252", "fr", "CA"},
        {4108, "100c", "850", "1252", "fr", "CH"}, {1040, "0410", "850", "1252", "it", "IT"},
        {3082, "0c0a", "850", "1252", "es", "ES"}, {2058, "080a", "850", "1252", "es", "MX"},
        {1046, "0416", "850", "1252", "pt", "BR"}, {2070, "0816", "850", "1252", "pt", "PT"},
        {1043, "0413", "850", "1252", "nl", "NL"}, {1030, "0406", "850", "1252", "da", "DK"},
        {1053, "041d", "850", "1252", "sv", "SE"}, {1044, "0414", "850", "1252", "nb", "NO"},
        {1035, "040b", "850", "1252", "fi", "FI"}, {1045, "0415", "852", "1250", "pl", "PL"},
        {1029, "0405", "852", "1250", "cs", "CZ"}, {1051, "041b", "852", "1250", "sk", "SK"},
        {1038, "040e", "852", "1250", "hu", "HU"}, {1048, "0418", "852", "1250", "ro", "RO"},
        {1049, "0419", "866", "1251", "ru", "RU"}, {1058, "0422", "866", "1251", "uk", "UA"},
        {1032, "0408", "737", "1253", "el", "GR"}, {1055, "041f", "857", "1254", "tr", "TR"},
        {1037, "040d", "862", "1255", "he", "IL"}, {1025, "0401", "720", "1256", "ar", "SA"},
        {1041, "0411", "932", "932", "ja", "JP"},  {1042, "0412", "949", "949", "ko", "KR"},
        {2052, "0804", "936", "936", "zh", "CN"},  {1028, "0404", "950", "950", "zh", "TW"},
        {3076, "0c04", "950", "950", "zh", "HK"},  {1081, "0439", "1", "0", "hi", "IN"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(fact(row.locale, LOCALE_ILANGUAGE), row.number);
        EXPECT_EQ(fact(row.locale, LOCALE_IDEFAULTCODEPAGE), row.terminal) << row.number;
        EXPECT_EQ(fact(row.locale, LOCALE_IDEFAULTANSICODEPAGE), row.texts) << row.number;
        EXPECT_EQ(fact(row.locale, LOCALE_SISO639LANGNAME), row.language);
        EXPECT_EQ(fact(row.locale, LOCALE_SISO3166CTRYNAME), row.country);
    }
}

TEST(Locales, describeTheUsersOwn)
{
    char number[5];
    std::snprintf(number, sizeof number, "%04x", static_cast<unsigned>(GetUserDefaultLCID()));

    EXPECT_EQ(fact(LOCALE_USER_DEFAULT, LOCALE_ILANGUAGE), number);
    EXPECT_EQ(fact(GetUserDefaultLCID(), LOCALE_ILANGUAGE), number);
}

TEST(Locales, askForRoom)
{
    char text[] = "xxxxxx";

    EXPECT_EQ(GetLocaleInfoA(1033, LOCALE_IDEFAULTANSICODEPAGE, nullptr, 0), 5);
    EXPECT_EQ(GetLocaleInfoA(1033, LOCALE_IDEFAULTANSICODEPAGE, text, 5), 5);
    EXPECT_STREQ(text, "1252");
    EXPECT_EQ(text[5], 'x');
    EXPECT_FAILS(GetLocaleInfoA(1033, LOCALE_IDEFAULTANSICODEPAGE, text, 4), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_FAILS(GetLocaleInfoA(1033, LOCALE_IDEFAULTANSICODEPAGE, nullptr, 5), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GetLocaleInfoA(1033, LOCALE_IDEFAULTANSICODEPAGE, text, -1), ERROR_INVALID_PARAMETER);
}

TEST(Locales, giveNumbers)
{
    DWORD number = 0;

    EXPECT_EQ(GetLocaleInfoA(1031, LOCALE_IDEFAULTCODEPAGE | LOCALE_RETURN_NUMBER,
                             reinterpret_cast<char*>(&number), 4),
              4);

    EXPECT_EQ(number, 850u);
}

TEST(Locales, areRefusedWhenUnknown)
{
    char text[32];

    EXPECT_FAILS(GetLocaleInfoA(0x9999, LOCALE_ILANGUAGE, text, sizeof text), ERROR_INVALID_PARAMETER);
    EXPECT_FAILS(GetLocaleInfoA(1033, 0xFFFF, text, sizeof text), ERROR_INVALID_FLAGS);
}

TEST(ThreadLocale, isTheUsersUntilItIsSet)
{
    LCID before = 0;
    LCID after = 0;
    LCID later = 0;

    std::thread([&] {
        before = GetThreadLocale();
        EXPECT_TRUE(SetThreadLocale(1031));
        after = GetThreadLocale();
        EXPECT_FAILS(SetThreadLocale(0x9999), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(GetThreadLocale(), LCID(1031));
        EXPECT_TRUE(SetThreadLocale(LOCALE_USER_DEFAULT));
        later = GetThreadLocale();
    }).join();

    EXPECT_EQ(before, GetUserDefaultLCID());
    EXPECT_EQ(after, LCID(1031));
    EXPECT_EQ(later, GetUserDefaultLCID());
    EXPECT_EQ(GetThreadLocale(), GetUserDefaultLCID());
}

TEST(ThreadLocale, hasALanguageForMessages)
{
    EXPECT_EQ(SetThreadUILanguage(1033), 1033);
}
