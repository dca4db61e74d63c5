#include "platform/classlib/CFile.h"

#include "platform/classlib/filePaths.h"
#include "platform/classlib/openFailure.h"

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

IMPLEMENT_DYNAMIC(CFile, CObject)

BOOL zk::tellOpenFailure(DWORD error, char const* name, CFileException* exception) noexcept
{
    if (exception) {
        exception->m_lOsError = LONG(error);
        exception->m_cause = CFileException::OsErrorToException(LONG(error));
        try {
            exception->m_strFileName = name;
        } catch (std::bad_alloc const&) {
            exception->m_strFileName.Empty();
        }
    }
    SetLastError(error);
    return FALSE;
}

HANDLE const CFile::hFileNull = INVALID_HANDLE_VALUE;

namespace {

constexpr UINT modeMask = 0x0003;
constexpr UINT shareMask = 0x0070;

struct CloseHandleLater {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseHandleLater>;

[[noreturn]] void throwLastError(CString const& fileName)
{
    DWORD const error = GetLastError();
    AfxThrowFileException(CFileException::OsErrorToException(LONG(error)), LONG(error), fileName);
}

DWORD accessOf(UINT flags)
{
    switch (flags & modeMask) {
    case CFile::modeRead: return GENERIC_READ;
    case CFile::modeWrite: return GENERIC_WRITE;
    case CFile::modeReadWrite: return GENERIC_READ | GENERIC_WRITE;
    default: return 0;
    }
}

DWORD sharingOf(UINT flags)
{
    switch (flags & shareMask) {
    case CFile::shareDenyWrite: return FILE_SHARE_READ;
    case CFile::shareDenyRead: return FILE_SHARE_WRITE;
    case CFile::shareDenyNone: return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default: return 0;
    }
}

DWORD dispositionOf(UINT flags)
{
    if (!(flags & CFile::modeCreate))
        return OPEN_EXISTING;
    return flags & CFile::modeNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;
}

DWORD attributesOf(UINT flags)
{
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    if (flags & CFile::osNoBuffer)
        attributes |= FILE_FLAG_NO_BUFFERING;
    if (flags & CFile::osWriteThrough)
        attributes |= FILE_FLAG_WRITE_THROUGH;
    if (flags & CFile::osRandomAccess)
        attributes |= FILE_FLAG_RANDOM_ACCESS;
    if (flags & CFile::osSequentialScan)
        attributes |= FILE_FLAG_SEQUENTIAL_SCAN;
    return attributes;
}

HANDLE openFile(LPCSTR name, UINT flags)
{
    if ((flags & modeMask) == modeMask || (flags & shareMask) > CFile::shareDenyNone) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    SECURITY_ATTRIBUTES security = {sizeof security, nullptr, (flags & CFile::modeNoInherit) == 0};
    return CreateFileA(name, accessOf(flags), sharingOf(flags), &security, dispositionOf(flags),
                       attributesOf(flags), nullptr);
}

// A file's times count 100 ns from the year 1601.
constexpr LONGLONG secondsFrom1601To1970 = 11'644'473'600;
constexpr LONGLONG ticksPerSecond = 10'000'000;

// A time that no file can have is thrown as an invalid parameter.
FILETIME fileTimeOf(CTime time, CString const& fileName)
{
    constexpr LONGLONG latest = INT64_MAX / ticksPerSecond - secondsFrom1601To1970;
    auto const seconds = LONGLONG(time.GetTime());
    if (seconds <= -secondsFrom1601To1970 || seconds > latest) {  // 0 ticks would say "as it was"
        SetLastError(ERROR_INVALID_PARAMETER);
        throwLastError(fileName);
    }
    auto const ticks = ULONGLONG((seconds + secondsFrom1601To1970) * ticksPerSecond);
    return {DWORD(ticks), DWORD(ticks >> 32)};
}

CTime timeOf(FILETIME const& time)
{
    return time.dwLowDateTime == 0 && time.dwHighDateTime == 0 ? CTime() : CTime(time);
}

CFileStatus statusOf(WIN32_FILE_ATTRIBUTE_DATA const& data, CString path)
{
    CFileStatus status;
    status.m_ctime = timeOf(data.ftCreationTime);
    status.m_mtime = timeOf(data.ftLastWriteTime);
    status.m_atime = timeOf(data.ftLastAccessTime);
    if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        status.m_size = ULONGLONG(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
    // "Normal" says that no other attribute is set, and stands in a bit that a byte's values don't have.
    status.m_attribute = BYTE(data.dwFileAttributes & ~DWORD(FILE_ATTRIBUTE_NORMAL));
    status.m_szFullName = std::move(path);
    return status;
}

}  // namespace

CFile::CFile() : m_hFile(INVALID_HANDLE_VALUE)
{
}

CFile::CFile(HANDLE hFile) : m_hFile(hFile)
{
}

CFile::CFile(LPCSTR lpszFileName, UINT nOpenFlags) : m_hFile(INVALID_HANDLE_VALUE)
{
    CFileException failure;
    if (!CFile::Open(lpszFileName, nOpenFlags, &failure))
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
}

CFile::~CFile()
{
    if (m_bCloseOnDelete)
        CFile::Abort();
}

BOOL CFile::Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pException)
{
    Abort();
    CString path;
    try {
        path =
            zk::fullPath(lpszFileName);  // first, so that a file without memory for its name is not touched
    } catch (std::bad_alloc const&) {
        return zk::tellOpenFailure(ERROR_NOT_ENOUGH_MEMORY, lpszFileName, pException);
    }
    HANDLE const file = openFile(lpszFileName ? lpszFileName : "", nOpenFlags);
    if (file == INVALID_HANDLE_VALUE)
        return zk::tellOpenFailure(GetLastError(), lpszFileName, pException);
    m_hFile = file;
    m_strFileName = std::move(path);
    m_bCloseOnDelete = TRUE;
    return TRUE;
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return 0;
    DWORD done = 0;
    if (!ReadFile(m_hFile, lpBuf, nCount, &done, nullptr))
        throwLastError(m_strFileName);
    return done;
}

void CFile::Write(void const* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    DWORD done = 0;
    if (!WriteFile(m_hFile, lpBuf, nCount, &done, nullptr))
        throwLastError(m_strFileName);
    if (done != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LARGE_INTEGER distance, position;
    distance.QuadPart = lOff;
    if (!SetFilePointerEx(m_hFile, distance, &position, nFrom))
        throwLastError(m_strFileName);
    return ULONGLONG(position.QuadPart);
}

void CFile::SeekToBegin()
{
    Seek(0, begin);
}

ULONGLONG CFile::SeekToEnd()
{
    return Seek(0, end);
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER none, position;
    none.QuadPart = 0;
    if (!SetFilePointerEx(m_hFile, none, &position, FILE_CURRENT))
        throwLastError(m_strFileName);
    return ULONGLONG(position.QuadPart);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER length;
    if (!GetFileSizeEx(m_hFile, &length))
        throwLastError(m_strFileName);
    return ULONGLONG(length.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    CFile::Seek(LONGLONG(dwNewLen), begin);
    if (!SetEndOfFile(m_hFile))
        throwLastError(m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile != INVALID_HANDLE_VALUE && !FlushFileBuffers(m_hFile))
        throwLastError(m_strFileName);
}

void CFile::Close()
{
    if (m_hFile == INVALID_HANDLE_VALUE)
        return;
    CString const name = std::move(m_strFileName);
    BOOL const closed = CloseHandle(m_hFile);
    m_hFile = INVALID_HANDLE_VALUE;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
    if (!closed)
        throwLastError(name);
}

void CFile::Abort() noexcept
{
    if (m_hFile != INVALID_HANDLE_VALUE)
        CloseHandle(m_hFile);
    m_hFile = INVALID_HANDLE_VALUE;
    m_bCloseOnDelete = FALSE;
    m_strFileName.Empty();
}

void CFile::LockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!LockFile(m_hFile, DWORD(dwPos), DWORD(dwPos >> 32), DWORD(dwCount), DWORD(dwCount >> 32)))
        throwLastError(m_strFileName);
}

void CFile::UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount)
{
    if (!UnlockFile(m_hFile, DWORD(dwPos), DWORD(dwPos >> 32), DWORD(dwCount), DWORD(dwCount >> 32)))
        throwLastError(m_strFileName);
}

CFile* CFile::Duplicate() const
{
    auto copy = std::make_unique<CFile>();
    copy->m_strFileName = m_strFileName;
    HANDLE handle;
    if (!DuplicateHandle(GetCurrentProcess(), m_hFile, GetCurrentProcess(), &handle, 0, FALSE,
                         DUPLICATE_SAME_ACCESS))
        throwLastError(m_strFileName);
    copy->m_hFile = handle;
    copy->m_bCloseOnDelete = m_bCloseOnDelete;
    return copy.release();
}

CString CFile::GetFileName() const
{
    return zk::lastComponent(m_strFileName);
}

CString CFile::GetFileTitle() const
{
    return zk::withoutExtension(GetFileName());
}

CString CFile::GetFilePath() const
{
    return m_strFileName;
}

void CFile::SetFilePath(LPCSTR lpszNewName)
{
    m_strFileName = lpszNewName;
}

BOOL CFile::GetStatus(CFileStatus& rStatus) const
{
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(m_hFile, &information))
        return FALSE;
    rStatus =
        statusOf({information.dwFileAttributes, information.ftCreationTime, information.ftLastAccessTime,
                  information.ftLastWriteTime, information.nFileSizeHigh, information.nFileSizeLow},
                 m_strFileName);
    return TRUE;
}

BOOL CFile::GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(lpszFileName ? lpszFileName : "", GetFileExInfoStandard, &data))
        return FALSE;
    rStatus = statusOf(data, zk::fullPath(lpszFileName));
    return TRUE;
}

void CFile::SetStatus(LPCSTR lpszFileName, CFileStatus const& status)
{
    CString const name(lpszFileName);
    bool const setsCreation = status.m_ctime != CTime();
    bool const setsAccess = status.m_atime != CTime();
    bool const setsWrite = status.m_mtime != CTime();
    if (setsCreation || setsAccess || setsWrite) {
        FILETIME const creation = setsCreation ? fileTimeOf(status.m_ctime, name) : FILETIME();
        FILETIME const access = setsAccess ? fileTimeOf(status.m_atime, name) : FILETIME();
        FILETIME const write = setsWrite ? fileTimeOf(status.m_mtime, name) : FILETIME();
        HANDLE const file =
            CreateFileA(name, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            throwLastError(name);
        OwnedHandle const owned(file);
        if (!SetFileTime(file, setsCreation ? &creation : nullptr, setsAccess ? &access : nullptr,
                         setsWrite ? &write : nullptr))
            throwLastError(name);
    }
    // A directory stays one; "no attribute" has a value of its own.
    DWORD const attributes = status.m_attribute & ~DWORD(directory | volume);
    if (!SetFileAttributesA(name, attributes != 0 ? attributes : DWORD(FILE_ATTRIBUTE_NORMAL)))
        throwLastError(name);
}

void CFile::Rename(LPCSTR lpszOldName, LPCSTR lpszNewName)
{
    if (!MoveFileA(lpszOldName, lpszNewName))
        throwLastError(lpszOldName);
}

void CFile::Remove(LPCSTR lpszFileName)
{
    if (!DeleteFileA(lpszFileName))
        throwLastError(lpszFileName);
}
