// securityDescriptor.h: who may open a named object.
//
//   SECURITY_DESCRIPTOR descriptor;
//   InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
//   SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE);      // everybody
//   SECURITY_ATTRIBUTES attributes = {sizeof attributes, &descriptor, FALSE};
//
// A descriptor says one of two things here: the user alone (no list was set),
// or everybody (the list is present and null). Objects made without a
// descriptor belong to the user alone.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#define SECURITY_DESCRIPTOR_REVISION 1u

struct ACL;
using PACL = ACL*;

struct SECURITY_DESCRIPTOR {
    BYTE Revision;
    BYTE Sbz1;
    WORD Control;  ///< 4: a list is present
    PVOID Owner;
    PVOID Group;
    PACL Sacl;
    PACL Dacl;
};
using PSECURITY_DESCRIPTOR = PVOID;

/// Makes a descriptor without a list. FALSE with ERROR_UNKNOWN_REVISION (1305) for another revision than 1.
ZK_UTIL_API BOOL InitializeSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, DWORD revision) noexcept;

/// Sets the list of a descriptor. Only the null list, which lets everybody in,
/// is supplied; another one fails with ERROR_NOT_SUPPORTED.
ZK_UTIL_API BOOL SetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, BOOL present, PACL list,
                                           BOOL defaulted) noexcept;

namespace zk::os {

/// True for attributes whose descriptor lets everybody in.
bool letsEverybodyIn(SECURITY_ATTRIBUTES const* attributes) noexcept;

/// True for attributes that ask for an inheritable handle.
inline bool asksToInherit(SECURITY_ATTRIBUTES const* attributes) noexcept
{
    return attributes && attributes->bInheritHandle;
}

}  // namespace zk::os
