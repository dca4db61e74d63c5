#include "platform/classlib/CFileFind.h"

#include "platform/classlib/filePaths.h"

#include <utility>

IMPLEMENT_DYNAMIC(CFileFind, CObject)

namespace {

BOOL copyTime(bool exists, FILETIME const& from, FILETIME* to)
{
    if (!exists || !to)
        return FALSE;
    *to = from;
    return TRUE;
}

BOOL copyTime(bool exists, FILETIME const& from, CTime& to)
{
    if (!exists || (from.dwLowDateTime == 0 && from.dwHighDateTime == 0))
        return FALSE;
    to = CTime(from);
    return TRUE;
}

}  // namespace

CFileFind::CFileFind() = default;

CFileFind::~CFileFind()
{
    Close();
}

void CFileFind::Close()
{
    if (search_ != INVALID_HANDLE_VALUE)
        ::FindClose(search_);
    search_ = INVALID_HANDLE_VALUE;
    hasFound_ = hasNext_ = false;
    root_.Empty();
}

BOOL CFileFind::FindFile(LPCSTR pstrName, DWORD)
{
    Close();
    CString const pattern(pstrName && *pstrName ? pstrName : "*.*");
    CString root = zk::folderOf(zk::fullPath(pattern));
    search_ = ::FindFirstFileA(pattern, &next_);
    if (search_ == INVALID_HANDLE_VALUE)
        return FALSE;
    hasNext_ = true;
    root_ = std::move(root);
    return TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (!hasNext_)
        return FALSE;
    found_ = next_;
    hasFound_ = true;
    hasNext_ = ::FindNextFileA(search_, &next_) != FALSE;
    return hasNext_;
}

ULONGLONG CFileFind::GetLength() const
{
    return hasFound_ ? ULONGLONG(found_.nFileSizeHigh) << 32 | found_.nFileSizeLow : 0;
}

CString CFileFind::GetFileName() const
{
    return hasFound_ ? found_.cFileName : "";
}

CString CFileFind::GetFileTitle() const
{
    return zk::withoutExtension(GetFileName());
}

CString CFileFind::GetFilePath() const
{
    CString path = root_;
    char const last = path.IsEmpty() ? '\0' : path[path.GetLength() - 1];
    if (last != '/' && last != zk::os::nativeSeparator())
        path += zk::os::nativeSeparator();
    return path + GetFileName();
}

CString CFileFind::GetFileURL() const
{
    return "file://" + GetFilePath();
}

CString CFileFind::GetRoot() const
{
    return root_;
}

BOOL CFileFind::GetLastWriteTime(FILETIME* pTimeStamp) const
{
    return copyTime(hasFound_, found_.ftLastWriteTime, pTimeStamp);
}

BOOL CFileFind::GetLastWriteTime(CTime& refTime) const
{
    return copyTime(hasFound_, found_.ftLastWriteTime, refTime);
}

BOOL CFileFind::GetLastAccessTime(FILETIME* pTimeStamp) const
{
    return copyTime(hasFound_, found_.ftLastAccessTime, pTimeStamp);
}

BOOL CFileFind::GetLastAccessTime(CTime& refTime) const
{
    return copyTime(hasFound_, found_.ftLastAccessTime, refTime);
}

BOOL CFileFind::GetCreationTime(FILETIME* pTimeStamp) const
{
    return copyTime(hasFound_, found_.ftCreationTime, pTimeStamp);
}

BOOL CFileFind::GetCreationTime(CTime& refTime) const
{
    return copyTime(hasFound_, found_.ftCreationTime, refTime);
}

BOOL CFileFind::MatchesMask(DWORD dwMask) const
{
    return hasFound_ && (found_.dwFileAttributes & dwMask) != 0;
}

BOOL CFileFind::IsDots() const
{
    if (!IsDirectory())
        return FALSE;
    CString const name = GetFileName();
    return name == "." || name == "..";
}

BOOL CFileFind::IsReadOnly() const
{
    return MatchesMask(FILE_ATTRIBUTE_READONLY);
}

BOOL CFileFind::IsDirectory() const
{
    return MatchesMask(FILE_ATTRIBUTE_DIRECTORY);
}

BOOL CFileFind::IsCompressed() const
{
    return MatchesMask(FILE_ATTRIBUTE_COMPRESSED);
}

BOOL CFileFind::IsSystem() const
{
    return MatchesMask(FILE_ATTRIBUTE_SYSTEM);
}

BOOL CFileFind::IsHidden() const
{
    return MatchesMask(FILE_ATTRIBUTE_HIDDEN);
}

BOOL CFileFind::IsTemporary() const
{
    return MatchesMask(FILE_ATTRIBUTE_TEMPORARY);
}

BOOL CFileFind::IsNormal() const
{
    return MatchesMask(FILE_ATTRIBUTE_NORMAL);
}

BOOL CFileFind::IsArchived() const
{
    return MatchesMask(FILE_ATTRIBUTE_ARCHIVE);
}
