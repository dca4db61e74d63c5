// messageTexts.h: sentences for error numbers, texts with numbered inserts, and the memory
// that such texts come in.
//
//   char text[256];
//   FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
//                  ERROR_FILE_NOT_FOUND, 0, text, sizeof text, nullptr);
//   // "The file was not found.\r\n"
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/posix/types.h"

#include <cstdarg>

#define FORMAT_MESSAGE_MAX_WIDTH_MASK 0x000000FFu
#define FORMAT_MESSAGE_ALLOCATE_BUFFER 0x00000100u
#define FORMAT_MESSAGE_IGNORE_INSERTS 0x00000200u
#define FORMAT_MESSAGE_FROM_STRING 0x00000400u
#define FORMAT_MESSAGE_FROM_HMODULE 0x00000800u
#define FORMAT_MESSAGE_FROM_SYSTEM 0x00001000u
#define FORMAT_MESSAGE_ARGUMENT_ARRAY 0x00002000u

#define LMEM_FIXED 0x0000u
#define LMEM_ZEROINIT 0x0040u
#define LPTR (LMEM_FIXED | LMEM_ZEROINIT)

using HLOCAL = HANDLE;

/// Writes a message text, and gives its length without the NUL.
///
/// FORMAT_MESSAGE_FROM_SYSTEM takes the English sentence for the error number `id`, whatever
/// `language` says; it ends in ".\r\n". FORMAT_MESSAGE_FROM_STRING takes the text at `source`,
/// in which line breaks become "\r\n", and which may hold
///   %1 ... %99, %1!spec!   an insert; `spec` as for printf, without "*": d i u x X o c s, with h, l, I64
///   %0                     the end of the text
///   %n %r %t               line break, carriage return, tab
///   %c                     any other character: itself
/// Inserts come from `arguments`, an array of DWORD_PTR that is passed as if it were a va_list
/// pointer, under FORMAT_MESSAGE_ARGUMENT_ARRAY; it must have as many as the text asks for. With
/// FORMAT_MESSAGE_IGNORE_INSERTS they stay as they are written. With FORMAT_MESSAGE_MAX_WIDTH_MASK
/// each line break of the text itself becomes a blank, %n stays one.
///
/// `room` is the size of the buffer; with FORMAT_MESSAGE_ALLOCATE_BUFFER the least size of a new
/// one, whose address is stored where `buffer` points, to be given back with LocalFree().
///
/// Failures give 0: ERROR_MR_MID_NOT_FOUND for a number without a sentence,
/// ERROR_INSUFFICIENT_BUFFER, with the buffer untouched; ERROR_INVALID_PARAMETER for no source,
/// a broken insert, inserts without an array, FORMAT_MESSAGE_FROM_HMODULE alone, and widths other
/// than 0 and the mask; ERROR_NO_WORK_DONE for an empty text; ERROR_NOT_ENOUGH_MEMORY.
ZK_UTIL_API DWORD WINAPI FormatMessageA(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPSTR buffer,
                                        DWORD room, va_list* arguments) noexcept;

/// Allocates memory; LMEM_ZEROINIT clears it. Other flags fail with ERROR_INVALID_PARAMETER.
/// Null and ERROR_NOT_ENOUGH_MEMORY if there is none. To be given back with LocalFree().
ZK_UTIL_API HLOCAL WINAPI LocalAlloc(UINT flags, SIZE_T size) noexcept;

/// Gives memory back; null is accepted. The result is null.
ZK_UTIL_API HLOCAL WINAPI LocalFree(HLOCAL memory) noexcept;

namespace zk::os {

/// The sentence for an error number, without its line break; null if there is none.
char const* errorSentence(DWORD error) noexcept;

}  // namespace zk::os
