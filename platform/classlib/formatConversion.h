// formatConversion.h: one conversion of a format, "%-8.3d" and the like: reading it, filling it in.
#pragma once

#include "platform/classlib/formatArgument.h"
#include "platform/classlib/textOutput.h"

#include <cstdarg>
#include <cstddef>
#include <vector>

namespace zk {

/// What a conversion makes of its argument.
enum class ConversionClass { integer, floating, character, text, pointer, silent, unknown };

/// One conversion: "%-08.3lld" and the like.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;   // -1: none given
    int narrow = 0;       // bytes that hh and h leave of an integer, 0 for all
    int bytes = 4;        // that the size says of an integer in a list of arguments
    bool isWide = false;  // l or w: of a text or character
    bool isLong = false;  // L: of a floating number
    char letter = '\0';

    ConversionClass kind() const noexcept;
};

/// Gives the arguments one after the other, and an argument of kind none behind the last.
class FormatArguments {
public:
    FormatArguments(FormatArgument const* list, std::size_t count) : list_(list), count_(count) { }

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

/// The arguments that the conversions of a format take from a list of them, for putConversion() with that format.
std::vector<FormatArgument> readArguments(char const* format, std::va_list list);

/// Reads the conversion behind a '%' and gives the position behind it. Without `arguments` a '*' is not known.
char const* readConversion(char const* at, Conversion& conversion, FormatArguments* arguments);

/// Fills in one conversion. Gives false, and writes nothing, for an unknown one and one without an argument.
bool putConversion(TextOutput& out, Conversion const& conversion, FormatArgument const& argument);

}  // namespace zk
