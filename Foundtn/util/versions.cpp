#include "Foundtn/util/versions.h"

#include "platform/os/os.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char fixPackId[] = "8.4.0.0";
constexpr char buildNumber[] = "9844162";

}  // namespace

CString omGetCurrentVersionId()
{
    return "8.4";
}

CString omGetCurrentMajorVersionId()
{
    return "8.4";
}

CString omGetCurrentMinorVersionId()
{
    return "";
}

CString omGetCurrentVersionText()
{
    return "8.4";
}

CString omGetCurrentFixPackID()
{
    return fixPackId;
}

CString omGetCurrentIFixVersion()
{
    return "8.4.0.0.3";
}

CString omGetCurrentIFixStr()
{
    return "iFix003";
}

CString omGetCurrentZMMVersion()
{
    return "11.1.0";
}

CString omGetMinimumZMMServerVersion()
{
    return "11.0.0";
}

CString omGetCurrentXTCAPIVersion()
{
    CString version;
    version.Format("%s.%s", fixPackId, "0");
    return version;
}

CString omGetBuildNumber()
{
    return buildNumber;
}

int getBuildNo(char* buffer)
{
    std::copy(std::begin(buildNumber), std::end(buildNumber), buffer);
    return 0;
}

bool is32BitsApplication()
{
    return false;
}

bool is64BitsApplication()
{
    return true;
}

bool IsLinuxEL4()
{
    return false;
}

CString omGetConnectionString()
{
    static CString const connection = [] {
        CString text;
        text.Format("%s.%s:%d", "ZENTRIKA2", omGetCurrentFixPackID(),
                    static_cast<int>(GetCurrentProcessId()));
        text += ":x64";
        return text;
    }();
    return connection;
}
