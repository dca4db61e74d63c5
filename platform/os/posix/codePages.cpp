#include "platform/os/posix/codePages.h"

#include "platform/os/posix/codePageConverter.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/utf8.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>

namespace zk::os {
namespace {

// The number of bytes below 128 that `text` begins with.
std::size_t asciiRun(unsigned char const* text, std::size_t length) noexcept
{
    constexpr std::size_t step = sizeof(std::uint64_t);
    std::size_t run = 0;
    for (; run + step <= length; run += step) {
        std::uint64_t bytes;
        std::memcpy(&bytes, text + run, step);
        if (bytes & 0x8080808080808080u)
            break;
    }
    while (run < length && text[run] < 0x80)
        ++run;
    return run;
}

std::size_t asciiRun(wchar_t const* wide, std::size_t length) noexcept
{
    std::size_t run = 0;
    while (run < length && static_cast<char32_t>(wide[run]) < 0x80)
        ++run;
    return run;
}

// With `count` alone nothing is written and there is no end of room.
enum class Output { write, count };

template <Output output>
Conversion utf8ToWide(unsigned char const* text, std::size_t length, wchar_t* wide, std::size_t room) noexcept
{
    Conversion result;
    for (unsigned char const* const end = text + length; text != end;) {
        std::size_t left = static_cast<std::size_t>(end - text);
        if constexpr (output == Output::write)
            left = std::min(left, room - result.count);
        std::size_t const run = asciiRun(text, left);
        if constexpr (output == Output::write)
            std::copy(text, text + run, wide + result.count);
        text += run;
        result.count += run;
        if (text == end)
            break;
        if constexpr (output == Output::write) {
            if (result.count == room) {
                result.full = true;
                break;
            }
        }
        Utf8Character const character = decodeUtf8(text, end);
        if constexpr (output == Output::write)
            wide[result.count] = static_cast<wchar_t>(character.code);
        result.bad |= !character.valid;
        text += character.length;
        ++result.count;
    }
    return result;
}

template <Output output>
Conversion wideToUtf8(wchar_t const* wide, std::size_t length, char* text, std::size_t room) noexcept
{
    Conversion result;
    for (wchar_t const* const end = wide + length; wide != end;) {
        std::size_t left = static_cast<std::size_t>(end - wide);
        if constexpr (output == Output::write)
            left = std::min(left, room - result.count);
        std::size_t const run = asciiRun(wide, left);
        if constexpr (output == Output::write)
            std::transform(wide, wide + run, text + result.count,
                           [](wchar_t c) { return static_cast<char>(c); });
        wide += run;
        result.count += run;
        if (wide == end)
            break;
        auto code = static_cast<char32_t>(*wide);
        if (!isUnicodeCharacter(code)) {
            code = 0xFFFD;
            result.bad = true;
        }
        std::size_t const size = utf8Length(code);
        if constexpr (output == Output::write) {
            if (room - result.count < size) {
                result.full = true;
                break;
            }
            encodeUtf8(code, text + result.count);
        }
        result.count += size;
        ++wide;
    }
    return result;
}

// What every call of the pair ends with: the count, or 0 with the last error.
int finish(Conversion const& result, bool badIsError) noexcept
{
    DWORD error = ERROR_SUCCESS;
    if (result.full)
        error = ERROR_INSUFFICIENT_BUFFER;
    else if ((result.bad && badIsError))
        error = ERROR_NO_UNICODE_TRANSLATION;
    else if (result.count > static_cast<std::size_t>(INT_MAX))
        error = ERROR_INVALID_PARAMETER;
    return report(error) ? static_cast<int>(result.count) : 0;
}

int fail(DWORD error) noexcept
{
    SetLastError(error);
    return 0;
}

bool isUtf8(UINT codePage) noexcept
{
    return codePage == CP_ACP || codePage == CP_OEMCP || codePage == CP_THREAD_ACP || codePage == CP_UTF8;
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

UINT GetACP() noexcept
{
    return CP_UTF8;
}

UINT GetOEMCP() noexcept
{
    return CP_UTF8;
}

BOOL IsValidCodePage(UINT codePage) noexcept
{
    CodePage const* const page = findCodePage(codePage);
    return page && page->number == codePage && canConvert(*page);
}

BOOL GetCPInfo(UINT codePage, LPCPINFO info) noexcept
{
    CodePage const* const page = findCodePage(codePage);
    if (!info || !page || !canConvert(*page))
        return report(ERROR_INVALID_PARAMETER);
    *info = {};
    info->MaxCharSize = page->longestCharacter;
    info->DefaultChar[0] = page->defaultCharacter;
    std::copy(std::begin(page->leadBytes), std::end(page->leadBytes), info->LeadByte);
    return TRUE;
}

BOOL IsDBCSLeadByte(BYTE) noexcept
{
    return FALSE;
}

BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte) noexcept
{
    CodePage const* const page = findCodePage(codePage);
    return page ? page->isLeadByte(byte) : report(ERROR_INVALID_PARAMETER);
}

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, WCHAR* wide, int room) noexcept
{
    constexpr DWORD knownFlags = MB_PRECOMPOSED | MB_ERR_INVALID_CHARS;
    if (!text || length == 0 || room < 0 || (!wide && room > 0))
        return fail(ERROR_INVALID_PARAMETER);
    CodePage const* const page = findCodePage(codePage);
    if (!page)
        return fail(ERROR_INVALID_PARAMETER);
    if (flags & ~knownFlags)
        return fail(ERROR_INVALID_FLAGS);

    std::size_t const size = length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(length);
    auto const capacity = static_cast<std::size_t>(room);
    Conversion result;
    if (isUtf8(codePage)) {
        auto const* const bytes = reinterpret_cast<unsigned char const*>(text);
        result = room > 0 ? utf8ToWide<Output::write>(bytes, size, wide, capacity)
                          : utf8ToWide<Output::count>(bytes, size, wide, capacity);
    } else if (!bytesToWide(*page, {text, size}, wide, capacity, result)) {
        return fail(ERROR_INVALID_PARAMETER);
    }
    return finish(result, (flags & MB_ERR_INVALID_CHARS) != 0);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, WCHAR const* wide, int length, LPSTR text, int room,
                        LPCSTR defaultChar, LPBOOL usedDefault) noexcept
{
    constexpr DWORD knownFlags = WC_NO_BEST_FIT_CHARS | WC_ERR_INVALID_CHARS;
    if (!wide || length == 0 || room < 0 || (!text && room > 0))
        return fail(ERROR_INVALID_PARAMETER);
    CodePage const* const page = findCodePage(codePage);
    if (!page)
        return fail(ERROR_INVALID_PARAMETER);
    if (flags & ~knownFlags)
        return fail(ERROR_INVALID_FLAGS);

    std::size_t const size = length < 0 ? std::wcslen(wide) + 1 : static_cast<std::size_t>(length);
    auto const capacity = static_cast<std::size_t>(room);
    Conversion result;
    if (isUtf8(codePage)) {
        result = room > 0 ? wideToUtf8<Output::write>(wide, size, text, capacity)
                          : wideToUtf8<Output::count>(wide, size, text, capacity);
        if (usedDefault)
            *usedDefault = FALSE;
        return finish(result, (flags & WC_ERR_INVALID_CHARS) != 0);
    }
    if (!wideToBytes(*page, {wide, size}, text, capacity, defaultChar, result))
        return fail(ERROR_INVALID_PARAMETER);
    if (usedDefault)
        *usedDefault = result.bad;
    return finish(result, false);
}

char const* zk::os::codePageName(UINT codePage) noexcept
{
    CodePage const* const page = findCodePage(codePage);
    return page ? page->name : nullptr;
}
