// expectFails.h: a call that must fail, with the error that it must leave behind.
//
//   EXPECT_FAILS(DeleteFileA("missing"), ERROR_FILE_NOT_FOUND);
#pragma once

#include "platform/os/os.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace zk::test {

// A value that no call leaves behind by itself.
inline constexpr DWORD poisonedError = 0xDEADBEEF;

// What the system's calls give for "failed": null, false or INVALID_HANDLE_VALUE.
template <class Result>
bool isFailure(Result const& result)
{
    if constexpr (std::is_pointer_v<Result>)
        return result == nullptr ||
            static_cast<void const*>(result) == static_cast<void const*>(INVALID_HANDLE_VALUE);
    else
        return result == Result() || (sizeof(Result) == 4 && static_cast<DWORD>(result) == 0xFFFFFFFF);
}

}  // namespace zk::test

/// Expects that `call` fails and that the last error is then `error`.
#define EXPECT_FAILS(call, error)                                                                            \
    do {                                                                                                     \
        ::SetLastError(zk::test::poisonedError);                                                             \
        auto const zkResult = (call);                                                                        \
        DWORD const zkError = ::GetLastError();                                                              \
        EXPECT_TRUE(zk::test::isFailure(zkResult)) << #call " succeeded";                                    \
        EXPECT_EQ(zkError, DWORD(error)) << "last error of " #call ", expected " #error;                     \
    } while (false)

/// Expects that `call` succeeds and leaves the last error alone.
#define EXPECT_SUCCEEDS(call)                                                                                \
    do {                                                                                                     \
        ::SetLastError(zk::test::poisonedError);                                                             \
        auto const zkResult = (call);                                                                        \
        EXPECT_FALSE(zk::test::isFailure(zkResult)) << #call " failed with " << ::GetLastError();            \
    } while (false)
