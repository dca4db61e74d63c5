// fileAttributes.h: attributes, sizes and times of files and folders.
//
//   DWORD const attributes = GetFileAttributesA("src");      // FILE_ATTRIBUTE_DIRECTORY
//   SetFileAttributesA("model.bak", FILE_ATTRIBUTE_READONLY);
//
// A file is FILE_ATTRIBUTE_ARCHIVE, a folder FILE_ATTRIBUTE_DIRECTORY, anything
// else FILE_ATTRIBUTE_NORMAL; FILE_ATTRIBUTE_READONLY says that the owner may
// not write to it. A symbolic link shows what it leads to, with
// FILE_ATTRIBUTE_REPARSE_POINT; one that leads nowhere shows itself.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define FILE_ATTRIBUTE_READONLY 0x00000001u
#define FILE_ATTRIBUTE_HIDDEN 0x00000002u
#define FILE_ATTRIBUTE_SYSTEM 0x00000004u
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010u
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020u
#define FILE_ATTRIBUTE_NORMAL 0x00000080u
#define FILE_ATTRIBUTE_TEMPORARY 0x00000100u
#define FILE_ATTRIBUTE_COMPRESSED 0x00000800u
#define FILE_ATTRIBUTE_REPARSE_POINT 0x00000400u
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu
#define IO_REPARSE_TAG_SYMLINK 0xA000000Cu

struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};
using LPWIN32_FILE_ATTRIBUTE_DATA = WIN32_FILE_ATTRIBUTE_DATA*;

struct BY_HANDLE_FILE_INFORMATION {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD dwVolumeSerialNumber;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD nNumberOfLinks;
    DWORD nFileIndexHigh;
    DWORD nFileIndexLow;
};
using LPBY_HANDLE_FILE_INFORMATION = BY_HANDLE_FILE_INFORMATION*;

enum GET_FILEEX_INFO_LEVELS { GetFileExInfoStandard };

/// The attributes of a file or folder; INVALID_FILE_ATTRIBUTES on failure.
ZK_UTIL_API DWORD WINAPI GetFileAttributesA(LPCSTR name) noexcept;

/// Makes a file or folder read-only (nobody may write to it) or writable again
/// (its owner may), whichever FILE_ATTRIBUTE_READONLY says.
///
/// Archive, normal, temporary, directory and reparse point change nothing;
/// other bits fail with ERROR_INVALID_PARAMETER. A symbolic link has no such
/// attribute of its own, and what it leads to is not touched: read-only fails
/// with ERROR_NOT_SUPPORTED, unless that is read-only already; writable does nothing.
ZK_UTIL_API BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes) noexcept;

/// Attributes, size and times; `information` is a WIN32_FILE_ATTRIBUTE_DATA.
/// Any level but GetFileExInfoStandard fails with ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL WINAPI GetFileAttributesExA(LPCSTR name, GET_FILEEX_INFO_LEVELS level,
                                             LPVOID information) noexcept;

/// The same for an open file, with what tells it from all others: volume and index.
/// A pipe fails with ERROR_INVALID_FUNCTION.
ZK_UTIL_API BOOL WINAPI GetFileInformationByHandle(HANDLE file,
                                                   LPBY_HANDLE_FILE_INFORMATION information) noexcept;

/// The times of an open file; each pointer may be null.
ZK_UTIL_API BOOL WINAPI GetFileTime(HANDLE file, LPFILETIME created, LPFILETIME accessed,
                                    LPFILETIME written) noexcept;

/// Sets the times of last access and last writing; a null pointer and the
/// values 0 and 0xFFFFFFFFFFFFFFFF leave a time alone.
///
/// The time of creation is not kept by the system in a way that could be set:
/// it is ignored. Needs GENERIC_WRITE or FILE_WRITE_ATTRIBUTES, else
/// ERROR_ACCESS_DENIED; a time above 0x7FFFFFFFFFFFFFFF is ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL WINAPI SetFileTime(HANDLE file, FILETIME const* created, FILETIME const* accessed,
                                    FILETIME const* written) noexcept;
