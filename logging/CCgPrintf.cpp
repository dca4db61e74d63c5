#include "logging/CCgPrintf.h"

#include "logging/CCgCodesetText.h"
#include "logging/CCgPrintfDirective.h"
#include "platform/os/os.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <optional>
#include <string>

namespace zk::logging {

namespace {

constexpr int mostArguments = 64;

ValueFormat valueFormat(FormatPiece const& piece, int width, int precision)
{
    bool const left = piece.left || width < 0;
    // The least integer has no positive counterpart.
    int const size = std::min(width < 0 ? -std::max(width, -largestFormatSize) : width, largestFormatSize);
    return {piece.conversion, left,       piece.plus,
            piece.blank,      piece.zero, piece.alternate,
            piece.grouped,    size,       std::min(precision, largestFormatSize)};
}

// The index, from 0 on, that a position in a directive stands for.
std::size_t indexOf(int position, std::size_t& next)
{
    return position > 0 ? static_cast<std::size_t>(position) - 1 : next++;
}

void printSigned(CxStringBuff& buffer, ValueFormat const& how, std::int64_t value)
{
    auto const bits = static_cast<std::uint64_t>(value);
    printInteger(buffer, how, value < 0, value < 0 ? 0 - bits : bits);
}

void printPointer(CxStringBuff& buffer, ValueFormat how, std::uint64_t address)
{
    char digits[20];
    std::snprintf(digits, sizeof digits, "%016llX", static_cast<unsigned long long>(address));
    how.precision = -1;
    printText(buffer, how, digits);
}

// ---- typed lists

struct TypedSource {
    CCgParmList const* parameters;
    std::size_t next = 0;

    CCgParm const* at(int position)
    {
        std::size_t const index = indexOf(position, next);
        return parameters ? parameters->at(index) : nullptr;
    }

    std::optional<int> size(FormatSize const& size, int none)
    {
        switch (size.source) {
        case FormatSize::Source::none: return none;
        case FormatSize::Source::number: return size.value;
        default: break;
        }
        CCgParm const* const parameter = at(size.value);
        if (!parameter || parameter->isText() || parameter->isNumber())
            return std::nullopt;
        return static_cast<int>(
            std::clamp<std::int64_t>(parameter->integer, -largestFormatSize, largestFormatSize));
    }
};

void printIntegerParameter(CxStringBuff& buffer, ValueFormat how, CCgParm const& parameter)
{
    FormatPiece piece;
    piece.conversion = how.conversion;
    if (piece.isCharacter() || (piece.isText() && parameter.type == CCG_CHAR)) {
        char const byte = static_cast<char>(parameter.integer);
        how.precision = -1;
        printText(buffer, how, std::string_view(&byte, 1));
    } else if (piece.isText() && parameter.type == CCG_BOOLEAN) {
        printText(buffer, how, parameter.integer ? "true" : "false");
    } else if (piece.isNumber()) {
        printNumber(buffer, how, static_cast<long double>(parameter.integer), false);
    } else if (how.conversion == 'p') {
        printPointer(buffer, how, static_cast<std::uint64_t>(parameter.integer));
    } else if (piece.isInteger() && !piece.isSigned()) {
        auto const bits = static_cast<std::uint64_t>(parameter.integer);
        printInteger(buffer, how, false,
                     parameter.type == CCG_LONG && sizeof(long) == 8 ? bits : bits & 0xFFFFFFFF);
    } else {
        if (piece.isText())
            how.precision = -1;
        how.conversion = 'd';
        printSigned(buffer, how, parameter.integer);
    }
}

void printParameter(CxStringBuff& buffer, ValueFormat how, CCgParm const& parameter)
{
    FormatPiece piece;
    piece.conversion = how.conversion;
    if (how.conversion == 'n')
        return;
    if (parameter.isText()) {
        if (!piece.isText())
            how.precision = -1;
        printText(buffer, how, parameter.text);
    } else if (parameter.isNumber()) {
        if (!piece.isNumber()) {
            how.conversion = 'f';
            how.precision = -1;
        }
        printNumber(buffer, how, parameter.number, false);
    } else {
        printIntegerParameter(buffer, how, parameter);
    }
}

bool printTyped(CxStringBuff& buffer, char const* format, CCgParmList const* parameters)
{
    TypedSource source{parameters};
    FormatPiece piece;
    do {
        if (!takePiece(format, piece) || !buffer.append(piece.literal))
            return false;
        if (piece.conversion == '\0')
            return true;
        if (piece.conversion == '%') {
            buffer.append('%');
            continue;
        }
        auto const width = source.size(piece.width, 0);
        auto const precision = source.size(piece.precision, -1);
        CCgParm const* const parameter = width && precision ? source.at(piece.position) : nullptr;
        if (!parameter)
            return false;
        printParameter(buffer, valueFormat(piece, *width, *precision), *parameter);
    } while (true);
}

// ---- variable lists

enum class ArgumentType { none, int32, longInteger, int64, number, longNumber, pointer };

struct Argument {
    ArgumentType type = ArgumentType::none;
    std::int64_t integer = 0;
    long double number = 0;
    void const* pointer = nullptr;
};

struct Arguments {
    std::array<Argument, mostArguments> list;
    std::size_t count = 0;

    bool note(std::size_t index, ArgumentType type)
    {
        if (index >= list.size() || (list[index].type != ArgumentType::none && list[index].type != type))
            return false;
        list[index].type = type;
        count = std::max(count, index + 1);
        return true;
    }
};

ArgumentType typeOf(FormatPiece const& piece)
{
    using Length = FormatPiece::Length;
    if (piece.isText() || piece.conversion == 'p' || piece.conversion == 'n')
        return ArgumentType::pointer;
    if (piece.isCharacter())
        return ArgumentType::int32;
    if (piece.isNumber())
        return piece.length == Length::L ? ArgumentType::longNumber : ArgumentType::number;
    switch (piece.length) {
    case Length::l: return ArgumentType::longInteger;
    case Length::ll:
    case Length::L:
    case Length::size: return ArgumentType::int64;
    default: return ArgumentType::int32;
    }
}

// Which arguments a format takes, and of which types.
bool surveyed(char const* format, Arguments& arguments)
{
    std::size_t next = 0;
    FormatPiece piece;
    while (takePiece(format, piece)) {
        if (piece.conversion == '\0')
            return std::none_of(arguments.list.begin(), arguments.list.begin() + arguments.count,
                                [](Argument const& a) { return a.type == ArgumentType::none; });
        if (piece.conversion == '%')
            continue;
        for (FormatSize const& size : {piece.width, piece.precision})
            if (size.source == FormatSize::Source::parameter &&
                !arguments.note(indexOf(size.value, next), ArgumentType::int32))
                return false;
        if (!arguments.note(indexOf(piece.position, next), typeOf(piece)))
            return false;
    }
    return false;
}

void readArguments(Arguments& arguments, std::va_list& list)
{
    for (std::size_t i = 0; i < arguments.count; ++i) {
        Argument& argument = arguments.list[i];
        switch (argument.type) {
        case ArgumentType::int32: argument.integer = va_arg(list, int); break;
        case ArgumentType::longInteger: argument.integer = va_arg(list, long); break;
        case ArgumentType::int64: argument.integer = va_arg(list, long long); break;
        case ArgumentType::number: argument.number = va_arg(list, double); break;
        case ArgumentType::longNumber: argument.number = va_arg(list, long double); break;
        case ArgumentType::pointer: argument.pointer = va_arg(list, void const*); break;
        case ArgumentType::none: break;
        }
    }
}

// A wide text in the default code set, or, while the toolkit is stopped, in the process's code page.
std::string narrow(wchar_t const* wide, std::size_t length)
{
    if (CCgCodeset* const codeset = startedDefaultCodeset())
        return codesetOfWide(*codeset, {wide, length});
    std::string text(length * 8, '\0');
    char const* const questionMark = GetACP() == CP_UTF8 ? nullptr : "?";
    int const written = length == 0
        ? 0
        : WideCharToMultiByte(CP_ACP, 0, wide, static_cast<int>(length), text.data(),
                              static_cast<int>(text.size()), questionMark, nullptr);
    text.resize(static_cast<std::size_t>(std::max(written, 0)));
    return text;
}

// With a precision a text need not have its NUL.
template <class Character>
std::size_t lengthOf(Character const* text, int precision)
{
    std::size_t length = 0;
    while ((precision < 0 || length < static_cast<std::size_t>(precision)) && text[length] != Character())
        ++length;
    return length;
}

void printArgumentText(CxStringBuff& buffer, FormatPiece const& piece, ValueFormat const& how,
                       void const* pointer)
{
    if (!pointer) {
        printText(buffer, how, "(null)");
    } else if (piece.isWide()) {
        auto const* const wide = static_cast<wchar_t const*>(pointer);
        printText(buffer, how, narrow(wide, lengthOf(wide, how.precision)));
    } else {
        auto const* const text = static_cast<char const*>(pointer);
        printText(buffer, how, {text, lengthOf(text, how.precision)});
    }
}

std::int64_t cutToLength(FormatPiece const& piece, std::int64_t value)
{
    switch (piece.length) {
    case FormatPiece::Length::hh: return static_cast<signed char>(value);
    case FormatPiece::Length::h: return static_cast<short>(value);
    default: return value;
    }
}

std::uint64_t cutUnsigned(FormatPiece const& piece, std::int64_t value)
{
    switch (piece.length) {
    case FormatPiece::Length::hh: return static_cast<unsigned char>(value);
    case FormatPiece::Length::h: return static_cast<unsigned short>(value);
    case FormatPiece::Length::none: return static_cast<std::uint32_t>(value);
    case FormatPiece::Length::l: return static_cast<unsigned long>(value);
    default: return static_cast<std::uint64_t>(value);
    }
}

void printArgument(CxStringBuff& buffer, FormatPiece const& piece, ValueFormat how, Argument const& argument)
{
    if (piece.conversion == 'n')
        return;
    if (piece.isText()) {
        printArgumentText(buffer, piece, how, argument.pointer);
    } else if (piece.isCharacter()) {
        how.precision = -1;
        auto const wide = static_cast<wchar_t>(argument.integer);
        char const byte = static_cast<char>(argument.integer);
        printText(buffer, how, piece.isWide() ? narrow(&wide, 1) : std::string(1, byte));
    } else if (piece.isNumber()) {
        printNumber(buffer, how, argument.number, argument.type == ArgumentType::longNumber);
    } else if (piece.conversion == 'p') {
        printPointer(buffer, how, reinterpret_cast<std::uintptr_t>(argument.pointer));
    } else if (piece.isSigned()) {
        printSigned(buffer, how, cutToLength(piece, argument.integer));
    } else {
        printInteger(buffer, how, false, cutUnsigned(piece, argument.integer));
    }
}

bool printVariable(CxStringBuff& buffer, char const* format, std::va_list& list)
{
    Arguments arguments;
    if (!surveyed(format, arguments))
        return false;
    readArguments(arguments, list);

    std::size_t next = 0;
    auto const sizeOf = [&](FormatSize const& size, int none) {
        if (size.source != FormatSize::Source::parameter)
            return size.source == FormatSize::Source::none ? none : size.value;
        return static_cast<int>(arguments.list[indexOf(size.value, next)].integer);
    };
    FormatPiece piece;
    while (takePiece(format, piece) && buffer.append(piece.literal)) {
        if (piece.conversion == '\0')
            return true;
        if (piece.conversion == '%') {
            buffer.append('%');
            continue;
        }
        int const width = sizeOf(piece.width, 0);
        int const precision = std::max(sizeOf(piece.precision, -1), -1);
        printArgument(buffer, piece, valueFormat(piece, width, precision),
                      arguments.list[indexOf(piece.position, next)]);
    }
    return false;
}

}  // namespace

}  // namespace zk::logging

bool CCgPrintfList(CxStringBuff& buffer, char const* format, CCgParmList const* parameters)
{
    std::int32_t const start = buffer.length();
    if (format && zk::logging::printTyped(buffer, format, parameters))
        return true;
    buffer.truncate(start);
    return false;
}

bool CCgPrintfV(CxStringBuff& buffer, char const* format, std::va_list arguments)
{
    std::int32_t const start = buffer.length();
    std::va_list list;
    va_copy(list, arguments);
    bool const done = format && zk::logging::printVariable(buffer, format, list);
    va_end(list);
    if (!done)
        buffer.truncate(start);
    return done;
}

bool CCgPrintf(CxStringBuff& buffer, char const* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    bool const done = CCgPrintfV(buffer, format, arguments);
    va_end(arguments);
    return done;
}
