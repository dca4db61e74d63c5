// CCgResult.h: what a portable call gives: a status and a code.
//
//   CCgResult const result = CxMutexLock(mutex);
//   if (!result.ok())
//       ...                                     // result.status 'w', result.code 6: an operating-system error
#pragma once

#include "zk_export.h"

#include <cstdint>
#include <string>

struct CCgResult {
    char status = '-';  ///< '-' success, 'p' `code` is an error number of the C library, 'w' of the system
    std::int32_t code = 0;  ///< 0 on success

    bool ok() const noexcept { return status == '-'; }
};

inline bool operator==(CCgResult const& a, CCgResult const& b) noexcept
{
    return a.status == b.status && a.code == b.code;
}

inline bool operator!=(CCgResult const& a, CCgResult const& b) noexcept
{
    return !(a == b);
}

namespace zk::logging {

/// 'p' and 22: a call that was given what it cannot take.
inline constexpr CCgResult invalidArguments{'p', 22};

inline constexpr CCgResult libraryError(int code) noexcept
{
    return {'p', code};
}

/// The calling thread's last error of the operating system.
ZK_UTIL_API CCgResult lastSystemError() noexcept;

/// The sentence for a failure, in UTF-8; a system's is cut after 511 bytes. Empty for a success.
ZK_UTIL_API std::string textOf(CCgResult const& result);

}  // namespace zk::logging
