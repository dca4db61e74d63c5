#include "platform/os/posix/findFiles.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/handles.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

namespace zk::os {
namespace {

void fill(WIN32_FIND_DATAA& entry, FileStatus const& status, std::string_view name) noexcept
{
    entry = {};
    entry.dwFileAttributes = status.attributes();
    entry.ftCreationTime = status.created;
    entry.ftLastAccessTime = status.accessed;
    entry.ftLastWriteTime = status.written;
    entry.nFileSizeHigh = DWORD(status.size >> 32);
    entry.nFileSizeLow = DWORD(status.size);
    entry.dwReserved0 = status.isLink ? IO_REPARSE_TAG_SYMLINK : 0;
    name.copy(entry.cFileName, sizeof entry.cFileName - 1);
}

unsigned char upper(char character) noexcept
{
    auto const byte = static_cast<unsigned char>(character);
    return byte >= 'a' && byte <= 'z' ? byte - ('a' - 'A') : byte;
}

// "." and ".." first, as in every folder; names that differ in case alone stand side by side.
bool standsBefore(std::string_view left, std::string_view right) noexcept
{
    auto const isDots = [](std::string_view name) { return name == "." || name == ".."; };
    if (isDots(left) != isDots(right))
        return isDots(left);
    auto const [l, r] = std::mismatch(left.begin(), left.end(), right.begin(), right.end(),
                                      [](char a, char b) { return upper(a) == upper(b); });
    if (l == left.end() && r == right.end())
        return left < right;
    if (l == left.end() || r == right.end())
        return l == left.end();
    return upper(*l) < upper(*r);
}

// The matching names in a folder, one behind the other with a NUL each.
class Names {
public:
    DWORD read(int folder, std::string_view pattern)
    {
        add(".", pattern);
        add("..", pattern);
        alignas(dirent64) char buffer[32 * 1024];
        for (;;) {
            ssize_t const length =
                uninterrupted([&] { return systemCalls().getdents64(folder, buffer, sizeof buffer); });
            if (length == -1)
                return errorFromErrno(errno);
            if (length == 0)
                break;
            for (ssize_t at = 0; at < length;) {
                auto const* const entry = reinterpret_cast<dirent64 const*>(buffer + at);
                if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
                    add(entry->d_name, pattern);
                at += entry->d_reclen;
            }
        }
        std::sort(starts_.begin(), starts_.end(), [this](std::size_t left, std::size_t right) {
            return standsBefore(text_.data() + left, text_.data() + right);
        });
        return ERROR_SUCCESS;
    }

    /// The next name; null behind the last.
    char const* next() noexcept { return next_ < starts_.size() ? text_.data() + starts_[next_++] : nullptr; }

private:
    void add(char const* name, std::string_view pattern)
    {
        if (!matchesFilePattern(name, pattern))
            return;
        starts_.push_back(text_.size());
        text_.insert(text_.end(), name, name + std::strlen(name) + 1);
    }

    std::vector<char> text_;
    std::vector<std::size_t> starts_;
    std::size_t next_ = 0;
};

class Search final : public KernelObject {
public:
    /// A search that has given its only entry.
    Search() = default;
    Search(Descriptor folder, Names names) noexcept : folder_(std::move(folder)), names_(std::move(names)) { }

    DWORD next(WIN32_FIND_DATAA& entry) noexcept
    {
        std::lock_guard const guard(mutex_);
        while (char const* const name = names_.next()) {
            FileStatus status;
            DWORD const error = statusIn(folder_.get(), name, status);
            if (error == ERROR_FILE_NOT_FOUND)
                continue;
            if (error)
                return error;
            fill(entry, status, name);
            return ERROR_SUCCESS;
        }
        return ERROR_NO_MORE_FILES;
    }

private:
    std::mutex mutex_;           // guards the position in names_
    Descriptor const folder_{};  // the search goes on in it, wherever the current directory goes
    Names names_;
};

using SearchPointer = std::shared_ptr<Search>;

// "." and ".." at the end are given under the name that the folder really has,
// also where a link on the way leads to another place than the path's text.
DWORD findFolderItself(char const* path, WIN32_FIND_DATAA& entry) noexcept
{
    FileStatus status;
    if (DWORD const error = statusOf(path, status))
        return error;
    char full[PATH_MAX];
    if (!systemCalls().realpath(path, full))
        return errorOfPath(path, errno);
    std::string_view const name = nameOf(full);
    if (name.empty())
        return ERROR_FILE_NOT_FOUND;  // the root stands in no folder
    fill(entry, status, name);
    return ERROR_SUCCESS;
}

DWORD findOne(char const* path, std::string_view name, WIN32_FIND_DATAA& entry, SearchPointer& search)
{
    DWORD error = ERROR_SUCCESS;
    if (name == "." || name == "..") {
        error = findFolderItself(path, entry);
    } else {
        FileStatus status;
        error = statusOf(path, status);
        if (!error)
            fill(entry, status, name);
    }
    if (!error)
        search = std::make_shared<Search>();
    return error;
}

DWORD findMany(char const* path, std::string_view pattern, WIN32_FIND_DATAA& entry, SearchPointer& search)
{
    // Not folderOf(): the folder part stands as it is, "missing//*" too.
    std::string_view const before(path, std::size_t(pattern.data() - path));
    std::string const folder = before.empty() ? "." : std::string(before);
    Descriptor directory(uninterrupted(
        [&] { return systemCalls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!directory)
        return errno == ENOENT || errno == ENOTDIR ? ERROR_PATH_NOT_FOUND : errorFromErrno(errno);
    Names names;
    if (DWORD const error = names.read(directory.get(), pattern))
        return error;
    search = std::make_shared<Search>(std::move(directory), std::move(names));
    DWORD const error = search->next(entry);
    return error == ERROR_NO_MORE_FILES ? ERROR_FILE_NOT_FOUND : error;
}

DWORD findFirst(char const* path, WIN32_FIND_DATAA& entry, SearchPointer& search)
{
    if (isEmpty(path))
        return ERROR_PATH_NOT_FOUND;
    std::string_view const name = nameOf(path);
    if (name.empty())
        return ERROR_FILE_NOT_FOUND;
    bool const isPattern = name.find_first_of("*?") != name.npos;
    return isPattern ? findMany(path, name, entry, search) : findOne(path, name, entry, search);
}

bool matches(std::string_view name, std::string_view pattern) noexcept
{
    // After a mismatch only the latest "*" need take one character more.
    std::size_t at = 0, of = 0;
    std::size_t star = pattern.npos, starAt = 0;
    while (at < name.size()) {
        if (of < pattern.size() && pattern[of] == '*') {
            star = of++;
            starAt = at;
        } else if (of < pattern.size() && (pattern[of] == '?' || pattern[of] == name[at])) {
            ++of;
            ++at;
        } else if (star != pattern.npos) {
            of = star + 1;
            at = ++starAt;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', of) == pattern.npos;
}

}  // namespace

bool matchesFilePattern(std::string_view name, std::string_view pattern) noexcept
{
    constexpr std::string_view anyExtension = ".*";
    for (;;) {
        if (matches(name, pattern))
            return true;
        if (!pattern.ends_with(anyExtension))
            return false;
        pattern.remove_suffix(anyExtension.size());
    }
}

}  // namespace zk::os

using namespace zk::os;

HANDLE WINAPI FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA entry) noexcept
{
    SearchPointer search;
    if (!report(guarded([&] { return findFirst(pattern, *entry, search); })))
        return INVALID_HANDLE_VALUE;
    HANDLE const handle = openHandle(std::move(search), false);
    return handle ? handle : INVALID_HANDLE_VALUE;
}

BOOL WINAPI FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA entry) noexcept
{
    auto const object = objectOf<Search>(search);
    return object && report(object->next(*entry));
}

BOOL WINAPI FindClose(HANDLE search) noexcept
{
    return objectOf<Search>(search) && CloseHandle(search);
}
