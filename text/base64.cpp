#include "text/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace base64 {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char pad = '=';
constexpr int groupsPerLine = 18;
constexpr int defaultBufferSize = 4096;

// Two characters for each value of 12 bits: a group of three bytes takes two look-ups.
struct Pair {
    char characters[2];
};

constexpr std::array<Pair, 4096> pairs = [] {
    std::array<Pair, 4096> table{};
    for (std::size_t value = 0; value < table.size(); ++value)
        table[value] = {alphabet[value >> 6], alphabet[value & 63]};
    return table;
}();

constexpr int skipped = -1;

// The 6 bits of the 80 characters from '+' on.
constexpr std::array<signed char, 80> values = [] {
    std::array<signed char, 80> table{};
    for (signed char& value : table)
        value = skipped;
    for (std::size_t value = 0; value < alphabet.size(); ++value)
        table[std::size_t(alphabet[value] - '+')] = static_cast<signed char>(value);
    return table;
}();

constexpr int valueOf(char character)
{
    unsigned const index = static_cast<unsigned char>(character) - unsigned('+');
    return index < values.size() ? values[index] : skipped;
}

// The bits of a character at its place in a group of four, for all 256 characters; what is
// passed over has a bit outside the 24 of a group.
constexpr std::uint32_t outsideGroup = 0x80000000u;

constexpr auto placedValues = [] {
    std::array<std::array<std::uint32_t, 256>, 4> tables{};
    for (int code = 0; code < 256; ++code) {
        int const value = valueOf(static_cast<char>(code));
        for (std::size_t place = 0; place < 4; ++place) {
            std::uint32_t const bits = std::uint32_t(value) << (18 - 6 * place);
            tables[place][std::size_t(code)] = value == skipped ? outsideGroup : bits;
        }
    }
    return tables;
}();

unsigned byteAt(char const* text)
{
    return static_cast<unsigned char>(*text);
}

// Encodes `count` whole groups.
char* encodeGroups(char const* in, long count, char* out)
{
    for (; count > 0; --count, in += 3, out += 4) {
        unsigned const group = byteAt(in) << 16 | byteAt(in + 1) << 8 | byteAt(in + 2);
        std::memcpy(out, pairs[group >> 12].characters, 2);
        std::memcpy(out + 2, pairs[group & 0xFFF].characters, 2);
    }
    return out;
}

// Decodes whole groups as long as no character of them is passed over; moves `in`.
char* decodeGroups(char const*& in, char const* end, char* out)
{
    for (; end - in >= 4; in += 4, out += 3) {
        std::uint32_t const group = placedValues[0][byteAt(in)] | placedValues[1][byteAt(in + 1)] |
            placedValues[2][byteAt(in + 2)] | placedValues[3][byteAt(in + 3)];
        if (group & outsideGroup)
            break;
        out[0] = static_cast<char>(group >> 16);
        out[1] = static_cast<char>(group >> 8);
        out[2] = static_cast<char>(group);
    }
    return out;
}

}  // namespace

encoder::encoder(int buffersize) : buffersize_(buffersize < 1 ? defaultBufferSize : buffersize)
{
    init();
}

void encoder::init()
{
    state_ = {Step::first, 0, 0};
}

char encoder::encode(char value) const
{
    auto const index = static_cast<unsigned char>(value);
    return index < alphabet.size() ? alphabet[index] : pad;
}

long encoder::encode(char const* in, long n, char* out)
{
    char const* const end = in + std::max(n, 0L);
    char const* const begin = out;
    while (in != end) {
        if (state_.step == Step::first) {
            long const groups = std::min<long>((end - in) / 3, groupsPerLine - state_.stepcount);
            out = encodeGroups(in, groups, out);
            in += 3 * groups;
            state_.stepcount += int(groups);
            if (state_.stepcount == groupsPerLine) {
                *out++ = '\n';
                state_.stepcount = 0;
                continue;
            }
            if (in == end)
                break;
        }
        // A group that was or will be cut by the end of a block goes byte by byte.
        unsigned const byte = byteAt(in++);
        unsigned const waiting = static_cast<unsigned char>(state_.result);
        switch (state_.step) {
        case Step::first:
            *out++ = alphabet[byte >> 2];
            state_.result = static_cast<char>((byte & 3) << 4);
            state_.step = Step::second;
            break;
        case Step::second:
            *out++ = alphabet[waiting | byte >> 4];
            state_.result = static_cast<char>((byte & 15) << 2);
            state_.step = Step::third;
            break;
        case Step::third:
            *out++ = alphabet[waiting | byte >> 6];
            *out++ = alphabet[byte & 63];
            state_.result = 0;
            state_.step = Step::first;
            if (++state_.stepcount == groupsPerLine) {
                *out++ = '\n';
                state_.stepcount = 0;
            }
            break;
        }
    }
    return long(out - begin);
}

long encoder::encode_end(char* out)
{
    char const* const begin = out;
    if (state_.step != Step::first) {
        *out++ = encode(state_.result);
        *out++ = pad;
        if (state_.step == Step::second)
            *out++ = pad;
    }
    *out++ = '\n';
    return long(out - begin);
}

void encoder::encode(std::istream& in, std::ostream& out)
{
    init();
    std::string plain(std::size_t(buffersize_), '\0');
    // A block of one byte may complete a group and a line: never less than 8.
    std::string code(std::max<std::size_t>(2 * plain.size(), 8), '\0');
    while (in && out) {
        in.read(plain.data(), buffersize_);
        long const length = long(in.gcount());
        if (length == 0)
            break;
        out.write(code.data(), encode(plain.data(), length, code.data()));
    }
    out.write(code.data(), encode_end(code.data()));
    init();
}

decoder::decoder(int buffersize) : buffersize_(buffersize < 1 ? defaultBufferSize : buffersize)
{
    init();
}

void decoder::init()
{
    state_ = {Step::first, 0};
}

int decoder::decode(char character) const
{
    return valueOf(character);
}

long decoder::decode(char const* in, long n, char* out)
{
    char const* const end = in + std::max(n, 0L);
    char const* const begin = out;
    while (in != end) {
        if (state_.step == Step::first) {
            out = decodeGroups(in, end, out);
            if (in == end)
                break;
        }
        int const value = valueOf(*in++);
        if (value == skipped)
            continue;
        auto const bits = static_cast<unsigned>(value);
        unsigned const pending = static_cast<unsigned char>(state_.pending);
        switch (state_.step) {
        case Step::first: state_ = {Step::second, static_cast<char>(bits << 2)}; break;
        case Step::second:
            *out++ = static_cast<char>(pending | bits >> 4);
            state_ = {Step::third, static_cast<char>(bits << 4)};
            break;
        case Step::third:
            *out++ = static_cast<char>(pending | bits >> 2);
            state_ = {Step::fourth, static_cast<char>(bits << 6)};
            break;
        case Step::fourth:
            *out++ = static_cast<char>(pending | bits);
            state_ = {Step::first, 0};
            break;
        }
    }
    return long(out - begin);
}

void decoder::decode(std::istream& in, std::ostream& out)
{
    init();
    std::string code(std::size_t(buffersize_), '\0');
    std::string plain(code.size() + 3, '\0');
    while (in && out) {
        in.read(code.data(), buffersize_);
        long const length = long(in.gcount());
        if (length == 0)
            break;
        out.write(plain.data(), decode(code.data(), length, plain.data()));
    }
    init();
}

}  // namespace base64
