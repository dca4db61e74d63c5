#include "logging/util/CxPrintUtil.h"

#include <algorithm>
#include <charconv>

namespace {

template <class Number>
void appendNumber(CxStringBuff& buffer, Number number)
{
    char digits[24];
    auto const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    buffer.append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

}  // namespace

void CxAppendDecimal(CxStringBuff& buffer, std::int64_t number)
{
    appendNumber(buffer, number);
}

void CxAppendUnsignedDecimal(CxStringBuff& buffer, std::uint64_t number)
{
    appendNumber(buffer, number);
}

void CxAppendUtf8(CxStringBuff& buffer, std::uint32_t codePoint)
{
    if (codePoint < 0x80) {
        buffer.append(static_cast<char>(codePoint));
        return;
    }
    // The first code point that needs one byte more: the second form ends one too early, on purpose.
    constexpr std::uint32_t limits[] = {0x7FF, 0x10000, 0x200000, 0x4000000};
    codePoint = std::min(codePoint, 0x7FFFFFFFu);
    int following = 1;
    while (following < 5 && codePoint >= limits[following - 1])
        ++following;
    char bytes[6];
    for (int i = following; i > 0; --i) {
        bytes[i] = static_cast<char>(0x80 | (codePoint & 0x3F));
        codePoint >>= 6;
    }
    bytes[0] = static_cast<char>((0xFF00u >> (following + 1)) | codePoint);
    buffer.append(std::string_view(bytes, static_cast<std::size_t>(following) + 1));
}
