#include "Foundtn/util/toolLocale.h"

#include "Foundtn/util/getEnv.h"
#include "platform/os/os.h"
#include "platform/os/runtimeLocale.h"

#include <algorithm>
#include <iterator>

namespace {

struct Language {
    char const* name;
    unsigned int codePage;
    LCID locale;
};

// The last row stands for everything else.
constexpr Language languages[] = {
    {"JA", 932, 1041}, {"CN", 936, 2052}, {"KO", 949, 1042}, {"TW", 950, 1028}, {"EN", 1252, 1033},
};

template <class Fits>
Language const& firstThat(Fits fits)
{
    auto const last = std::prev(std::end(languages));
    return *std::find_if(std::begin(languages), last, fits);
}

void switchTo(Language const& language)
{
    zk::os::setRuntimeLocale(language.codePage);
    SetThreadLocale(language.locale);
    SetThreadUILanguage(static_cast<LANGID>(language.locale));
}

CString findLocaleName()
{
    CString name;
    omGetEnvVar("General", "ProductLocale", name);
    if (name.IsEmpty()) {
        name = "EN";
    } else if (name == "active") {
        unsigned int const codePage = zk::os::usersCodePage();
        name = firstThat([&](Language const& row) { return row.codePage == codePage; }).name;
    }
    if (omGetEnvVarBool("General", "UpdateLocaleByProductLocale", 0))
        switchTo(firstThat([&](Language const& row) { return name.CompareNoCase(row.name) == 0; }));
    return name;
}

}  // namespace

CString ToolLocaleName()
{
    static CString const name = findLocaleName();
    return name;
}
