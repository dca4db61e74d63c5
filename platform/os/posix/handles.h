// handles.h: handles, and the objects behind them.
//
// A handle is a value in a table, never a pointer: it names a slot and the
// slot's generation, so that a stale value and a second CloseHandle() fail
// with ERROR_INVALID_HANDLE instead of touching someone else's object.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <memory>
#include <utility>

#define HANDLE_FLAG_INHERIT 0x00000001u
#define DUPLICATE_CLOSE_SOURCE 0x00000001u
#define DUPLICATE_SAME_ACCESS 0x00000002u

/// Gives a handle back. The object lives on while other handles or running calls use it.
///
/// FALSE and ERROR_INVALID_HANDLE for a value that is no open handle. The
/// values that stand for the calling process and thread are accepted and ignored.
ZK_UTIL_API BOOL CloseHandle(HANDLE handle) noexcept;

/// Reads HANDLE_FLAG_INHERIT of a handle.
ZK_UTIL_API BOOL GetHandleInformation(HANDLE handle, LPDWORD flags) noexcept;

/// Changes the flags named in `mask`; only HANDLE_FLAG_INHERIT is supplied,
/// any other bit fails with ERROR_INVALID_PARAMETER.
ZK_UTIL_API BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags) noexcept;

/// Makes a second handle to the object behind `source`.
///
/// Supplied for the calling process alone and with DUPLICATE_SAME_ACCESS;
/// another process gives ERROR_INVALID_HANDLE, a missing DUPLICATE_SAME_ACCESS
/// ERROR_INVALID_PARAMETER. With DUPLICATE_CLOSE_SOURCE `source` is closed.
ZK_UTIL_API BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess,
                                 LPHANDLE target, DWORD access, BOOL inherit, DWORD options) noexcept;

namespace zk::os {

/// What a handle refers to. One object may have many handles.
class ZK_UTIL_API KernelObject {
public:
    KernelObject() = default;
    KernelObject(KernelObject const&) = delete;
    KernelObject& operator=(KernelObject const&) = delete;
    virtual ~KernelObject();

    /// Waits until the object is signalled, at most `milliseconds` (INFINITE: no limit).
    /// Gives 0, 0x80 (abandoned), 258 (timeout), or 0xFFFFFFFF with the last error set.
    /// An object that cannot be waited on gives 0xFFFFFFFF and ERROR_INVALID_HANDLE.
    virtual DWORD wait(DWORD milliseconds) noexcept;

    /// The descriptor behind the object, or -1. What a child process inherits.
    virtual int descriptor() const noexcept;
};

/// Enters an object into the table. Null with ERROR_TOO_MANY_OPEN_FILES when the table is full.
ZK_UTIL_API HANDLE openHandle(std::shared_ptr<KernelObject> object, bool inheritable) noexcept;

/// The object behind a handle, shared; null with ERROR_INVALID_HANDLE for a
/// value that is no open handle. For long work on the object.
ZK_UTIL_API std::shared_ptr<KernelObject> objectOf(HANDLE handle) noexcept;

/// The object behind a handle if it is a T, else null with ERROR_INVALID_HANDLE.
template <class T>
std::shared_ptr<T> objectOf(HANDLE handle) noexcept;

}  // namespace zk::os

#include "platform/os/posix/lastError.h"

template <class T>
std::shared_ptr<T> zk::os::objectOf(HANDLE handle) noexcept
{
    std::shared_ptr<KernelObject> object = objectOf(handle);
    if (!object)
        return nullptr;
    auto typed = std::dynamic_pointer_cast<T>(std::move(object));
    if (!typed)
        SetLastError(ERROR_INVALID_HANDLE);
    return typed;
}
