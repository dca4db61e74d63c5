// sharing.h: who may open a file while others have it open.
//
//   // Opened for reading, and nobody may write meanwhile:
//   if (DWORD const error = claim(descriptor, {.access = Sharing::read, .denied = Sharing::write}))
//       return error;                                  // 32, and the descriptor is to be closed
//
// Each opener says what it does with the file and what it denies to the others;
// a second opener must neither do what is denied nor deny what is being done.
//
// The kernel knows no such rule. It is kept with two kinds of locks, which both
// belong to the open file and end with it, however the process ends:
//
//  1. flock: exclusive if reading and writing are both denied, else shared.
//     Programs that know nothing of this library lock files in that way, so
//     they and we respect each other. An opener that neither reads nor writes,
//     but removes the file, takes none: those locks know nothing of removal.
//  2. Marks: read locks on six bytes far behind any content, one for each thing
//     that an opener may do or deny. Read locks don't exclude one another; an
//     opener first sets its own marks and then looks whether anybody else holds
//     one that it must not meet. Of two that open at the same moment, both may
//     fail, but never do both succeed.
//
// A file that its opener may only write to takes no read locks. For such
// openers each mark has a row of places behind the six bytes, and the opener
// takes a write lock on one that is free.
//
// Where the file system has no such locks, files are opened without.
#pragma once

#include "platform/os/posix/types.h"

#include <sys/types.h>

namespace zk::os {

struct Sharing {
    enum Use : unsigned { none = 0, read = 1, write = 2, remove = 4, all = 7 };

    unsigned access = none;
    unsigned denied = none;
};

/// Content and LockFile() ranges end here; the marks stand behind.
constexpr off_t firstMark = off_t(1) << 62;

/// Claims an open file. Gives 0 or ERROR_SHARING_VIOLATION; the claim ends when
/// the last descriptor of the open file is closed.
DWORD claim(int descriptor, Sharing const& sharing) noexcept;

/// Whether others who have the file open forbid that it is used in that way.
/// Gives 0 or ERROR_SHARING_VIOLATION; another error where it could not be found
/// out for want of descriptors or memory. A file that can be opened neither for
/// reading nor for writing is not in anybody's claim as far as this process can see.
DWORD checkSharing(char const* path, Sharing const& sharing) noexcept;

}  // namespace zk::os
