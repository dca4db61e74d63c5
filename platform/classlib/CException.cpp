#include "platform/classlib/CException.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CString.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CUserException, CSimpleException)

BOOL zk::copyErrorMessage(char const* text, LPSTR buffer, UINT size, UINT* helpContext) noexcept
{
    if (helpContext)
        *helpContext = 0;
    if (!buffer || size == 0)
        return FALSE;
    std::size_t const length = text ? std::min<std::size_t>(std::strlen(text), size - 1) : 0;
    if (length > 0)
        std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return text != nullptr;
}

CException::CException() : m_bAutoDelete(TRUE)
{
}

CException::CException(BOOL bAutoDelete) : m_bAutoDelete(bAutoDelete)
{
}

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return zk::copyErrorMessage(nullptr, lpszError, nMaxError, pnHelpContext);
}

BOOL CException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext)
{
    CException const& constant = *this;
    return constant.GetErrorMessage(lpszError, nMaxError, pnHelpContext);
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    char text[512];
    UINT helpContext = 0;
    if (GetErrorMessage(text, sizeof text, &helpContext))
        return AfxMessageBox(text, nType, helpContext);
    CString numbered;
    if (nMessageID != 0 && numbered.LoadString(nMessageID))
        return AfxMessageBox(numbered, nType, nMessageID);
    return AfxMessageBox("An error occurred that has no description.", nType, 0);
}

CSimpleException::CSimpleException(BOOL bAutoDelete, char const* text) : CException(bAutoDelete), text_(text)
{
}

CSimpleException::~CSimpleException() = default;

BOOL CSimpleException::GetErrorMessage(LPSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return zk::copyErrorMessage(text_, lpszError, nMaxError, pnHelpContext);
}

CMemoryException::CMemoryException(BOOL bAutoDelete) : CSimpleException(bAutoDelete, "Out of memory.")
{
}

CNotSupportedException::CNotSupportedException(BOOL bAutoDelete)
    : CSimpleException(bAutoDelete, "The operation is not supported.")
{
}

CInvalidArgException::CInvalidArgException(BOOL bAutoDelete)
    : CSimpleException(bAutoDelete, "An argument is invalid.")
{
}

CResourceException::CResourceException(BOOL bAutoDelete)
    : CSimpleException(bAutoDelete, "A needed resource is not available.")
{
}

CUserException::CUserException(BOOL bAutoDelete) : CSimpleException(bAutoDelete, "The operation was stopped.")
{
}

void AfxThrowMemoryException()
{
    static CMemoryException& exception = *[] {
        alignas(CMemoryException) static unsigned char storage[sizeof(CMemoryException)];
        return ::new (storage) CMemoryException(FALSE);
    }();
    throw &exception;
}

void AfxThrowNotSupportedException()
{
    throw new CNotSupportedException;
}

void AfxThrowInvalidArgException()
{
    throw new CInvalidArgException;
}

void AfxThrowResourceException()
{
    throw new CResourceException;
}

void AfxThrowUserException()
{
    throw new CUserException;
}
