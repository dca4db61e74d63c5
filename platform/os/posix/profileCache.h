// profileCache.h: profiles that were read, for as long as their files stay as they were.
//
//   std::shared_ptr<ProfileText const> profile;
//   DWORD const error = readProfile("/home/me/my.ini", profile);
//
// A file is the one that was read if device, inode, size and the times of
// writing and of change are the same. The kernel's clock for these times goes
// by steps, so a file that had changed just before it was read may change
// again without a trace: it is read anew until that moment is past.
#pragma once

#include "platform/os/posix/types.h"
#include "platform/os/profileText.h"

#include <memory>

namespace zk::os {

/// What is larger is no profile: nobody shall have to hold it in memory.
inline constexpr std::size_t mostBytesOfProfile = std::size_t(1) << 30;

/// Gives the profile in a file; null and the error if it cannot be read. Costs one stat() if it is known.
DWORD readProfile(char const* path, std::shared_ptr<ProfileText const>& profile);

/// Reads what an open file of this size holds, or holds meanwhile. Gives the error, 0 for none:
/// ERROR_NOT_ENOUGH_MEMORY for more than mostBytesOfProfile.
DWORD readWhole(int descriptor, off_t size, std::string& bytes);

}  // namespace zk::os
