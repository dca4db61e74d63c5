#include "platform/os/posix/loadedModules.h"

#include "platform/os/posix/module.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/textOperations.h"

#include <climits>
#include <exception>
#include <string_view>

#include <link.h>

#include <dlfcn.h>

namespace zk::os {
namespace {

HMODULE asHandle(ElfW(Addr) address) noexcept
{
    return reinterpret_cast<HMODULE>(address);
}

// Where the first byte of the module's file stands in memory.
HMODULE handleOf(dl_phdr_info const& info) noexcept
{
    constexpr ElfW(Addr) pageMask = ~ElfW(Addr){0xFFF};
    for (int i = 0; i < info.dlpi_phnum; ++i) {
        if (info.dlpi_phdr[i].p_type == PT_LOAD)
            return asHandle((info.dlpi_addr + info.dlpi_phdr[i].p_vaddr) & pageMask);
    }
    return asHandle(info.dlpi_addr);
}

bool contains(dl_phdr_info const& info, void const* address) noexcept
{
    auto const wanted = reinterpret_cast<ElfW(Addr)>(address);
    for (int i = 0; i < info.dlpi_phnum; ++i) {
        ElfW(Phdr) const& part = info.dlpi_phdr[i];
        ElfW(Addr) const begin = info.dlpi_addr + part.p_vaddr;
        if (part.p_type == PT_LOAD && wanted >= begin && wanted - begin < part.p_memsz)
            return true;
    }
    return false;
}

// What remains of a file name when the parts that differ between systems are gone.
std::string_view stemOf(std::string_view file) noexcept
{
    file.remove_prefix(file.rfind('/') + 1);  // without a separator that is 0
    auto const startsWith = [&](std::string_view start) {
        return file.size() > start.size() && _strnicmp(file.data(), start.data(), start.size()) == 0;
    };
    if (startsWith("lib"))
        file.remove_prefix(3);
    for (std::string_view const suffix : {".so", ".dll", ".exe"}) {
        for (std::size_t at = 1; at + suffix.size() <= file.size(); ++at) {
            bool const ends = at + suffix.size() == file.size() || file[at + suffix.size()] == '.';
            if (ends && _strnicmp(file.data() + at, suffix.data(), suffix.size()) == 0)
                return file.substr(0, at);
        }
    }
    return file;
}

bool sameFile(std::string const& wanted, std::string const& path) noexcept
{
    if (wanted.find('/') != wanted.npos)
        return wanted == path;
    std::string_view const a = stemOf(wanted);
    std::string_view const b = stemOf(path);
    return !a.empty() && a.size() == b.size() && _strnicmp(a.data(), b.data(), a.size()) == 0;
}

// The linker keeps a relative path as it was given.
std::string fromTheRoot(std::string const& path)
{
    char folder[PATH_MAX];
    if (path.empty() || path.front() == '/' || !systemCalls().getcwd(folder, sizeof folder))
        return path;
    return std::string(folder) + '/' + path;
}

// Walks over all modules under the linker's lock until `matches` says yes. No
// exception may pass through the linker.
template <class Matches>
bool find(Matches const& matches, LoadedModule& found)
{
    struct Walk {
        Matches const& matches;
        LoadedModule& found;
        std::exception_ptr error;
        int number = 0;
    } walk{matches, found, nullptr};
    int const stopped = dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
            Walk& here = *static_cast<Walk*>(data);
            try {
                bool const isExecutable = here.number++ == 0;  // it always comes first
                if (!here.matches(*info, isExecutable))
                    return 0;
                here.found.handle = handleOf(*info);
                here.found.isExecutable = isExecutable;
                here.found.linkName = isExecutable ? "" : info->dlpi_name;
            } catch (...) {
                here.error = std::current_exception();
            }
            return 1;
        },
        &walk);
    if (walk.error)
        std::rethrow_exception(walk.error);
    if (!stopped)
        return false;
    found.path = found.isExecutable ? executablePath() : fromTheRoot(found.linkName);
    return true;
}

}  // namespace

bool findModuleByHandle(HMODULE handle, LoadedModule& found)
{
    return find([&](dl_phdr_info const& info,
                    bool isExecutable) { return handle ? handleOf(info) == handle : isExecutable; },
                found);
}

bool findModuleOfAddress(void const* address, LoadedModule& found)
{
    return find([&](dl_phdr_info const& info, bool) { return contains(info, address); }, found);
}

bool findModuleByName(std::string const& name, LoadedModule& found)
{
    std::string const executable = executablePath();
    return find(
        [&](dl_phdr_info const& info, bool isExecutable) {
            return sameFile(name, isExecutable ? executable : fromTheRoot(info.dlpi_name));
        },
        found);
}

HMODULE handleOfLibrary(void* library) noexcept
{
    link_map* map = nullptr;
    Dl_info info;
    if (dlinfo(library, RTLD_DI_LINKMAP, &map) == 0 && map->l_ld && dladdr(map->l_ld, &info))
        return reinterpret_cast<HMODULE>(info.dli_fbase);
    return nullptr;
}

}  // namespace zk::os
