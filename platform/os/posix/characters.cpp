#include "platform/os/posix/characters.h"

#include "platform/os/posix/textOperations.h"

#include <cstring>

namespace {

char const* plain(unsigned char const* text) noexcept
{
    return reinterpret_cast<char const*>(text);
}

unsigned char* found(char const* place) noexcept
{
    return reinterpret_cast<unsigned char*>(const_cast<char*>(place));
}

}  // namespace

std::size_t _mbslen(unsigned char const* text) noexcept
{
    return std::strlen(plain(text));
}

unsigned char* _mbschr(unsigned char const* text, unsigned int character) noexcept
{
    return found(std::strchr(plain(text), static_cast<unsigned char>(character)));
}

unsigned char* _mbsrchr(unsigned char const* text, unsigned int character) noexcept
{
    return found(std::strrchr(plain(text), static_cast<unsigned char>(character)));
}

unsigned char* _mbsstr(unsigned char const* text, unsigned char const* wanted) noexcept
{
    return found(std::strstr(plain(text), plain(wanted)));
}

unsigned char* _mbspbrk(unsigned char const* text, unsigned char const* set) noexcept
{
    return found(std::strpbrk(plain(text), plain(set)));
}

std::size_t _mbsspn(unsigned char const* text, unsigned char const* set) noexcept
{
    return std::strspn(plain(text), plain(set));
}

std::size_t _mbscspn(unsigned char const* text, unsigned char const* set) noexcept
{
    return std::strcspn(plain(text), plain(set));
}

int _mbscmp(unsigned char const* a, unsigned char const* b) noexcept
{
    return std::strcmp(plain(a), plain(b));
}

int _mbsicmp(unsigned char const* a, unsigned char const* b) noexcept
{
    return _stricmp(plain(a), plain(b));
}

int _mbsnbcmp(unsigned char const* a, unsigned char const* b, std::size_t count) noexcept
{
    return std::strncmp(plain(a), plain(b), count);
}

int _mbsnbicmp(unsigned char const* a, unsigned char const* b, std::size_t count) noexcept
{
    return _strnicmp(plain(a), plain(b), count);
}

unsigned char* _mbslwr(unsigned char* text) noexcept
{
    _strlwr(reinterpret_cast<char*>(text));
    return text;
}

unsigned char* _mbsupr(unsigned char* text) noexcept
{
    _strupr(reinterpret_cast<char*>(text));
    return text;
}

unsigned char* _mbsnbcpy(unsigned char* target, unsigned char const* source, std::size_t count) noexcept
{
    std::size_t const length = strnlen(plain(source), count);
    std::memcpy(target, source, length);
    std::memset(target + length, 0, count - length);
    return target;
}
