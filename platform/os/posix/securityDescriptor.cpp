#include "platform/os/posix/securityDescriptor.h"

#include "platform/os/posix/lastError.h"

namespace {

constexpr WORD listIsPresent = 4;

}  // namespace

BOOL InitializeSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, DWORD revision) noexcept
{
    if (revision != SECURITY_DESCRIPTOR_REVISION)
        return zk::os::report(ERROR_UNKNOWN_REVISION);
    auto& target = *static_cast<SECURITY_DESCRIPTOR*>(descriptor);
    target = SECURITY_DESCRIPTOR();
    target.Revision = SECURITY_DESCRIPTOR_REVISION;
    return TRUE;
}

BOOL SetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, BOOL present, PACL list, BOOL) noexcept
{
    auto& target = *static_cast<SECURITY_DESCRIPTOR*>(descriptor);
    if (target.Revision != SECURITY_DESCRIPTOR_REVISION)
        return zk::os::report(ERROR_UNKNOWN_REVISION);
    if (present && list)
        return zk::os::report(ERROR_NOT_SUPPORTED);
    target.Dacl = nullptr;
    target.Control = WORD(present ? target.Control | listIsPresent : target.Control & ~listIsPresent);
    return TRUE;
}

bool zk::os::letsEverybodyIn(SECURITY_ATTRIBUTES const* attributes) noexcept
{
    if (!attributes || !attributes->lpSecurityDescriptor)
        return false;
    auto const& descriptor = *static_cast<SECURITY_DESCRIPTOR const*>(attributes->lpSecurityDescriptor);
    return (descriptor.Control & listIsPresent) && !descriptor.Dacl;
}
