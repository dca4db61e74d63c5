// nativeSeparator.h: the character that separates the components of a path.
//
//   zk::os::nativeSeparator();      // '\\' on Windows, '/' elsewhere
//
// It is one character for the whole process. Tests switch it with
// zk::os::ScopedNativeSeparator to run the other system's path rules.
#pragma once

#include "platform/os/exportMacro.h"

namespace zk::os {

/// The native path separator.
ZK_UTIL_API char nativeSeparator() noexcept;

/// Whether the separator that is in force is a backslash.
inline bool nativeSeparatorIsBackslash() noexcept
{
    return nativeSeparator() == '\\';
}

/// Puts another native separator in force for the life of the object.
///
/// A hook for tests. Process-wide: not for two threads at once.
class ZK_UTIL_API ScopedNativeSeparator {
public:
    explicit ScopedNativeSeparator(char separator) noexcept;
    ~ScopedNativeSeparator();
    ScopedNativeSeparator(ScopedNativeSeparator const&) = delete;
    ScopedNativeSeparator& operator=(ScopedNativeSeparator const&) = delete;

private:
    char previous_;
};

}  // namespace zk::os
