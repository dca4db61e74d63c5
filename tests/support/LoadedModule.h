// LoadedModule.h: a module that a test loads at run time, and unloads.
//
//   LoadedModule module(pathOfModule);
//   auto const function = module.function<int (*)()>("entry");
//   module.unload();
#pragma once

#include <string>

namespace zk::test {

class LoadedModule {
public:
    /// @throws std::runtime_error with the loader's reason
    explicit LoadedModule(std::string const& path);
    ~LoadedModule();

    LoadedModule(LoadedModule const&) = delete;
    LoadedModule& operator=(LoadedModule const&) = delete;

    /// What the module exports under this name of the linker.
    /// @throws std::runtime_error if there is none
    template <class Function>
    Function function(char const* name) const
    {
        return reinterpret_cast<Function>(find(name));
    }

    /// Gives the module back before the end of this object's life.
    void unload();

    /// Whether the process has a module of this file now.
    static bool isLoaded(std::string const& path);

    /// The version that the file of a module carries: in its name, or in its
    /// resource where the system has those. "8.4"; empty if it carries none.
    static std::string versionOf(std::string const& path);

private:
    void* find(char const* name) const;

    void* handle_;
};

}  // namespace zk::test
