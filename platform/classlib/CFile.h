// CFile.h: a file, read and written in bytes, without a buffer in between.
//
//   CFile file("model.bin", CFile::modeCreate | CFile::modeWrite);      // throws if that fails
//   file.Write("abc", 3);
//   file.SeekToBegin();
//   file.Close();
//
//   CFileException failure;
//   if (!file.Open("model.bin", CFile::modeRead | CFile::shareDenyNone, &failure))
//       failure.ReportError();
//
// Failures of all calls but Open() and GetStatus() are thrown as a
// CFileException*, with the file's full path in it.
#pragma once

#include "platform/classlib/CFileException.h"
#include "platform/classlib/CFileStatus.h"

/// A file of the system. One thread at a time uses an object.
class ZK_UTIL_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

    /// How a file is opened: one mode, at most one share value, and any of the others.
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,     ///< The same as shareExclusive.
        shareExclusive = 0x0010,  ///< Nobody else may have the file open.
        shareDenyWrite = 0x0020,  ///< Others may read it.
        shareDenyRead = 0x0030,   ///< Others may write to it.
        shareDenyNone = 0x0040,   ///< Others may do both.
        modeNoInherit = 0x0080,   ///< Child processes don't inherit the handle.
        modeCreate = 0x1000,      ///< A missing file is created, an existing one emptied.
        modeNoTruncate = 0x2000,  ///< With modeCreate: an existing file keeps its content.
        typeText = 0x4000,        ///< CStdioFile only: line ends are those of the system.
        typeBinary = 0x8000,      ///< CStdioFile only: bytes are read and written as they are.
        osNoBuffer = 0x10000,
        osWriteThrough = 0x20000,
        osRandomAccess = 0x40000,
        osSequentialScan = 0x80000,
    };

    enum Attribute {
        normal = 0x00,
        readOnly = 0x01,
        hidden = 0x02,
        system = 0x04,
        volume = 0x08,
        directory = 0x10,
        archive = 0x20,
    };

    enum SeekPosition { begin = 0, current = 1, end = 2 };

    /// What m_hFile is while no file is open.
    static HANDLE const hFileNull;

    /// A file that is not open.
    CFile();
    /// Takes over an open handle, which the destructor leaves open and Close() closes.
    explicit CFile(HANDLE hFile);
    /// Opens a file; throws if that fails.
    CFile(LPCSTR lpszFileName, UINT nOpenFlags);
    /// Closes the file; a failure shows nowhere.
    ~CFile() override;

    /// Opens a file, after closing the one that was open.
    ///
    /// FALSE on failure, with cause, system error and the name as given in
    /// `*pException` if there is one; the object is then not open. Nothing is
    /// thrown: where memory runs out, the system error is ERROR_NOT_ENOUGH_MEMORY
    /// and no file has been touched.
    virtual BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pException = nullptr);

    /// Reads up to `nCount` bytes and gives their number: less at the end of the file, 0 behind it.
    virtual UINT Read(void* lpBuf, UINT nCount);
    /// Writes all bytes, or throws.
    virtual void Write(void const* lpBuf, UINT nCount);

    /// Moves the position to `lOff` bytes from `nFrom`; gives it, counted from the beginning.
    /// Behind the end is allowed, before the beginning throws.
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    void SeekToBegin();
    ULONGLONG SeekToEnd();
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    /// Cuts or extends the file (with zero bytes), and moves the position to its new end.
    virtual void SetLength(ULONGLONG dwNewLen);

    /// Brings what was written onto the disk. Does nothing if no file is open.
    virtual void Flush();
    /// Closes the file; does nothing if none is open. The object can open another one.
    virtual void Close();
    /// Closes the file without throwing.
    virtual void Abort() noexcept;

    /// Locks bytes against other handles, until UnlockRange() with the same numbers.
    virtual void LockRange(ULONGLONG dwPos, ULONGLONG dwCount);
    virtual void UnlockRange(ULONGLONG dwPos, ULONGLONG dwCount);

    /// A new object, owned by the caller, for the same open file: both share the position.
    virtual CFile* Duplicate() const;

    /// The last component of the path; the same without its extension; the full path. Empty if no file is open.
    virtual CString GetFileName() const;
    virtual CString GetFileTitle() const;
    virtual CString GetFilePath() const;
    virtual void SetFilePath(LPCSTR lpszNewName);

    /// Fills `rStatus` for the open file, or for a file or directory by name. FALSE on failure,
    /// with the last error set; `rStatus` is then unchanged.
    BOOL GetStatus(CFileStatus& rStatus) const;
    static BOOL GetStatus(LPCSTR lpszFileName, CFileStatus& rStatus);
    /// Sets attributes, and those times that are not 0. Throws if that fails, and
    /// for a time that no file can have.
    static void SetStatus(LPCSTR lpszFileName, CFileStatus const& status);

    /// Renames, or removes, a file that is not open. Renaming never replaces a file.
    static void Rename(LPCSTR lpszOldName, LPCSTR lpszNewName);
    static void Remove(LPCSTR lpszFileName);

    operator HANDLE() const { return m_hFile; }

    HANDLE m_hFile;

protected:
    CString m_strFileName;  ///< The full path.
    BOOL m_bCloseOnDelete = FALSE;
};
