#include "Foundtn/util/getEnv.h"

#include "Foundtn/util/IAppProfileService.h"
#include "files/currentFolder.h"
#include "files/fileQueries.h"
#include "files/paths.h"

#include <optional>

namespace {

constexpr unsigned int missingSettingText = 47322;
constexpr unsigned int noFrameworkText = 48171;

CString modelServerRoot;
bool needRootSearch = true;

bool readEnvironment(CString const& name, CString& value)
{
    return IAppProfileService::GetEnvironmentVariableA(name, value, nullptr);
}

// The profile's text, then the environment's: the first that `convert` accepts.
template <class Value, class Convert>
Value firstConvertible(CString const& section, CString const& name, Value defaultValue, Convert convert)
{
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    if (!profile)
        return defaultValue;
    int ok = 0;
    Value value{};
    CString text;
    if (profile->GetProfileValue(section, name, text, nullptr))
        convert(text, ok, value);
    if (!ok && readEnvironment(name, text))
        convert(text, ok, value);
    return ok ? value : defaultValue;
}

// A folder of the documentation: the setting, else one below the current directory.
int documentFolder(CString const& name, CString const& below, CString& value, CString* error)
{
    if (omGetEnvVar("General", name, value, error))
        return 1;
    if (!zk::readCurrentFolder(value))
        return 0;
    value += omPathSeparator() + below;
    return 1;
}

void findModelServerRoot(CString* error)
{
    modelServerRoot.Empty();
    if (!omGetEnvVar("General", "OMROOT", modelServerRoot, error) || !omDirExist(modelServerRoot, nullptr)) {
        modelServerRoot = getExcecutableFolder() + "\\Share";
        replaceBackSlashIfUnix(modelServerRoot);
    }
    needRootSearch = false;
}

std::optional<CString> frameworkFolder(IToolMode::Lang lang)
{
    switch (lang) {
    case IToolMode::LangCpp: return CString("LangCpp");
    case IToolMode::LangC: return CString("LangC");
    case IToolMode::LangJava: return CString("LangJava");
    case IToolMode::LangAda: return CString("LangAda");
    default: return std::nullopt;
    }
}

}  // namespace

int omGetEnvVar(CString const& section, CString const& name, CString& value, CString* error)
{
    CString found;
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    bool const isFound =
        (profile && profile->GetProfileValue(section, name, found, nullptr) && !found.IsEmpty()) ||
        (readEnvironment(name, found) && !found.IsEmpty());
    if (!isFound && error)
        error->Format(missingSettingText, name, name);
    value = isFound ? found : CString();
    return isFound;
}

int omGetEnvVarInt(CString const& section, CString const& name, int defaultValue)
{
    int value = 0;
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    if (profile && profile->GetProfileValue(section, name, value, defaultValue))
        return value;
    CString text;
    return readEnvironment(name, text) ? IAppProfileInterface::String2Int(text, defaultValue) : defaultValue;
}

double omGetEnvVarDouble(CString const& section, CString const& name, double defaultValue)
{
    double value = 0;
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    if (profile && profile->GetProfileValue(section, name, value, defaultValue))
        return value;
    CString text;
    return readEnvironment(name, text) ? IAppProfileInterface::String2Double(text, defaultValue)
                                       : defaultValue;
}

int omGetEnvVarBool(CString const& section, CString const& name, int defaultValue)
{
    return firstConvertible(section, name, defaultValue, [](CString const& text, int& ok, int& value) {
        IAppProfileInterface::String2Bool(text, ok, value);
    });
}

unsigned long omGetEnvVarColor(CString const& section, CString const& name, unsigned long defaultValue)
{
    return firstConvertible(section, name, defaultValue,
                            [](CString const& text, int& ok, unsigned long& value) {
                                IAppProfileInterface::String2Color(text, ok, value);
                            });
}

int omGetRoot(CString& value, CString* error)
{
    if (!IToolMode::isInModelServerMode())
        return omGetEnvVar("General", "OMROOT", value, error);
    if (needRootSearch)
        findModelServerRoot(error);
    value = modelServerRoot;
    return 1;
}

int omGetApplicationRoot(CString& value, CString* error)
{
    return omGetEnvVar("General", "APPLICATION_ROOT", value, error);
}

int omGetDocRoot(CString& value, CString* error)
{
    return documentFolder("OMDOCROOT", omConcatDirAndFile("Doc", "pdf_docs"), value, error);
}

int omGetHelpRoot(CString& value, CString* error)
{
    return documentFolder("OMHELPROOT", "Doc", value, error);
}

int omGetSiteDir(CString& value, CString* error)
{
    return omGetEnvVar("General", "OMSITEDIR", value, error);
}

int omGetJavaLocation(CString& value, CString* error)
{
    return omGetEnvVar("JVM", "JavaLocation", value, error);
}

int omGetFrameworkRoot(CString& value, IToolMode::Lang lang, CString* error)
{
    if (!omGetRoot(value, error))
        return 0;
    std::optional<CString> const folder = frameworkFolder(lang);
    if (!folder) {
        if (error)
            error->LoadString(noFrameworkText);
        return 0;
    }
    value += omPathSeparator() + *folder;
    return 1;
}
