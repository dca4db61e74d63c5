#include "platform/classlib/CFileException.h"

#include <cerrno>
#include <iterator>

IMPLEMENT_DYNAMIC(CFileException, CException)

namespace {

struct OsErrorCause {
    DWORD error;
    int cause;
};

constexpr OsErrorCause osErrorCauses[] = {
    {ERROR_SUCCESS, CFileException::none},
    {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    {ERROR_PATH_NOT_FOUND, CFileException::badPath},
    {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    {ERROR_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_INVALID_HANDLE, CFileException::invalidFile},
    {ERROR_BAD_FORMAT, CFileException::invalidFile},
    {ERROR_INVALID_DATA, CFileException::invalidFile},
    {ERROR_INVALID_DRIVE, CFileException::badPath},
    {ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
    {ERROR_NOT_SAME_DEVICE, CFileException::badPath},
    {ERROR_NO_MORE_FILES, CFileException::fileNotFound},
    {ERROR_WRITE_PROTECT, CFileException::accessDenied},
    {ERROR_BAD_UNIT, CFileException::hardIO},
    {ERROR_NOT_READY, CFileException::hardIO},
    {ERROR_BAD_COMMAND, CFileException::hardIO},
    {ERROR_CRC, CFileException::hardIO},
    {ERROR_SEEK, CFileException::badSeek},
    {ERROR_NOT_DOS_DISK, CFileException::invalidFile},
    {ERROR_SECTOR_NOT_FOUND, CFileException::badSeek},
    {ERROR_WRITE_FAULT, CFileException::hardIO},
    {ERROR_READ_FAULT, CFileException::hardIO},
    {ERROR_GEN_FAILURE, CFileException::genericException},
    {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
    {ERROR_SHARING_BUFFER_EXCEEDED, CFileException::tooManyOpenFiles},
    {ERROR_HANDLE_EOF, CFileException::endOfFile},
    {ERROR_HANDLE_DISK_FULL, CFileException::diskFull},
    {ERROR_BAD_NETPATH, CFileException::badPath},
    {ERROR_NETWORK_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_BAD_NET_NAME, CFileException::badPath},
    {ERROR_FILE_EXISTS, CFileException::accessDenied},
    {ERROR_CANNOT_MAKE, CFileException::directoryFull},
    {ERROR_INVALID_PARAMETER, CFileException::badPath},
    {ERROR_DISK_FULL, CFileException::diskFull},
    {ERROR_INVALID_NAME, CFileException::badPath},
    {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
    {ERROR_SEEK_ON_DEVICE, CFileException::badSeek},
    {ERROR_DIR_NOT_EMPTY, CFileException::accessDenied},
    {ERROR_PATH_BUSY, CFileException::badPath},
    {ERROR_BAD_PATHNAME, CFileException::badPath},
    {ERROR_LOCK_FAILED, CFileException::lockViolation},
    {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
    {ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
    {ERROR_DIRECTORY, CFileException::badPath},
    {ERROR_IO_DEVICE, CFileException::hardIO},
};

struct ErrnoCause {
    int error;
    int cause;
};

constexpr ErrnoCause errnoCauses[] = {
    {0, CFileException::none},
    {EPERM, CFileException::accessDenied},
    {EACCES, CFileException::accessDenied},
    {EBADF, CFileException::invalidFile},
    {EDEADLK, CFileException::sharingViolation},
    {EMFILE, CFileException::tooManyOpenFiles},
    {ENFILE, CFileException::tooManyOpenFiles},
    {ENOENT, CFileException::fileNotFound},
    {ENOTDIR, CFileException::badPath},
    {ENAMETOOLONG, CFileException::badPath},
    {ENOSPC, CFileException::diskFull},
    {EIO, CFileException::hardIO},
    {ESPIPE, CFileException::badSeek},
};

// One sentence per cause; "%1" stands for the file.
constexpr char const* sentences[] = {
    "No error occurred.",
    "An unknown error occurred while accessing %1.",
    "%1 was not found.",
    "%1 contains an invalid path.",
    "%1 could not be opened because too many files are open.",
    "Access to %1 was denied.",
    "The file %1 is not valid or not open.",
    "%1 could not be removed because it is the current directory.",
    "%1 could not be created because the directory is full.",
    "A seek failed on %1.",
    "A hardware error occurred while accessing %1.",
    "A sharing violation occurred while accessing %1.",
    "A locking violation occurred while accessing %1.",
    "The disk is full while accessing %1.",
    "An attempt was made to access %1 past its end.",
};

}  // namespace

CFileException::CFileException(int cause, LONG lOsError, LPCSTR lpszFileName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszFileName)
{
}

CFileException::~CFileException() = default;

BOOL CFileException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    bool const isKnown = m_cause >= 0 && std::size_t(m_cause) < std::size(sentences);
    CString text(sentences[isKnown ? m_cause : int(genericException)]);
    text.Replace("%1", m_strFileName.IsEmpty() ? "an unnamed file" : m_strFileName.GetString());
    return zk::copyErrorMessage(text, lpszError, nMaxError, pnHelpContext);
}

int CFileException::OsErrorToException(LONG lOsError)
{
    for (OsErrorCause const& row : osErrorCauses) {
        if (row.error == DWORD(lOsError))
            return row.cause;
    }
    return genericException;
}

int CFileException::ErrnoToException(int nErrno)
{
    for (ErrnoCause const& row : errnoCauses) {
        if (row.error == nErrno)
            return row.cause;
    }
    return genericException;
}

void CFileException::ThrowOsError(LONG lOsError, LPCSTR lpszFileName)
{
    if (lOsError != 0)
        AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void CFileException::ThrowErrno(int nErrno, LPCSTR lpszFileName)
{
    if (nErrno != 0)
        AfxThrowFileException(ErrnoToException(nErrno), LONG(GetLastError()), lpszFileName);
}

void AfxThrowFileException(int cause, LONG lOsError, LPCSTR lpszFileName)
{
    throw new CFileException(cause, lOsError, lpszFileName);
}
