// files.h: files that are opened, read, written and measured through handles.
//
//   HANDLE const file = CreateFileA("model.txt", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
//                                   FILE_ATTRIBUTE_NORMAL, nullptr);
//   char start[16];
//   DWORD count;
//   ReadFile(file, start, sizeof start, &count, nullptr);    // count is 16, or less at the end
//   CloseHandle(file);
//
// Paths are bytes: "/" separates, every other byte but NUL belongs to a name.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define FILE_APPEND_DATA 0x00000004u
#define FILE_READ_ATTRIBUTES 0x00000080u
#define FILE_WRITE_ATTRIBUTES 0x00000100u

#define FILE_SHARE_READ 0x00000001u
#define FILE_SHARE_WRITE 0x00000002u
#define FILE_SHARE_DELETE 0x00000004u

#define CREATE_NEW 1u
#define CREATE_ALWAYS 2u
#define OPEN_EXISTING 3u
#define OPEN_ALWAYS 4u
#define TRUNCATE_EXISTING 5u

#define FILE_FLAG_WRITE_THROUGH 0x80000000u
#define FILE_FLAG_NO_BUFFERING 0x20000000u
#define FILE_FLAG_RANDOM_ACCESS 0x10000000u
#define FILE_FLAG_SEQUENTIAL_SCAN 0x08000000u
#define FILE_FLAG_DELETE_ON_CLOSE 0x04000000u
#define FILE_FLAG_BACKUP_SEMANTICS 0x02000000u

#define FILE_BEGIN 0u
#define FILE_CURRENT 1u
#define FILE_END 2u
#define INVALID_SET_FILE_POINTER 0xFFFFFFFFu
#define INVALID_FILE_SIZE 0xFFFFFFFFu

#define FILE_TYPE_UNKNOWN 0u
#define FILE_TYPE_DISK 1u
#define FILE_TYPE_CHAR 2u
#define FILE_TYPE_PIPE 3u

struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;

/// Opens or creates a file and gives a handle, which the caller closes.
///
/// Supplied: the access values above, all sharing and creation values, the
/// attributes normal, read-only, temporary (which changes nothing) and archive,
/// and the flags above; FILE_FLAG_BACKUP_SEMANTICS opens a folder for its
/// attributes and times, which with CREATE_ALWAYS is ERROR_FILE_EXISTS. What others deny or what the sharing asked for forbids
/// gives ERROR_SHARING_VIOLATION. Among users of this library the rule is exact;
/// other programs take part through flock (see docs/platform.md).
///
/// Success sets the last error: ERROR_ALREADY_EXISTS if CREATE_ALWAYS or
/// OPEN_ALWAYS met a file, else 0. On failure INVALID_HANDLE_VALUE: a missing
/// file ERROR_FILE_NOT_FOUND, a missing folder ERROR_PATH_NOT_FOUND, a folder or
/// a read-only file to be written ERROR_ACCESS_DENIED, CREATE_NEW on what exists
/// ERROR_FILE_EXISTS. ERROR_INVALID_PARAMETER for other values, for a security
/// descriptor, for a template, and for TRUNCATE_EXISTING without GENERIC_WRITE.
ZK_UTIL_API HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD sharing,
                                      LPSECURITY_ATTRIBUTES security, DWORD disposition,
                                      DWORD attributesAndFlags, HANDLE templateFile) noexcept;

/// Reads up to `length` bytes at the file's position; `*done` is their number.
///
/// At the end of a file TRUE with 0 bytes; a pipe gives what is there, and
/// ERROR_BROKEN_PIPE once its writers are gone. Of a folder
/// ERROR_INVALID_FUNCTION. `overlapped` must be null.
ZK_UTIL_API BOOL WINAPI ReadFile(HANDLE file, LPVOID buffer, DWORD length, LPDWORD done,
                                 LPOVERLAPPED overlapped) noexcept;

/// Writes all bytes, or fails; `*done` is what was written in either case.
///
/// ERROR_DISK_FULL if there is no room, ERROR_NO_DATA for a pipe without a
/// reader. `overlapped` must be null.
ZK_UTIL_API BOOL WINAPI WriteFile(HANDLE file, LPCVOID buffer, DWORD length, LPDWORD done,
                                  LPOVERLAPPED overlapped) noexcept;

/// Moves the file's position and gives its low half; `*distanceHigh`, if there
/// is one, holds the distance's high half before and the position's after.
///
/// INVALID_SET_FILE_POINTER is a failure only if the last error is not 0 then:
/// ERROR_NEGATIVE_SEEK before the beginning, ERROR_INVALID_PARAMETER for another
/// method or, without `distanceHigh`, for a position that needs more than 32 bits.
ZK_UTIL_API DWORD WINAPI SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh,
                                        DWORD method) noexcept;

/// The same with 64 bits; `position` may be null.
ZK_UTIL_API BOOL WINAPI SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position,
                                         DWORD method) noexcept;

/// Cuts or lengthens the file to its position. Needs GENERIC_WRITE.
ZK_UTIL_API BOOL WINAPI SetEndOfFile(HANDLE file) noexcept;

/// The file's size, its high half in `*high` if that is not null.
/// INVALID_FILE_SIZE is a failure only if the last error is not 0 then.
ZK_UTIL_API DWORD WINAPI GetFileSize(HANDLE file, LPDWORD high) noexcept;
ZK_UTIL_API BOOL WINAPI GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) noexcept;

/// Brings what was written to the disk. Needs write access.
ZK_UTIL_API BOOL WINAPI FlushFileBuffers(HANDLE file) noexcept;

/// Locks a range of the file against LockFile() through any other handle, at
/// once or not at all: ERROR_LOCK_VIOLATION.
///
/// Needs GENERIC_WRITE, else ERROR_ACCESS_DENIED. Reads and writes of others
/// are not held off. The lock ends with UnlockFile() or the last handle.
ZK_UTIL_API BOOL WINAPI LockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD lengthLow,
                                 DWORD lengthHigh) noexcept;
/// Gives a range back that was locked as it stands, else ERROR_NOT_LOCKED.
ZK_UTIL_API BOOL WINAPI UnlockFile(HANDLE file, DWORD offsetLow, DWORD offsetHigh, DWORD lengthLow,
                                   DWORD lengthHigh) noexcept;

/// FILE_TYPE_DISK for a file or folder, FILE_TYPE_CHAR for a terminal or
/// another device, FILE_TYPE_PIPE for a pipe or socket.
/// FILE_TYPE_UNKNOWN and ERROR_INVALID_HANDLE for what is no file.
ZK_UTIL_API DWORD WINAPI GetFileType(HANDLE file) noexcept;
