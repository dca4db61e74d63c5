// ScopedHandle.h: a handle that is closed at the end of its scope, and short ways to open files.
//
//   ScopedHandle const file = openFile(folder.path("a"), GENERIC_READ);
//   ASSERT_TRUE(file);
//   EXPECT_EQ(readAll(file.get()), "content");
#pragma once

#include "platform/os/os.h"

#include <string>
#include <utility>

class ScopedHandle {
public:
    explicit ScopedHandle(HANDLE handle = INVALID_HANDLE_VALUE) noexcept : handle_(handle) { }
    ScopedHandle(ScopedHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE))
    {
    }
    ScopedHandle& operator=(ScopedHandle&& other) noexcept
    {
        close();
        handle_ = std::exchange(other.handle_, INVALID_HANDLE_VALUE);
        return *this;
    }
    ~ScopedHandle() { close(); }

    explicit operator bool() const noexcept { return handle_ && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return handle_; }

    /// Closes the handle, the last error untouched.
    void close() noexcept
    {
        DWORD const error = GetLastError();
        if (*this)
            CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
        SetLastError(error);
    }

private:
    HANDLE handle_;
};

constexpr DWORD sharesAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

inline ScopedHandle openFile(std::string const& path, DWORD access, DWORD sharing = sharesAll,
                             DWORD disposition = OPEN_EXISTING, DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    return ScopedHandle(CreateFileA(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr));
}

inline std::string readAll(HANDLE file)
{
    std::string content;
    char piece[1000];
    DWORD count = 0;
    while (ReadFile(file, piece, sizeof piece, &count, nullptr) && count > 0)
        content.append(piece, count);
    return content;
}

inline bool writeText(HANDLE file, std::string const& text)
{
    DWORD count = 0;
    return WriteFile(file, text.data(), DWORD(text.size()), &count, nullptr) && count == text.size();
}
