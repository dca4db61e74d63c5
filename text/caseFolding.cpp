#include "text/caseFolding.h"

#include <cctype>
#include <clocale>

namespace zk {

CaseFolding CaseFolding::ofLocale()
{
    CaseFolding result;
    result.locale = localeNow();
    for (int byte = 0; byte < 256; ++byte) {
        int const lower = std::tolower(byte);
        result.lower[byte] = static_cast<unsigned char>(lower);
        if (lower != byte)
            result.changed[result.changedCount++] = static_cast<unsigned char>(byte);
    }
    return result;
}

std::uint64_t CaseFolding::localeNow()
{
    std::uint64_t hash = 0xCBF29CE484222325ull;
    char const* const name = std::setlocale(LC_CTYPE, nullptr);
    for (char const* c = name ? name : ""; *c; ++c)
        hash = (hash ^ static_cast<unsigned char>(*c)) * 0x100000001B3ull;
    return hash;
}

std::string CaseFolding::lowerOf(char const* text) const
{
    std::string result(text);
    for (char& c : result)
        c = lowerOf(c);
    return result;
}

bool CaseFolding::hasVariants(char c) const
{
    ByteSet variants;
    addVariants(c, variants);
    ByteSet itself;
    itself.add(c);
    return !(variants == itself);
}

void CaseFolding::addVariants(char c, ByteSet& set) const
{
    if (lowerOf(c) == c)
        set.add(c);
    for (unsigned i = 0; i < changedCount; ++i) {
        if (lower[changed[i]] == static_cast<unsigned char>(c))
            set.add(static_cast<char>(changed[i]));
    }
}

}  // namespace zk
