#include "tests/support/LoadedModule.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#ifdef _WIN32
#    include <windows.h>

#    include <vector>
#else
#    include <dlfcn.h>
#endif

namespace zk::test {

LoadedModule::~LoadedModule()
{
    unload();
}

#ifdef _WIN32

LoadedModule::LoadedModule(std::string const& path) : handle_(LoadLibraryA(path.c_str()))
{
    if (!handle_)
        throw std::runtime_error("cannot load " + path + ": " + std::to_string(GetLastError()));
}

void* LoadedModule::find(char const* name) const
{
    auto const found = GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (!found)
        throw std::runtime_error(std::string("no ") + name);
    return reinterpret_cast<void*>(found);
}

void LoadedModule::unload()
{
    if (handle_)
        FreeLibrary(static_cast<HMODULE>(std::exchange(handle_, nullptr)));
}

bool LoadedModule::isLoaded(std::string const& path)
{
    return GetModuleHandleA(path.c_str()) != nullptr;
}

std::string LoadedModule::versionOf(std::string const& path)
{
    std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), nullptr));
    void* found = nullptr;
    UINT size = 0;
    if (block.empty() || !GetFileVersionInfoA(path.c_str(), 0, DWORD(block.size()), block.data()) ||
        !VerQueryValueA(block.data(), "\\", &found, &size) || size < sizeof(VS_FIXEDFILEINFO))
        return {};
    auto const& version = *static_cast<VS_FIXEDFILEINFO const*>(found);
    return std::to_string(HIWORD(version.dwFileVersionMS)) + "." +
        std::to_string(LOWORD(version.dwFileVersionMS));
}

#else

LoadedModule::LoadedModule(std::string const& path) : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (!handle_)
        throw std::runtime_error(dlerror());
}

void* LoadedModule::find(char const* name) const
{
    void* const found = dlsym(handle_, name);
    if (!found)
        throw std::runtime_error(dlerror());
    return found;
}

void LoadedModule::unload()
{
    if (handle_)
        dlclose(std::exchange(handle_, nullptr));
}

bool LoadedModule::isLoaded(std::string const& path)
{
    void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

std::string LoadedModule::versionOf(std::string const& path)
{
    std::string const name = std::filesystem::canonical(path).filename().string();
    auto const suffix = name.find(".so.");
    return suffix == std::string::npos ? std::string() : name.substr(suffix + 4);
}

#endif

}  // namespace zk::test
