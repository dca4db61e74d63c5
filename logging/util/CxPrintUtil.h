// CxPrintUtil.h: numbers and characters at the end of a text.
//
//   CxStringBuff buffer;
//   CxAppendDecimal(buffer, std::int64_t(-17));     // "-17"
//   CxAppendUtf8(buffer, 0x20AC);                   // "-17€"
#pragma once

#include "logging/util/CxStringBuff.h"
#include "zk_export.h"

#include <cstdint>

/// Adds a number in decimal.
ZK_UTIL_API void CxAppendDecimal(CxStringBuff& buffer, std::int64_t number);
ZK_UTIL_API void CxAppendUnsignedDecimal(CxStringBuff& buffer, std::uint64_t number);

/// Adds a code point as UTF-8 of 1 to 6 bytes.
///
/// 0 is one NUL byte. 2047 takes three bytes: two-byte forms end below it. What is above
/// 0x7FFFFFFF, the most that six bytes hold, is written as that.
ZK_UTIL_API void CxAppendUtf8(CxStringBuff& buffer, std::uint32_t codePoint);
