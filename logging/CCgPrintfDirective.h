// CCgPrintfDirective.h: a format taken apart, and the printing of single values.
#pragma once

#include "logging/util/CxStringBuff.h"

#include <cstdint>
#include <string_view>

namespace zk::logging {

/// A width or a precision as it stands in a directive.
struct FormatSize {
    enum class Source { none, number, parameter };
    Source source = Source::none;
    int value = 0;  // the number, or the parameter's index from 1 on; 0: the next
};

/// A piece of a format: a literal, or a directive.
struct FormatPiece {
    enum class Length { none, hh, h, l, ll, L, size };

    std::string_view literal;  // what stands before the directive, or the rest
    char conversion = '\0';    // NUL: there is no directive, the format ends here
    int position = 0;          // the index from 1 on; 0: the next
    bool left = false, plus = false, blank = false, zero = false, alternate = false, grouped = false;
    FormatSize width, precision;
    Length length = Length::none;

    bool isSigned() const noexcept { return conversion == 'd' || conversion == 'i'; }
    bool isInteger() const noexcept
    {
        return std::string_view("diuoxX").find(conversion) != std::string_view::npos;
    }
    bool isNumber() const noexcept
    {
        return std::string_view("aAeEfFgG").find(conversion) != std::string_view::npos;
    }
    bool isCharacter() const noexcept { return conversion == 'c' || conversion == 'C'; }
    bool isText() const noexcept { return conversion == 's' || conversion == 'S'; }
    bool isWide() const noexcept { return conversion == 'C' || conversion == 'S' || length == Length::l; }
};

/// Takes the next piece off a format. False if its directive is malformed.
bool takePiece(char const*& format, FormatPiece& piece);

/// How a value is printed, with its sizes known.
struct ValueFormat {
    char conversion;
    bool left, plus, blank, zero, alternate, grouped;
    int width;      // 0: none
    int precision;  // -1: none
};

/// The widest a value may be made, and the most digits it may have.
inline constexpr int largestFormatSize = 65535;

void printInteger(CxStringBuff& buffer, ValueFormat const& how, bool negative, std::uint64_t magnitude);
void printNumber(CxStringBuff& buffer, ValueFormat const& how, long double number, bool isLong);
void printText(CxStringBuff& buffer, ValueFormat const& how, std::string_view text);

}  // namespace zk::logging
