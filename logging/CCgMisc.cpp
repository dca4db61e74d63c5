#include "logging/CCgMisc.h"

#include "logging/CCgCodesetText.h"
#include "logging/util/CxChars.h"
#include "platform/os/os.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace zk::logging {

namespace {

constexpr std::size_t consoleBufferSize = 4095;
constexpr std::string_view scanBlanks(" \t\n\v\f\r");

char lower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view withoutLeadingBlanks(std::string_view text) noexcept
{
    std::size_t const start = text.find_first_not_of(scanBlanks);
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

template <class Number>
std::optional<Number> scanDecimal(std::string_view text) noexcept
{
    text = withoutLeadingBlanks(text);
    bool const negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.empty() || !CxIsDigit(text.front()))
        return std::nullopt;
    std::uint64_t const limit =
        static_cast<std::uint64_t>(std::numeric_limits<Number>::max()) + (negative ? 1 : 0);
    std::uint64_t value = 0;
    for (char const c : text) {
        if (!CxIsDigit(c))
            break;
        std::uint64_t const digit = static_cast<std::uint64_t>(c - '0');
        value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
    }
    return static_cast<Number>(negative ? 0 - value : value);
}

// A text from one code page to another. What cannot be converted becomes the target's "?".
std::string converted(std::string_view text, UINT from, UINT to)
{
    if (text.empty())
        return {};
    std::wstring wide(text.size(), L'\0');
    int const length =
        static_cast<int>(std::min<std::size_t>(text.size(), std::numeric_limits<int>::max() / 8));
    int const wideLength = MultiByteToWideChar(from, 0, text.data(), length, wide.data(), length);
    if (wideLength <= 0)
        return std::string(text);
    char const* const questionMark = to == CP_UTF8 ? nullptr : "?";
    int const room = WideCharToMultiByte(to, 0, wide.data(), wideLength, nullptr, 0, questionMark, nullptr);
    std::string result(static_cast<std::size_t>(std::max(room, 0)), '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideLength, result.data(), room, questionMark, nullptr);
    return result;
}

}  // namespace

char* newText(std::string_view text) noexcept
{
    char* const copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy)
        return nullptr;
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

bool sameIgnoringCase(std::string_view a, std::string_view b) noexcept
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::int32_t> scanInt32(std::string_view text) noexcept
{
    return scanDecimal<std::int32_t>(text);
}

std::optional<std::int64_t> scanInt64(std::string_view text) noexcept
{
    return scanDecimal<std::int64_t>(text);
}

std::optional<double> scanDouble(std::string_view text) noexcept
{
    text = withoutLeadingBlanks(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    return value;
}

std::optional<bool> scanBoolean(std::string_view text) noexcept
{
    if (sameIgnoringCase(text, "true"))
        return true;
    if (sameIgnoringCase(text, "false"))
        return false;
    return std::nullopt;
}

std::string utf8OfProcessText(std::string_view text)
{
    return GetACP() == CP_UTF8 || text.empty() ? std::string(text) : converted(text, CP_ACP, CP_UTF8);
}

std::string processTextOfUtf8(std::string_view text)
{
    return GetACP() == CP_UTF8 || text.empty() ? std::string(text) : converted(text, CP_UTF8, CP_ACP);
}

void printToConsole(std::FILE* stream, std::string_view text)
{
    // No character takes less than a quarter of its bytes in UTF-8: more would be cut anyway.
    text = text.substr(0, consoleBufferSize * 4);
    char buffer[consoleBufferSize];
    std::size_t length = 0;
    if (CCgCodeset* const codeset = consoleCodeset())
        length = ccg_utf8ToCodeset(codeset, text.data(), static_cast<std::ptrdiff_t>(text.size()), buffer,
                                   sizeof buffer);
    else
        length = converted(text, CP_UTF8, CP_OEMCP).copy(buffer, sizeof buffer);
    std::fwrite(buffer, 1, length, stream);
    std::fflush(stream);
}

}  // namespace zk::logging
