// CException.h: the root of the exceptions of the class library, and the simple ones.
//
//   try {
//       AfxThrowNotSupportedException();
//   } catch (CException* e) {
//       char text[256];
//       e->GetErrorMessage(text, sizeof text);      // TRUE: "The operation is not supported."
//       e->Delete();
//   }
//
// Exceptions are thrown as pointers. Who catches one and doesn't throw it on
// gives it back with Delete().
#pragma once

#include "platform/classlib/CObject.h"

/// An exception of the class library.
class ZK_UTIL_API CException : public CObject {
    DECLARE_DYNAMIC(CException)

    /// An exception for the heap: Delete() deletes it.
    CException();

    /// With FALSE an exception that Delete() leaves alone, such as a static one.
    explicit CException(BOOL bAutoDelete);

    ~CException() override;

    /// Ends the life of a caught exception; deletes it if it was made for the heap.
    void Delete();

    /// Tells what went wrong, in words for the user.
    ///
    /// At most `nMaxError - 1` bytes of the text and a terminating NUL go to
    /// `lpszError`; `*pnHelpContext`, if given, becomes the number of the help
    /// page, 0 for none. FALSE if the exception has no text: the buffer then
    /// holds the empty text. With a null buffer or a size of 0 nothing is
    /// written there, and the result is FALSE.
    virtual BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;

    /// The form that is called for exceptions as they are caught; gives what the other form gives.
    virtual BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr);

    /// Shows the text of GetErrorMessage() to the user, with the message box flags `nType`.
    ///
    /// An exception without text shows the numbered text `nMessageID`, or a
    /// general one if that is 0 or missing. Gives what AfxMessageBox() gives.
    virtual int ReportError(UINT nType = 0, UINT nMessageID = 0);

    BOOL m_bAutoDelete;  ///< Whether Delete() deletes.
};

/// An exception whose text depends on its class alone.
class ZK_UTIL_API CSimpleException : public CException {
    DECLARE_DYNAMIC(CSimpleException)

    ~CSimpleException() override;

    using CException::GetErrorMessage;
    BOOL GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

protected:
    /// `text` is kept, not copied.
    CSimpleException(BOOL bAutoDelete, char const* text);

private:
    char const* text_;
};

/// Memory ran out.
class ZK_UTIL_API CMemoryException : public CSimpleException {
    DECLARE_DYNAMIC(CMemoryException)

    explicit CMemoryException(BOOL bAutoDelete = TRUE);
};

/// What was asked for is not supported.
class ZK_UTIL_API CNotSupportedException : public CSimpleException {
    DECLARE_DYNAMIC(CNotSupportedException)

    explicit CNotSupportedException(BOOL bAutoDelete = TRUE);
};

/// An argument has a value that makes no sense.
class ZK_UTIL_API CInvalidArgException : public CSimpleException {
    DECLARE_DYNAMIC(CInvalidArgException)

    explicit CInvalidArgException(BOOL bAutoDelete = TRUE);
};

/// A resource, such as a dialog template, is missing or could not be made.
class ZK_UTIL_API CResourceException : public CSimpleException {
    DECLARE_DYNAMIC(CResourceException)

    explicit CResourceException(BOOL bAutoDelete = TRUE);
};

/// An operation ended after the user was told why.
class ZK_UTIL_API CUserException : public CSimpleException {
    DECLARE_DYNAMIC(CUserException)

    explicit CUserException(BOOL bAutoDelete = TRUE);
};

/// Throws the one static CMemoryException, which needs no memory. Delete() leaves it alone.
[[noreturn]] ZK_UTIL_API void AfxThrowMemoryException();

/// These throw a new exception of the class in their name.
[[noreturn]] ZK_UTIL_API void AfxThrowNotSupportedException();
[[noreturn]] ZK_UTIL_API void AfxThrowInvalidArgException();
[[noreturn]] ZK_UTIL_API void AfxThrowResourceException();
[[noreturn]] ZK_UTIL_API void AfxThrowUserException();

namespace zk {

/// Copies as much of `text` as fits into `buffer`, always terminated; the common part of all
/// GetErrorMessage(). FALSE if there is no text or no room at all.
BOOL copyErrorMessage(char const* text, LPSTR buffer, UINT size, UINT* helpContext) noexcept;

}  // namespace zk
