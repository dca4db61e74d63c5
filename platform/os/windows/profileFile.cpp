#include "platform/os/profileFile.h"

#include "platform/os/os.h"

#include <string_view>

std::string zk::os::profileFile(char const* name)
{
    // A bare name lies in the system's own folder.
    if (!*name || std::string_view(name).find_first_of("\\/:") != std::string_view::npos)
        return name;
    char folder[MAX_PATH];
    UINT const length = GetWindowsDirectoryA(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return {};
    return std::string(folder, length) + '\\' + name;
}
