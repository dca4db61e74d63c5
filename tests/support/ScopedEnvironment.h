// ScopedEnvironment.h: a variable of the process environment for the length of a scope.
//
//   ScopedEnvironment const root("OMROOT", "/opt");
//   ScopedEnvironment const none("TMPDIR", nullptr);      // not set
#pragma once

#include "platform/os/os.h"

#include <optional>
#include <string>
#include <utility>

namespace zk::test {

class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, char const* value) : name_(std::move(name)), before_(valueOf(name_))
    {
        SetEnvironmentVariableA(name_.c_str(), value);
    }
    ~ScopedEnvironment() { SetEnvironmentVariableA(name_.c_str(), before_ ? before_->c_str() : nullptr); }
    ScopedEnvironment(ScopedEnvironment const&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment const&) = delete;

private:
    static std::optional<std::string> valueOf(std::string const& name)
    {
        DWORD const size = GetEnvironmentVariableA(name.c_str(), nullptr, 0);
        if (size == 0)
            return std::nullopt;
        std::string value(size, '\0');
        value.resize(GetEnvironmentVariableA(name.c_str(), value.data(), size));
        return value;
    }

    std::string const name_;
    std::optional<std::string> const before_;
};

}  // namespace zk::test
