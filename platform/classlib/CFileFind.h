// CFileFind.h: the files and directories that match a pattern, one after the other.
//
//   CFileFind finder;
//   BOOL more = finder.FindFile("src/*.cpp");
//   while (more) {
//       more = finder.FindNextFile();
//       if (!finder.IsDots() && !finder.IsDirectory())
//           use(finder.GetFilePath());          // a full path
//   }
//
// The entries come in the order of the system; "." and ".." are among them.
#pragma once

#include "platform/classlib/CObject.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/CTime.h"

/// A search. FindNextFile() must have been called once before anything is asked of an entry:
/// until then texts are empty, numbers 0 and answers FALSE.
class ZK_UTIL_API CFileFind : public CObject {
    DECLARE_DYNAMIC(CFileFind)

    CFileFind();
    ~CFileFind() override;

    /// Begins a search for a path whose last component may hold `*` and `?`; null or empty is "*.*".
    ///
    /// FALSE with the last error set if nothing matches. `dwUnused` means nothing.
    virtual BOOL FindFile(LPCSTR pstrName = nullptr, DWORD dwUnused = 0);
    /// Goes to the first, then to the next entry. FALSE once that entry is the last one: it can
    /// be asked like the others. Further calls stay there.
    virtual BOOL FindNextFile();
    /// Ends the search.
    void Close();

    ULONGLONG GetLength() const;   ///< In bytes.
    CString GetFileName() const;   ///< "model.cpp"
    CString GetFileTitle() const;  ///< "model"
    CString GetFilePath() const;   ///< The root, a separator and the name.
    CString GetFileURL() const;    ///< "file://" and the path, as it is.
    CString GetRoot() const;       ///< The full path of the directory that is searched.

    /// The times of the entry: FALSE, with the result unchanged, where there is none.
    BOOL GetLastWriteTime(FILETIME* pTimeStamp) const;
    BOOL GetLastWriteTime(CTime& refTime) const;
    BOOL GetLastAccessTime(FILETIME* pTimeStamp) const;
    BOOL GetLastAccessTime(CTime& refTime) const;
    BOOL GetCreationTime(FILETIME* pTimeStamp) const;
    BOOL GetCreationTime(CTime& refTime) const;

    /// Whether the entry has any of the attributes (FILE_ATTRIBUTE_...) of a mask.
    BOOL MatchesMask(DWORD dwMask) const;
    BOOL IsDots() const;  ///< Is it the directory "." or ".."?
    BOOL IsReadOnly() const;
    BOOL IsDirectory() const;
    BOOL IsCompressed() const;
    BOOL IsSystem() const;
    BOOL IsHidden() const;
    BOOL IsTemporary() const;
    BOOL IsNormal() const;
    BOOL IsArchived() const;

private:
    HANDLE search_ = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAA found_ = {};
    WIN32_FIND_DATAA next_ = {};
    bool hasFound_ = false;
    bool hasNext_ = false;
    CString root_;
};
