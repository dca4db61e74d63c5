#include "files/fileQueries.h"

#include "files/currentFolder.h"
#include "files/paths.h"
#include "platform/classlib/CFile.h"
#include "platform/os/accessCheck.h"

#include <mutex>

namespace {

constexpr DWORD usersLanguage = 0x0400;  // the language that the user has by default

constexpr int existence = 0;
constexpr int writing = 2;
constexpr int reading = 4;

// The user's folder for documents, which is writable even where the system says otherwise. Made once,
// whichever thread asks first.
CString myDocuments;
std::once_flag areMyDocumentsKnown;

CString findMyDocuments()
{
    constexpr DWORD room = 259;
    CString profile;
    DWORD const length = GetEnvironmentVariableA("USERPROFILE", profile.GetBuffer(room), room);
    profile.ReleaseBuffer(length < room ? static_cast<int>(length) : 0);
    return profile.IsEmpty() ? CString() : profile + omPathSeparator() + "My Documents";
}

CString const& myDocumentsFolder()
{
    std::call_once(areMyDocumentsKnown, [] { myDocuments = findMyDocuments(); });
    return myDocuments;
}

void giveError(CString* error)
{
    if (error)
        *error = omGetErrorCodeString();
}

char const* folderOrCurrent(char const* dir)
{
    return dir && *dir ? dir : ".";
}

}  // namespace

int omFileExist(CString const& path)
{
    if (path.IsEmpty())
        return 0;
    WIN32_FIND_DATAA found;
    HANDLE const search = FindFirstFileA(path, &found);
    if (search == INVALID_HANDLE_VALUE)
        return 0;
    FindClose(search);
    return 1;
}

bool omFileExistsAndNonEmpty(CString const& path)
{
    CFileStatus status;
    return omFileExist(path) && CFile::GetStatus(path, status) && status.m_size != 0;
}

int omDirExist(CString dir, CString* error)
{
    CString current;
    if (dir.IsEmpty() || !zk::readCurrentFolder(current))
        return 1;
    if (!SetCurrentDirectoryA(dir)) {
        giveError(error);
        return 0;
    }
    SetCurrentDirectoryA(current);
    return 1;
}

CString omGetFullPathOfDirectory(CString dir, CString& error)
{
    error.Empty();
    CString current;
    if (!zk::readCurrentFolder(current)) {
        giveError(&error);
        return CString();
    }
    if (dir.IsEmpty())
        return current;
    if (!SetCurrentDirectoryA(dir)) {
        giveError(&error);
        return CString();
    }
    CString full;
    if (!zk::readCurrentFolder(full))
        giveError(&error);
    SetCurrentDirectoryA(current);
    return full;
}

int omFileHasReadPermission(CString const& path)
{
    return _access(path, existence) == 0 && _access(path, reading) == 0;
}

int omFileHasWritePermission(CString const& path)
{
    CString const& folder = myDocumentsFolder();
    if (_access(path, existence) != 0)
        return 0;
    return path.CompareNoCase(folder) == 0 || _access(path, writing) == 0;
}

int dirHasReadPermission(char const* dir)
{
    return omFileHasReadPermission(folderOrCurrent(dir));
}

int dirHasWritePermission(char const* dir)
{
    return omFileHasWritePermission(folderOrCurrent(dir));
}

int fileHasWritePermission(char const* file, char const* dir)
{
    if (!omFileExist(file))
        return dirHasWritePermission(dir);
    return dirHasWritePermission(dir) && omFileHasWritePermission(file);
}

CString omGetErrorCodeString()
{
    DWORD const error = GetLastError();
    char* sentence = nullptr;
    DWORD const length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        error, usersLanguage, reinterpret_cast<LPSTR>(&sentence), 0, nullptr);
    struct Freeing {
        char* text;
        ~Freeing() { LocalFree(text); }
    } const freeing{sentence};
    CString const text(sentence, static_cast<int>(length));
    SetLastError(error);
    return text;
}
