// CFileStatus.h: what CFile::GetStatus() tells about a file.
#pragma once

#include "platform/classlib/CString.h"
#include "platform/classlib/CTime.h"

/// Times, size, attributes and full name of a file.
struct CFileStatus {
    CTime m_ctime;         ///< When it was created; 0 if the system doesn't know.
    CTime m_mtime;         ///< When it was last written to.
    CTime m_atime;         ///< When it was last read.
    ULONGLONG m_size = 0;  ///< Its length in bytes; 0 for a directory.
    BYTE m_attribute = 0;  ///< CFile::Attribute values, or-ed.
    CString m_szFullName;  ///< Its full path, of any length.
};
