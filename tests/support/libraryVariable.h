// libraryVariable.h: sets a variable such that the C library's getenv() sees it.
#pragma once

#include <cstdlib>
#include <string>

/// A null `value` removes the variable.
inline void setLibraryVariable(char const* name, char const* value)
{
#ifdef _WIN32
    _putenv((std::string(name) + "=" + (value ? value : "")).c_str());
#else
    if (value)
        setenv(name, value, 1);
    else
        unsetenv(name);
#endif
}
