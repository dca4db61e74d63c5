// The composing half of CString: Format and its kin.
#include "platform/classlib/CString.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {

using zk::FormatArgument;
using Kind = FormatArgument::Kind;

// A wider number, or one with more digits, says nothing but costs memory.
constexpr int maximalNumberWidth = 65535;

// Collects text on the stack, and on the heap once that is full.
class Output {
public:
    Output() = default;
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;
    ~Output()
    {
        if (begin_ != local_)
            ::operator delete(begin_);
    }

    void append(char const* text, std::size_t length)
    {
        if (length == 0)
            return;
        std::memcpy(room(length), text, length);
        used_ += length;
    }
    void append(std::string_view text) { append(text.data(), text.size()); }
    void append(char character)
    {
        *room(1) = character;
        ++used_;
    }
    void fill(char character, std::size_t count)
    {
        if (count == 0)
            return;
        std::memset(room(count), static_cast<unsigned char>(character), count);
        used_ += count;
    }
    // Where the next `length` bytes go, for a caller that then calls `advance`.
    char* room(std::size_t length)
    {
        if (length > size_ - used_)
            grow(length);
        return begin_ + used_;
    }
    void advance(std::size_t length) noexcept { used_ += length; }

    std::string_view text() const noexcept { return {begin_, used_}; }

private:
    void grow(std::size_t more)
    {
        if (more >= INT_MAX - used_)
            throw std::bad_alloc();
        std::size_t const size = std::max(used_ + more, size_ * 2);
        char* const block = static_cast<char*>(::operator new(size));
        std::memcpy(block, begin_, used_);
        if (begin_ != local_)
            ::operator delete(begin_);
        begin_ = block;
        size_ = size;
    }

    char local_[512];
    char* begin_ = local_;
    std::size_t used_ = 0;
    std::size_t size_ = sizeof local_;
};

// One conversion: "%-08.3lld" and the like.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;  // -1: none given
    int narrow = 0;      // bytes that hh and h leave of an integer, 0 for all
    char letter = '\0';
};

// Gives the arguments one after the other, and an argument of kind none behind the last.
class Arguments {
public:
    Arguments(FormatArgument const* list, std::size_t count) : list_(list), count_(count) { }

    FormatArgument const& next() { return next_ < count_ ? list_[next_++] : missing(); }
    FormatArgument const& at(std::size_t index) const { return index < count_ ? list_[index] : missing(); }

private:
    static FormatArgument const& missing()
    {
        static FormatArgument const none;
        return none;
    }

    FormatArgument const* list_;
    std::size_t count_;
    std::size_t next_ = 0;
};

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

// The sizes say nothing that the argument doesn't know, but for hh and h.
void readSize(char const*& at, Conversion& conversion)
{
    if (at[0] == 'h') {
        conversion.narrow = at[1] == 'h' ? 1 : 2;
        at += at[1] == 'h' ? 2 : 1;
    } else if (at[0] == 'l') {
        at += at[1] == 'l' ? 2 : 1;
    } else if (at[0] == 'I') {
        bool const hasBits = (at[1] == '6' && at[2] == '4') || (at[1] == '3' && at[2] == '2');
        at += hasBits ? 3 : 1;
    } else if (*at == 'j' || *at == 'z' || *at == 't' || *at == 'L' || *at == 'w' || *at == 'q') {
        ++at;
    }
}

// Reads what stands behind a '%'. With `arguments` null a '*' is not known.
char const* readConversion(char const* at, Conversion& conversion, Arguments* arguments)
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

// Puts `text`, a number's sign or prefix among it, into its field.
void putField(Output& out, Conversion const& conversion, std::string_view text)
{
    std::size_t const width = static_cast<std::size_t>(conversion.width);
    std::size_t const padding = width > text.size() ? width - text.size() : 0;
    if (!conversion.left)
        out.fill(' ', padding);
    out.append(text);
    if (conversion.left)
        out.fill(' ', padding);
}

void putText(Output& out, Conversion const& conversion, FormatArgument const& argument)
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

void putInteger(Output& out, Conversion const& conversion, unsigned long long bits, int width)
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
    int zeros = std::max(std::min(conversion.precision, maximalNumberWidth) - count, 0);
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
    int const fieldWidth = std::min(conversion.width, maximalNumberWidth);
    int padding = std::max(fieldWidth - prefixed - zeros - count, 0);
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

void putFloating(Output& out, Conversion const& conversion, double value)
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

    int const width = std::min(conversion.width, maximalNumberWidth);
    int const precision = std::min(conversion.precision, maximalNumberWidth);  // -1 counts as not given
    std::size_t room = 64;
    for (;;) {
        int const written = std::snprintf(out.room(room), room, format, width, precision, value);
        if (written < 0)
            return;
        if (static_cast<std::size_t>(written) < room) {
            out.advance(static_cast<std::size_t>(written));
            return;
        }
        room = static_cast<std::size_t>(written) + 1;
    }
}

void putPointer(Output& out, Conversion const& conversion, unsigned long long address)
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
void putAsInteger(Output& out, Conversion const& conversion, FormatArgument const& argument)
{
    switch (argument.kind) {
    case Kind::floating: putInteger(out, conversion, toInteger(argument.value.floating), 8); break;
    case Kind::pointer: putInteger(out, conversion, addressOf(argument), 8); break;
    default: putInteger(out, conversion, argument.value.unsignedInteger, argument.width); break;
    }
}

void putAsCharacter(Output& out, Conversion const& conversion, FormatArgument const& argument)
{
    unsigned long long const number =
        argument.kind == Kind::floating ? toInteger(argument.value.floating) : argument.value.unsignedInteger;
    char const character = static_cast<char>(static_cast<unsigned char>(number));
    putField(out, conversion, {&character, 1});
}

// An argument by its own kind, as `%s` prints a number.
void putByKind(Output& out, Conversion conversion, FormatArgument const& argument)
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

enum class Class { integer, floating, character, text, pointer, silent, unknown };

Class classOf(char letter)
{
    switch (letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o': return Class::integer;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A': return Class::floating;
    case 'c':
    case 'C': return Class::character;
    case 's':
    case 'S': return Class::text;
    case 'p': return Class::pointer;
    case 'n': return Class::silent;
    default: return Class::unknown;
    }
}

// Fills in one conversion. False: there is no such conversion, or nothing to fill it with.
bool put(Output& out, Conversion const& conversion, Class what, FormatArgument const& argument)
{
    if (what == Class::silent)
        return true;
    if (argument.kind == Kind::none)
        return false;
    if (argument.kind == Kind::text) {
        Conversion text = conversion;
        if (what != Class::text)
            text.precision = -1;
        putText(out, text, argument);
        return true;
    }
    switch (what) {
    case Class::integer: putAsInteger(out, conversion, argument); break;
    case Class::floating:
        if (argument.kind == Kind::pointer)
            putPointer(out, conversion, addressOf(argument));
        else
            putFloating(out, conversion, toDouble(argument));
        break;
    case Class::character: putAsCharacter(out, conversion, argument); break;
    case Class::pointer:
        putPointer(out, conversion, argument.kind == Kind::floating ? 0 : argument.value.unsignedInteger);
        break;
    default: putByKind(out, conversion, argument); break;
    }
    return true;
}

// Makes the text of `format`; an unknown conversion, or one without argument, stays as it stands.
void format(Output& out, char const* format, Arguments arguments)
{
    for (char const* at = format ? format : "";;) {
        char const* const percent = std::strchr(at, '%');
        if (!percent) {
            out.append(at, std::strlen(at));
            return;
        }
        out.append(at, static_cast<std::size_t>(percent - at));
        if (percent[1] == '%') {
            out.append('%');
            at = percent + 2;
            continue;
        }
        Conversion conversion;
        at = readConversion(percent + 1, conversion, &arguments);
        Class const what = classOf(conversion.letter);
        if (what == Class::unknown || !put(out, conversion, what, arguments.next()))
            out.append(percent, static_cast<std::size_t>(at - percent));
    }
}

// Fills in the insert at `at`, behind its '%'; gives the position behind it, or null if it is none.
char const* putInsert(Output& out, char const* at, Arguments const& arguments)
{
    std::size_t index = static_cast<std::size_t>(*at++ - '0');
    if (isDigit(*at))
        index = index * 10 + static_cast<std::size_t>(*at++ - '0');
    FormatArgument const& argument = arguments.at(index - 1);

    Conversion conversion;
    conversion.letter = 's';
    if (*at == '!') {
        char const* const end = std::strchr(at + 1, '!');
        if (end) {
            conversion = Conversion();
            if (readConversion(at + 1, conversion, nullptr) != end ||
                classOf(conversion.letter) == Class::unknown)
                return nullptr;
            at = end + 1;
        }
    }
    return put(out, conversion, classOf(conversion.letter), argument) ? at : nullptr;
}

void formatMessage(Output& out, char const* format, Arguments const& arguments)
{
    for (char const* at = format ? format : ""; *at;) {
        std::size_t const plain = std::strcspn(at, "%");
        out.append(at, plain);
        at += plain;
        if (*at == '\0')
            return;
        char const escape = at[1];
        if (escape == '0')
            return;
        if (escape >= '1' && escape <= '9') {
            char const* const end = putInsert(out, at + 1, arguments);
            if (!end)
                out.append(at, 2);
            at = end ? end : at + 2;
        } else if (escape == 'n') {
            out.append("\r\n", 2);
            at += 2;
        } else if (escape == '\0') {
            out.append('%');
            return;
        } else {
            out.append(escape);  // "%%", "%!", "%.", "% ": the character itself
            at += 2;
        }
    }
}

// What vsnprintf makes of it.
void formatByLibrary(Output& out, char const* format, std::va_list arguments)
{
    std::size_t room = 512;
    for (;;) {
        std::va_list copy;
        va_copy(copy, arguments);
        int const written = std::vsnprintf(out.room(room), room, format ? format : "", copy);
        va_end(copy);
        if (written < 0)
            return;
        if (static_cast<std::size_t>(written) < room) {
            out.advance(static_cast<std::size_t>(written));
            return;
        }
        room = static_cast<std::size_t>(written) + 1;
    }
}

}  // namespace

void CString::formatList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    Output out;
    format(out, text, Arguments(arguments, count));
    *this = out.text();
}

void CString::appendFormatList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    Output out;
    format(out, text, Arguments(arguments, count));
    *this += out.text();
}

void CString::formatMessageList(char const* text, FormatArgument const* arguments, std::size_t count)
{
    Output out;
    formatMessage(out, text, Arguments(arguments, count));
    *this = out.text();
}

void CString::FormatV(char const* text, std::va_list arguments)
{
    Output out;
    formatByLibrary(out, text, arguments);
    *this = out.text();
}

void CString::AppendFormatV(char const* text, std::va_list arguments)
{
    Output out;
    formatByLibrary(out, text, arguments);
    *this += out.text();
}
