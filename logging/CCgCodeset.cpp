#include "logging/CCgCodeset.h"

#include "logging/CCgCodesetText.h"
#include "logging/util/CxUtf8.h"
#include "platform/os/codeSets.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

namespace zk::logging {

namespace {

constexpr char32_t replacement = '?';

void lose(CCgCodeset& codeset, std::size_t count)
{
    std::size_t const most = std::numeric_limits<std::uint16_t>::max();
    codeset.lostCharacters = static_cast<std::uint16_t>(std::min(most, codeset.lostCharacters + count));
}

bool isCharacter(char32_t c) noexcept
{
    return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
}

bool isUtf8(CCgCodeset const& codeset) noexcept
{
    return codeset.kind == CCG_CODESET_UTF8;
}

// Whether the system converts it. A kind that isn't known is plain bytes.
bool isConverted(CCgCodeset const& codeset) noexcept
{
    switch (codeset.kind) {
    case CCG_CODESET_SINGLE_BYTE:
    case CCG_CODESET_DOUBLE_BYTE:
    case CCG_CODESET_MULTIBYTE:
    case CCG_CODESET_STATEFUL:
    case CCG_CODESET_EBCDIC:
    case CCG_CODESET_GB18030: return codeset.converter != nullptr;
    default: return false;
    }
}

// ---- to characters; what is none becomes "?"

// Takes the character that a text begins with; what is cut off at its end is left out.
void takeCharacter(std::string_view& text, std::u32string& characters, std::size_t& lost)
{
    Utf8Step const step = takeUtf8(text);
    text.remove_prefix(step.length);
    if (step.state == Utf8Step::State::incomplete)
        return;
    bool const isValid = step.state == Utf8Step::State::valid;
    characters += isValid ? step.character : replacement;
    lost += !isValid;
}

std::u32string charactersOfUtf8(std::string_view text, std::size_t& lost)
{
    std::u32string characters;
    characters.reserve(text.size());
    while (!text.empty())
        takeCharacter(text, characters, lost);
    return characters;
}

std::u32string charactersOfCodeset(CCgCodeset& codeset, std::string_view bytes, std::size_t& lost)
{
    if (isUtf8(codeset))
        return charactersOfUtf8(bytes, lost);
    std::u32string characters;
    if (!isConverted(codeset)) {
        for (char const c : bytes)
            characters += static_cast<unsigned char>(c);
        return characters;
    }
    codeset.converter->reset();
    while (!bytes.empty()) {
        auto const [taken, stop] = codeset.converter->decode(bytes, characters);
        bytes.remove_prefix(taken);
        if (stop != os::CodeSet::Stop::invalid)
            break;
        characters += replacement;
        ++lost;
        bytes.remove_prefix(1);
    }
    // Some hold marks for positions that no text of the toolkit has.
    std::replace_if(
        characters.begin(), characters.end(), [](char32_t c) { return !isCharacter(c); }, replacement);
    return characters;
}

// A text in UTF-16, or of wide characters of 32 bits.
template <class Unit>
std::u32string charactersOfWide(std::basic_string_view<Unit> text, std::size_t& lost)
{
    std::u32string characters;
    characters.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const unit = static_cast<char32_t>(text[i]);
        auto const next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
        if (sizeof(Unit) == 2 && unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            characters += 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else {
            characters += isCharacter(unit) ? unit : replacement;
            lost += !isCharacter(unit);
        }
    }
    return characters;
}

// ---- from characters

void appendConverted(os::CodeSet& converter, std::u32string_view characters, std::string& bytes,
                     std::size_t& lost)
{
    while (!characters.empty()) {
        characters.remove_prefix(converter.encode(characters, bytes));
        if (characters.empty())
            break;
        converter.encode({&replacement, 1}, bytes);
        ++lost;
        characters.remove_prefix(1);
    }
}

std::string bytesOf(CCgCodeset& codeset, std::u32string_view characters, std::size_t& lost)
{
    std::string bytes;
    if (isConverted(codeset)) {
        codeset.converter->reset();
        appendConverted(*codeset.converter, characters, bytes, lost);
        codeset.converter->finish(bytes);
        return bytes;
    }
    for (char32_t const c : characters) {
        if (isUtf8(codeset)) {
            appendUtf8(bytes, isCharacter(c) ? c : replacement);
            lost += !isCharacter(c);
        } else {
            bytes += static_cast<char>(c < 0x100 ? c : replacement);
            lost += c >= 0x100;
        }
    }
    return bytes;
}

std::string bytesOfUtf8(CCgCodeset& codeset, std::string_view text, std::size_t& lost)
{
    if (isConverted(codeset) && !codeset.converter->hasAscii())
        return bytesOf(codeset, charactersOfUtf8(text, lost), lost);
    std::string bytes;
    bytes.reserve(text.size());
    std::u32string characters;
    while (!text.empty()) {
        std::size_t const run = asciiRun(text);
        bytes.append(text, 0, run);
        text.remove_prefix(run);
        characters.clear();
        while (!text.empty() && static_cast<unsigned char>(text.front()) >= 0x80)
            takeCharacter(text, characters, lost);
        if (!characters.empty())
            bytes += bytesOf(codeset, characters, lost);
    }
    return bytes;
}

// The longest beginning that takes `room` bytes at most.
std::string bytesWithin(CCgCodeset& codeset, std::u32string_view characters, std::size_t room)
{
    std::size_t lost = 0;
    std::string bytes = bytesOf(codeset, characters, lost);
    if (bytes.size() > room) {
        std::size_t fits = 0;
        std::size_t tooMany = characters.size();
        while (tooMany - fits > 1) {
            std::size_t const middle = fits + (tooMany - fits) / 2;
            lost = 0;
            (bytesOf(codeset, characters.substr(0, middle), lost).size() <= room ? fits : tooMany) = middle;
        }
        lost = 0;
        bytes = bytesOf(codeset, characters.substr(0, fits), lost);
        if (bytes.size() > room)
            bytes.clear();  // not even the empty text: it has states
    }
    lose(codeset, lost);
    return bytes;
}

template <class Unit>
std::basic_string_view<Unit> viewOf(Unit const* source, std::ptrdiff_t length) noexcept
{
    if (!source)
        return {};
    return length < 0 ? std::basic_string_view<Unit>(source)
                      : std::basic_string_view<Unit>(source, static_cast<std::size_t>(length));
}

CCgCodeset& chosen(CCgCodeset* codeset) noexcept
{
    return codeset ? *codeset : *ccg_defaultCodeset();
}

std::size_t copied(std::string const& bytes, char* target) noexcept
{
    return bytes.copy(target, bytes.size());
}

CCgCodeset& utf8() noexcept
{
    static CCgCodeset record{nullptr, CCG_CODESET_UTF8, "UTF8", 0};
    return record;
}

}  // namespace

std::string codesetOfUtf8(CCgCodeset& codeset, std::string_view text)
{
    std::size_t lost = 0;
    std::string bytes = bytesOfUtf8(codeset, text, lost);
    lose(codeset, lost);
    return bytes;
}

std::string utf8OfCodeset(CCgCodeset& codeset, std::string_view bytes)
{
    std::size_t lost = 0;
    std::u32string const characters = charactersOfCodeset(codeset, bytes, lost);
    lose(codeset, lost);
    return bytesOf(utf8(), characters, lost);
}

std::string codesetOfWide(CCgCodeset& codeset, std::wstring_view text)
{
    std::size_t lost = 0;
    std::string bytes = bytesOf(codeset, charactersOfWide(text, lost), lost);
    lose(codeset, lost);
    return bytes;
}

}  // namespace zk::logging

using namespace zk::logging;

std::size_t ccg_utf8ToCodeset(CCgCodeset* codeset, char const* source, std::ptrdiff_t length, char* target,
                              std::size_t size)
{
    CCgCodeset& own = chosen(codeset);
    std::string_view const text = viewOf(source, length);
    std::size_t lost = 0;
    std::string bytes = bytesOfUtf8(own, text, lost);
    if (bytes.size() > size) {
        lost = 0;
        bytes = bytesWithin(own, charactersOfUtf8(text, lost), size);
    }
    lose(own, lost);
    return copied(bytes, target);
}

std::size_t ccg_codesetToUtf8(CCgCodeset* codeset, char const* source, std::ptrdiff_t length, char* target,
                              std::size_t size)
{
    std::size_t lost = 0;
    std::u32string const characters = charactersOfCodeset(chosen(codeset), viewOf(source, length), lost);
    lose(chosen(codeset), lost);
    return copied(bytesWithin(utf8(), characters, size), target);
}

std::size_t ccg_codesetToUtf16(CCgCodeset* codeset, char const* source, std::ptrdiff_t length,
                               char16_t* target, std::size_t size)
{
    std::size_t lost = 0;
    std::size_t written = 0;
    for (char32_t const c : charactersOfCodeset(chosen(codeset), viewOf(source, length), lost)) {
        std::size_t const units = c > 0xFFFF ? 2 : 1;
        if (size - written < units)
            break;
        if (units == 2) {
            target[written++] = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            target[written++] = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            target[written++] = static_cast<char16_t>(c);
        }
    }
    lose(chosen(codeset), lost);
    return written;
}

std::size_t ccg_utf16ToCodeset(CCgCodeset* codeset, char16_t const* source, std::ptrdiff_t length,
                               char* target, std::size_t size)
{
    std::size_t lost = 0;
    std::u32string const characters = charactersOfWide(viewOf(source, length), lost);
    lose(chosen(codeset), lost);
    return copied(bytesWithin(chosen(codeset), characters, size), target);
}

std::size_t ccg_characterToCodeset(CCgCodeset* codeset, char32_t character, char* target, std::size_t size)
{
    return copied(bytesWithin(chosen(codeset), {&character, 1}, size), target);
}
