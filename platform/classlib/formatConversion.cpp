#include "platform/classlib/formatConversion.h"

#include "platform/os/os.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

namespace zk {
namespace {

using Kind = FormatArgument::Kind;

// A wider field, or a number with more digits, says nothing but costs memory.
constexpr int maximalWidth = 65535;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

// Reads a number; one too large for an int is INT_MAX.
int readNumber(char const*& at)
{
    long long number = 0;
    for (; isDigit(*at); ++at)
        number = std::min<long long>(number * 10 + (*at - '0'), INT_MAX);
    return static_cast<int>(number);
}

int starNumber(FormatArgument const& argument)
{
    if (argument.kind != Kind::signedInteger && argument.kind != Kind::unsignedInteger)
        return 0;
    return static_cast<int>(std::clamp<long long>(argument.value.signedInteger, -INT_MAX, INT_MAX));
}

void readFlags(char const*& at, Conversion& conversion)
{
    for (;; ++at) {
        switch (*at) {
        case '-': conversion.left = true; break;
        case '+': conversion.plus = true; break;
        case ' ': conversion.blank = true; break;
        case '#': conversion.alternate = true; break;
        case '0': conversion.zero = true; break;
        default: return;
        }
    }
}

// An argument that knows its kind needs but hh and h of all this; one in a list needs the rest.
void readSize(char const*& at, Conversion& conversion)
{
    if (at[0] == 'h') {
        conversion.narrow = at[1] == 'h' ? 1 : 2;
        at += at[1] == 'h' ? 2 : 1;
    } else if (at[0] == 'l') {
        bool const isDouble = at[1] == 'l';
        conversion.isWide = !isDouble;
        conversion.bytes = isDouble ? 8 : static_cast<int>(sizeof(long));
        at += isDouble ? 2 : 1;
    } else if (at[0] == 'I') {
        bool const has32 = at[1] == '3' && at[2] == '2';
        bool const has64 = at[1] == '6' && at[2] == '4';
        conversion.bytes = has32 ? 4 : 8;
        at += has32 || has64 ? 3 : 1;
    } else if (*at == 'j' || *at == 'z' || *at == 't' || *at == 'q') {
        conversion.bytes = 8;
        ++at;
    } else if (*at == 'L' || *at == 'w') {
        (*at == 'L' ? conversion.isLong : conversion.isWide) = true;
        ++at;
    }
}

// Puts `text`, a number's sign or prefix among it, into its field.
void putField(TextOutput& out, Conversion const& conversion, std::string_view text)
{
    std::size_t const width = static_cast<std::size_t>(conversion.width);
    std::size_t const padding = width > text.size() ? width - text.size() : 0;
    if (!conversion.left)
        out.fill(' ', padding);
    out.append(text);
    if (conversion.left)
        out.fill(' ', padding);
}

void putText(TextOutput& out, Conversion const& conversion, FormatArgument const& argument)
{
    char const* const text = argument.value.text ? argument.value.text : "(null)";
    std::size_t length = argument.length;
    if (conversion.precision >= 0) {
        std::size_t const most = static_cast<std::size_t>(conversion.precision);
        length = argument.hasLength ? std::min(length, most) : strnlen(text, most);
    } else if (!argument.hasLength) {
        length = std::strlen(text);
    }
    if (argument.hasLength && !argument.value.text)
        length = 0;
    if (conversion.width == 0)
        out.append(text, length);
    else
        putField(out, conversion, {text, length});
}

// A wide text in the process's code page. `most`, if not negative, limits the bytes; no character is cut.
std::string bytesOf(wchar_t const* text, int most)
{
    constexpr int piece = 256;
    std::string bytes;
    char buffer[piece];
    std::size_t const room = most < 0 ? INT_MAX : static_cast<std::size_t>(most);
    while (*text) {
        // One character of UTF-16 may take two units.
        bool const isPair =
            sizeof(wchar_t) == 2 && (*text & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
        int const units = isPair ? 2 : 1;
        int const length = WideCharToMultiByte(CP_ACP, 0, text, units, buffer, piece, nullptr, nullptr);
        if (static_cast<std::size_t>(std::max(length, 0)) > room - bytes.size())
            break;
        bytes.append(buffer, static_cast<std::size_t>(std::max(length, 0)));
        text += units;
    }
    return bytes;
}

void putWideText(TextOutput& out, Conversion const& conversion, wchar_t const* text)
{
    putField(out, conversion, bytesOf(text ? text : L"(null)", conversion.precision));
}

constexpr char digitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839404142434445464748"
    "4950515253545556575859606162636465666768697071727374757677787980818283848586878889909192939495"
    "96979899";

// Writes digits backwards from `end` and gives their start.
char* writeDecimal(char* end, unsigned long long value)
{
    while (value >= 100) {
        end -= 2;
        std::memcpy(end, digitPairs + value % 100 * 2, 2);
        value /= 100;
    }
    if (value >= 10) {
        end -= 2;
        std::memcpy(end, digitPairs + value * 2, 2);
    } else {
        *--end = static_cast<char>('0' + value);
    }
    return end;
}

char* writePowerOfTwo(char* end, unsigned long long value, int bits, char const* digits)
{
    do {
        *--end = digits[value & ((1u << bits) - 1)];
        value >>= bits;
    } while (value != 0);
    return end;
}

char* writeDigits(char* end, unsigned long long value, char letter)
{
    switch (letter) {
    case 'o': return writePowerOfTwo(end, value, 3, "01234567");
    case 'x': return writePowerOfTwo(end, value, 4, "0123456789abcdef");
    case 'X': return writePowerOfTwo(end, value, 4, "0123456789ABCDEF");
    default: return writeDecimal(end, value);
    }
}

struct Integer {
    unsigned long long magnitude;
    bool negative;
};

// What `bits`, an integer of `width` bytes, is under a signed or unsigned conversion.
Integer readInteger(unsigned long long bits, int width, bool isSigned)
{
    int const shift = 64 - width * 8;
    bits <<= shift;
    if (!isSigned)
        return {bits >> shift, false};
    long long const value = static_cast<long long>(bits) >> shift;
    return {value < 0 ? 0 - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value),
            value < 0};
}

unsigned long long toInteger(double value)
{
    constexpr double limit = 9223372036854775808.0;  // 2 to the power of 63
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return LLONG_MAX;
    if (value < -limit)
        return static_cast<unsigned long long>(LLONG_MIN);
    return static_cast<unsigned long long>(static_cast<long long>(value));
}

void putInteger(TextOutput& out, Conversion const& conversion, unsigned long long bits, int width)
{
    bool const isSigned = conversion.letter == 'd' || conversion.letter == 'i';
    Integer const number = readInteger(bits, conversion.narrow ? conversion.narrow : width, isSigned);

    char buffer[32];
    char* const end = buffer + sizeof buffer;
    char* digits = conversion.precision == 0 && number.magnitude == 0
        ? end
        : writeDigits(end, number.magnitude, conversion.letter);

    bool const plain = conversion.width == 0 && conversion.precision < 0 && !conversion.plus &&
        !conversion.blank && !conversion.alternate;
    if (plain) {
        if (number.negative)
            *--digits = '-';
        out.append(digits, static_cast<std::size_t>(end - digits));
        return;
    }

    int const count = static_cast<int>(end - digits);
    char prefix[2];
    int prefixed = 0;
    int zeros = std::max(std::min(conversion.precision, maximalWidth) - count, 0);
    if (number.negative)
        prefix[prefixed++] = '-';
    else if (isSigned && (conversion.plus || conversion.blank))
        prefix[prefixed++] = conversion.plus ? '+' : ' ';
    if (conversion.alternate && conversion.letter == 'o' && zeros == 0 && (count == 0 || *digits != '0'))
        zeros = 1;
    if (conversion.alternate && (conversion.letter == 'x' || conversion.letter == 'X') &&
        number.magnitude != 0) {
        prefix[prefixed++] = '0';
        prefix[prefixed++] = conversion.letter;
    }
    int padding = std::max(conversion.width - prefixed - zeros - count, 0);
    if (conversion.zero && !conversion.left && conversion.precision < 0) {
        zeros += padding;
        padding = 0;
    }
    if (!conversion.left)
        out.fill(' ', static_cast<std::size_t>(padding));
    out.append(prefix, static_cast<std::size_t>(prefixed));
    out.fill('0', static_cast<std::size_t>(zeros));
    out.append(digits, static_cast<std::size_t>(count));
    if (conversion.left)
        out.fill(' ', static_cast<std::size_t>(padding));
}

void putFloating(TextOutput& out, Conversion const& conversion, double value)
{
    char format[16];
    char* at = format;
    *at++ = '%';
    if (conversion.left)
        *at++ = '-';
    if (conversion.plus)
        *at++ = '+';
    if (conversion.blank)
        *at++ = ' ';
    if (conversion.alternate)
        *at++ = '#';
    if (conversion.zero)
        *at++ = '0';
    std::memcpy(at, "*.*", 3);
    at[3] = conversion.letter;
    at[4] = '\0';

    int const precision = std::min(conversion.precision, maximalWidth);  // -1 counts as not given
    std::size_t room = 64;
    for (;;) {
        int const written = std::snprintf(out.room(room), room, format, conversion.width, precision, value);
        if (written < 0)
            return;
        if (static_cast<std::size_t>(written) < room) {
            out.advance(static_cast<std::size_t>(written));
            return;
        }
        room = static_cast<std::size_t>(written) + 1;
    }
}

void putPointer(TextOutput& out, Conversion const& conversion, unsigned long long address)
{
    Conversion hexadecimal;
    hexadecimal.letter = 'X';
    hexadecimal.precision = 16;
    hexadecimal.left = conversion.left;
    hexadecimal.width = conversion.width;
    putInteger(out, hexadecimal, address, 8);
}

unsigned long long addressOf(FormatArgument const& argument)
{
    return reinterpret_cast<std::uintptr_t>(argument.value.pointer);
}

double toDouble(FormatArgument const& argument)
{
    switch (argument.kind) {
    case Kind::signedInteger: return static_cast<double>(argument.value.signedInteger);
    case Kind::unsignedInteger: return static_cast<double>(argument.value.unsignedInteger);
    default: return argument.value.floating;
    }
}

// An argument under an integer conversion.
void putAsInteger(TextOutput& out, Conversion const& conversion, FormatArgument const& argument)
{
    switch (argument.kind) {
    case Kind::floating: putInteger(out, conversion, toInteger(argument.value.floating), 8); break;
    case Kind::pointer: putInteger(out, conversion, addressOf(argument), 8); break;
    default: putInteger(out, conversion, argument.value.unsignedInteger, argument.width); break;
    }
}

void putAsCharacter(TextOutput& out, Conversion const& conversion, FormatArgument const& argument)
{
    unsigned long long const number =
        argument.kind == Kind::floating ? toInteger(argument.value.floating) : argument.value.unsignedInteger;
    bool const isWide = conversion.isWide || (conversion.letter == 'C' && conversion.narrow == 0);
    if (isWide && number > 0x7F && number <= WCHAR_MAX) {
        wchar_t const text[] = {static_cast<wchar_t>(number), L'\0'};
        putField(out, conversion, bytesOf(text, -1));
        return;
    }
    char const character = static_cast<char>(static_cast<unsigned char>(number));
    putField(out, conversion, {&character, 1});
}

// An argument by its own kind, as `%s` prints a number.
void putByKind(TextOutput& out, Conversion conversion, FormatArgument const& argument)
{
    conversion.precision = -1;
    conversion.narrow = 0;
    switch (argument.kind) {
    case Kind::signedInteger:
        conversion.letter = 'd';
        putAsInteger(out, conversion, argument);
        break;
    case Kind::unsignedInteger:
        conversion.letter = 'u';
        putAsInteger(out, conversion, argument);
        break;
    case Kind::floating:
        conversion.letter = 'g';
        putFloating(out, conversion, argument.value.floating);
        break;
    default: putPointer(out, conversion, addressOf(argument)); break;
    }
}

}  // namespace

ConversionClass Conversion::kind() const noexcept
{
    switch (letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o': return ConversionClass::integer;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A': return ConversionClass::floating;
    case 'c':
    case 'C': return ConversionClass::character;
    case 's':
    case 'S': return ConversionClass::text;
    case 'p': return ConversionClass::pointer;
    case 'n': return ConversionClass::silent;
    default: return ConversionClass::unknown;
    }
}

char const* readConversion(char const* at, Conversion& conversion, FormatArguments* arguments)
{
    readFlags(at, conversion);
    if (*at == '*' && arguments) {
        ++at;
        int const width = starNumber(arguments->next());
        conversion.left = conversion.left || width < 0;
        conversion.width = width < 0 ? -width : width;
    } else {
        conversion.width = readNumber(at);
    }
    conversion.width = std::min(conversion.width, maximalWidth);
    if (*at == '.') {
        ++at;
        if (*at == '*' && arguments) {
            ++at;
            conversion.precision = std::max(starNumber(arguments->next()), -1);
        } else {
            conversion.precision = readNumber(at);
        }
    }
    readSize(at, conversion);
    conversion.letter = *at;
    return *at ? at + 1 : at;
}

bool putConversion(TextOutput& out, Conversion const& conversion, FormatArgument const& argument)
{
    ConversionClass const what = conversion.kind();
    if (what == ConversionClass::unknown)
        return false;
    if (what == ConversionClass::silent)
        return true;
    if (argument.kind == Kind::none)
        return false;
    if (argument.kind == Kind::text || argument.kind == Kind::wideText) {
        Conversion text = conversion;
        if (what != ConversionClass::text)
            text.precision = -1;
        if (argument.kind == Kind::text)
            putText(out, text, argument);
        else
            putWideText(out, text, argument.value.wideText);
        return true;
    }
    switch (what) {
    case ConversionClass::integer: putAsInteger(out, conversion, argument); break;
    case ConversionClass::floating:
        if (argument.kind == Kind::pointer)
            putPointer(out, conversion, addressOf(argument));
        else
            putFloating(out, conversion, toDouble(argument));
        break;
    case ConversionClass::character: putAsCharacter(out, conversion, argument); break;
    case ConversionClass::pointer:
        putPointer(out, conversion, argument.kind == Kind::floating ? 0 : argument.value.unsignedInteger);
        break;
    default: putByKind(out, conversion, argument); break;
    }
    return true;
}

namespace {

// Reads arguments from a list, each as its conversion says.
class ArgumentList {
public:
    explicit ArgumentList(std::va_list list) { va_copy(list_, list); }
    ~ArgumentList() { va_end(list_); }
    ArgumentList(ArgumentList const&) = delete;
    ArgumentList& operator=(ArgumentList const&) = delete;

    FormatArgument nextInt() { return va_arg(list_, int); }

    FormatArgument next(Conversion const& conversion)
    {
        switch (conversion.kind()) {
        case ConversionClass::integer: return nextInteger(conversion);
        case ConversionClass::floating:
            if (conversion.isLong && sizeof(long double) > sizeof(double))
                return va_arg(list_, long double);
            return va_arg(list_, double);
        case ConversionClass::character: return nextInt();
        case ConversionClass::text:
            // The sizes outdo the letter: "%hS" is a byte text, "%ls" a wide one.
            if (conversion.isWide || (conversion.letter == 'S' && conversion.narrow == 0))
                return va_arg(list_, wchar_t const*);
            return va_arg(list_, char const*);
        default: return va_arg(list_, void const*);
        }
    }

private:
    FormatArgument nextInteger(Conversion const& conversion)
    {
        bool const isSigned = conversion.letter == 'd' || conversion.letter == 'i';
        if (conversion.bytes == 8)
            return isSigned ? FormatArgument(va_arg(list_, long long))
                            : FormatArgument(va_arg(list_, unsigned long long));
        return isSigned ? FormatArgument(va_arg(list_, int)) : FormatArgument(va_arg(list_, unsigned int));
    }

    std::va_list list_;
};

}  // namespace

std::vector<FormatArgument> readArguments(char const* format, std::va_list list)
{
    std::vector<FormatArgument> arguments;
    arguments.reserve(8);
    ArgumentList source(list);
    for (char const* at = format; (at = std::strchr(at, '%')) != nullptr;) {
        ++at;
        if (*at == '%') {
            ++at;
            continue;
        }
        // The stars' numbers come before the argument. A letter that is a star is no width.
        Conversion conversion;
        FormatArguments none(nullptr, 0);
        char const* const end = readConversion(at, conversion, &none);
        char const* const letter = conversion.letter ? end - 1 : end;
        for (std::ptrdiff_t stars = std::count(at, letter, '*'); stars > 0; --stars)
            arguments.push_back(source.nextInt());
        at = end;
        if (conversion.kind() != ConversionClass::unknown)
            arguments.push_back(source.next(conversion));
    }
    return arguments;
}

}  // namespace zk
