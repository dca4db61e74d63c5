// The members of IToolMode that ask the profile, and preferences.h.
#include "Foundtn/util/preferences.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/IToolMode.h"
#include "Foundtn/util/getEnv.h"

namespace {

constexpr char userPreferences[] = "UserPreferences";

struct Preference {
    bool isRead;
    bool value;
};

Preference rtfConversionOff{false, false};
Preference labelMode{false, false};
Preference gradientMode{false, true};
Preference kmMigration{false, false};

bool isTrueText(CString const& section, CString const& key)
{
    CString text;
    omGetEnvVar(section, key, text);
    return text.CompareNoCase("True") == 0;
}

}  // namespace

bool IToolMode::isRTFConversionOff()
{
    if (!rtfConversionOff.isRead) {
        rtfConversionOff.isRead = true;
        if (IAppProfileInterface* const profile = IAppProfileInterface::Instance())
            rtfConversionOff.value = profile->GetProfileBool(userPreferences, "RTFConversionOff", 0) == 1;
    }
    return rtfConversionOff.value;
}

bool IToolMode::isLabelMode(bool refresh)
{
    if (!refresh && labelMode.isRead)
        return labelMode.value;
    labelMode.isRead = true;
    if (IAppProfileInterface* const profile = IAppProfileInterface::Instance())
        labelMode.value = profile->GetProfileBool(userPreferences, "LabelMode", 0) != 0;
    if (!labelMode.value && isTrueText(userPreferences, "LabelMode"))
        labelMode.value = true;
    return labelMode.value;
}

bool IToolMode::isGradientMode(bool refresh)
{
    if (!refresh && gradientMode.isRead)
        return gradientMode.value;
    gradientMode.isRead = true;
    if (IAppProfileInterface* const profile = IAppProfileInterface::Instance())
        gradientMode.value = profile->GetProfileBool(userPreferences, "GradientMode", 1) != 0;
    return gradientMode.value;
}

bool IToolMode::isKmMigrationEnabled()
{
    if (!kmMigration.isRead) {
        kmMigration.isRead = true;
        kmMigration.value = omGetEnvVarBool("General", "EnableKmToZmmMigration", 0) != 0 && isZMM() != 0;
    }
    return kmMigration.value;
}

bool ForceInternalCG()
{
    return isTrueText("CodeGen", "ForceInternalCG");
}
