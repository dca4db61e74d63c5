// codePageConverter.h: the known code pages, and conversion through iconv.
//
// Opening a converter costs a look-up and a loaded module, so each thread keeps
// the last one of each direction open.
#pragma once

#include "platform/os/posix/types.h"

#include <string_view>

namespace zk::os {

struct CodePage {
    UINT number;
    char const* name;  // iconv's
    BYTE longestCharacter = 1;
    BYTE defaultCharacter = '?';
    BYTE leadBytes[6] = {};
    char32_t badCharacter = 0xFFFD;  // stands for bytes that are no character

    bool isLeadByte(BYTE byte) const noexcept;
};

/// The record of a code page by number or by a name such as CP_ACP; null for an unknown one.
CodePage const* findCodePage(UINT number) noexcept;

/// Whether the C library has a converter for the page.
bool canConvert(CodePage const& page) noexcept;

struct Conversion {
    std::size_t count = 0;  // units written, or needed
    bool bad = false;       // something could not be converted and was replaced
    bool full = false;      // the room was too small
};

/// Convert into at most `room` units; with a `room` of 0 only count. False if the C library has no
/// converter for the page.
bool bytesToWide(CodePage const& page, std::string_view text, wchar_t* wide, std::size_t room,
                 Conversion& result) noexcept;
bool wideToBytes(CodePage const& page, std::wstring_view wide, char* text, std::size_t room,
                 char const* defaultChar, Conversion& result) noexcept;

}  // namespace zk::os
