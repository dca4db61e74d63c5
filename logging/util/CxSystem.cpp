#include "logging/util/CxSystem.h"

#include "platform/os/hostName.h"
#include "platform/os/os.h"

#include <chrono>
#include <utility>

namespace {

constexpr int noHostName = 40;

}  // namespace

CCgResult CxCurrentDirectory(std::string& directory)
{
    DWORD room = MAX_PATH;
    for (;;) {
        std::string text(room, '\0');
        DWORD const length = GetCurrentDirectoryA(room, text.data());
        if (length == 0)
            return zk::logging::lastSystemError();
        if (length < room) {
            text.resize(length);
            directory = std::move(text);
            return {};
        }
        room = length + 1;  // the directory may change meanwhile: ask again
    }
}

std::optional<std::string> CxGetEnvironment(char const* name)
{
    DWORD room = 128;
    for (;;) {
        std::string value(room, '\0');
        SetLastError(ERROR_SUCCESS);
        DWORD const length = GetEnvironmentVariableA(name, value.data(), room);
        if (length == 0 && GetLastError() != ERROR_SUCCESS)
            return std::nullopt;
        if (length < room) {
            value.resize(length);
            return value;
        }
        room = length + 1;
    }
}

CCgResult CxSetEnvironment(char const* name, char const* value)
{
    return SetEnvironmentVariableA(name, value) ? CCgResult() : zk::logging::lastSystemError();
}

std::uint32_t CxProcessId() noexcept
{
    return GetCurrentProcessId();
}

std::int64_t CxTimeInMilliseconds() noexcept
{
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

CCgResult CxHostName(std::string& name)
{
    zk::os::SocketLibrary const sockets;
    std::string own = sockets.started() ? zk::os::hostName() : std::string();
    if (own.empty())
        return zk::logging::libraryError(noHostName);
    if (own.find('.') == std::string::npos) {
        std::string official = zk::os::officialHostName(own);
        if (official.find('.') != std::string::npos)
            own = std::move(official);
    }
    name = std::move(own);
    return {};
}
