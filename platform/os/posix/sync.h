// sync.h: what mutexes, semaphores and events have in common: they are made without a
// name or under one, and the last error tells a new one from one that existed.
//
//   return createObject(eventKind, attributes, name, {.first = initialState});
#pragma once

#include "platform/os/posix/handles.h"
#include "platform/os/posix/namedObjects.h"
#include "platform/os/posix/types.h"

#include <memory>

namespace zk::os {

/// What a creator asks for; each kind reads its own.
struct NamedParameters {
    bool initiallyTaken = false;  ///< a new mutex is the creator's
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

/// How the objects of a kind are made.
struct NamedKind {
    ObjectKind kind;
    std::shared_ptr<KernelObject> (*makeUnnamed)(NamedParameters const& parameters);
    DWORD (*initialise)(NamedMemory& memory, NamedParameters const& parameters);
    std::shared_ptr<KernelObject> (*makeShared)(std::unique_ptr<NamedMemory> memory);
};

/// Makes an object, or opens the one of that name. Sets the last error to 0 for
/// a new one and to ERROR_ALREADY_EXISTS for one that existed. Null on failure.
HANDLE createObject(NamedKind const& kind, SECURITY_ATTRIBUTES const* attributes, char const* name,
                    NamedParameters const& parameters) noexcept;

/// Opens the object of a name. Null on failure, ERROR_FILE_NOT_FOUND if there
/// is none and ERROR_INVALID_PARAMETER for a null name.
HANDLE openObject(NamedKind const& kind, bool inherit, char const* name) noexcept;

}  // namespace zk::os
