// globalMemory.h: blocks of memory that are named by a handle, as the clipboard takes them.
//
//   HGLOBAL const block = GlobalAlloc(GMEM_MOVEABLE, 6);
//   std::strcpy(static_cast<char*>(GlobalLock(block)), "model");
//   GlobalUnlock(block);
//   GlobalFree(block);                           // null: it is gone
//
// A handle is a value of its own, never the block's address, so that a stale one
// fails with ERROR_INVALID_HANDLE. May be called by any thread.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

using HGLOBAL = HANDLE;

#define GMEM_MOVEABLE 0x0002u
#define GMEM_ZEROINIT 0x0040u
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)

#define ERROR_NOT_LOCKED 158u

/// Makes a block of `size` bytes, 0 included. `flags` are GMEM_MOVEABLE and, if wanted, GMEM_ZEROINIT;
/// others, and fixed blocks, fail with ERROR_INVALID_PARAMETER. Null on failure.
ZK_UTIL_API HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size) noexcept;

/// The address of a block, which stays where it is until it is freed; counts the lock. Null with
/// ERROR_INVALID_HANDLE for a value that is no block.
ZK_UTIL_API LPVOID WINAPI GlobalLock(HGLOBAL block) noexcept;

/// Takes one lock back. TRUE if there are more; FALSE with NO_ERROR if it was the last one, with
/// ERROR_NOT_LOCKED if there was none, with ERROR_INVALID_HANDLE for a value that is no block.
ZK_UTIL_API BOOL WINAPI GlobalUnlock(HGLOBAL block) noexcept;

/// The bytes of a block; 0 with ERROR_INVALID_HANDLE for a value that is none.
ZK_UTIL_API SIZE_T WINAPI GlobalSize(HGLOBAL block) noexcept;

/// Gives a block back, locked or not. Null; or `block` itself with ERROR_INVALID_HANDLE if it is none.
/// A null `block` is ignored.
ZK_UTIL_API HGLOBAL WINAPI GlobalFree(HGLOBAL block) noexcept;
