#include "platform/os/userLanguage.h"

#include "platform/os/os.h"

namespace zk::os {

std::string userLanguage()
{
    LCID const locale = MAKELCID(GetUserDefaultLangID(), SORT_DEFAULT);
    char language[9] = "";
    char country[9] = "";
    GetLocaleInfoA(locale, LOCALE_SISO639LANGNAME, language, sizeof language);
    GetLocaleInfoA(locale, LOCALE_SISO3166CTRYNAME, country, sizeof country);
    if (!language[0] || !country[0])
        return language;
    return std::string(language) + '_' + country;
}

}  // namespace zk::os
