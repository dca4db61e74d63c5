// OwnedHandle.h: a handle that a test closes at the end of its scope.
//
//   OwnedHandle const event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
//   SetEvent(event);
#pragma once

#include "platform/os/os.h"

#include <utility>

namespace zk::test {

class OwnedHandle {
public:
    OwnedHandle() = default;
    explicit OwnedHandle(HANDLE handle) noexcept : handle_(handle) { }
    OwnedHandle(OwnedHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) { }
    OwnedHandle& operator=(OwnedHandle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~OwnedHandle() { close(); }

    operator HANDLE() const noexcept { return handle_; }

    void close() noexcept
    {
        if (HANDLE const handle = std::exchange(handle_, nullptr))
            CloseHandle(handle);
    }

private:
    HANDLE handle_ = nullptr;
};

}  // namespace zk::test
