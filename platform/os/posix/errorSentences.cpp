// The English sentences for the error numbers of lastError.h.
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/messageTexts.h"

#include <algorithm>
#include <iterator>

namespace zk::os {
namespace {

struct Sentence {
    DWORD error;
    char const* text;
};

constexpr Sentence sentences[] = {
    // by number
    {ERROR_SUCCESS, "The operation was successful."},
    {ERROR_INVALID_FUNCTION, "The function does not exist."},
    {ERROR_FILE_NOT_FOUND, "The file was not found."},
    {ERROR_PATH_NOT_FOUND, "The path was not found."},
    {ERROR_TOO_MANY_OPEN_FILES, "Too many files are open."},
    {ERROR_ACCESS_DENIED, "Access is denied."},
    {ERROR_INVALID_HANDLE, "The handle is not valid."},
    {ERROR_NOT_ENOUGH_MEMORY, "There is not enough memory for this operation."},
    {ERROR_BAD_FORMAT, "The program has a wrong format."},
    {ERROR_INVALID_DATA, "The data is not valid."},
    {ERROR_OUTOFMEMORY, "There is not enough memory to complete this operation."},
    {ERROR_INVALID_DRIVE, "The drive was not found."},
    {ERROR_CURRENT_DIRECTORY, "The folder cannot be removed."},
    {ERROR_NOT_SAME_DEVICE, "The file cannot be moved to another file system."},
    {ERROR_NO_MORE_FILES, "There are no more files."},
    {ERROR_WRITE_PROTECT, "The medium is write-protected."},
    {ERROR_BAD_UNIT, "The device was not found."},
    {ERROR_NOT_READY, "The device is not ready."},
    {ERROR_BAD_COMMAND, "The device does not know the command."},
    {ERROR_CRC, "The data is damaged: its check sum is wrong."},
    {24, "The length of the command is wrong."},
    {ERROR_SEEK, "The place on the disk was not found."},
    {ERROR_NOT_DOS_DISK, "The disk is of an unknown kind."},
    {ERROR_SECTOR_NOT_FOUND, "The sector was not found."},
    {ERROR_WRITE_FAULT, "The device cannot be written to."},
    {ERROR_READ_FAULT, "The device cannot be read from."},
    {ERROR_GEN_FAILURE, "A device does not work as it should."},
    {ERROR_SHARING_VIOLATION, "The file cannot be opened because another process is using it."},
    {ERROR_LOCK_VIOLATION, "Another process has locked a part of the file."},
    {ERROR_SHARING_BUFFER_EXCEEDED, "Too many files are open for sharing."},
    {ERROR_HANDLE_EOF, "The end of the file was reached."},
    {ERROR_HANDLE_DISK_FULL, "The disk is full."},
    {ERROR_NOT_SUPPORTED, "The request is not supported."},
    {ERROR_BAD_NETPATH, "The network path was not found."},
    {ERROR_NETWORK_ACCESS_DENIED, "Access to the network is denied."},
    {ERROR_BAD_DEV_TYPE, "The device is of the wrong kind."},
    {ERROR_BAD_NET_NAME, "The network name was not found."},
    {ERROR_FILE_EXISTS, "The file exists."},
    {ERROR_CANNOT_MAKE, "The folder or file cannot be created."},
    {ERROR_INVALID_PARAMETER, "A parameter is wrong."},
    {ERROR_BROKEN_PIPE, "The other end of the pipe was closed."},
    {ERROR_OPEN_FAILED, "The device or file cannot be opened."},
    {ERROR_BUFFER_OVERFLOW, "The file name is too long."},
    {ERROR_DISK_FULL, "There is not enough space on the disk."},
    {ERROR_CALL_NOT_IMPLEMENTED, "This system does not support the function."},
    {ERROR_SEM_TIMEOUT, "The time for the semaphore ran out."},
    {ERROR_INSUFFICIENT_BUFFER, "The buffer that was given to a call is too small."},
    {ERROR_INVALID_NAME, "The name of the file or folder is wrong."},
    {ERROR_MOD_NOT_FOUND, "The module was not found."},
    {ERROR_PROC_NOT_FOUND, "The procedure was not found."},
    {128, "There are no child processes to wait for."},
    {ERROR_NEGATIVE_SEEK, "The file pointer cannot be moved before the beginning of the file."},
    {ERROR_SEEK_ON_DEVICE, "The file pointer cannot be set on this device or file."},
    {ERROR_DIR_NOT_EMPTY, "The folder is not empty."},
    {ERROR_PATH_BUSY, "The path cannot be used now."},
    {ERROR_SIGNAL_REFUSED, "The thread is suspended too often already."},
    {ERROR_NOT_LOCKED, "The segment is unlocked already."},
    {ERROR_BAD_PATHNAME, "The path is not valid."},
    {164, "No more threads can be created."},
    {ERROR_LOCK_FAILED, "A range of the file could not be locked."},
    {ERROR_BUSY, "The resource is in use."},
    {ERROR_ALREADY_EXISTS, "It cannot be created because it exists already."},
    {187, "The name of the semaphore was not found."},
    {ERROR_BAD_EXE_FORMAT, "The file is no program or module of this system."},
    {ERROR_ENVVAR_NOT_FOUND, "The environment variable was not found."},
    {ERROR_FILENAME_EXCED_RANGE, "The file name or its extension is too long."},
    {ERROR_BAD_PIPE, "The state of the pipe is not valid."},
    {231, "All instances of the pipe are in use."},
    {ERROR_NO_DATA, "The pipe is being closed."},
    {233, "There is no process at the other end of the pipe."},
    {ERROR_MORE_DATA, "There is more data."},
    {ERROR_NO_WORK_DONE, "There was nothing to be done."},
    {WAIT_TIMEOUT, "The time for the wait ran out."},
    {ERROR_NO_MORE_ITEMS, "There is no more data."},
    {ERROR_DIRECTORY, "The name of the folder is not valid."},
    {ERROR_NOT_OWNER, "The mutex belongs to another thread."},
    {ERROR_TOO_MANY_POSTS, "The semaphore was released too often."},
    {299, "Only a part of the memory was read or written."},
    {ERROR_MR_MID_NOT_FOUND, "There is no message text for this number."},
    {ERROR_INVALID_ADDRESS, "The address is not valid."},
    {ERROR_OPERATION_ABORTED,
     "The operation was ended because its thread ended or the program asked for it."},
    {ERROR_NOACCESS, "The memory at this address cannot be accessed."},
    {ERROR_INVALID_FLAGS, "The flags are not valid."},
    {ERROR_FILE_INVALID, "The file was changed from outside and is no longer valid."},
    {ERROR_NO_TOKEN, "There is no such token."},
    {1009, "The configuration database is damaged."},
    {1010, "The key of the configuration database is not valid."},
    {ERROR_NO_UNICODE_TRANSLATION, "A character has no counterpart in the other code page."},
    {ERROR_IO_DEVICE, "An input or output error of the device kept the request from being done."},
    {1150, "The program needs a newer version of the system."},
    {ERROR_NOT_FOUND, "The element was not found."},
    {1223, "The user cancelled the operation."},
    {1235, "The request was aborted."},
    {ERROR_NOT_ALL_ASSIGNED, "Not all of the privileges were assigned to the caller."},
    {ERROR_UNKNOWN_REVISION, "The revision of the structure is unknown."},
    {1307, "This security number cannot be the owner of an object."},
    {ERROR_PRIVILEGE_NOT_HELD, "The caller lacks a privilege that is needed."},
    {ERROR_INVALID_WINDOW_HANDLE, "The window handle is not valid."},
    {ERROR_TLW_WITH_WSCHILD, "A child window needs a parent."},
    {ERROR_CANNOT_FIND_WND_CLASS, "The window class was not found."},
    {ERROR_WINDOW_OF_OTHER_THREAD, "The window belongs to another thread."},
    {ERROR_CLASS_ALREADY_EXISTS, "The window class exists already."},
    {ERROR_CLASS_DOES_NOT_EXIST, "The window class does not exist."},
    {ERROR_CLASS_HAS_WINDOWS, "There are windows of the class."},
    {ERROR_INVALID_INDEX, "The index is not valid."},
    {ERROR_CONTROL_ID_NOT_FOUND, "The window has no control with this number."},
    {1425, "The window cannot be destroyed."},
    {ERROR_INVALID_MSGBOX_STYLE, "The style of the message box is not valid."},
    {ERROR_INVALID_THREAD_ID, "There is no thread of this number with a message queue."},
    {ERROR_NO_SYSTEM_RESOURCES, "The system lacks resources for the request."},
    {1455, "The memory for paging is too small for this operation."},
    {1460, "The time for the operation ran out."},
    {1784, "The buffer that the user gave is not valid for the operation."},
    {ERROR_RESOURCE_DATA_NOT_FOUND, "The module has no resources."},
    {ERROR_RESOURCE_TYPE_NOT_FOUND, "The module has no resource of this type."},
    {ERROR_RESOURCE_NAME_NOT_FOUND, "The module has no resource of this name."},
    {ERROR_NOT_ENOUGH_QUOTA, "The quota is too small for the command."},
    {ERROR_CANT_RESOLVE_FILENAME, "The file name leads through too many links."},
};

static_assert(std::is_sorted(std::begin(sentences), std::end(sentences),
                             [](Sentence const& a, Sentence const& b) { return a.error < b.error; }));

}  // namespace

char const* errorSentence(DWORD error) noexcept
{
    auto const* const place =
        std::lower_bound(std::begin(sentences), std::end(sentences), error,
                         [](Sentence const& sentence, DWORD wanted) { return sentence.error < wanted; });
    return place != std::end(sentences) && place->error == error ? place->text : nullptr;
}

}  // namespace zk::os
