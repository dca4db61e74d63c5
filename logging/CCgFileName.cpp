#include "logging/CCgFileName.h"

#include "logging/CCgMisc.h"
#include "logging/util/CxChars.h"
#include "logging/util/CxSystem.h"
#include "platform/os/nativeSeparator.h"

#include <algorithm>

namespace zk::logging {

namespace {

// Where a name's extension begins, with its dot; the name's length if it has none. A dot in a folder's name
// begins none.
std::size_t extensionOf(std::string_view name)
{
    std::string_view const separators = os::nativeSeparatorIsBackslash() ? "/\\" : "/";
    std::size_t const dot = name.rfind('.');
    std::size_t const separator = name.find_last_of(separators);
    bool const isInLastName =
        dot != std::string_view::npos && (separator == std::string_view::npos || separator < dot);
    return isInLastName ? dot : name.size();
}

bool isAbsolute(std::string_view directory)
{
    if (directory.starts_with(os::nativeSeparator()))
        return true;
    return os::nativeSeparatorIsBackslash() && directory.size() >= 2 && directory[1] == ':';
}

// A directory as seen from the current one. Where that cannot be told the directory stays as it stands.
std::string madeAbsolute(std::string_view directory)
{
    std::string current;
    if (isAbsolute(directory) || !CxCurrentDirectory(current).ok())
        return std::string(directory);
    return directory.empty() ? current : current.append("/").append(directory);
}

}  // namespace

std::string markedFileName(std::string_view name)
{
    std::string marked(name);
    std::size_t const end = extensionOf(marked);
    if (end > 0 && CxIsDigit(marked[end - 1]))
        marked.insert(end, 1, '_');
    return marked;
}

FileNameFault parseFileName(std::string_view name, FileName& parsed)
{
    parsed = FileName();
    if (name.empty())
        return FileNameFault::missing;
    if (name.size() > longestFileName)
        return FileNameFault::tooLong;
    std::string rest(name);
    if (os::nativeSeparatorIsBackslash()) {
        if (rest.front() == '/' && !CxGetEnvironment("SystemDrive"))
            return FileNameFault::invalid;
        std::replace(rest.begin(), rest.end(), '/', '\\');
    }
    if (std::size_t const dot = extensionOf(rest); dot < rest.size()) {
        parsed.extension = rest.substr(dot + 1);
        rest.resize(dot);
    }
    std::size_t digits = rest.size();
    while (digits > 0 && CxIsDigit(rest[digits - 1]))
        --digits;
    parsed.number = scanInt32(std::string_view(rest).substr(digits)).value_or(0);
    rest.resize(digits);

    std::size_t const separator = rest.rfind(os::nativeSeparator());
    if (separator == std::string::npos) {
        parsed.directory = madeAbsolute("");
        parsed.baseName = rest;
    } else {
        // What begins with a separator lies in the root, whose name is empty.
        parsed.directory = separator == 0 ? "" : madeAbsolute(std::string_view(rest).substr(0, separator));
        parsed.baseName = rest.substr(separator);
    }
    return FileNameFault::none;
}

std::string FileName::path(std::int32_t index) const
{
    std::string path = directory + '/' + baseName;
    if (index != 0)
        path += std::to_string(index);
    if (extension)
        path.append(".").append(*extension);
    return path;
}

}  // namespace zk::logging
