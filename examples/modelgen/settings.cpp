#include "examples/modelgen/settings.h"

#include "Foundtn/util/getEnv.h"
#include "files/logicalPaths.h"

namespace modelgen {

namespace {

// A component that begins with '$' stands for a setting.
bool isLogical(CString const& path)
{
    return path.Left(1) == "$" || path.Find("/$") >= 0 || path.Find("\\$") >= 0;
}

void readFolder(Settings& settings)
{
    CString path;
    if (!omGetEnvVar("CodeGen", "OutputFolder", path))
        return;
    settings.folder = path;
    if (isLogical(path) && !translateToFullPath(settings.folder))
        settings.mistake = "the setting OutputFolder is " + path + ", and " + settings.folder + " is not set";
}

}  // namespace

Settings readSettings()
{
    Settings settings;
    settings.toldErrors = omGetEnvVarInt("General", "ToldErrors", settings.toldErrors);
    settings.warningsAreErrors =
        omGetEnvVarBool("CodeGen", "WarningsAreErrors", settings.warningsAreErrors) != 0;
    readFolder(settings);
    return settings;
}

}  // namespace modelgen
