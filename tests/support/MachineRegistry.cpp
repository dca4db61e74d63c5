#include "tests/support/MachineRegistry.h"

#include "tests/support/TemporaryFolder.h"

#include "platform/os/os.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>

#ifdef _WIN32

struct MachineRegistry::Store {
    HKEY key = nullptr;
    std::string firstNew;  // the topmost key that was not there before; empty if all were
    std::map<std::string, std::optional<std::string>> before;  // the texts that were replaced
};

namespace {

bool exists(std::string const& key)
{
    HKEY open = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, &open) != 0)
        return false;
    RegCloseKey(open);
    return true;
}

std::string firstMissing(std::string const& key)
{
    for (std::size_t end = key.find('\\');; end = key.find('\\', end + 1)) {
        std::string const part = key.substr(0, end);
        if (!exists(part))
            return part;
        if (end == key.npos)
            return {};
    }
}

std::optional<std::string> textOf(HKEY key, std::string const& name)
{
    DWORD size = 0;
    if (RegQueryValueExA(key, name.c_str(), nullptr, nullptr, nullptr, &size) != 0)
        return std::nullopt;
    std::string text(size, '\0');
    RegQueryValueExA(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size);
    return std::string(text.c_str());
}

LSTATUS writeText(HKEY key, std::string const& name, std::string const& text)
{
    return RegSetValueExA(key, name.c_str(), 0, REG_SZ, reinterpret_cast<BYTE const*>(text.c_str()),
                          DWORD(text.size() + 1));
}

}  // namespace

MachineRegistry::MachineRegistry(std::string key) : key_(std::move(key)), store_(std::make_unique<Store>())
{
    store_->firstNew = firstMissing(key_);
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                        nullptr, &store_->key, nullptr) != 0)
        throw std::runtime_error("cannot make the key " + key_);
}

MachineRegistry::~MachineRegistry()
{
    for (auto const& [name, text] : store_->before) {
        if (text)
            writeText(store_->key, name, *text);
        else
            RegDeleteValueA(store_->key, name.c_str());
    }
    RegCloseKey(store_->key);
    if (!store_->firstNew.empty())
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, store_->firstNew.c_str());
}

void MachineRegistry::setText(std::string const& name, std::string const& text) const
{
    store_->before.try_emplace(name, textOf(store_->key, name));
    if (writeText(store_->key, name, text) != 0)
        throw std::runtime_error("cannot write the value " + name);
}

#else

struct MachineRegistry::Store {
    TemporaryFolder folder;
    std::filesystem::path key;
};

MachineRegistry::MachineRegistry(std::string key) : key_(std::move(key)), store_(std::make_unique<Store>())
{
    std::string path = "HKEY_LOCAL_MACHINE\\" + key_;
    std::replace(path.begin(), path.end(), '\\', '/');
    store_->key = store_->folder.path(path);
    std::filesystem::create_directories(store_->key);
    SetEnvironmentVariableA("ZK_REGISTRY_DIR", store_->folder.path().c_str());
}

MachineRegistry::~MachineRegistry()
{
    SetEnvironmentVariableA("ZK_REGISTRY_DIR", nullptr);
}

void MachineRegistry::setText(std::string const& name, std::string const& text) const
{
    std::ofstream(store_->key / "values.ini", std::ios::app) << name << "=" << text << "\n";
}

#endif
