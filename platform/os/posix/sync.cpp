#include "platform/os/posix/sync.h"

#include "platform/os/posix/lastError.h"
#include "platform/os/posix/securityDescriptor.h"

#include <new>

namespace zk::os {
namespace {

// Out of memory is an error number at this edge.
template <class Make>
HANDLE handleOf(bool inheritable, Make make) noexcept
try {
    std::shared_ptr<KernelObject> object = make();
    return object ? openHandle(std::move(object), inheritable) : nullptr;
} catch (std::bad_alloc const&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace

HANDLE createObject(NamedKind const& kind, SECURITY_ATTRIBUTES const* attributes, char const* name,
                    NamedParameters const& parameters) noexcept
{
    bool existed = false;
    HANDLE const handle = handleOf(asksToInherit(attributes), [&]() -> std::shared_ptr<KernelObject> {
        std::shared_ptr<KernelObject> object;
        if (!name || !*name) {
            object = kind.makeUnnamed(parameters);
        } else {
            NamedMemory::Request const request = {
                .name = name,
                .kind = kind.kind,
                .mayCreate = true,
                .forEverybody = letsEverybodyIn(attributes),
                .takesMutex = parameters.initiallyTaken,
                .initialise = [&](NamedMemory& fresh) { return kind.initialise(fresh, parameters); },
            };
            if (!report(openNamedObject(request, kind.makeShared, object, existed)))
                return nullptr;
        }
        return object;
    });
    if (handle)
        SetLastError(existed ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
}

HANDLE openObject(NamedKind const& kind, bool inherit, char const* name) noexcept
{
    if (!name) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return handleOf(inherit, [&]() -> std::shared_ptr<KernelObject> {
        std::shared_ptr<KernelObject> object;
        bool existed;
        NamedMemory::Request const request = {.name = name, .kind = kind.kind};
        return report(openNamedObject(request, kind.makeShared, object, existed)) ? object : nullptr;
    });
}

}  // namespace zk::os
