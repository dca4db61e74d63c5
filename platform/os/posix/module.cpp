#include "platform/os/posix/module.h"

#include "platform/os/commandLine.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/loadedModules.h"
#include "platform/os/posix/neverDestroyed.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/textOperations.h"

#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>

namespace zk::os {
namespace {

// What LoadLibraryA() holds, by module: the linker's handle and how often.
struct Held {
    void* library = nullptr;
    unsigned count = 0;
    bool pinned = false;
};

struct HeldModules {
    std::mutex mutex;
    std::map<HMODULE, Held> modules;
};

// Never destroyed: modules are given back by static destructors too.
HeldModules& heldModules() noexcept
{
    static NeverDestroyed<HeldModules> instance;
    return instance.object;
}

// The command line as GetCommandLineA() gives it; callers keep the pointer.
struct CommandLine {
    std::mutex mutex;
    std::string text;
};

CommandLine& commandLine() noexcept
{
    static NeverDestroyed<CommandLine> instance;
    return instance.object;
}

AtModuleEnd<[] {
    ShieldedLock const lock(commandLine().mutex);
    std::string().swap(commandLine().text);
}> const emptiedCommandLine;

// A module is held once by each handle of the linker, so one is kept and the uses are counted.
DWORD hold(HMODULE module, void* library, bool pin)
{
    HeldModules& held = heldModules();
    ShieldedLock const lock(held.mutex);
    Held& entry = held.modules[module];
    if (entry.library)
        dlclose(library);
    else
        entry.library = library;
    ++entry.count;
    entry.pinned |= pin;
    return ERROR_SUCCESS;
}

// Another handle of the linker for a module that is loaded.
void* reopen(LoadedModule const& module) noexcept
{
    return dlopen(module.isExecutable ? nullptr : module.linkName.c_str(), RTLD_NOLOAD | RTLD_LAZY);
}

// The linker tells what went wrong in words alone.
DWORD loadError() noexcept
{
    char const* const words = dlerror();
    if (words) {
        for (char const* const sign :
             {"invalid ELF header", "file too short", "wrong ELF class", "ELF file"}) {
            if (std::strstr(words, sign))
                return ERROR_BAD_EXE_FORMAT;
        }
    }
    return ERROR_MOD_NOT_FOUND;
}

DWORD load(std::string const& name, void*& library)
{
    constexpr int mode = RTLD_NOW | RTLD_LOCAL;
    library = dlopen(name.c_str(), mode);
    if (library)
        return ERROR_SUCCESS;
    DWORD const error = loadError();
    if (error == ERROR_MOD_NOT_FOUND && name.find('/') == name.npos) {
        for (std::string const& candidate : {name + ".so", "lib" + name + ".so"}) {
            library = dlopen(candidate.c_str(), mode);
            if (library)
                return ERROR_SUCCESS;
        }
    }
    return error;
}

bool exists(std::string const& path) noexcept
{
    struct stat status;
    return systemCalls().stat(path.c_str(), &status) == 0;
}

DWORD readWholeFile(char const* path, std::string& content)
{
    int const descriptor = uninterrupted([&] { return systemCalls().open(path, O_RDONLY | O_CLOEXEC, 0); });
    if (descriptor < 0)
        return errorFromErrno(errno);
    ssize_t count;
    do {
        char buffer[4096];
        count = uninterrupted([&] { return systemCalls().read(descriptor, buffer, sizeof buffer); });
        if (count > 0)
            content.append(buffer, static_cast<std::size_t>(count));
    } while (count > 0);
    DWORD const error = count < 0 ? errorFromErrno(errno) : ERROR_SUCCESS;
    systemCalls().close(descriptor);
    return error;
}

// Finds the module for GetModuleHandleExA(), and its handle of the linker where it is to be held.
DWORD findModule(DWORD flags, LPCSTR name, HMODULE& module)
{
    LoadedModule found;
    if ((flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) && name) {
        if (!findModuleOfAddress(name, found))
            return ERROR_MOD_NOT_FOUND;
    } else if (name ? !findModuleByName(name, found) : !findModuleByHandle(nullptr, found)) {
        return ERROR_MOD_NOT_FOUND;
    }
    if (!(flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT)) {
        void* const library = reopen(found);
        if (!library)  // unloaded in the meantime
            return ERROR_MOD_NOT_FOUND;
        hold(found.handle, library, (flags & GET_MODULE_HANDLE_EX_FLAG_PIN) != 0);
    }
    module = found.handle;
    return ERROR_SUCCESS;
}

}  // namespace

std::string executablePath()
{
    std::vector<char> buffer(256);
    ssize_t length;
    for (;;) {
        length = systemCalls().readlink("/proc/self/exe", buffer.data(), buffer.size());
        if (length < 0) {
            SetLastError(errorFromErrno(errno));
            return {};
        }
        if (static_cast<std::size_t>(length) < buffer.size())
            break;
        buffer.resize(buffer.size() * 2);
    }
    std::string path(buffer.data(), static_cast<std::size_t>(length));
    // The kernel appends this to the path of a file that is gone; a file may also be called so.
    constexpr std::string_view deleted = " (deleted)";
    if (path.size() > deleted.size() &&
        std::string_view(path).substr(path.size() - deleted.size()) == deleted && !exists(path))
        path.resize(path.size() - deleted.size());
    return path;
}

std::string readCommandLine()
{
    std::string content;
    if (readWholeFile("/proc/self/cmdline", content) != ERROR_SUCCESS || content.empty())
        return joinCommandLine({executablePath()});
    std::vector<std::string> arguments;
    for (std::size_t begin = 0; begin < content.size();) {
        std::size_t const end = std::min(content.find('\0', begin), content.size());
        arguments.push_back(content.substr(begin, end - begin));
        begin = end + 1;
    }
    return joinCommandLine(arguments);
}

}  // namespace zk::os

using namespace zk::os;

DWORD GetModuleFileNameA(HMODULE module, LPSTR file, DWORD room) noexcept
{
    std::string path;
    DWORD const error = guarded([&]() -> DWORD {
        LoadedModule found;
        if (!findModuleByHandle(module, found))
            return ERROR_MOD_NOT_FOUND;
        path = std::move(found.path);
        return path.empty() ? GetLastError() : ERROR_SUCCESS;
    });
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return 0;
    }
    if (path.size() < room) {
        std::memcpy(file, path.c_str(), path.size() + 1);
        return static_cast<DWORD>(path.size());
    }
    if (room > 0) {
        path.copy(file, room - 1);
        file[room - 1] = '\0';
    }
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return room;
}

HMODULE GetModuleHandleA(LPCSTR name) noexcept
{
    HMODULE module = nullptr;
    DWORD const error =
        guarded([&] { return findModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, name, module); });
    return report(error) ? module : nullptr;
}

BOOL GetModuleHandleExA(DWORD flags, LPCSTR name, HMODULE* module) noexcept
{
    constexpr DWORD known = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT |
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
    constexpr DWORD contrary = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!module)
        return report(ERROR_INVALID_PARAMETER);
    *module = nullptr;
    if ((flags & ~known) != 0 || (flags & contrary) == contrary)
        return report(ERROR_INVALID_PARAMETER);
    return report(guarded([&] { return findModule(flags, name, *module); }));
}

HMODULE LoadLibraryA(LPCSTR name) noexcept
{
    HMODULE module = nullptr;
    DWORD const error = guarded([&]() -> DWORD {
        if (!name || !*name)
            return ERROR_MOD_NOT_FOUND;
        void* library = nullptr;
        if (DWORD const failed = load(name, library); failed != ERROR_SUCCESS)
            return failed;
        module = handleOfLibrary(library);
        return hold(module, library, false);
    });
    return report(error) ? module : nullptr;
}

BOOL FreeLibrary(HMODULE module) noexcept
{
    if (!module)
        return report(ERROR_INVALID_HANDLE);
    return report(guarded([&]() -> DWORD {
        void* released = nullptr;  // closed behind the lock: its destructors may come here again
        {
            HeldModules& held = heldModules();
            ShieldedLock const lock(held.mutex);
            auto const entry = held.modules.find(module);
            if (entry == held.modules.end()) {
                LoadedModule loaded;
                return findModuleByHandle(module, loaded) ? ERROR_SUCCESS : ERROR_MOD_NOT_FOUND;
            }
            if (entry->second.count > 1 || entry->second.pinned) {
                entry->second.count -= entry->second.count > 1;
                return ERROR_SUCCESS;
            }
            released = entry->second.library;
            held.modules.erase(entry);
        }
        dlclose(released);
        return ERROR_SUCCESS;
    }));
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) noexcept
{
    void* address = nullptr;
    DWORD const error = guarded([&]() -> DWORD {
        LoadedModule found;
        if (!findModuleByHandle(module, found))
            return ERROR_MOD_NOT_FOUND;
        bool const isNumber = reinterpret_cast<std::uintptr_t>(name) < 0x10000;
        if (isNumber)
            return ERROR_PROC_NOT_FOUND;
        void* const library = reopen(found);
        if (!library)
            return ERROR_MOD_NOT_FOUND;
        address = dlsym(library, name);
        // The linker also looks into the modules that this one needs.
        LoadedModule owner;
        bool const isOwn = address && findModuleOfAddress(address, owner) && owner.handle == found.handle;
        dlclose(library);
        return isOwn ? ERROR_SUCCESS : ERROR_PROC_NOT_FOUND;
    });
    return report(error) ? reinterpret_cast<FARPROC>(address) : nullptr;
}

LPSTR GetCommandLineA() noexcept
{
    PreserveLastError const kept;
    CommandLine& line = commandLine();
    ShieldedLock const lock(line.mutex);
    try {
        if (line.text.empty())
            line.text = readCommandLine();
    } catch (std::bad_alloc const&) {
        // Asked again next time; until then the line is empty.
    }
    return line.text.data();
}
