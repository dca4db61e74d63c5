// loadedModules.h: looks modules up among those that are loaded.
#pragma once

#include "platform/os/posix/types.h"

#include <string>

namespace zk::os {

struct LoadedModule {
    HMODULE handle = nullptr;  // the address at which it is loaded
    std::string linkName;      // by which the linker knows it; empty for the executable
    std::string path;          // of its file, from the root on
    bool isExecutable = false;
};

/// Each finds a loaded module and describes it; false if there is none.
bool findModuleByHandle(HMODULE handle, LoadedModule& found);  // null: the executable
bool findModuleOfAddress(void const* address, LoadedModule& found);

/// By full path, or by file name without case, "lib" before it and suffix.
bool findModuleByName(std::string const& name, LoadedModule& found);

/// The handle of a module that the linker has opened.
HMODULE handleOfLibrary(void* library) noexcept;

}  // namespace zk::os
