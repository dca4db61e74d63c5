#include "files/logicalPaths.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/getEnv.h"
#include "files/paths.h"
#include "platform/classlib/CStringMaps.h"
#include "platform/classlib/blanks.h"

#include <algorithm>
#include <string_view>

namespace {

// What each logical name resolved to, without its '$'.
CMapStringToString& resolvedNames()
{
    constexpr int blockSize = 10;
    static CMapStringToString names(blockSize);
    return names;
}

// The value of a name; null if it has none.
CString const* resolve(CString const& name)
{
    CMapStringToString& names = resolvedNames();
    if (auto const* const known = names.PLookup(name))
        return &known->value;
    CString value;
    if (!omGetEnvVar("General", name, value))
        return nullptr;
    names.SetAt(name, value);
    return &names.PLookup(name)->value;
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
    CString expanded = rootOf(path);
    bool isFirst = true;
    bool hasResolved = false;
    for (std::string_view rest = path.view(); !rest.empty();) {
        std::size_t const end = std::min(rest.find_first_of("\\/"), rest.size());
        std::string_view const component = zk::trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (component.empty())
            continue;
        if (!isFirst)
            expanded += omPathSeparator();
        isFirst = false;
        if (component.front() != '$') {
            expanded.Append(component.data(), static_cast<int>(component.size()));
            continue;
        }
        CString const name(component.substr(1));
        if (CString const* const value = resolve(name)) {
            expanded += *value;
            hasResolved = true;
        } else if (!hasResolved) {
            result = name;
            return false;
        }
    }
    result = std::move(expanded);
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
