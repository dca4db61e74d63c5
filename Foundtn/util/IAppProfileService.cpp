#include "Foundtn/util/IAppProfileService.h"

#include "Foundtn/util/growingRead.h"
#include "files/currentFolder.h"
#include "files/fileQueries.h"
#include "files/paths.h"
#include "platform/classlib/CTime.h"
#include "platform/os/os.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char defaultName[] = "Zentrika.ini";
constexpr char traceFile[] = "IniFileNameLog.txt";

bool trimOrDefault(bool isThere, CString& value, char const* defaultValue)
{
    if (isThere) {
        value.TrimLeft();
        value.TrimRight();
    } else {
        value = defaultValue ? defaultValue : "";
    }
    return isThere;
}

char* duplicate(CString const& text)
{
    std::size_t const size = static_cast<std::size_t>(text.GetLength()) + 1;
    void* const copy = std::malloc(size);
    return copy ? static_cast<char*>(std::memcpy(copy, text.GetString(), size)) : nullptr;
}

// Whoever wants to know which profiles are chosen makes the file.
void traceName(CString const& name)
{
    if (!omFileExist(traceFile))
        return;
    HANDLE const file = CreateFileA(traceFile, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    CString const line = CTime::GetCurrentTime().Format("%m, %d, %Y (%H:%M:%S)") + ": " + name + "\n";
    DWORD written = 0;
    WriteFile(file, line.GetString(), static_cast<DWORD>(line.GetLength()), &written, nullptr);
    CloseHandle(file);
}

}  // namespace

IAppProfileService::IAppProfileService(bool localInstance)
    : IAppProfileInterface(localInstance), profileName_(defaultName), localInstance_(localInstance)
{
}

IAppProfileService::~IAppProfileService() = default;

void IAppProfileService::WriteProfileStringA(char const* section, char const* key, char const* value)
{
    WritePrivateProfileStringA(section, key, value, profileName_);
}

bool IAppProfileService::GetProfileValue(char const* section, char const* key, double& value,
                                         double defaultValue)
{
    CString text;
    int ok = 0;
    if (GetProfileValue(section, key, text, nullptr))
        String2Double(text, ok, value);
    if (!ok)
        value = defaultValue;
    return ok != 0;
}

bool IAppProfileService::GetProfileValue(char const* section, char const* key, int& value, int defaultValue)
{
    CString text;
    int ok = 0;
    if (GetProfileValue(section, key, text, nullptr))
        String2Int(text, ok, value);
    if (!ok)
        value = defaultValue;
    return ok != 0;
}

bool IAppProfileService::GetProfileValue(char const* section, char const* key, CString& value,
                                         char const* defaultValue)
{
    CString text;
    DWORD const count = zk::readGrowing(
        text,
        [&](char* buffer, DWORD room) {
            return GetPrivateProfileStringA(section, key, nullptr, buffer, room, profileName_);
        },
        [](DWORD read, DWORD capacity) { return read < capacity; });
    bool const isThere = trimOrDefault(count != 0, text, defaultValue);
    value = std::move(text);
    return isThere;
}

CString IAppProfileService::GetProfileStringA(char const* section, char const* key, char const* defaultValue)
{
    CString value;
    GetProfileValue(section, key, value, defaultValue);
    return value;
}

CString const& IAppProfileService::GetProfileName()
{
    return profileName_;
}

void IAppProfileService::WriteProfileInt(char const* section, char const* key, int value)
{
    WritePrivateProfileStringA(section, key, Int2String(value), profileName_);
}

int IAppProfileService::GetProfileIntA(char const* section, char const* key, int defaultValue)
{
    int value = 0;
    GetProfileValue(section, key, value, defaultValue);
    return value;
}

void IAppProfileService::WriteProfileDouble(char const* section, char const* key, double value)
{
    WritePrivateProfileStringA(section, key, Double2String(value), profileName_);
}

double IAppProfileService::GetProfileDouble(char const* section, char const* key, double defaultValue)
{
    double value = 0;
    GetProfileValue(section, key, value, defaultValue);
    return value;
}

int IAppProfileService::WriteProfileBinary(char const* section, char const* key, void* data,
                                           unsigned int size)
{
    return WritePrivateProfileStructA(section, key, data, size, profileName_);
}

int IAppProfileService::GetProfileBinary(char const* section, char const* key, void* data, unsigned int size)
{
    return GetPrivateProfileStructA(section, key, data, size, profileName_);
}

void IAppProfileService::WriteProfileBool(char const* section, char const* key, int value)
{
    WriteProfileStringA(section, key, Bool2String(value));
}

int IAppProfileService::GetProfileBool(char const* section, char const* key, int defaultValue)
{
    return String2Bool(GetProfileStringA(section, key, nullptr), defaultValue);
}

void IAppProfileService::WriteProfileColor(char const* section, char const* key, unsigned long value)
{
    WriteProfileStringA(section, key, Color2String(value));
}

unsigned long IAppProfileService::GetProfileColor(char const* section, char const* key,
                                                  unsigned long defaultValue)
{
    return String2Color(GetProfileStringA(section, key, nullptr), defaultValue);
}

void IAppProfileService::WriteProfileRect(char const* section, char const* key, CRect const& value)
{
    WriteProfileStringA(section, key, Rect2String(value));
}

bool IAppProfileService::GetProfileRect(char const* section, char const* key, CRect& value)
{
    return String2Rect(GetProfileStringA(section, key, nullptr), value);
}

bool IAppProfileService::GetExecutableDir(char const* moduleName, CString& dir)
{
    HMODULE const module = moduleName ? GetModuleHandleA(moduleName) : nullptr;
    CString path;
    // A path that fills the buffer may be cut: it would lead to another folder.
    DWORD const length = zk::readGrowing(
        path, [&](char* buffer, DWORD room) { return GetModuleFileNameA(module, buffer, room); },
        [](DWORD read, DWORD capacity) { return read < capacity; });
    if (length == 0)
        return false;
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension(path, dir, file, extension);
    return !dir.IsEmpty();
}

bool IAppProfileService::GetEnvironmentVariableA(CString const& name, CString& value,
                                                 char const* defaultValue)
{
    CString text;
    DWORD const count = zk::readEnvironmentVariable(name, text);
    bool const isThere = trimOrDefault(count != 0, text, defaultValue);
    value = std::move(text);
    return isThere;
}

bool IAppProfileService::GetCurrentDir(CString& dir)
{
    return zk::readCurrentFolder(dir);
}

CString IAppProfileService::GetCurrentDir()
{
    CString dir;
    GetCurrentDir(dir);
    return dir;
}

bool IAppProfileService::GetProfileNameFromCmdLineFlag(CString commandLine, CString& path)
{
    constexpr char flag[] = "-iniFile=";
    int const place = commandLine.Find(flag);
    if (place < 0)
        return false;
    CString file = commandLine.Mid(place + static_cast<int>(sizeof flag) - 1);
    file.TrimLeft();
    file.TrimRight();
    if (!file.IsEmpty() && file[0] == '"')
        file.Delete(0);
    if (!file.IsEmpty() && file[file.GetLength() - 1] == '"')
        file.Delete(file.GetLength() - 1);
    if (!omFileExist(file))
        return false;
    path = file;
    return true;
}

void IAppProfileService::SetProfileName(CString const& name, CWinApp* app)
{
    profileName_ = name;
    CWinApp* const application = app ? app : AfxGetApp();
    if (!localInstance_ && application) {
        std::free(const_cast<char*>(application->m_pszProfileName));
        application->m_pszProfileName = duplicate(name);
    }
    traceName(name);
}
