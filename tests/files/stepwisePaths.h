// stepwisePaths.h: path cleaning as a list of small steps, each searching from the start again.
//
// Slow and obvious: the yardstick for the functions that do it in one pass.
#pragma once

#include <algorithm>
#include <string>

namespace zk::test {

inline void replaceAll(std::string& text, std::string const& from, std::string const& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

inline std::size_t leadingNatives(std::string const& path, char native)
{
    std::size_t count = 0;
    while (count < path.size() && path[count] == native)
        ++count;
    return count;
}

inline std::string stepwiseCutMidDDot(std::string path, char separator, char native)
{
    if (path.rfind("https://", 0) == 0 || path.rfind("http://", 0) == 0)
        return path;
    if (separator == '\\' || separator == '/') {
        replaceAll(path, "/", std::string(1, separator));
        replaceAll(path, "\\", std::string(1, separator));
    } else {
        separator = native;
    }
    std::string const up = std::string("..") + separator;
    std::string const down = separator + std::string("..");
    std::string prefix;
    std::size_t const roots = leadingNatives(path, native);
    while (path.rfind(up, 0) == 0) {
        path.erase(0, 3);
        prefix += up;
    }
    for (std::size_t p = path.find(down); p != std::string::npos; p = path.find(down)) {
        std::string left = path.substr(0, p);
        if (left.empty())
            break;
        std::size_t const last = left.rfind(separator);
        left = last == std::string::npos ? "" : left.substr(0, last);
        path = left + path.substr(p + 3);
        if (!path.empty() && path[0] == separator)
            path.erase(0, 1);
        while (path.rfind(up, 0) == 0) {
            path.erase(0, 3);
            prefix += up;
        }
    }
    path = prefix + path;
    std::size_t const rootsNow = leadingNatives(path, native);
    if (rootsNow < roots)
        path.insert(0, roots - rootsNow, native);
    return path;
}

inline std::string stepwiseCleanPath(std::string path, char separator, bool keepCase, bool resolveDots,
                                     bool collapseSeparators)
{
    std::string const one(1, separator == '/' ? '/' : '\\');
    std::string const two = one + one;
    if (separator == '/')
        replaceAll(path, "\\", "/");
    else
        replaceAll(path, "/", std::string(1, separator));
    if (collapseSeparators)
        while (path.find(two) != std::string::npos)
            path.erase(path.find(two), 1);
    if (!keepCase)
        for (char& character : path)
            if (character >= 'A' && character <= 'Z')
                character = char(character - 'A' + 'a');
    if (!resolveDots)
        return path;

    while (path.size() >= 2 && path[0] == '.' && path[1] == separator)
        path.erase(0, 2);
    while (path.size() >= 2 && path[path.size() - 1] == '.' && path[path.size() - 2] == separator)
        path.resize(path.size() - 2);
    std::string const inner = {separator, '.', separator};
    for (std::size_t p = path.find(inner); p != std::string::npos; p = path.find(inner)) {
        std::string following = path.substr(p + 3);
        if (following == ".")
            following.clear();
        path = path.substr(0, p + 1) + following;
    }
    std::string const down = separator + std::string("..");
    std::size_t start = 0;
    for (std::size_t p = path.find(down, start); p != std::string::npos; p = path.find(down, start)) {
        if (p == 0) {
            start = 3;
            continue;
        }
        std::string head = path.substr(0, p);
        std::size_t const last = head.rfind(separator);
        if (last == std::string::npos) {
            if (head == "..") {
                start = p + 1;
                continue;
            }
            head.clear();
        } else if (head.substr(last) == down) {
            start = p + 1;
            continue;
        } else {
            head.resize(last + 1);
        }
        path = head + (p + 4 <= path.size() ? path.substr(p + 4) : "");
    }
    bool const isDoubledAtStart = path.rfind(two, 0) == 0;
    while (path.find(two) != std::string::npos)
        path.erase(path.find(two), 1);
    if (isDoubledAtStart)
        path.insert(0, one);
    return path;
}

inline std::string stepwiseLower(std::string text)
{
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = char(character - 'A' + 'a');
    return text;
}

/// What omGetRelativePath makes of `result`.
inline std::string stepwiseRelativePath(std::string const& target, std::string const& base,
                                        std::string result, char separator)
{
    std::string const lowerTarget = stepwiseLower(target + separator);
    std::string const lowerBase = stepwiseLower(base + separator);
    std::size_t const shorter = std::min(lowerTarget.size(), lowerBase.size());
    std::size_t shared = std::string::npos;
    for (std::size_t i = 0; i < shorter && lowerTarget[i] == lowerBase[i]; ++i)
        if (lowerTarget[i] == separator)
            shared = i;
    if (shared == std::string::npos)
        return target;
    for (std::size_t i = shared + 1; i < lowerBase.size(); ++i)
        if (lowerBase[i] == separator)
            result += std::string("..") + separator;
    std::string const whole = target + separator;
    std::size_t const left = whole.size() - (shared + 1);
    result += whole.substr(whole.size() - left);
    while (!result.empty() && result.back() == separator)
        result.pop_back();
    return result;
}

struct PathParts {
    std::string dir;
    std::string file;
    std::string extension;
};

/// What ParseToDirFileNameAndExtension makes of a path, with three empty results.
inline PathParts stepwiseParts(std::string const& path)
{
    std::string head = path;  // without the mark of a stored version, and what follows
    for (char const* const mark : {"@@\\main\\", "@@/main/"})
        head = head.substr(0, head.find(mark));
    std::size_t start = head.size();
    while (start > 0 && head[start - 1] != '/' && head[start - 1] != '\\')
        --start;
    PathParts parts{path.substr(0, start), path.substr(start), ""};
    if (!parts.dir.empty())
        parts.dir.pop_back();  // the separator
    std::string const name = head.substr(start);
    if (name.find('.') != std::string::npos)
        parts.extension = name.substr(name.rfind('.') + 1);
    return parts;
}

}  // namespace zk::test
