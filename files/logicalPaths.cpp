#include "files/logicalPaths.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/getEnv.h"
#include "files/paths.h"
#include "platform/classlib/CStringMaps.h"
#include "text/stringListConversions.h"

#include <memory>

namespace {

// What each logical name resolved to, without its '$'.
CMapStringToString& resolvedNames()
{
    constexpr int blockSize = 10;
    static CMapStringToString names(blockSize);
    return names;
}

bool resolve(CString const& name, CString& value)
{
    if (resolvedNames().Lookup(name, value))
        return true;
    if (!omGetEnvVar("General", name, value))
        return false;
    resolvedNames().SetAt(name, value);
    return true;
}

// The native separators in front that a path keeps: two, one or none.
CString rootOf(CString const& path)
{
    char const separator = omPathSeparator();
    if (path.GetAt(0) != separator)
        return CString();
    return CString(separator, path.GetAt(1) == separator ? 2 : 1);
}

CString fallbackTempDir()
{
    return zk::os::nativeSeparatorIsBackslash() ? "c:\\temp" : "/tmp";
}

CString tempDirOfSystem()
{
    DWORD room = MAX_PATH;
    CString folder;
    for (;;) {
        DWORD const length = GetTempPathA(room, folder.GetBuffer(static_cast<int>(room)));
        folder.ReleaseBuffer(length < room ? static_cast<int>(length) : 0);
        if (length < room)
            return folder;
        room = length + 1;
    }
}

CString tempDirOfProfile()
{
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    if (!profile)
        return fallbackTempDir();
    CString folder = profile->GetProfileStringA("General", "TEMP_DIR", nullptr);
    if (folder.IsEmpty()) {
        profile->WriteProfileStringA("General", "TEMP_DIR", fallbackTempDir());
        folder = profile->GetProfileStringA("General", "TEMP_DIR", nullptr);
    }
    return folder;
}

}  // namespace

bool expandLogicalPath(CString const& path, CString& result)
{
    CString const root = rootOf(path);
    std::unique_ptr<CStringList> const components(omConvertStringToStringList(path, "\\/", 0, 0));
    bool hasResolved = false;
    for (POSITION position = components->GetHeadPosition(); position;) {
        CString& component = components->GetNext(position);
        if (component.GetAt(0) != '$')
            continue;
        CString const name = component.Mid(1);
        if (resolve(name, component)) {
            hasResolved = true;
        } else if (hasResolved) {
            component.Empty();
        } else {
            result = name;
            return false;
        }
    }
    result = root + omConvertStringListToString(components.get(), omPathSeparator());
    return hasResolved;
}

bool translateToFullPath(CString& path)
{
    CString expanded;
    bool const hasResolved = expandLogicalPath(path, expanded);
    if (!expanded.IsEmpty())
        path = expanded;
    path.Replace('/', omPathSeparator());
    path.Replace('\\', omPathSeparator());
    omCutMidDDot(path, omPathSeparator());
    return hasResolved;
}

bool arePathsEqual(CString a, CString b)
{
    translateToFullPath(a);
    translateToFullPath(b);
    return a.MakeLower() == b.MakeLower();
}

CString omGetTempDir()
{
    CString folder = tempDirOfSystem();
    if (folder.IsEmpty())
        folder = tempDirOfProfile();
    return folder.TrimRight(omPathSeparator());
}
