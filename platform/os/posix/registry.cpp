#include "platform/os/posix/registry.h"

#include "platform/os/posix/environment.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/profileCache.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/threadRecord.h"

#include <cstring>
#include <map>
#include <mutex>
#include <new>

namespace zk::os {
namespace {

// The open keys, each with its name below the root. Values are never used twice.
class OpenKeys {
public:
    static OpenKeys& instance() noexcept
    {
        static NeverDestroyed<OpenKeys> keys;
        return keys.object;
    }

    HKEY add(std::string name)
    {
        ShieldedLock const lock(mutex_);
        HKEY const key = reinterpret_cast<HKEY>(next_ += 4);
        names_.emplace(key, std::move(name));
        return key;
    }

    bool remove(HKEY key)
    {
        ShieldedLock const lock(mutex_);
        return names_.erase(key) > 0;
    }

    std::optional<std::string> nameOf(HKEY key)
    {
        if (key == HKEY_LOCAL_MACHINE)
            return std::string();
        ShieldedLock const lock(mutex_);
        auto const found = names_.find(key);
        return found == names_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::mutex mutex_;
    std::map<HKEY, std::string> names_;
    std::uintptr_t next_ = 0x1000;
};

// Appends the folders of a key's name. False for a name that would lead elsewhere.
bool appendKey(std::string& path, std::string_view name)
{
    while (!name.empty()) {
        std::size_t const end = std::min(name.find('\\'), name.size());
        std::string_view const part = name.substr(0, end);
        if (part.empty() || part == "." || part == ".." || part.find('/') != part.npos)
            return false;
        path.append("/").append(part);
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return true;
}

bool isFolder(std::string const& path) noexcept
{
    struct stat status;
    return systemCalls().stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The folder of a key; empty if there is none.
std::string folderOfKey(std::string const& name)
{
    auto const chosen = environmentVariable("ZK_REGISTRY_DIR");
    std::string const root = chosen && !chosen->empty() ? *chosen : "/etc/zentrika/registry";
    for (char const* const hive : {"/HKEY_LOCAL_MACHINE", ""})
        if (std::string const folder = root + hive + name; isFolder(folder))
            return folder;
    return {};
}

DWORD openKey(HKEY root, char const* name, DWORD access, HKEY* key)
{
    constexpr DWORD reading = KEY_READ | KEY_WOW64_64KEY | KEY_WOW64_32KEY;
    if (!key)
        return ERROR_INVALID_PARAMETER;
    auto path = OpenKeys::instance().nameOf(root);
    if (!path)
        return ERROR_INVALID_HANDLE;
    if (access & ~reading)
        return ERROR_ACCESS_DENIED;
    if (!appendKey(*path, name ? name : "") || folderOfKey(*path).empty())
        return ERROR_FILE_NOT_FOUND;
    *key = OpenKeys::instance().add(*path);
    return ERROR_SUCCESS;
}

DWORD queryValue(HKEY key, char const* name, DWORD* type, BYTE* data, DWORD* size)
{
    if (data && !size)
        return ERROR_INVALID_PARAMETER;
    DWORD const room = data ? *size : 0;
    if (type)
        *type = REG_NONE;
    auto const path = OpenKeys::instance().nameOf(key);
    if (!path)
        return ERROR_INVALID_HANDLE;
    if (size && !data)
        *size = 0;
    std::shared_ptr<ProfileText const> values;
    if (readProfile((folderOfKey(*path) + "/values.ini").c_str(), values))
        return ERROR_FILE_NOT_FOUND;
    auto const value = values->value("", name ? name : "");
    if (!value)
        return ERROR_FILE_NOT_FOUND;
    DWORD const needed = DWORD(value->size() + 1);
    if (type)
        *type = REG_SZ;
    if (size)
        *size = needed;
    if (!data)
        return ERROR_SUCCESS;
    if (room < needed)
        return ERROR_MORE_DATA;
    std::memcpy(data, value->data(), value->size());
    data[value->size()] = '\0';
    return ERROR_SUCCESS;
}

// The number is the result; the calling thread's last error stays.
template <class Work>
LSTATUS statusOf(Work&& work) noexcept
{
    PreserveLastError const preserve;
    Shield const whole;  // a thread that is ended leaves no section half-indexed
    return LSTATUS(guarded(work));
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

LSTATUS WINAPI RegOpenKeyExA(HKEY root, LPCSTR name, DWORD, REGSAM access, PHKEY key) noexcept
{
    return statusOf([&] { return openKey(root, name, access, key); });
}

LSTATUS WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD, LPDWORD type, LPBYTE data,
                                LPDWORD size) noexcept
{
    return statusOf([&] { return queryValue(key, name, type, data, size); });
}

LSTATUS WINAPI RegCloseKey(HKEY key) noexcept
{
    return statusOf([&]() -> DWORD {
        if (key == HKEY_LOCAL_MACHINE || OpenKeys::instance().remove(key))
            return ERROR_SUCCESS;
        return ERROR_INVALID_HANDLE;
    });
}
