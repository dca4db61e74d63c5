// handles.h: handles, and the objects behind them.
//
// A handle is a value in a table, never a pointer: it names a slot and the
// slot's generation, so that a stale value and a second CloseHandle() fail
// with ERROR_INVALID_HANDLE instead of touching someone else's object.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <memory>
#include <typeinfo>
#include <utility>
#include <vector>

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
ZK_UTIL_API BOOL DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, LPHANDLE target,
                                 DWORD access, BOOL inherit, DWORD options) noexcept;

namespace zk::os {

struct ThreadRecord;

/// What a handle refers to. One object may have many handles.
class KernelObject {
public:
    KernelObject() = default;
    KernelObject(KernelObject const&) = delete;
    KernelObject& operator=(KernelObject const&) = delete;
    virtual ~KernelObject();

    /// Waits until the object is signalled, at most `milliseconds` (INFINITE: no limit).
    /// Gives 0, 0x80 (abandoned), 258 (timeout), or 0xFFFFFFFF with the last error set.
    /// An object that cannot be waited on gives 0xFFFFFFFF and ERROR_INVALID_HANDLE.
    /// A wait of 0 milliseconds never blocks: it is made on a pinned handle.
    virtual DWORD wait(DWORD milliseconds) noexcept;

    /// Gives back what the calling thread took by a wait and owns: a mutex. Gives an
    /// error number, ERROR_INVALID_HANDLE for any other object.
    virtual DWORD release() noexcept;

    /// The descriptor behind the object, or -1. What a child process inherits.
    virtual int descriptor() const noexcept;
};

/// Enters an object into the table. Null with ERROR_TOO_MANY_OPEN_FILES when
/// the table is full, and with ERROR_NOT_ENOUGH_MEMORY when it cannot grow.
HANDLE openHandle(std::shared_ptr<KernelObject> object, bool inheritable) noexcept;

/// A place in the table, taken before the work whose result it shall hold: a
/// full table is then found out while nothing has been done yet.
///
///   HandlePlace place;
///   if (place.error())
///       return report(place.error());
///   ...                                        // may fail, and gives the place back
///   return place.open(std::move(object), false);
class ZK_UTIL_API HandlePlace {
public:
    HandlePlace() noexcept;
    ~HandlePlace();
    HandlePlace(HandlePlace const&) = delete;
    HandlePlace& operator=(HandlePlace const&) = delete;

    /// ERROR_TOO_MANY_OPEN_FILES or ERROR_NOT_ENOUGH_MEMORY if there was no place, else 0.
    DWORD error() const noexcept { return error_; }

    /// Enters an object at the place, once. Cannot fail.
    HANDLE open(std::shared_ptr<KernelObject> object, bool inheritable) noexcept;

private:
    std::size_t index_ = 0;
    bool isTaken_ = false;
    DWORD error_ = 0;
};

/// The object behind a handle, shared; null with ERROR_INVALID_HANDLE for a
/// value that is no open handle. For work that may block: the object stays, also
/// if the handle is closed meanwhile.
std::shared_ptr<KernelObject> objectOf(HANDLE handle) noexcept;

/// The object behind a handle if it is a T, else null with ERROR_INVALID_HANDLE.
template <class T>
std::shared_ptr<T> objectOf(HANDLE handle) noexcept;

/// The objects behind all handles that are marked inheritable, each with its handle's value.
/// @throws std::bad_alloc
std::vector<std::pair<HANDLE, std::shared_ptr<KernelObject>>> inheritableObjects();

// How a short call reaches its object
// -----------------------------------
// Most calls on a handle take nanoseconds: release a mutex, set an event, ask
// a position. A lock around the table or a count in the object would cost such
// a call more than its own work: each is an atomic operation on a line that all
// threads share, once on the way in and once on the way out. So a short call
// *pins* the handle: it writes the handle's value into a place of its own
// thread's record, looks whether the slot still holds that value, and works on
// the object. The way out is one store of 0. No line is shared, nothing is
// counted, and nothing is allocated.
//
// The price is paid by CloseHandle(). Having emptied the slot, it looks through
// the records of all threads and waits until none pins the value; then the
// slot may be used again, and the object is released there and then if that was
// its last handle. What a caller sees is therefore what the other target shows:
// when CloseHandle() returns, the descriptor is closed and the name is gone.
//
//   pinning thread                           closing thread
//     1. pins[i] = value                       1. slot.handle = 0
//     2. slot.handle == value?                 2. pins[i] == value?  wait
//
// Either 1 on the left comes before 2 on the right, or the other way round;
// in both cases one of the two sees the other, provided that no processor moves
// its read ahead of its write. The usual cure is a fence on both sides. Here the
// left side has none, and the right side asks the kernel to pass one through all
// processors that run this process (membarrier). Where the kernel does not offer
// that, the left side takes an atomic exchange for step 1.
//
// Two things keep the price away from those who needn't pay it:
//  - A slot is owned by the thread that opened the handle. As long as no other
//    thread uses the handle, its owner closes it without any of the above. The
//    first use by another thread marks the slot as shared, under the table's
//    lock. (Files and pipes mostly live and die in one thread.)
//  - A thread has `ThreadRecord::pinCapacity` places. A pin beyond that, or one
//    in a thread without a record, copies the shared pointer under the lock.
//
// Rules:
//  1. A pin is for calls that cannot block: CloseHandle() waits for its end.
//     Work that may block takes objectOf(), or share() and then the end of the pin.
//  2. Who holds a pin does not close a handle.
//  3. Lock order: the table's lock is taken last. No object is made or destroyed under it.
//  4. A thread that TerminateThread() ends gives its pins back in the signal
//     handler, so a close never waits for a thread that is gone.

/// Holds the object behind a handle for the length of one short call. Costs a nanosecond or two.
///
///   HandlePin const pin(handle);
///   return pin ? pin->wait(0) : WAIT_FAILED;
class HandlePin {
public:
    /// Holds nothing, with ERROR_INVALID_HANDLE, for a value that is no open handle.
    explicit HandlePin(HANDLE handle) noexcept;
    ~HandlePin();
    HandlePin(HandlePin const&) = delete;
    HandlePin& operator=(HandlePin const&) = delete;

    KernelObject* get() const noexcept { return object_; }
    KernelObject* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// The object, to be kept beyond the pin.
    std::shared_ptr<KernelObject> share() const noexcept;

private:
    bool pinInPlace(HANDLE handle) noexcept;
    bool pinOfOtherThread(HANDLE handle) noexcept;

    KernelObject* object_ = nullptr;
    ThreadRecord* record_ = nullptr;      // null: the object is held by kept_
    std::shared_ptr<KernelObject> kept_;  // of a pin that found no place
    void const* slot_ = nullptr;
};

/// A pin on a handle that must refer to a T.
///
///   Pinned<Event> const event(handle);
///   return event ? event->set() : FALSE;
template <class T>
class Pinned {
public:
    /// Holds nothing, with ERROR_INVALID_HANDLE, for a value that is no open
    /// handle and for an object of another type.
    explicit Pinned(HANDLE handle) noexcept;

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    std::shared_ptr<T> share() const noexcept { return std::static_pointer_cast<T>(pin_.share()); }

private:
    HandlePin const pin_;
    T* object_ = nullptr;
};

}  // namespace zk::os

#include "platform/os/posix/lastError.h"

template <class T>
zk::os::Pinned<T>::Pinned(HANDLE handle) noexcept : pin_(handle)
{
    if (!pin_)
        return;
    // The exact type is nearly always meant, and costs one comparison.
    KernelObject& object = *pin_.get();
    object_ = typeid(object) == typeid(T) ? static_cast<T*>(&object) : dynamic_cast<T*>(&object);
    if (!object_)
        SetLastError(ERROR_INVALID_HANDLE);
}

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
