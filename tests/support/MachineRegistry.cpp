#include "tests/support/MachineRegistry.h"

#include "tests/support/TemporaryFolder.h"

#include "platform/os/os.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#ifdef _WIN32

struct MachineRegistry::Store {
    HKEY key = nullptr;
};

MachineRegistry::MachineRegistry(std::string key) : key_(std::move(key)), store_(std::make_unique<Store>())
{
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                        nullptr, &store_->key, nullptr) != 0)
        throw std::runtime_error("cannot make the key " + key_);
}

MachineRegistry::~MachineRegistry()
{
    RegCloseKey(store_->key);
    std::size_t const first = key_.find('\\');
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, key_.substr(0, key_.find('\\', first + 1)).c_str());
}

void MachineRegistry::setText(std::string const& name, std::string const& text) const
{
    if (RegSetValueExA(store_->key, name.c_str(), 0, REG_SZ, reinterpret_cast<BYTE const*>(text.c_str()),
                       DWORD(text.size() + 1)) != 0)
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
