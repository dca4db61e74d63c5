// CFileException.h: a file operation failed.
//
//   CFileException failure;
//   CFile file;
//   if (!file.Open("missing.ini", CFile::modeRead, &failure)) {
//       failure.m_cause;                    // CFileException::fileNotFound
//       failure.m_lOsError;                 // 2
//   }
#pragma once

#include "platform/classlib/CException.h"
#include "platform/classlib/CString.h"

/// Why a file operation failed: as a cause of the class library, as a number of the system, and for which file.
class ZK_UTIL_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

    enum {
        none = 0,
        genericException = 1,
        fileNotFound = 2,
        badPath = 3,
        tooManyOpenFiles = 4,
        accessDenied = 5,
        invalidFile = 6,
        removeCurrentDir = 7,
        directoryFull = 8,
        badSeek = 9,
        hardIO = 10,
        sharingViolation = 11,
        lockViolation = 12,
        diskFull = 13,
        endOfFile = 14,
    };

    explicit CFileException(int cause = none, LONG lOsError = -1, LPCSTR lpszFileName = nullptr);
    ~CFileException() override;

    using CException::GetErrorMessage;
    /// A sentence about the cause that names the file, or "an unnamed file".
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

    /// The cause that stands for a system error number; genericException for a number without one.
    static int OsErrorToException(LONG lOsError);
    /// The cause that stands for a number of the runtime library (errno).
    static int ErrnoToException(int nErrno);

    /// Throws an exception with the cause of a system error number. Returns if that is 0, no error.
    static void ThrowOsError(LONG lOsError, LPCSTR lpszFileName = nullptr);
    /// The same for a number of the runtime library; m_lOsError is then the system's last error.
    static void ThrowErrno(int nErrno, LPCSTR lpszFileName = nullptr);

    int m_cause;            ///< One of the values above.
    LONG m_lOsError;        ///< The system's number; -1 if there is none.
    CString m_strFileName;  ///< The file, as the failed call named it; may be empty.
};

/// Throws a new CFileException.
[[noreturn]] ZK_UTIL_API void AfxThrowFileException(int cause, LONG lOsError = -1,
                                                    LPCSTR lpszFileName = nullptr);
