#include "platform/os/posix/environment.h"

#include "platform/os/posix/characters.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/systemCalls.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>
#include <type_traits>

#include <pwd.h>
#include <unistd.h>

extern char** environ;

namespace zk::os {
namespace {

// Has no destructor to run: static destructors read settings too.
constinit std::mutex environmentMutex;
static_assert(std::is_trivially_destructible_v<std::mutex>);

// Copies a text and its NUL into a buffer that is known to be big enough.
void copyText(std::string_view text, char* target) noexcept
{
    text.copy(target, text.size());
    target[text.size()] = '\0';
}

// The next piece of a text whose variables are to be expanded: a variable's
// value, or one that stands as it is. Cuts it off from `text`.
std::string takePiece(std::string_view& text)
{
    std::string piece;
    std::size_t length = 0;
    if (text.front() != '%') {
        length = std::min(text.find('%'), text.size());
        piece = text.substr(0, length);
    } else if (std::size_t const end = text.find('%', 1); end == text.npos) {
        length = text.size();
        piece = text;
    } else if (auto value = environmentVariable(std::string(text.substr(1, end - 1)).c_str()); value) {
        length = end + 1;
        piece = *std::move(value);
    } else {
        length = end;  // the second "%" may begin another variable
        piece = text.substr(0, length);
    }
    text.remove_prefix(length);
    return piece;
}

std::string userName()
{
    uid_t const user = geteuid();
    std::vector<char> buffer(1024);
    for (;;) {
        passwd entry;
        passwd* found = nullptr;
        int const error = systemCalls().getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
        if (error == ERANGE) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        if (error == EINTR)
            continue;
        return found ? std::string(found->pw_name) : std::to_string(user);
    }
}

}  // namespace

std::optional<std::string> environmentVariable(char const* name)
{
    ShieldedLock const lock(environmentMutex);
    char const* const value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<std::string> environmentSnapshot()
{
    ShieldedLock const lock(environmentMutex);
    std::vector<std::string> variables;
    for (char** variable = environ; variable && *variable; ++variable)
        variables.emplace_back(*variable);
    return variables;
}

}  // namespace zk::os

using namespace zk::os;

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD room) noexcept
{
    ShieldedLock const lock(environmentMutex);
    char const* const found = name && *name ? std::getenv(name) : nullptr;
    if (!found) {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    std::size_t const length = std::strlen(found);
    if (!value || length >= room)
        return static_cast<DWORD>(length + 1);
    copyText({found, length}, value);
    return static_cast<DWORD>(length);
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value) noexcept
{
    if (!name)
        return report(ERROR_ENVVAR_NOT_FOUND);
    if (!*name || std::strchr(name, '='))
        return report(ERROR_INVALID_PARAMETER);
    ShieldedLock const lock(environmentMutex);
    int const result = value ? systemCalls().setenv(name, value, 1) : systemCalls().unsetenv(name);
    return report(result == 0 ? ERROR_SUCCESS : errorFromErrno(errno));
}

DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR target, DWORD room) noexcept
{
    if (!text) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::size_t needed = 1;
    std::size_t written = 0;
    DWORD const error = guarded([&] {
        if (!target)
            room = 0;
        for (std::string_view rest = text; !rest.empty();) {
            std::string const piece = takePiece(rest);
            if (needed + piece.size() <= room) {
                piece.copy(target + written, piece.size());
                written += piece.size();
            }
            needed += piece.size();
        }
        if (room > 0)
            target[written] = '\0';
        return ERROR_SUCCESS;
    });
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return 0;
    }
    if (needed > room)
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return static_cast<DWORD>(needed);
}

LPSTR GetEnvironmentStringsA() noexcept
{
    char* block = nullptr;
    DWORD const error = guarded([&]() -> DWORD {
        std::vector<std::string> const variables = environmentSnapshot();
        std::size_t size = 1;
        for (std::string const& variable : variables)
            size += variable.size() + 1;
        block = static_cast<char*>(std::malloc(size + 1));  // an empty block has two NULs as well
        if (!block)
            return ERROR_NOT_ENOUGH_MEMORY;
        char* end = block;
        for (std::string const& variable : variables) {
            copyText(variable, end);
            end += variable.size() + 1;
        }
        end[0] = '\0';
        if (variables.empty())
            end[1] = '\0';
        return ERROR_SUCCESS;
    });
    return report(error) ? block : nullptr;
}

BOOL FreeEnvironmentStringsA(LPSTR block) noexcept
{
    std::free(block);
    return TRUE;
}

BOOL GetComputerNameA(LPSTR name, LPDWORD size) noexcept
{
    char host[256] = {};
    if (systemCalls().gethostname(host, sizeof host - 1) != 0)
        return report(errorFromErrno(errno));
    std::string_view computer = host;
    computer = computer.substr(0, std::min<std::size_t>(computer.find('.'), MAX_COMPUTERNAME_LENGTH));
    if (*size <= computer.size()) {
        *size = static_cast<DWORD>(computer.size() + 1);
        return report(ERROR_BUFFER_OVERFLOW);
    }
    copyText(computer, name);
    for (std::size_t i = 0; i < computer.size(); ++i)
        name[i] = static_cast<char>(upperOf(static_cast<unsigned char>(name[i])));
    *size = static_cast<DWORD>(computer.size());
    return TRUE;
}

BOOL GetUserNameA(LPSTR name, LPDWORD size) noexcept
{
    return report(guarded([&]() -> DWORD {
        std::string const user = userName();
        DWORD const room = name ? *size : 0;
        *size = static_cast<DWORD>(user.size() + 1);
        if (room <= user.size())
            return ERROR_INSUFFICIENT_BUFFER;
        copyText(user, name);
        return ERROR_SUCCESS;
    }));
}
