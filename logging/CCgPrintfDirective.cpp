#include "logging/CCgPrintfDirective.h"

#include "logging/util/CxChars.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

namespace zk::logging {

namespace {

// Reads digits, at most `largestFormatSize`; false if there are none.
bool takeNumber(char const*& format, int& number)
{
    if (!CxIsDigit(*format))
        return false;
    number = 0;
    for (; CxIsDigit(*format); ++format)
        number = std::min(number * 10 + (*format - '0'), largestFormatSize);
    return true;
}

// Reads "n$"; leaves the format alone where there is none. False for "0$".
bool takePosition(char const*& format, int& position)
{
    char const* end = format;
    int number;
    if (!takeNumber(end, number) || *end != '$')
        return true;
    format = end + 1;
    position = number;
    return number > 0;
}

bool takeSize(char const*& format, FormatSize& size)
{
    if (*format == '*') {
        ++format;
        size.source = FormatSize::Source::parameter;
        return takePosition(format, size.value);
    }
    if (takeNumber(format, size.value))
        size.source = FormatSize::Source::number;
    return true;
}

void takeFlags(char const*& format, FormatPiece& piece)
{
    for (;; ++format)
        switch (*format) {
        case '-': piece.left = true; break;
        case '+': piece.plus = true; break;
        case ' ': piece.blank = true; break;
        case '0': piece.zero = true; break;
        case '#': piece.alternate = true; break;
        case '\'': piece.grouped = true; break;
        default: return;
        }
}

void takeLength(char const*& format, FormatPiece& piece)
{
    using Length = FormatPiece::Length;
    struct Name {
        std::string_view text;
        Length length;
    };
    static constexpr Name names[] = {
        {"hh", Length::hh},  {"h", Length::h},    {"ll", Length::ll},  {"l", Length::l},
        {"L", Length::L},    {"I64", Length::ll}, {"j", Length::ll},   {"q", Length::ll},
        {"t", Length::size}, {"z", Length::size}, {"Z", Length::size},
    };
    for (Name const& name : names)
        if (std::strncmp(format, name.text.data(), name.text.size()) == 0) {
            format += name.text.size();
            piece.length = name.length;
            return;
        }
}

// The digits in groups as the C locale has them.
std::string grouped(std::string_view digits)
{
    std::lconv const* const locale = std::localeconv();
    std::string_view const separator = locale->thousands_sep;
    char const* group = locale->grouping;
    if (separator.empty() || !*group)
        return std::string(digits);
    std::string result;
    std::size_t left = digits.size();
    while (*group > 0 && *group != CHAR_MAX && left > static_cast<std::size_t>(*group)) {
        std::size_t const count = static_cast<std::size_t>(*group);
        result.insert(0, std::string(separator) + std::string(digits.substr(left - count, count)));
        left -= count;
        if (group[1])
            ++group;
    }
    return std::string(digits.substr(0, left)) + result;
}

// Prefix (a sign, "0x"), zeros up to the width if asked for, and the rest.
void printPadded(CxStringBuff& buffer, ValueFormat const& how, std::string_view prefix, std::string_view body,
                 bool withZeros)
{
    std::size_t const length = prefix.size() + body.size();
    std::size_t const width = static_cast<std::size_t>(how.width);
    std::size_t const padding = width > length ? width - length : 0;
    if (padding && !how.left && !withZeros)
        buffer.append(padding, ' ');
    buffer.append(prefix);
    if (padding && !how.left && withZeros)
        buffer.append(padding, '0');
    buffer.append(body);
    if (padding && how.left)
        buffer.append(padding, ' ');
}

std::string_view signOf(ValueFormat const& how, bool negative)
{
    return negative ? "-" : how.plus ? "+" : how.blank ? " " : "";
}

}  // namespace

bool takePiece(char const*& format, FormatPiece& piece)
{
    piece = FormatPiece();
    char const* const percent = std::strchr(format, '%');
    if (!percent) {
        piece.literal = format;
        format += piece.literal.size();
        return true;
    }
    piece.literal = std::string_view(format, static_cast<std::size_t>(percent - format));
    format = percent + 1;
    if (*format == '%') {
        piece.conversion = *format++;
        return true;
    }
    if (!takePosition(format, piece.position))
        return false;
    takeFlags(format, piece);
    if (!takeSize(format, piece.width))
        return false;
    if (*format == '.') {
        ++format;
        if (!takeSize(format, piece.precision))
            return false;
        if (piece.precision.source == FormatSize::Source::none)
            piece.precision.source = FormatSize::Source::number;  // "%.f": none is 0
    }
    takeLength(format, piece);
    if (!*format || !std::strchr("diuoxXcCsSaAeEfFgGpn", *format))
        return false;
    piece.conversion = *format++;
    return true;
}

void printInteger(CxStringBuff& buffer, ValueFormat const& how, bool negative, std::uint64_t magnitude)
{
    int const base = how.conversion == 'o' ? 8 : how.conversion == 'x' || how.conversion == 'X' ? 16 : 10;
    char room[24];
    char* const start = room + 1;  // for the zero of "%#o"
    char* end = std::to_chars(start, room + sizeof room, magnitude, base).ptr;
    if (magnitude == 0 && how.precision == 0)
        end = start;
    if (how.conversion == 'X')
        std::transform(start, end, start, [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
    std::string_view digits(start, static_cast<std::size_t>(end - start));

    bool const isSigned = how.conversion == 'd' || how.conversion == 'i';
    std::string_view prefix = isSigned ? signOf(how, negative) : "";
    if (how.alternate && base == 16 && magnitude != 0)
        prefix = how.conversion == 'x' ? "0x" : "0X";
    if (how.alternate && base == 8 && (digits.empty() || digits.front() != '0') &&
        how.precision <= static_cast<int>(digits.size())) {
        room[0] = '0';
        digits = std::string_view(room, digits.size() + 1);
    }

    bool const withZeros = how.zero && how.precision < 0;
    int const missing = how.precision - static_cast<int>(digits.size());
    if (missing <= 0 && !(how.grouped && base == 10)) {
        printPadded(buffer, how, prefix, digits, withZeros);
        return;
    }
    std::string body = missing > 0 ? std::string(static_cast<std::size_t>(missing), '0') : std::string();
    body += digits;
    printPadded(buffer, how, prefix, how.grouped && base == 10 ? grouped(body) : body, withZeros);
}

void printNumber(CxStringBuff& buffer, ValueFormat const& how, long double number, bool isLong)
{
    char specification[8] = "%";
    char* next = specification + 1;
    if (how.alternate)
        *next++ = '#';
    *next++ = '.';
    *next++ = '*';
    if (isLong)
        *next++ = 'L';
    *next++ = how.conversion;
    *next = '\0';

    long double const magnitude = std::fabs(number);
    auto const print = [&](char* room, std::size_t size) {
        // A negative precision counts as none.
        return isLong
            ? std::snprintf(room, size, specification, how.precision, magnitude)
            : std::snprintf(room, size, specification, how.precision, static_cast<double>(magnitude));
    };
    std::string text(64, '\0');
    int const length = std::max(print(text.data(), text.size()), 0);
    if (static_cast<std::size_t>(length) >= text.size()) {
        text.resize(static_cast<std::size_t>(length) + 1);
        print(text.data(), text.size());
    }
    text.resize(static_cast<std::size_t>(length));

    std::string prefix(signOf(how, std::signbit(number)));
    bool const finite = std::isfinite(number);
    if (finite && (how.conversion == 'a' || how.conversion == 'A')) {
        prefix += text.substr(0, 2);
        text.erase(0, 2);
    } else if (finite && how.grouped &&
               std::string_view("fFgG").find(how.conversion) != std::string_view::npos) {
        std::size_t const digits = std::find_if_not(text.begin(), text.end(), CxIsDigit) - text.begin();
        text = grouped(std::string_view(text).substr(0, digits)) + text.substr(digits);
    }
    printPadded(buffer, how, prefix, text, how.zero && finite);
}

void printText(CxStringBuff& buffer, ValueFormat const& how, std::string_view text)
{
    if (how.precision >= 0)
        text = text.substr(0, static_cast<std::size_t>(how.precision));
    printPadded(buffer, how, "", text, false);
}

}  // namespace zk::logging
