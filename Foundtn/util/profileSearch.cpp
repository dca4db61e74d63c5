// Which file the profile is.
#include "Foundtn/util/IAppProfileService.h"

#include "Foundtn/util/IToolMode.h"
#include "Foundtn/util/globalFlags.h"
#include "Foundtn/util/growingRead.h"
#include "Foundtn/util/versions.h"
#include "files/fileQueries.h"
#include "files/paths.h"
#include "platform/os/os.h"

#include <cstdlib>
#include <initializer_list>

namespace {

constexpr char defaultName[] = "Zentrika.ini";

// Made when the module is loaded, so that they outlive what uses the module.
CString executableFolder;
CString userDirectory;  // the last text of the registry

CString withoutTrailingSeparators(CString folder)
{
    folder.TrimRight(omPathSeparator());
    return folder;
}

CString join(std::initializer_list<CString> parts)
{
    CString path;
    bool isFirst = true;
    for (CString const& part : parts) {
        if (!isFirst)
            path += omPathSeparator();
        isFirst = false;
        path += part;
    }
    return path;
}

void appendToPath(CString const& folder)
{
    CString path;
    zk::readEnvironmentVariable("Path", path);  // not trimmed: it goes back as it was
    SetEnvironmentVariableA("Path", path + ";" + folder);
}

// "my.8.4.ini" for "my.ini".
CString versionedName(CString const& iniName)
{
    int const length = iniName.GetLength();
    return iniName.Left(length < 3 ? 0 : length - 3) + omGetCurrentMajorVersionId() + ".ini";
}

// Reads the registry; false if it has no key for this version. A key without the value gives an empty text.
bool readUserDirectory()
{
    CString const name = "SOFTWARE\\Meridane\\Zentrika\\" + omGetCurrentVersionId();
    constexpr char value[] = "UserDirectory";
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, name, 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &key) != 0)
        return false;
    constexpr DWORD most = 32 * 1024;  // no path is longer
    DWORD size = 0;
    bool isRead = RegQueryValueExA(key, value, nullptr, nullptr, nullptr, &size) == 0 && size <= most;
    if (isRead) {
        CString text;
        char* const buffer = text.GetBuffer(static_cast<int>(size) + 1);
        isRead = RegQueryValueExA(key, value, nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size) == 0;
        buffer[isRead ? size : 0] = '\0';
        text.ReleaseBuffer();
        userDirectory = text;
    }
    if (!isRead)
        userDirectory.Empty();
    RegCloseKey(key);
    return true;
}

// The first file that exists in the folders of the user and of the machine; empty if there is none.
CString findInKnownFolders(CString const& iniName)
{
    CString const versioned = versionedName(iniName);
    CString const release = omGetCurrentMajorVersionId() + "x64";
    CString found;
    auto const exists = [&](CString const& path) {
        bool const isThere = omFileExist(path) != 0;
        if (isThere)
            found = path;
        return isThere;
    };

    if (char const* const user = std::getenv("USERPROFILE")) {
        if (exists(join({user, "Application Data", "Zentrika", versioned})) ||
            exists(join({user, "Application Data", "Zentrika", iniName})) ||
            exists(join({user, "Norvane", "Calderis", "Zentrika", release, iniName})))
            return found;
    }
    if (char const* const everybody = std::getenv("ALLUSERSPROFILE")) {
        if (exists(join({everybody, "Norvane", "Calderis", "Zentrika", release, versioned})) ||
            exists(join({everybody, "Norvane", "Calderis", "Zentrika", release, iniName})))
            return found;
    }
    if (exists(join({withoutTrailingSeparators(executableFolder), defaultName})))
        return found;
    if (readUserDirectory())
        exists(userDirectory + iniName);
    return found;
}

}  // namespace

CString getExcecutableFolder()
{
    return executableFolder;
}

char const* getExecutableFolder()
{
    return executableFolder.GetString();
}

void IAppProfileService::InitProfileName(char const* profileName, char const* moduleName,
                                         CWinApp* application)
{
    GetExecutableDir(moduleName, executableFolder);
    appendToPath(executableFolder);

    CString iniName = defaultName;
    CString found;
    if (profileName) {
        iniName = profileName;
        CWinApp* const host = application ? application : AfxGetApp();
        if (host && host->m_lpCmdLine && GetProfileNameFromCmdLineFlag(host->m_lpCmdLine, found))
            return SetProfileName(found, host);
        iniName = iniName.Mid(iniName.ReverseFind(omPathSeparator()) + 1);
    }

    CString const commandLine = globalFlags::instance()->getFlag("CommandLine");
    if (!commandLine.IsEmpty() && GetProfileNameFromCmdLineFlag(commandLine, found))
        return SetProfileName(found, application);

    CString current;
    if (GetCurrentDir(current)) {
        CString const path = join({withoutTrailingSeparators(current), iniName});
        if (omFileExist(path))
            return SetProfileName(path, application);
    }

    bool const isServer = IToolMode::isInModelServerMode();
    if (!isServer)
        found = findInKnownFolders(iniName);
    if (!found.IsEmpty())
        return SetProfileName(found, application);

    CString const beside = join({withoutTrailingSeparators(executableFolder), iniName});
    if (omFileExist(beside))
        return SetProfileName(beside, application);

    if (!isServer)
        return SetProfileName(iniName, application);
    SetEnvironmentVariableA("OMROOT", join({executableFolder, "Share"}));
    SetEnvironmentVariableA("APPLICATION_ROOT", executableFolder);
}
