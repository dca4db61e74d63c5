#include "examples/modelgen/textFile.h"

#include "files/fileQueries.h"
#include "platform/classlib/CFile.h"

namespace modelgen {

namespace {

constexpr int largestFile = 1 << 30;
constexpr int tries = 1000;

CString reasonOf(CFileException* failure)
{
    CString const reason = reasonFor(DWORD(failure->m_lOsError));
    failure->Delete();
    return reason;
}

// A new file, whose name is that of another one with a number and ".new" behind it.
HANDLE createBeside(CString const& name, CString& temporary)
{
    for (int i = 0; i < tries; ++i) {
        temporary.Format("%s.%u.new", name, GetCurrentProcessId() + DWORD(i));
        HANDLE const file = CreateFileA(temporary, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

}  // namespace

CString reasonFor(DWORD error)
{
    char sentence[256] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, sentence,
                   sizeof sentence, nullptr);
    CString reason = CString(sentence).TrimRight(".\r\n ");
    if (reason.IsEmpty())
        reason.Format("error %u", error);
    return reason;
}

bool readFile(CString const& name, CString& content, CString& reason)
{
    DWORD const attributes = GetFileAttributesA(name);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        reason = "it is a folder";
        return false;
    }
    content.Empty();
    try {
        CFile file(name, CFile::modeRead | CFile::shareDenyNone);
        char block[1 << 14];
        while (UINT const count = file.Read(block, sizeof block)) {
            content.Append(block, int(count));
            if (content.GetLength() > largestFile) {
                reason = "it is larger than a gigabyte";
                return false;
            }
        }
        return true;
    } catch (CFileException* failure) {
        reason = reasonOf(failure);
        return false;
    }
}

bool replaceFile(CString const& name, CString const& content, CString& reason)
{
    // Not every system refuses to move over a read-only file.
    if (omFileExist(name) && !omFileHasWritePermission(name)) {
        reason = reasonFor(ERROR_ACCESS_DENIED);
        return false;
    }
    CString temporary;
    HANDLE const created = createBeside(name, temporary);
    if (created == INVALID_HANDLE_VALUE) {
        reason = reasonFor(GetLastError());
        return false;
    }
    CFile file(created);
    try {
        file.Write(content.GetString(), UINT(content.GetLength()));
        file.Close();
        if (MoveFileExA(temporary, name, MOVEFILE_REPLACE_EXISTING))
            return true;
        reason = reasonFor(GetLastError());
    } catch (CFileException* failure) {
        reason = reasonOf(failure);
        file.Abort();
    }
    DeleteFileA(temporary);
    return false;
}

}  // namespace modelgen
