// fileObject.h: what a file handle refers to: a file, a pipe's end, a device.
//
//   auto file = std::make_shared<FileObject>(std::move(descriptor), FileObject::reads, S_IFREG);
//   HANDLE const handle = openHandle(std::move(file), inheritable);
//
// The methods give error numbers; the public calls set the last error once.
#pragma once

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/handles.h"

#include <mutex>
#include <vector>

namespace zk::os {

class FileObject final : public KernelObject {
public:
    enum Access : unsigned { none = 0, reads = 1, writes = 2, appends = 4, changesAttributes = 8 };
    enum class OnClose { keep, remove };

    /// `type` is the file's kind as in st_mode.
    FileObject(Descriptor descriptor, unsigned access, mode_t type) noexcept;

    /// For a file that is opened later, with attach(), before anybody else knows the object.
    explicit FileObject(unsigned access) noexcept;
    void attach(Descriptor descriptor) noexcept { descriptor_ = std::move(descriptor); }
    void setType(mode_t type) noexcept { type_ = type & S_IFMT; }

    /// With OnClose::remove the file, or an empty folder, is removed when the
    /// last handle to it is closed.
    void setOnClose(OnClose onClose) noexcept { onClose_ = onClose; }

    /// For a descriptor that outlives the object: one of the process's standard files.
    struct Borrowed {
        int descriptor;
    };
    FileObject(Borrowed borrowed, unsigned access, mode_t type) noexcept;

    ~FileObject() override;

    int descriptor() const noexcept override { return descriptor_.get(); }
    bool isRegular() const noexcept { return S_ISREG(type_); }
    bool canSeek() const noexcept
    {
        return S_ISREG(type_) || S_ISBLK(type_) || S_ISDIR(type_) || S_ISCHR(type_);
    }
    mode_t type() const noexcept { return type_; }

    /// Whether the file was opened for any of these uses.
    bool allows(unsigned access) const noexcept { return (access_ & access) != 0; }

    /// Reads what there is, a regular file up to `length` or its end.
    DWORD read(void* buffer, DWORD length, DWORD& done) noexcept;
    /// Writes all, or fails; `done` is what was written in either case.
    DWORD write(void const* buffer, DWORD length, DWORD& done) noexcept;
    DWORD seek(LONGLONG distance, DWORD origin, LONGLONG& position) noexcept;
    DWORD truncateHere() noexcept;
    DWORD size(LONGLONG& bytes) noexcept;
    DWORD flush() noexcept;
    /// @throws std::bad_alloc, and nothing is locked then
    DWORD lock(ULONGLONG offset, ULONGLONG length);
    DWORD unlock(ULONGLONG offset, ULONGLONG length) noexcept;

private:
    struct Range {
        off_t begin;
        off_t end;
    };

    void removeFile() noexcept;
    bool isAtEndOfPipe() noexcept;
    DWORD setLock(Range range, short type) noexcept;

    Descriptor descriptor_;
    unsigned const access_;
    mode_t type_ = 0;
    OnClose onClose_ = OnClose::keep;
    bool const isBorrowed_ = false;
    std::mutex mutex_;          // guards locks_
    std::vector<Range> locks_;  // what lock() holds; no two overlap
};

}  // namespace zk::os
