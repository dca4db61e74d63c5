#include "platform/os/posix/textOperations.h"

#include "platform/os/posix/characters.h"
#include "platform/os/utf8.h"

#include <charconv>
#include <cstring>

#include <locale.h>
#include <wctype.h>

namespace zk::os {
namespace {

char* writeUnsigned(std::uint64_t value, char* text, int radix, std::size_t room) noexcept
{
    *text = '\0';
    if (radix >= 2 && radix <= 36)
        *std::to_chars(text, text + room, value, radix).ptr = '\0';
    return text;
}

constexpr std::size_t digits32 = 32;
constexpr std::size_t digits64 = 64;

// The C library's tables of letters, independent of the locale that the host
// has set. Null, and so ASCII alone, where the locale is not installed.
locale_t unicodeLocale() noexcept
{
    static locale_t const locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

enum class Case { upper, lower };

template <Case wanted>
void changeCase(char* text, std::size_t length) noexcept
{
    auto* position = reinterpret_cast<unsigned char*>(text);
    auto* const end = position + length;
    while (position != end) {
        if (*position < 0x80) {
            *position = wanted == Case::upper ? upperOf(*position) : lowerOf(*position);
            ++position;
            continue;
        }
        Utf8Character const letter = decodeUtf8(position, end);
        if (locale_t const locale = unicodeLocale(); letter.valid && locale) {
            auto const code = static_cast<wint_t>(letter.code);
            auto const other = static_cast<char32_t>(wanted == Case::upper ? towupper_l(code, locale)
                                                                           : towlower_l(code, locale));
            if (other != letter.code && isUnicodeCharacter(other) && utf8Length(other) == letter.length)
                encodeUtf8(other, reinterpret_cast<char*>(position));
        }
        position += letter.length;
    }
}

// The form of CharUpperA and CharLowerA in which the "pointer" is a character.
bool isOneCharacter(LPSTR text) noexcept
{
    return reinterpret_cast<std::uintptr_t>(text) < 0x10000;
}

LPSTR asPointer(unsigned int character) noexcept
{
    return reinterpret_cast<LPSTR>(std::uintptr_t(character));
}

unsigned char lowByte(LPSTR text) noexcept
{
    return static_cast<unsigned char>(reinterpret_cast<std::uintptr_t>(text));
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

int _stricmp(char const* a, char const* b) noexcept
{
    return _strnicmp(a, b, SIZE_MAX);
}

int _strnicmp(char const* a, char const* b, std::size_t count) noexcept
{
    for (std::size_t i = 0; i < count; ++i) {
        auto const left = static_cast<unsigned char>(a[i]);
        auto const right = static_cast<unsigned char>(b[i]);
        if (left != right) {
            int const difference = lowerOf(left) - lowerOf(right);
            if (difference != 0)
                return difference;
        }
        if (left == 0)
            break;
    }
    return 0;
}

char* _strlwr(char* text) noexcept
{
    for (char* c = text; *c; ++c)
        *c = static_cast<char>(lowerOf(static_cast<unsigned char>(*c)));
    return text;
}

char* _strupr(char* text) noexcept
{
    for (char* c = text; *c; ++c)
        *c = static_cast<char>(upperOf(static_cast<unsigned char>(*c)));
    return text;
}

char* _itoa(int value, char* text, int radix) noexcept
{
    if (radix == 10 && value < 0) {
        *text = '-';
        writeUnsigned(0u - static_cast<std::uint32_t>(value), text + 1, radix, digits32);
        return text;
    }
    return writeUnsigned(static_cast<std::uint32_t>(value), text, radix, digits32);
}

char* _ltoa(long value, char* text, int radix) noexcept
{
    return _itoa(static_cast<std::int32_t>(value), text, radix);
}

char* _ultoa(unsigned long value, char* text, int radix) noexcept
{
    return writeUnsigned(static_cast<std::uint32_t>(value), text, radix, digits32);
}

char* _i64toa(long long value, char* text, int radix) noexcept
{
    if (radix == 10 && value < 0) {
        *text = '-';
        writeUnsigned(0u - static_cast<std::uint64_t>(value), text + 1, radix, digits64);
        return text;
    }
    return writeUnsigned(static_cast<std::uint64_t>(value), text, radix, digits64);
}

int lstrcmpiA(LPCSTR a, LPCSTR b) noexcept
{
    if (!a || !b)
        return int(a != nullptr) - int(b != nullptr);
    return _stricmp(a, b);
}

int lstrlenA(LPCSTR text) noexcept
{
    return text ? static_cast<int>(std::strlen(text)) : 0;
}

LPSTR CharUpperA(LPSTR text) noexcept
{
    if (isOneCharacter(text))
        return asPointer(upperOf(lowByte(text)));
    changeCase<Case::upper>(text, std::strlen(text));
    return text;
}

LPSTR CharLowerA(LPSTR text) noexcept
{
    if (isOneCharacter(text))
        return asPointer(lowerOf(lowByte(text)));
    changeCase<Case::lower>(text, std::strlen(text));
    return text;
}

DWORD CharUpperBuffA(LPSTR text, DWORD length) noexcept
{
    if (!text)
        return 0;
    changeCase<Case::upper>(text, length);
    return length;
}

DWORD CharLowerBuffA(LPSTR text, DWORD length) noexcept
{
    if (!text)
        return 0;
    changeCase<Case::lower>(text, length);
    return length;
}

LPSTR CharNextA(LPCSTR position) noexcept
{
    constexpr std::size_t longest = 4;
    std::size_t const left = strnlen(position, longest);
    if (left == 0)
        return const_cast<LPSTR>(position);
    auto const* const bytes = reinterpret_cast<unsigned char const*>(position);
    Utf8Character const character = decodeUtf8(bytes, bytes + left);
    return const_cast<LPSTR>(position + (character.valid ? character.length : 1));
}

LPSTR CharPrevA(LPCSTR start, LPCSTR position) noexcept
{
    if (position <= start)
        return const_cast<LPSTR>(start);
    auto const* const end = reinterpret_cast<unsigned char const*>(position);
    for (int length = 2; length <= 4 && length <= position - start; ++length) {
        Utf8Character const character = decodeUtf8(end - length, end);
        if (character.valid && character.length == length)
            return const_cast<LPSTR>(position - length);
    }
    return const_cast<LPSTR>(position - 1);
}
