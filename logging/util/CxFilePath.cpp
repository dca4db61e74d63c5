#include "logging/util/CxFilePath.h"

#include "platform/os/fileDescriptors.h"
#include "platform/os/nativeSeparator.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

using namespace zk::logging;

void setPath(CxFilePath& path, std::string_view text) noexcept
{
    std::size_t const length = text.size();
    std::memmove(path.path, text.data(), length);
    path.path[length] = '\0';
    if (zk::os::nativeSeparatorIsBackslash())
        std::replace(path.path, path.path + length, '\\', '/');
    path.length = static_cast<std::int32_t>(length);
    std::size_t const slash = path.view().rfind('/');
    path.lastSlash = slash == std::string_view::npos ? -1 : static_cast<std::int32_t>(slash);
}

bool isDrive(std::string_view text) noexcept
{
    return zk::os::nativeSeparatorIsBackslash() && text.size() == 2 && text[1] == ':';
}

CCgResult makeOne(CxFilePath const& path, int permissions)
{
    CxMappedPath mapped;
    if (CCgResult const result = CxMapPath(mapped, path.path); !result.ok())
        return result;
    if (zk::os::makeFolder(mapped.text, permissions) == 0)
        return {};
    if (errno != EEXIST)
        return libraryError(errno);
    return CxFilePathIsDirectory(path);
}

}  // namespace

CCgResult CxFilePathMake(CxFilePath& path, char const* text) noexcept
{
    path = CxFilePath();
    if (!text || std::strlen(text) > CX_LONGEST_PATH)
        return invalidArguments;
    setPath(path, text);
    return {};
}

CCgResult CxFilePathIsDirectory(CxFilePath const& path)
{
    CxFileStatus status;
    CCgResult const result = CxFileStat(path.path, status);
    return result.ok() && !status.isFolder ? libraryError(ENOTDIR) : result;
}

bool CxFilePathParent(CxFilePath const& path, CxFilePath& parent) noexcept
{
    std::string_view text = path.view();
    // Separators at the end, and several in a row, separate nothing more.
    auto const withoutSlashes = [](std::string_view part) {
        std::size_t const end = part.find_last_not_of('/');
        return end == std::string_view::npos ? part.substr(0, std::min<std::size_t>(part.size(), 1))
                                             : part.substr(0, end + 1);
    };
    text = withoutSlashes(text);
    std::size_t const slash = text.rfind('/');
    if (slash == std::string_view::npos || text == "/")
        return false;
    text = withoutSlashes(text.substr(0, slash + 1));
    if (isDrive(text))
        text = path.view().substr(0, 3);
    if (text.size() == path.view().size())
        return false;
    setPath(parent, text);
    return true;
}

CCgResult CxFilePathMakeDirectories(CxFilePath const& path, int permissions)
{
    if (path.length == 0)
        return invalidArguments;
    CCgResult const result = CxFilePathIsDirectory(path);
    if (result != libraryError(ENOENT))
        return result;
    CxFilePath parent;
    if (CxFilePathParent(path, parent))
        if (CCgResult const made = CxFilePathMakeDirectories(parent, permissions); !made.ok())
            return made;
    return makeOne(path, permissions);
}
