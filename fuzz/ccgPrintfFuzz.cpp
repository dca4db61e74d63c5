// The toolkit's printf: any format with any typed list makes a text of bounded length or none, and what the C
// library's snprintf prints as well, it prints the same.
#include "logging/CCgPrintf.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : data_(data), left_(size) { }

    std::uint8_t byte()
    {
        if (left_ == 0)
            return 0;
        --left_;
        return *data_++;
    }
    template <class Value>
    Value value()
    {
        Value result = {};
        std::size_t const count = std::min(left_, sizeof result);
        std::memcpy(&result, data_, count);
        data_ += count;
        left_ -= count;
        return result;
    }
    std::string rest() { return {reinterpret_cast<char const*>(data_), left_}; }

private:
    std::uint8_t const* data_;
    std::size_t left_;
};

template <class... Values>
void requireSame(std::string const& format, Values... values)
{
    char expected[1024];
    int const length = std::snprintf(expected, sizeof expected, format.c_str(), values...);
    require(length >= 0 && length < int(sizeof expected));
    CxStringBuff ours;
    require(CCgPrintf(ours, format.c_str(), values...));
    require(ours.view() == std::string_view(expected, std::size_t(length)));
}

// A directive whose meaning the C standard tells.
void compareWithTheCLibrary(Input& input)
{
    constexpr std::string_view conversions("diuoxXcsaAeEfFgG");
    char const conversion = conversions[input.byte() % conversions.size()];
    bool const isSigned = conversion == 'd' || conversion == 'i';
    bool const isInteger = isSigned || std::string_view("uoxX").find(conversion) != std::string_view::npos;
    bool const isNumber = std::string_view("aAeEfFgG").find(conversion) != std::string_view::npos;

    std::string format = "<%";
    std::uint8_t const flags = input.byte();
    if (flags & 1)
        format += '-';
    if ((flags & 2) && (isSigned || isNumber))
        format += '+';
    if ((flags & 4) && (isSigned || isNumber))
        format += ' ';
    if ((flags & 8) && (isInteger || isNumber))
        format += '0';
    if ((flags & 16) && (isNumber || conversion == 'o' || conversion == 'x' || conversion == 'X'))
        format += '#';
    if (flags & 32)
        format += std::to_string(1 + input.byte() % 200);  // a width of 0 would be a flag
    if ((flags & 64) && conversion != 'c')
        format += '.' + std::to_string(input.byte() % 60);
    std::string const length[] = {"", "h", "hh", "l", "ll", "j", "z", "t"};
    std::size_t const which = input.byte() % std::size(length);
    if (isInteger)
        format += length[which];
    format += conversion;
    format += ">%%";

    if (conversion == 's') {
        std::string const text = input.rest().substr(0, 300);
        requireSame(format, text.c_str());
    } else if (conversion == 'c') {
        requireSame(format, int(input.byte()));
    } else if (isNumber) {
        auto const number = input.value<double>();
        // "%f" of a great number has 309 digits, and the sign of a NaN is anybody's.
        if (number == number)
            requireSame(format, number);
    } else if (which < 3) {
        requireSame(format, input.value<int>());
    } else {
        requireSame(format, input.value<long long>());
    }
}

void printTyped(Input& input)
{
    CCgParmList list;
    for (int count = input.byte() % 6; count > 0; --count)
        switch (input.byte() % 7) {
        case 0: list.add(CCgParm::ofBoolean(input.byte() & 1)); break;
        case 1: list.add(CCgParm::ofInt32(input.value<std::int32_t>())); break;
        case 2: list.add(CCgParm::ofLong(input.value<std::int64_t>())); break;
        case 3: list.add(CCgParm::ofFloat(input.value<float>())); break;
        case 4: list.add(CCgParm::ofDouble(input.value<double>())); break;
        case 5: list.add(CCgParm::ofChar(static_cast<char>(input.byte()))); break;
        default: list.add(CCgParm::ofText("text")); break;
        }
    std::string const format = input.rest().substr(0, 2000);
    CxStringBuff text;
    text.append("before");
    bool const isDone = CCgPrintfList(text, format.c_str(), &list);
    require(text.view().substr(0, 6) == "before");
    require(isDone || text.length() == 6);
    // Each directive takes two bytes of the format at least.
    require(std::size_t(text.length()) <= 6 + format.size() + (format.size() / 2 + 1) * (65535 * 2 + 400));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    if (input.byte() & 1)
        compareWithTheCLibrary(input);
    else
        printTyped(input);
    return 0;
}
