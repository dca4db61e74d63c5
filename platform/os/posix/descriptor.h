// descriptor.h: a file descriptor that is closed at the end of its scope.
//
//   Descriptor const folder(systemCalls().open(path, O_PATH | O_CLOEXEC, 0));
//   if (!folder)
//       return errorOfPath(path, errno);
#pragma once

#include "platform/os/posix/systemCalls.h"

#include <utility>

namespace zk::os {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) { }
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) { }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~Descriptor() { reset(); }

    explicit operator bool() const noexcept { return descriptor_ >= 0; }
    int get() const noexcept { return descriptor_; }
    int release() noexcept { return std::exchange(descriptor_, -1); }

    /// Closes what is held, errno untouched, and holds the new one.
    void reset(int descriptor = -1) noexcept
    {
        int const error = errno;
        if (descriptor_ >= 0)
            systemCalls().close(descriptor_);
        errno = error;
        descriptor_ = descriptor;
    }

private:
    int descriptor_ = -1;
};

}  // namespace zk::os
