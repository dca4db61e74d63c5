#include "platform/classlib/filePaths.h"

#include "platform/os/os.h"

#include <algorithm>
#include <new>

namespace zk {
namespace {

int lastSeparator(CString const& path)
{
    int const slash = path.ReverseFind('/');
    return os::nativeSeparatorIsBackslash() ? std::max(slash, path.ReverseFind('\\')) : slash;
}

}  // namespace

CString fullPath(char const* name)
{
    CString path;
    DWORD room = MAX_PATH;
    for (;;) {
        DWORD const length = GetFullPathNameA(name ? name : "", room, path.GetBuffer(int(room)), nullptr);
        path.ReleaseBuffer(length < room ? int(length) : 0);
        if (length == 0 && GetLastError() == ERROR_NOT_ENOUGH_MEMORY)
            throw std::bad_alloc();
        if (length == 0)
            return name;
        if (length < room)
            return path;
        room = length;
    }
}

CString lastComponent(CString const& path)
{
    return path.Mid(lastSeparator(path) + 1);
}

CString withoutExtension(CString const& name)
{
    int const dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}

CString folderOf(CString const& path)
{
    int const separator = lastSeparator(path);
    bool const isRoot =
        separator == 0 || (separator == 2 && path[1] == ':' && os::nativeSeparatorIsBackslash());
    return path.Left(isRoot ? separator + 1 : separator);
}

}  // namespace zk
