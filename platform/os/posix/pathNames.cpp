#include "platform/os/posix/pathNames.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/environment.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/textResult.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <cstdio>

namespace zk::os {
namespace {

// Appends the components of `path` to `full`, which holds "" for the root or
// an absolute path without a separator at its end.
void appendComponents(std::string& full, std::string_view path)
{
    while (!path.empty()) {
        std::size_t const end = std::min(path.find('/'), path.size());
        std::string_view const component = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (component.empty() || component == ".")
            continue;
        if (component == "..") {
            full.erase(std::min(full.rfind('/'), full.size()));
            continue;
        }
        full += '/';
        full += component;
    }
}

std::string temporaryFolder()
{
    std::string folder = environmentVariable("TMPDIR").value_or("");
    if (folder.empty())
        folder = "/tmp";
    return folder + '/';
}

std::string temporaryName(std::string_view folder, std::string_view prefix, UINT number)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%X.tmp", number);
    std::string name(folder);
    if (!endsInSeparator(name))
        name += '/';
    return name.append(prefix.substr(0, 3)).append(digits);
}

// A number that two processes, or two calls in one, seldom begin with.
UINT firstNumber() noexcept
{
    timespec now = {};
    systemCalls().clock_gettime(CLOCK_REALTIME, &now);
    return UINT(now.tv_nsec >> 10) ^ UINT(now.tv_sec << 5) ^ (UINT(getpid()) << 3);
}

constexpr UINT numberCount = 0x10000;

DWORD createTemporary(char const* folder, std::string_view prefix, UINT& number, std::string& name)
{
    UINT const first = firstNumber();
    for (UINT step = 0; step < numberCount; ++step) {
        number = (first + step) % numberCount;
        if (number == 0)
            continue;
        name = temporaryName(folder, prefix, number);
        Descriptor const file(uninterrupted([&] {
            return systemCalls().open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        }));
        if (file)
            return ERROR_SUCCESS;
        if (errno != EEXIST)
            return errorOfPath(name.c_str(), errno);
    }
    return ERROR_FILE_EXISTS;
}

DWORD temporaryFileName(char const* folder, std::string_view prefix, UINT& number, char* buffer)
{
    FileStatus status;
    if (isEmpty(folder) || statusOf(folder, status) != ERROR_SUCCESS || !status.isDirectory())
        return ERROR_DIRECTORY;
    constexpr std::size_t longest = MAX_PATH - 14;  // leaves room for a separator and "preXXXX.tmp"
    if (std::string_view(folder).size() > longest)
        return ERROR_BUFFER_OVERFLOW;
    number %= numberCount;
    std::string name = temporaryName(folder, prefix, number);
    if (number == 0)
        if (DWORD const error = createTemporary(folder, prefix, number, name))
            return error;
    giveText(name, MAX_PATH, buffer);
    return ERROR_SUCCESS;
}

}  // namespace

DWORD makeFullPath(char const* name, std::string& full)
{
    std::string_view const path = name;
    full.clear();
    if (path.front() != '/') {
        char current[PATH_MAX];
        if (!systemCalls().getcwd(current, sizeof current))
            return errorFromErrno(errno);
        appendComponents(full, current);
    }
    appendComponents(full, path);
    if (full.empty() || endsInSeparator(path))
        full += '/';
    return ERROR_SUCCESS;
}

}  // namespace zk::os

using namespace zk::os;

DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD room, LPSTR buffer, LPSTR* filePart) noexcept
{
    std::string full;
    DWORD const error =
        isEmpty(name) ? ERROR_INVALID_NAME : guarded([&] { return makeFullPath(name, full); });
    if (!report(error))
        return 0;
    DWORD const length = giveText(full, room, buffer);
    if (filePart && length == full.size())
        *filePart = endsInSeparator(full) ? nullptr : buffer + (full.size() - nameOf(full).size());
    return length;
}

DWORD WINAPI GetTempPathA(DWORD room, LPSTR buffer) noexcept
{
    std::string folder;
    DWORD const error = guarded([&] {
        folder = temporaryFolder();
        return ERROR_SUCCESS;
    });
    return report(error) ? GetFullPathNameA(folder.c_str(), room, buffer, nullptr) : 0;
}

UINT WINAPI GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR buffer) noexcept
{
    UINT number = unique;
    bool const wasMade =
        report(guarded([&] { return temporaryFileName(folder, prefix ? prefix : "", number, buffer); }));
    return wasMade ? number : 0;
}
