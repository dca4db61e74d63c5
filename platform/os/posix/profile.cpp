#include "platform/os/posix/profile.h"

#include "platform/os/posix/environment.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/profileCache.h"
#include "platform/os/posix/profileChange.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/profileFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace zk::os {
namespace {

constexpr char const* defaultFile = "win.ini";

// The folder of the user's own files; empty if there is none.
std::string homeFolder()
{
    if (auto home = environmentVariable("HOME"); home && home->starts_with('/'))
        return *home;
    std::vector<char> buffer(16 * 1024);
    passwd entry;
    passwd* found = nullptr;
    if (systemCalls().getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return found->pw_dir;
}

// Reads a profile; the last error becomes what came of it.
std::shared_ptr<ProfileText const> openProfile(char const* file)
{
    char const* const name = file ? file : defaultFile;
    std::shared_ptr<ProfileText const> profile;
    DWORD error = ERROR_ACCESS_DENIED;
    if (std::strchr(name, '/')) {
        error = readProfile(name, profile);
    } else if (*name) {
        std::string const path = profileFile(name);
        error = path.empty() ? GetLastError() : readProfile(path.c_str(), profile);
    }
    SetLastError(error);
    return profile;
}

// Copies as much of a text as fits.
DWORD giveClipped(std::string_view text, char* target, DWORD room) noexcept
{
    std::size_t const length = std::min<std::size_t>(text.size(), room - 1);
    std::copy_n(text.data(), length, target);
    target[length] = '\0';
    return DWORD(length);
}

// Copies a list of names, each with its NUL, and one NUL more.
DWORD giveList(std::string_view names, char* target, DWORD room) noexcept
{
    if (room < 2)
        return giveClipped({}, target, room);
    std::size_t const length = std::min<std::size_t>(names.size(), room - 2);
    std::copy_n(names.data(), length, target);
    target[length] = target[length + 1] = '\0';
    return DWORD(length);
}

DWORD giveDefault(char const* text, char* target, DWORD room) noexcept
{
    std::string_view value = text ? text : "";
    while (value.ends_with(' '))
        value.remove_suffix(1);
    return giveClipped(withoutQuotes(value), target, room);
}

DWORD giveValue(char const* section, char const* key, char const* defaultValue, char* target, DWORD room,
                char const* file)
{
    auto const profile = openProfile(file);
    if (!section)
        return giveList(profile ? profile->sectionNames() : std::string(), target, room);
    if (!key) {
        std::string const names = profile ? profile->keyNames(section) : std::string();
        bool const isEmpty = names.empty() || names.front() == '\0' || room <= 2;
        return isEmpty ? giveDefault(defaultValue, target, room) : giveList(names, target, room);
    }
    auto const value = profile ? profile->value(section, key) : std::nullopt;
    return value ? giveClipped(withoutQuotes(*value), target, room) : giveDefault(defaultValue, target, room);
}

DWORD change(char const* section, char const* key, char const* value, char const* file)
{
    if (!section)
        return ERROR_INVALID_PARAMETER;
    if (file && !*file)
        return ERROR_ACCESS_DENIED;
    return changeProfile(file ? file : defaultFile, [&](std::string& text) -> DWORD {
        if (!key)
            removeProfileSection(text, section);
        else if (!value)
            removeProfileKey(text, section, key);
        else if (!setProfileValue(text, section, key, value))
            return ERROR_INVALID_PARAMETER;
        return ERROR_SUCCESS;
    });
}

int digitOf(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// The bytes that a text of hexadecimal digits stands for; empty if it is no such text.
std::string bytesOf(std::string_view digits)
{
    std::string bytes;
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        int const high = digitOf(digits[0]);
        int const low = digitOf(digits[1]);
        if (high < 0 || low < 0)
            return {};
        bytes.push_back(char(high * 16 + low));
    }
    return digits.empty() ? bytes : std::string();
}

char checksum(std::string_view bytes) noexcept
{
    unsigned sum = 0;
    for (char const c : bytes)
        sum += static_cast<unsigned char>(c);
    return char(sum);
}

std::string digitsOf(std::string_view bytes)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (char const c : bytes) {
        text.push_back(digits[static_cast<unsigned char>(c) >> 4]);
        text.push_back(digits[c & 15]);
    }
    return text;
}

bool readStruct(char const* section, char const* key, void* data, UINT size, char const* file)
{
    auto const profile = openProfile(file);
    auto const value = profile && section && key ? profile->value(section, key) : std::nullopt;
    if (!value)
        return false;
    std::string const bytes = bytesOf(*value);
    if (bytes.size() != std::size_t(size) + 1)
        return false;
    std::string_view const content = std::string_view(bytes).substr(0, size);
    if (checksum(content) != bytes.back() || (size > 0 && !data))
        return false;
    content.copy(static_cast<char*>(data), size);
    return true;
}

DWORD writeStruct(char const* section, char const* key, void const* data, UINT size, char const* file)
{
    if (!data || !key)
        return change(section, key, nullptr, file);
    std::string_view const bytes(static_cast<char const*>(data), size);
    char const sum = checksum(bytes);
    return change(section, key, (digitsOf(bytes) + digitsOf({&sum, 1})).c_str(), file);
}

}  // namespace

std::string profileFile(char const* name)
{
    if (!*name || std::strchr(name, '/'))
        return name;
    std::string folder;
    if (auto const configuration = environmentVariable("XDG_CONFIG_HOME");
        configuration && configuration->starts_with('/')) {
        folder = *configuration;
    } else if (std::string const home = homeFolder(); !home.empty()) {
        folder = home + "/.config";
    } else {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return {};
    }
    return folder.append("/zentrika/").append(name);
}

}  // namespace zk::os

using namespace zk::os;

DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR value,
                                      DWORD room, LPCSTR file) noexcept
{
    if (!value || room == 0)
        return 0;
    try {
        Shield const whole;  // a thread that is ended leaves no section half-indexed
        return giveValue(section, key, defaultValue, value, room, file);
    } catch (std::bad_alloc const&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return giveDefault(defaultValue, value, room);
    }
}

BOOL WINAPI WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) noexcept
{
    try {
        Shield const whole;  // a thread that is ended leaves no lock file taken
        return report(change(section, key, value, file));
    } catch (std::bad_alloc const&) {
        return report(ERROR_NOT_ENOUGH_MEMORY);
    }
}

BOOL WINAPI GetPrivateProfileStructA(LPCSTR section, LPCSTR key, LPVOID data, UINT size, LPCSTR file) noexcept
{
    try {
        Shield const whole;
        return readStruct(section, key, data, size, file);
    } catch (std::bad_alloc const&) {
        return report(ERROR_NOT_ENOUGH_MEMORY);
    }
}

BOOL WINAPI WritePrivateProfileStructA(LPCSTR section, LPCSTR key, LPVOID data, UINT size,
                                       LPCSTR file) noexcept
{
    try {
        Shield const whole;
        return report(writeStruct(section, key, data, size, file));
    } catch (std::bad_alloc const&) {
        return report(ERROR_NOT_ENOUGH_MEMORY);
    }
}
