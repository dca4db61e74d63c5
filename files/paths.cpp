#include "files/paths.h"

#include "platform/os/os.h"
#include "text/reserve.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

// The marks at which the text after them belongs to a stored version of the file.
constexpr char const* versionMarkers[] = {"@@\\main\\", "@@/main/"};

}  // namespace

char omPathSeparator()
{
    return zk::os::nativeSeparator();
}

void replaceBackSlashIfUnix(CString& path)
{
    if (omPathSeparator() == '/')
        path.Replace('\\', '/');
}

void normalizeBackSlashes(CString& path)
{
    path.Replace('\\', omPathSeparator());
    path.Replace('/', omPathSeparator());
}

CString omConcatDirAndFile(CString const& dir, CString const& file)
{
    if (dir.IsEmpty())
        return file;
    if (file.IsEmpty())
        return dir;
    CString joined;
    zk::reserve(joined, dir.view().size() + 1 + file.view().size());
    joined += dir;
    joined += omPathSeparator();
    joined += file;
    return joined;
}

bool omIsAbsolutePath(CString const& path)
{
    if (path.IsEmpty())
        return false;
    if (path[0] == omPathSeparator())
        return true;
    int const colon = path.Find(':');
    if (colon < 0)
        return false;
    // What a strictly alphanumeric form of the name would not change: its '_' stands for itself.
    std::string_view const name = path.view().substr(0, std::size_t(colon));
    return std::all_of(name.begin(), name.end(), [](char character) {
        return character == '_' || _ismbcalnum(static_cast<unsigned char>(character)) != 0;
    });
}

void omParseToDirAndFileName(CString path, CString& dir, CString& file)
{
    int const separator = std::max(path.ReverseFind('\\'), path.ReverseFind('/'));
    dir = path.Left(separator);
    file = path.Mid(separator + 1);
}

void ParseToDirFileNameAndExtension(CString const& path, CString& dir, CString& file, CString& extension)
{
    if (path.IsEmpty())
        return;
    int marker = path.Find(versionMarkers[0]);
    if (marker < 0)
        marker = path.Find(versionMarkers[1]);
    if (marker >= 0) {  // at most twice: a head has no more of the marks that were looked for first
        CString const version = path.Mid(marker);
        ParseToDirFileNameAndExtension(path.Left(marker), dir, file, extension);
        file += version;
        return;
    }
    omParseToDirAndFileName(path, dir, file);
    int const dot = file.ReverseFind('.');
    extension = dot < 0 ? CString() : file.Mid(dot + 1);
}

CString omGetFileExtension(CString const& path)
{
    int const dot = path.ReverseFind('.');  // of the whole text: "a.b\c" has the extension ".b\c"
    return dot < 0 ? CString() : path.Mid(dot);
}

void omGetRelativePath(CString const& target, CString const& base, CString& result, char separator)
{
    CString const wholeTarget = target + separator;
    CString lowerTarget = wholeTarget;
    CString lowerBase = base + separator;
    lowerTarget.MakeLower();
    lowerBase.MakeLower();

    std::string_view const from = lowerBase.view();
    std::string_view const to = lowerTarget.view();
    auto const agreed =
        std::size_t(std::mismatch(from.begin(), from.end(), to.begin(), to.end()).first - from.begin());
    std::size_t const common = from.substr(0, agreed).rfind(separator);
    if (common == std::string_view::npos) {
        result = target;
        return;
    }

    auto const levels = std::count(from.begin() + std::ptrdiff_t(common) + 1, from.end(), separator);
    for (std::ptrdiff_t i = 0; i < levels; ++i) {
        result += "..";
        result += separator;
    }
    result += wholeTarget.Mid(int(common) + 1);
    result.TrimRight(separator);
}
