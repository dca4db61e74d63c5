// lastError.h: the last error of a thread, and the system's error numbers.
//
//   SetLastError(ERROR_FILE_NOT_FOUND);
//   GetLastError();                        // 2, in this thread
//
// Each number has its sentence in errorSentences.cpp.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define ERROR_SUCCESS 0u
#define NO_ERROR 0u
#define ERROR_INVALID_FUNCTION 1u
#define ERROR_FILE_NOT_FOUND 2u
#define ERROR_PATH_NOT_FOUND 3u
#define ERROR_TOO_MANY_OPEN_FILES 4u
#define ERROR_ACCESS_DENIED 5u
#define ERROR_INVALID_HANDLE 6u
#define ERROR_NOT_ENOUGH_MEMORY 8u
#define ERROR_BAD_FORMAT 11u
#define ERROR_INVALID_DATA 13u
#define ERROR_OUTOFMEMORY 14u
#define ERROR_INVALID_DRIVE 15u
#define ERROR_CURRENT_DIRECTORY 16u
#define ERROR_NOT_SAME_DEVICE 17u
#define ERROR_NO_MORE_FILES 18u
#define ERROR_WRITE_PROTECT 19u
#define ERROR_BAD_UNIT 20u
#define ERROR_NOT_READY 21u
#define ERROR_BAD_COMMAND 22u
#define ERROR_CRC 23u
#define ERROR_SEEK 25u
#define ERROR_NOT_DOS_DISK 26u
#define ERROR_SECTOR_NOT_FOUND 27u
#define ERROR_WRITE_FAULT 29u
#define ERROR_READ_FAULT 30u
#define ERROR_GEN_FAILURE 31u
#define ERROR_SHARING_VIOLATION 32u
#define ERROR_LOCK_VIOLATION 33u
#define ERROR_SHARING_BUFFER_EXCEEDED 36u
#define ERROR_HANDLE_EOF 38u
#define ERROR_HANDLE_DISK_FULL 39u
#define ERROR_NOT_SUPPORTED 50u
#define ERROR_BAD_NETPATH 53u
#define ERROR_NETWORK_ACCESS_DENIED 65u
#define ERROR_BAD_DEV_TYPE 66u
#define ERROR_BAD_NET_NAME 67u
#define ERROR_FILE_EXISTS 80u
#define ERROR_CANNOT_MAKE 82u
#define ERROR_INVALID_PARAMETER 87u
#define ERROR_BROKEN_PIPE 109u
#define ERROR_OPEN_FAILED 110u
#define ERROR_BUFFER_OVERFLOW 111u
#define ERROR_DISK_FULL 112u
#define ERROR_CALL_NOT_IMPLEMENTED 120u
#define ERROR_SEM_TIMEOUT 121u
#define ERROR_INSUFFICIENT_BUFFER 122u
#define ERROR_INVALID_NAME 123u
#define ERROR_MOD_NOT_FOUND 126u
#define ERROR_PROC_NOT_FOUND 127u
#define ERROR_NEGATIVE_SEEK 131u
#define ERROR_SEEK_ON_DEVICE 132u
#define ERROR_DIR_NOT_EMPTY 145u
#define ERROR_PATH_BUSY 148u
#define ERROR_SIGNAL_REFUSED 156u
#define ERROR_NOT_LOCKED 158u
#define ERROR_BAD_PATHNAME 161u
#define ERROR_LOCK_FAILED 167u
#define ERROR_BUSY 170u
#define ERROR_ALREADY_EXISTS 183u
#define ERROR_BAD_EXE_FORMAT 193u
#define ERROR_ENVVAR_NOT_FOUND 203u
#define ERROR_FILENAME_EXCED_RANGE 206u
#define ERROR_BAD_PIPE 230u
#define ERROR_NO_DATA 232u
#define ERROR_MORE_DATA 234u
#define ERROR_NO_WORK_DONE 235u
#define WAIT_TIMEOUT 258u
#define ERROR_NO_MORE_ITEMS 259u
#define ERROR_DIRECTORY 267u
#define ERROR_NOT_OWNER 288u
#define ERROR_TOO_MANY_POSTS 298u
#define ERROR_MR_MID_NOT_FOUND 317u
#define ERROR_INVALID_ADDRESS 487u
#define ERROR_OPERATION_ABORTED 995u
#define ERROR_NOACCESS 998u
#define ERROR_INVALID_FLAGS 1004u
#define ERROR_FILE_INVALID 1006u
#define ERROR_NO_TOKEN 1008u
#define ERROR_NO_UNICODE_TRANSLATION 1113u
#define ERROR_IO_DEVICE 1117u
#define ERROR_NOT_FOUND 1168u
#define ERROR_NOT_ALL_ASSIGNED 1300u
#define ERROR_UNKNOWN_REVISION 1305u
#define ERROR_PRIVILEGE_NOT_HELD 1314u
#define ERROR_INVALID_WINDOW_HANDLE 1400u
#define ERROR_TLW_WITH_WSCHILD 1406u
#define ERROR_CANNOT_FIND_WND_CLASS 1407u
#define ERROR_WINDOW_OF_OTHER_THREAD 1408u
#define ERROR_CLASS_ALREADY_EXISTS 1410u
#define ERROR_CLASS_DOES_NOT_EXIST 1411u
#define ERROR_CLASS_HAS_WINDOWS 1412u
#define ERROR_INVALID_INDEX 1413u
#define ERROR_CONTROL_ID_NOT_FOUND 1421u
#define ERROR_INVALID_MSGBOX_STYLE 1438u
#define ERROR_INVALID_THREAD_ID 1444u
#define ERROR_NO_SYSTEM_RESOURCES 1450u
#define ERROR_RESOURCE_DATA_NOT_FOUND 1812u
#define ERROR_RESOURCE_TYPE_NOT_FOUND 1813u
#define ERROR_RESOURCE_NAME_NOT_FOUND 1814u
#define ERROR_NOT_ENOUGH_QUOTA 1816u
#define ERROR_CANT_RESOLVE_FILENAME 1921u

/// The number of the calling thread's last error. Success mostly leaves it alone.
ZK_UTIL_API DWORD GetLastError() noexcept;

/// Sets the calling thread's last error.
ZK_UTIL_API void SetLastError(DWORD error) noexcept;

namespace zk::os {

/// The system's error number for an `errno` value; ERROR_GEN_FAILURE for one that has none.
ZK_UTIL_API DWORD errorFromErrno(int error) noexcept;

/// Ends a call at its public edge: sets the last error if there is one, and
/// says whether there was none.
///
///   return report(removeFile(name));     // TRUE, or FALSE with the last error set
inline BOOL report(DWORD error) noexcept
{
    if (error == ERROR_SUCCESS)
        return TRUE;
    SetLastError(error);
    return FALSE;
}

/// Keeps the last error as it is over a block of clean-up.
class PreserveLastError {
public:
    PreserveLastError() noexcept : error_(GetLastError()) { }
    ~PreserveLastError() { SetLastError(error_); }
    PreserveLastError(PreserveLastError const&) = delete;
    PreserveLastError& operator=(PreserveLastError const&) = delete;

private:
    DWORD error_;
};

}  // namespace zk::os
